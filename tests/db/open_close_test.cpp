// Who may open what, and what closing leaves behind.

#include <type_traits>
#include <utility>

#include "db_test.h"
#include "host/db/build.h"

namespace test {
namespace {

enum class Held { kNothing, kReader, kWriter, kErased, kNotified };

struct OpenCase {
    const char* name;
    Held held;
    AcDb::OpenMode mode;
    bool openErased;
    Acad::ErrorStatus expected;
};

const OpenCase kOpenings[] = {
    {"free, read", Held::kNothing, AcDb::kForRead, false, Acad::eOk},
    {"free, write", Held::kNothing, AcDb::kForWrite, false, Acad::eOk},
    {"free, notify", Held::kNothing, AcDb::kForNotify, false, Acad::eOk},
    {"read, read", Held::kReader, AcDb::kForRead, false, Acad::eOk},
    {"read, write", Held::kReader, AcDb::kForWrite, false, Acad::eWasOpenForRead},
    {"read, notify", Held::kReader, AcDb::kForNotify, false, Acad::eOk},
    {"written, read", Held::kWriter, AcDb::kForRead, false, Acad::eWasOpenForWrite},
    {"written, write", Held::kWriter, AcDb::kForWrite, false, Acad::eWasOpenForWrite},
    {"notified, notify", Held::kNotified, AcDb::kForNotify, false, Acad::eWasOpenForNotify},
    {"notified, write", Held::kNotified, AcDb::kForWrite, false, Acad::eWasOpenForNotify},
    {"erased, read", Held::kErased, AcDb::kForRead, false, Acad::eWasErased},
    {"erased, write", Held::kErased, AcDb::kForWrite, false, Acad::eWasErased},
    {"erased, notify", Held::kErased, AcDb::kForNotify, false, Acad::eWasErased},
    {"erased on purpose", Held::kErased, AcDb::kForWrite, true, Acad::eOk},
};

class OpenClose : public DbTest {};

// What a pointer that is const points at is const: the true interface compiles nothing else.
template <class Pointer>
using ObjectOf = decltype(std::declval<Pointer&>().object());
template <class Pointer>
using ArrowOf = decltype(std::declval<Pointer&>().operator->());
static_assert(std::is_same_v<ObjectOf<const AcDbObjectPointer<AcDbLine>>, const AcDbLine*> &&
              std::is_same_v<ArrowOf<const AcDbObjectPointer<AcDbLine>>, const AcDbLine*> &&
              !std::is_convertible_v<const AcDbObjectPointer<AcDbLine>&, AcDbLine*> &&
              std::is_convertible_v<AcDbObjectPointer<AcDbLine>&, AcDbLine*>);

TEST_F(OpenClose, StatusByState) {
    for (const OpenCase& c : kOpenings) {
        SCOPED_TRACE(c.name);
        const AcDbObjectId id = Add(new AcDbLine(AcGePoint3d(), AcGePoint3d(1, 0, 0)));
        AcDbObject* first = nullptr;
        if (c.held == Held::kErased) Erase(id);
        if (c.held == Held::kReader) {
            ASSERT_OK(acdbOpenAcDbObject(first, id, AcDb::kForRead));
        }
        if (c.held == Held::kWriter) {
            ASSERT_OK(acdbOpenAcDbObject(first, id, AcDb::kForWrite));
        }
        if (c.held == Held::kNotified) {
            ASSERT_OK(acdbOpenAcDbObject(first, id, AcDb::kForNotify));
        }
        AcDbObject* second = nullptr;
        EXPECT_EQ(c.expected, acdbOpenAcDbObject(second, id, c.mode, c.openErased));
        EXPECT_EQ(c.expected == Acad::eOk, second != nullptr);
        if (second != nullptr) {
            EXPECT_OK(second->close());
        }
        if (first != nullptr) {
            EXPECT_OK(first->close());
        }
        EXPECT_TRUE(host::OpenObjectsReport(db).empty());
    }
}

TEST_F(OpenClose, IdentifiersWithoutObject) {
    AcDbObject* object = nullptr;
    EXPECT_EQ(Acad::eNullObjectId, acdbOpenAcDbObject(object, AcDbObjectId(), AcDb::kForRead));
    AcDbObjectId gone;
    {
        AcDbDatabase other(true, true);
        gone = other.layerZero();
        EXPECT_TRUE(gone.isValid());
    }
    EXPECT_EQ(Acad::ePermanentlyErased, acdbOpenAcDbObject(object, gone, AcDb::kForRead));
    EXPECT_TRUE(gone.isErased());
    EXPECT_EQ(nullptr, gone.database());
    EXPECT_EQ(nullptr, object);
}

TEST_F(OpenClose, WrongClassLeavesNothingOpen) {
    const AcDbObjectId id = Add(new AcDbLine);
    AcDbArc* arc = nullptr;
    EXPECT_EQ(Acad::eNotThatKindOfClass, acdbOpenObject(arc, id, AcDb::kForWrite));
    EXPECT_EQ(nullptr, arc);
    AcDbEntity* entity = nullptr;
    EXPECT_EQ(Acad::eNotThatKindOfClass,
              acdbOpenAcDbEntity(entity, db.layerZero(), AcDb::kForRead));
    EXPECT_TRUE(host::OpenObjectsReport(db).empty());
}

TEST_F(OpenClose, AsManyReadersAsAllowed) {
    const AcDbObjectId id = Add(new AcDbLine);
    std::vector<AcDbLine*> readers(256);
    for (AcDbLine*& reader : readers) ASSERT_OK(acdbOpenObject(reader, id));
    AcDbLine* tooMany = nullptr;
    EXPECT_EQ(Acad::eAtMaxReaders, acdbOpenObject(tooMany, id));
    EXPECT_EQ(Acad::eHadMultipleReaders, readers[0]->upgradeOpen());
    const auto report = host::OpenObjectsReport(db);
    ASSERT_EQ(1u, report.size());
    EXPECT_EQ(256, report[0].count);
    for (AcDbLine* reader : readers) EXPECT_OK(reader->close());
}

TEST_F(OpenClose, UpgradeAndDowngrade) {
    const AcDbObjectId id = Add(new AcDbLine);
    AcDbLine* line = nullptr;
    ASSERT_OK(acdbOpenObject(line, id));
    EXPECT_EQ(Acad::eNotOpenForWrite, line->setEndPoint(AcGePoint3d(1, 2, 3)));
    EXPECT_EQ(Acad::eNotOpenForWrite, line->erase());
    EXPECT_EQ(Acad::eNotOpenForWrite, line->setLayer(db.layerZero()));
    EXPECT_OK(line->upgradeOpen());
    EXPECT_TRUE(line->isWriteEnabled());
    EXPECT_OK(line->setEndPoint(AcGePoint3d(1, 2, 3)));
    EXPECT_OK(line->downgradeOpen());
    EXPECT_FALSE(line->isWriteEnabled());
    EXPECT_TRUE(line->isReadEnabled());
    EXPECT_OK(line->close());
    EXPECT_EQ(Acad::eNotOpenForRead, line->close());
}

TEST_F(OpenClose, NonResidentObjects) {
    AcDbLine line(AcGePoint3d(), AcGePoint3d(1, 0, 0));
    EXPECT_EQ(Acad::eNotInDatabase, line.close());
    EXPECT_EQ(Acad::eNotInDatabase, line.erase());
    EXPECT_OK(line.setStartPoint(AcGePoint3d(5, 5, 0)));
    EXPECT_EQ(nullptr, line.database());
    EXPECT_TRUE(line.objectId().isNull());
    EXPECT_STREQ(L"0", [&] {
        static ACHAR text[AcDbHandle::kStrSiz];
        AcDbHandle handle;
        line.getAcDbHandle(handle);
        EXPECT_TRUE(handle.getIntoAsciiBuffer(text));
        return text;
    }());
}

// A container's record stays open for write until closed, and a second open says so.
TEST_F(OpenClose, AppendedObjectStaysOpen) {
    AcDbBlockTableRecordPointer space(ModelSpace(), AcDb::kForWrite);
    auto* line = new AcDbLine;
    AcDbObjectId id;
    ASSERT_OK(space->appendAcDbEntity(id, line));
    EXPECT_TRUE(line->isNewObject());
    AcDbLine* again = nullptr;
    EXPECT_EQ(Acad::eWasOpenForWrite, acdbOpenObject(again, id));
    EXPECT_EQ(Acad::eAlreadyInDb, space->appendAcDbEntity(id, line));
    EXPECT_OK(line->close());
    EXPECT_OK(acdbOpenObject(again, id));
    EXPECT_FALSE(again->isNewObject());
    EXPECT_OK(again->close());
    EXPECT_EQ(Acad::eNullEntityPointer, space->appendAcDbEntity(nullptr));
}

TEST_F(OpenClose, EraseAndUnerase) {
    const AcDbObjectId id = Add(new AcDbLine);
    AcDbLine* line = nullptr;
    ASSERT_OK(acdbOpenObject(line, id, AcDb::kForWrite));
    EXPECT_OK(line->erase());
    EXPECT_EQ(Acad::eWasErased, line->erase());
    EXPECT_TRUE(line->isWriteEnabled());
    EXPECT_OK(line->close());
    EXPECT_TRUE(id.isErased());
    EXPECT_TRUE(id.isValid());
    AcDbObjectId found;
    EXPECT_OK(db.getAcDbObjectId(found, false, id.handle()));
    EXPECT_EQ(id, found);
    EXPECT_TRUE(Entities().empty());
    EXPECT_EQ(1u, Entities(false).size());
    ASSERT_OK(acdbOpenObject(line, id, AcDb::kForWrite, true));
    EXPECT_OK(line->erase(false));
    EXPECT_EQ(Acad::eWasNotErased, line->erase(false));
    EXPECT_OK(line->close());
    EXPECT_EQ(1u, Entities().size());
}

TEST_F(OpenClose, CancelTakesBack) {
    const AcDbObjectId layer = AddLayer(L"CUT");
    const AcDbObjectId id = Add(new AcDbLine(AcGePoint3d(1, 1, 0), AcGePoint3d(2, 2, 0)));
    AcDbLine* line = nullptr;
    ASSERT_OK(acdbOpenObject(line, id, AcDb::kForWrite));
    EXPECT_OK(line->setStartPoint(AcGePoint3d(9, 9, 9)));
    EXPECT_OK(line->setLayer(layer));
    EXPECT_OK(line->erase());
    EXPECT_OK(line->cancel());
    ASSERT_OK(acdbOpenObject(line, id));
    EXPECT_EQ("L 1,1 2,2", Show(*line));
    EXPECT_EQ(db.layerZero(), line->layerId());
    EXPECT_OK(line->close());
    EXPECT_EQ(0, host::DirtyMask(*id.stub()) & host::kDirtyGeometry);
    // A new object that is cancelled was never there.
    AcDbBlockTableRecordPointer space(ModelSpace(), AcDb::kForWrite);
    auto* fresh = new AcDbLine;
    AcDbObjectId freshId;
    ASSERT_OK(space->appendAcDbEntity(freshId, fresh));
    EXPECT_OK(fresh->cancel());
    EXPECT_TRUE(freshId.isErased());
}

class LockedDatabase : public host::WriteGuard {
public:
    Acad::ErrorStatus MayWrite(const AcDbDatabase&) const override {
        return locked ? Acad::eOk : Acad::eLockViolation;
    }
    bool locked = false;
};

TEST_F(OpenClose, WithoutLockNothingIsWritten) {
    const AcDbObjectId id = Add(new AcDbLine);
    LockedDatabase guard;
    host::SetWriteGuard(db, &guard);
    AcDbLine* line = nullptr;
    EXPECT_EQ(Acad::eLockViolation, acdbOpenObject(line, id, AcDb::kForWrite));
    EXPECT_EQ(Acad::eLockViolation, db.setClayer(db.layerZero()));
    AcDbIdMapping mapping;
    AcDbObjectIdArray ids;
    ids.append(id);
    EXPECT_EQ(Acad::eLockViolation, db.deepCloneObjects(ids, ModelSpace(), mapping));
    ASSERT_OK(acdbOpenObject(line, id));
    EXPECT_EQ(Acad::eLockViolation, line->upgradeOpen());
    EXPECT_OK(line->close());
    guard.locked = true;
    ASSERT_OK(acdbOpenObject(line, id, AcDb::kForWrite));
    EXPECT_OK(line->close());
    host::SetWriteGuard(db, nullptr);
}

TEST_F(OpenClose, LockedLayers) {
    const AcDbObjectId layer = AddLayer(L"LOCKED");
    const AcDbObjectId id = Add(new AcDbLine);
    {
        AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
        EXPECT_OK(line->setLayer(layer));
        AcDbLayerTableRecordPointer record(layer, AcDb::kForWrite);
        record->setIsLocked(true);
    }
    AcDbLine* line = nullptr;
    EXPECT_EQ(Acad::eOnLockedLayer, acdbOpenObject(line, id, AcDb::kForWrite));
    ASSERT_OK(acdbOpenObject(line, id));
    EXPECT_EQ(Acad::eOnLockedLayer, line->upgradeOpen());
    EXPECT_OK(line->close());
    // Appending to a locked layer works, and so does cloning; the clone is locked as well.
    ASSERT_OK(db.setClayer(layer));
    EXPECT_EQ(Acad::eOnLockedLayer, acdbOpenObject(line, Add(new AcDbLine), AcDb::kForWrite));
    AcDbIdMapping mapping;
    AcDbObjectIdArray ids;
    ids.append(id);
    ASSERT_OK(db.deepCloneObjects(ids, ModelSpace(), mapping));
    AcDbIdPair pair;
    pair.setKey(id);
    ASSERT_TRUE(mapping.compute(pair));
    EXPECT_EQ(Acad::eOnLockedLayer, acdbOpenObject(line, pair.value(), AcDb::kForWrite));
}

TEST_F(OpenClose, DeletingResidentObjectsStopsTheProgram) {
    const AcDbObjectId id = Add(new AcDbLine);
    AcDbLine* line = nullptr;
    ASSERT_OK(acdbOpenObject(line, id, AcDb::kForWrite));
    EXPECT_DEATH(delete line, "must be closed, not deleted");
    EXPECT_OK(line->close());
    AcDbLayerTableRecordPointer layer(db.layerZero(), AcDb::kForRead);
    EXPECT_DEATH(layer->setIsOff(true), "not open for write");
}

// What asks nobody whether there is an object would find a zero here, and fall elsewhere.
TEST_F(OpenClose, NullHasNoHandle) {
    EXPECT_DEATH(AcDbObjectId::kNull.handle(), "handle of a null identifier");
    EXPECT_DEATH(AcDbObjectId().nonForwardedHandle(), "handle of a null identifier");
    AcDbHandle handle(7);
    AcDbLine().getAcDbHandle(handle);
    EXPECT_TRUE(handle.isNull()) << "an object that is in no drawing may be asked";
}

TEST_F(OpenClose, PurgedObjectsAreGoneForGood) {
    const AcDbObjectId kept = Add(new AcDbLine);
    const AcDbObjectId open = Add(new AcDbLine);
    const AcDbObjectId gone = Add(new AcDbLine);
    Erase(open);
    Erase(gone);
    AcDbLine* line = nullptr;
    ASSERT_OK(acdbOpenObject(line, open, AcDb::kForRead, true));
    EXPECT_EQ(1u, host::PurgeErased(db));
    EXPECT_OK(line->close());
    EXPECT_EQ(Acad::eWasErased, acdbOpenObject(line, gone));
    EXPECT_EQ(Acad::ePermanentlyErased, acdbOpenObject(line, gone, AcDb::kForRead, true));
    AcDbObjectId found;
    EXPECT_OK(db.getAcDbObjectId(found, false, gone.handle()));
    EXPECT_EQ(1u, host::PurgeErased(db));
    EXPECT_EQ(std::vector<AcDbObjectId>{kept}, Entities());
    EXPECT_EQ(0u, host::PurgeErased(db));
}

}  // namespace
}  // namespace test
