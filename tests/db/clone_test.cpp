// Cloning, reactors, and drawings that load their objects when they are opened.

#include <map>
#include <utility>

#include "db_test.h"
#include "host/db/access.h"
#include "host/db/build.h"
#include "host/db/opaque.h"

namespace test {
namespace {

class Clone : public DbTest {
protected:
    std::vector<AcDbObjectId> CloneAll(const std::vector<AcDbObjectId>& sources,
                                       AcDbIdMapping& mapping) {
        AcDbObjectIdArray ids;
        for (const AcDbObjectId id : sources) ids.append(id);
        EXPECT_OK(db.deepCloneObjects(ids, ModelSpace(), mapping));
        std::vector<AcDbObjectId> clones;
        for (const AcDbObjectId id : sources) {
            AcDbIdPair pair;
            pair.setKey(id);
            EXPECT_TRUE(mapping.compute(pair));
            EXPECT_TRUE(pair.isCloned() && pair.isPrimary());
            clones.push_back(pair.value());
        }
        return clones;
    }
};

TEST_F(Clone, InOrderWithTheirProperties) {
    const AcDbObjectId layer = AddLayer(L"CUT");
    std::vector<AcDbObjectId> sources;
    for (int i = 0; i < 5; ++i) {
        auto* line = new AcDbLine(AcGePoint3d(i, 0, 0), AcGePoint3d(i, 1, 0));
        EXPECT_OK(line->setLayer(layer));
        EXPECT_OK(line->setColorIndex(static_cast<Adesk::UInt16>(i + 1)));
        EXPECT_OK(line->setVisibility(AcDb::kInvisible));
        sources.push_back(Add(line));
    }
    std::swap(sources[0], sources[4]);
    AcDbIdMapping mapping;
    const std::vector<AcDbObjectId> clones = CloneAll(sources, mapping);
    std::vector<AcDbObjectId> all = Entities();
    EXPECT_EQ(clones, std::vector<AcDbObjectId>(all.begin() + 5, all.end()));
    EXPECT_TRUE(host::OpenObjectsReport(db).empty());
    for (size_t i = 0; i < clones.size(); ++i) {
        AcDbObjectPointer<AcDbLine> from(sources[i], AcDb::kForRead), to(clones[i], AcDb::kForRead);
        EXPECT_EQ(Show(*from), Show(*to));
        EXPECT_EQ(layer, to->layerId());
        EXPECT_EQ(from->colorIndex(), to->colorIndex());
        EXPECT_EQ(AcDb::kInvisible, to->visibility());
        EXPECT_NE(sources[i].handle(), clones[i].handle());
    }
}

TEST_F(Clone, WithWhatTheyOwn) {
    AcGePoint3dArray vertices;
    for (int i = 0; i < 3; ++i) vertices.append(AcGePoint3d(i, i * i, 0));
    const AcDbObjectId polyline = Add(new AcDb2dPolyline(AcDb::k2dSimplePoly, vertices));
    AcDbObjectId key;
    {
        AcDbObjectPointer<AcDb2dPolyline> source(polyline, AcDb::kForWrite);
        ASSERT_OK(source->createExtensionDictionary());
        AcDbDictionaryPointer dictionary(source->extensionDictionary(), AcDb::kForWrite);
        auto* record = new AcDbXrecord;
        ASSERT_OK(dictionary->setAt(L"KEY", record, key));
        resbuf* const link = acutNewRb(330);
        ads_name name;
        EXPECT_OK(acdbGetAdsName(name, polyline));
        ads_name_set(name, link->resval.rlname);
        EXPECT_OK(record->setFromRbChain(*link));
        acutRelRb(link);
        EXPECT_OK(record->close());
    }
    AcDbIdMapping mapping;
    const AcDbObjectId clone = CloneAll({polyline}, mapping)[0];
    AcDbObjectPointer<AcDb2dPolyline> copy(clone, AcDb::kForRead);
    EXPECT_EQ("L 0,0 1,1 | L 1,1 2,4", Show(Pieces(*copy)));
    std::map<bool, int> kinds;
    for (AcDbIdMappingIter it(mapping); !it.done(); it.next()) {
        AcDbIdPair pair;
        ASSERT_TRUE(it.getMap(pair));
        ++kinds[pair.isPrimary()];
        EXPECT_NE(pair.key(), pair.value());
        EXPECT_FALSE(pair.value().isNull());
    }
    EXPECT_EQ(1, kinds[true]);
    EXPECT_EQ(6, kinds[false]);  // three vertices, the sequence end, the dictionary, its entry
    // The clone's own record points to the clone.
    AcDbDictionaryPointer dictionary(copy->extensionDictionary(), AcDb::kForRead);
    AcDbObject* object = nullptr;
    ASSERT_OK(dictionary->getAt(L"key", object, AcDb::kForRead));
    EXPECT_NE(key, object->objectId());
    resbuf* link = nullptr;
    EXPECT_OK(AcDbXrecord::cast(object)->rbChain(&link));
    AcDbObjectId target;
    EXPECT_OK(acdbGetObjectId(target, link->resval.rlname));
    EXPECT_EQ(clone, target);
    acutRelRb(link);
    EXPECT_OK(object->close());
    // Erasing the source leaves the clone whole.
    ASSERT_OK(copy.close());
    Erase(polyline);
    ASSERT_OK(copy.open(clone, AcDb::kForRead));
    EXPECT_EQ(2, Pieces(*copy).Count());
}

TEST_F(Clone, Refusals) {
    AcDbIdMapping mapping;
    AcDbObjectIdArray ids;
    EXPECT_OK(db.deepCloneObjects(ids, ModelSpace(), mapping));
    const AcDbObjectId here = Add(new AcDbLine);
    const AcDbObjectId there = Add(new AcDbLine, AddBlock(L"B"));
    ids.append(here);
    EXPECT_EQ(Acad::eNullObjectId, db.deepCloneObjects(ids, AcDbObjectId(), mapping));
    EXPECT_EQ(Acad::eWrongObjectType, db.deepCloneObjects(ids, db.layerZero(), mapping));
    ids.append(there);
    EXPECT_EQ(Acad::eInvalidInput, db.deepCloneObjects(ids, ModelSpace(), mapping));
    Erase(here);
    ids.removeLast();
    EXPECT_EQ(Acad::eWasErased, db.deepCloneObjects(ids, ModelSpace(), mapping));
    AcDbDatabase other(true, true);
    EXPECT_EQ(Acad::eWrongDatabase, other.deepCloneObjects(ids, other.currentSpaceId(), mapping));
    EXPECT_TRUE(Entities().empty());
}

// Writes down what it hears.
class Listener : public AcDbDatabaseReactor {
public:
    explicit Listener(std::string& log, const char* name = "") : m_log(log), m_name(name) {}
    void objectAppended(const AcDbDatabase*, const AcDbObject*) override { Say("appended"); }
    void objectOpenedForModify(const AcDbDatabase*, const AcDbObject*) override { Say("opened"); }
    void objectModified(const AcDbDatabase*, const AcDbObject* object) override {
        Say("modified");
        AcDbObject* again = nullptr;
        EXPECT_EQ(Acad::eWasNotifying,
                  acdbOpenAcDbObject(again, object->objectId(), AcDb::kForWrite, true));
        EXPECT_EQ(Acad::eWasNotifying,
                  acdbOpenAcDbObject(again, object->objectId(), AcDb::kForRead, true));
        if (removes != nullptr) {
            EXPECT_OK(object->database()->removeReactor(removes));
        }
        removes = nullptr;
    }
    void objectErased(const AcDbDatabase*, const AcDbObject*, bool erased) override {
        Say(erased ? "erased" : "unerased");
    }
    void headerSysVarChanged(const AcDbDatabase*, const ACHAR*, bool) override { Say("sysvar"); }
    void goodbye(const AcDbDatabase*) override { Say("goodbye"); }
    AcDbDatabaseReactor* removes = nullptr;

private:
    void Say(const char* what) { m_log += m_name + std::string(what) + " "; }
    std::string& m_log;
    std::string m_name;
};

TEST_F(Clone, ReactorsHearWhatHappens) {
    std::string log;
    Listener listener(log);
    EXPECT_OK(db.addReactor(&listener));
    EXPECT_OK(db.addReactor(&listener));
    const auto Heard = [&] { return std::exchange(log, std::string()); };
    const AcDbObjectId id = Add(new AcDbLine);
    EXPECT_EQ("opened appended modified ", Heard());  // model space opened; closed after the append
    AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
    EXPECT_OK(line.close());
    EXPECT_EQ("", Heard());
    ASSERT_OK(line.open(id, AcDb::kForWrite));
    EXPECT_OK(line->setEndPoint(AcGePoint3d(1, 0, 0)));
    EXPECT_OK(line->setStartPoint(AcGePoint3d(1, 0, 0)));
    EXPECT_EQ("opened ", Heard());
    EXPECT_OK(line.close());
    EXPECT_EQ("modified ", Heard());
    Erase(id);
    EXPECT_EQ("opened erased modified ", Heard());
    AcDbLine* taken = nullptr;
    ASSERT_OK(acdbOpenObject(taken, id, AcDb::kForWrite, true));
    EXPECT_OK(taken->erase(false));
    EXPECT_OK(taken->cancel());
    EXPECT_EQ("opened ", Heard());
    EXPECT_TRUE(id.isErased());
    EXPECT_OK(db.setClayer(db.layerZero()));
    EXPECT_EQ("sysvar ", Heard());
    {
        AcDbDatabase side(true, true);
        AcDbLine* unheard = new AcDbLine;
        AcDbBlockTableRecordPointer space(side.currentSpaceId(), AcDb::kForWrite);
        EXPECT_OK(space->appendAcDbEntity(unheard));
        EXPECT_OK(unheard->close());
    }
    EXPECT_EQ("", Heard());
    EXPECT_OK(db.removeReactor(&listener));
    EXPECT_EQ(Acad::eKeyNotFound, db.removeReactor(&listener));
}

TEST_F(Clone, ReactorsInOrderAndRemovedSafely) {
    std::string log;
    Listener a(log, "a:"), b(log, "b:"), c(log, "c:");
    const AcDbObjectId id = Add(new AcDbLine);
    for (Listener* listener : {&a, &b, &c}) EXPECT_OK(db.addReactor(listener));
    a.removes = &b;
    AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
    EXPECT_OK(line->setEndPoint(AcGePoint3d(1, 0, 0)));
    EXPECT_OK(line.close());
    EXPECT_EQ("a:opened b:opened c:opened a:modified c:modified ", log);
    log.clear();
    {
        AcDbDatabase side(true, true);
        EXPECT_OK(side.addReactor(&b));
    }
    EXPECT_EQ("b:goodbye ", log);
    EXPECT_OK(db.removeReactor(&a));
    EXPECT_OK(db.removeReactor(&c));
}

// A source that makes lines from their record numbers, and counts.
class LineSource : public host::DrawingSource {
public:
    AcDbObject* Load(host::Stub& stub) override {
        ++loads;
        if (stub.record == 13) return nullptr;
        if (stub.cls->isDerivedFrom(AcDbZombieEntity::desc())) {
            auto* unknown = new AcDbZombieEntity(stub.cls);
            host::Access::Layer(*unknown) = stub.database->layerZero();
            host::Access::Linetype(*unknown) = stub.database->byLayerLinetype();
            return unknown;
        }
        auto* line = new AcDbLine(AcGePoint3d(stub.record, 0, 0), AcGePoint3d(stub.record, 1, 0));
        host::Access::Layer(*line) = stub.database->layerZero();
        host::Access::Linetype(*line) = stub.database->byLayerLinetype();
        return line;
    }
    int loads = 0;
};

TEST(Loading, ObjectsComeWhenTheyAreOpened) {
    AcDbDatabase db(false, true);
    auto made = std::make_unique<LineSource>();
    LineSource& source = *made;
    host::SetSource(db, std::move(made));
    host::Stub* const table = host::RegisterStub(db, 0x1, AcDbBlockTable::desc(), nullptr, 0);
    host::AttachObject(*table, host::NewRootObject(host::Root::kBlockTable));
    host::SetRoot(db, host::Root::kBlockTable, *table);
    host::Stub* const space = host::RegisterStub(db, 0x2, AcDbBlockTableRecord::desc(), table, 1);
    host::AttachObject(*space, std::make_unique<AcDbBlockTableRecord>());
    EXPECT_TRUE(host::AddTableRecord(*table, *space, L"*MODEL_SPACE"));
    for (Adesk::UInt32 record = 10; record < 15; ++record) {
        AcRxClass* const type =
            record == 14 ? host::OpaqueEntityClass(L"ACAD_TABLE") : AcDbLine::desc();
        host::Stub* const stub = host::RegisterStub(db, 0x100 + record, type, space, record);
        host::AppendEntity(*space, *stub);
    }
    EXPECT_EQ(nullptr, host::RegisterStub(db, 0x10A, AcDbLine::desc(), space, 99));
    host::FinishReading(db);
    EXPECT_FALSE(host::IsModified(db));
    EXPECT_EQ(0, source.loads);
    EXPECT_EQ(space->Id(), acdbSymUtil()->blockModelSpaceId(&db));
    AcDbObjectId id;
    ASSERT_OK(db.getAcDbObjectId(id, false, AcDbHandle(0x10B)));
    EXPECT_FALSE(id.isResident());
    EXPECT_STREQ(L"LINE", id.objectClass()->dxfName());
    AcDbLine* line = nullptr;
    ASSERT_OK(acdbOpenObject(line, id, AcDb::kForWrite));
    EXPECT_EQ("L 11,0 11,1", Show(*line));
    EXPECT_EQ(0, host::DirtyMask(*id.stub()));
    EXPECT_OK(line->setColorIndex(2));
    EXPECT_OK(line->close());
    EXPECT_EQ(host::kDirtyCommon, host::DirtyMask(*id.stub()));
    EXPECT_EQ(1, source.loads);
    ASSERT_OK(db.getAcDbObjectId(id, false, AcDbHandle(0x10D)));
    EXPECT_EQ(Acad::eUnknownHandle, acdbOpenObject(line, id));
    EXPECT_EQ(Acad::eUnknownHandle, acdbOpenObject(line, id));
    EXPECT_EQ(2, source.loads);
    // New handles lie above every one that was read.
    EXPECT_GT(Adesk::UInt64(db.handseed()), 0x10Eu);
    EXPECT_TRUE(host::IsModified(db));
    // A clone of an unknown entity remembers the record it can be written from.
    ASSERT_OK(db.getAcDbObjectId(id, false, AcDbHandle(0x10E)));
    EXPECT_STREQ(L"ACAD_TABLE", id.objectClass()->dxfName());
    AcDbIdMapping mapping;
    AcDbObjectIdArray ids;
    ids.append(id);
    ASSERT_OK(db.deepCloneObjects(ids, space->Id(), mapping));
    AcDbIdPair pair;
    pair.setKey(id);
    ASSERT_TRUE(mapping.compute(pair));
    EXPECT_EQ(14u, pair.value().stub()->record);
    EXPECT_TRUE(host::IsNew(*pair.value().stub()));
    EXPECT_EQ(6u, host::Members(*space->object).size());
    // An entity made here has none, and one of another drawing is refused.
    auto* fresh = new AcDbLine;
    AcDbBlockTableRecordPointer block(space->Id(), AcDb::kForWrite);
    ASSERT_OK(block->appendAcDbEntity(fresh));
    EXPECT_EQ(host::kNoRecord, fresh->objectId().stub()->record);
    EXPECT_OK(fresh->close());
    AcDbDatabase other(true, true);
    std::unique_ptr<AcDbEntity> foreign(AcDbEntity::cast(host::ObjectOf(*id.stub())->clone()));
    AcDbBlockTableRecordPointer space2(other.currentSpaceId(), AcDb::kForWrite);
    EXPECT_EQ(Acad::eWrongDatabase, space2->appendAcDbEntity(foreign.get()));
    EXPECT_EQ(Acad::eUnknownHandle, db.closeInput());
}

TEST(Loading, ClassesByDxfName) {
    for (const ACHAR* name : {L"LINE", L"LWPOLYLINE", L"INSERT", L"DIMENSION", L"XRECORD"}) {
        AcRxClass* const type = host::ClassByDxfName(name);
        ASSERT_NE(nullptr, type);
        EXPECT_STREQ(name, type->dxfName());
    }
    EXPECT_EQ(nullptr, host::ClassByDxfName(L"NO_SUCH_THING"));
    EXPECT_TRUE(AcDbMInsertBlock::desc()->isDerivedFrom(AcDbBlockReference::desc()));
    EXPECT_TRUE(AcDbAttribute::desc()->isDerivedFrom(AcDbText::desc()));
    EXPECT_FALSE(AcDbSolid::desc()->isDerivedFrom(AcDb3dSolid::desc()));
    AcDbArc arc;
    EXPECT_EQ(&arc, AcDbCurve::cast(&arc));
    EXPECT_EQ(nullptr, AcDbLine::cast(&arc));
    EXPECT_EQ(nullptr, AcDbLine::cast(nullptr));
    EXPECT_EQ(AcDbLine::desc(), acrxClassDictionary->at(L"AcDbLine"));
    EXPECT_EQ(host::OpaqueEntityClass(L"X"), host::OpaqueEntityClass(L"X"));
}

}  // namespace
}  // namespace test
