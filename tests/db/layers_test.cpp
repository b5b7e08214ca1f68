// New entities, layers, linetypes, names.

#include "db_test.h"
#include "host/db/build.h"

namespace test {
namespace {

class Layers : public DbTest {
protected:
    AcDbObjectId AddLinetype(const ACHAR* name) {
        AcDbLinetypeTablePointer table(db.linetypeTableId(), AcDb::kForWrite);
        auto* record = new AcDbLinetypeTableRecord;
        EXPECT_OK(record->setName(name));
        AcDbObjectId id;
        EXPECT_OK(table->add(id, record));
        EXPECT_OK(record->close());
        return id;
    }
    static std::wstring LayerOf(const AcDbEntity& entity) {
        AcString name;
        EXPECT_OK(entity.layer(name));
        return name.kACharPtr();
    }
};

TEST_F(Layers, DefaultDrawing) {
    AcString name;
    for (const AcDbObjectId id :
         {db.layerZero(), db.byLayerLinetype(), db.byBlockLinetype(), db.continuousLinetype()})
        EXPECT_OK(acdbSymUtil()->getSymbolName(name, id));
    AcDbLayerTableRecordPointer zero(db.layerZero(), AcDb::kForRead);
    EXPECT_EQ(7, zero->color().colorIndex());
    EXPECT_EQ(db.continuousLinetype(), zero->linetypeObjectId());
    AcDbBlockTablePointer blocks(db.blockTableId(), AcDb::kForRead);
    EXPECT_TRUE(blocks->has(ACDB_MODEL_SPACE));
    EXPECT_TRUE(blocks->has(L"*PAPER_SPACE"));
    AcDbDictionaryPointer root(db.namedObjectsDictionaryId(), AcDb::kForRead);
    for (const ACHAR* key : {L"ACAD_GROUP", L"ACAD_MLINESTYLE", L"ACAD_LAYOUT"})
        EXPECT_TRUE(root->has(key));
    EXPECT_EQ(ModelSpace(), db.currentSpaceId());
}

// What an entity gets, by constructor, by append and by setDatabaseDefaults.
TEST_F(Layers, PropertiesOfNewEntities) {
    const AcDbObjectId layer = AddLayer(L"CUT");
    const AcDbObjectId dashed = AddLinetype(L"DASHED");
    ASSERT_OK(db.setClayer(layer));
    ASSERT_OK(db.setCeltype(dashed));
    AcCmColor red;
    ASSERT_OK(red.setColorIndex(1));
    ASSERT_OK(db.setCecolor(red));
    auto* line = new AcDbLine;
    EXPECT_TRUE(line->layerId().isNull());
    EXPECT_EQ(nullptr, line->layer());
    EXPECT_EQ(256, line->colorIndex());
    EXPECT_EQ(AcDb::kVisible, line->visibility());
    EXPECT_EQ(1.0, line->linetypeScale());
    const AcDbObjectId id = Add(line);
    AcDbObjectPointer<AcDbLine> appended(id, AcDb::kForRead);
    EXPECT_EQ(layer, appended->layerId());
    EXPECT_EQ(dashed, appended->linetypeId());
    EXPECT_EQ(256, appended->colorIndex());
    AcDbLine other;
    other.setDatabaseDefaults(&db);
    EXPECT_EQ(layer, other.layerId());
    EXPECT_EQ(1, other.colorIndex());
    ACHAR* name = appended->linetype();
    EXPECT_STREQ(L"DASHED", name);
    acutDelString(name);
}

TEST_F(Layers, NamesCompareWithoutCaseAndKeepTheirSpelling) {
    struct NameCase {
        const ACHAR* stored;
        const ACHAR* asked;
        bool same;
    };
    const NameCase kNames[] = {{L"Cut", L"cUT", true},
                               {L"\u4E2D\u5FC3\u7EBF", L"\u4E2D\u5FC3\u7EBF", true},
                               {L"\u4E2D\u5FC3\u7EBF2", L"\u4E2D\u5FC3\u7EBF3", false},
                               {L"\u00C4u\u00DFen", L"\u00E4U\u00DFEN", true},
                               {L"\u041E\u0421\u042C", L"\u043E\u0441\u044C", true},
                               {L"\uFF21\uFF22", L"\uFF41\uFF42", true},
                               {L"A B", L"AB", false}};
    AcDbLayerTablePointer table(db.layerTableId(), AcDb::kForRead);
    for (const NameCase& c : kNames) {
        ASSERT_OK(table.close());
        const AcDbObjectId id = AddLayer(c.stored);
        ASSERT_OK(table.open(db.layerTableId(), AcDb::kForRead));
        AcDbObjectId found;
        EXPECT_EQ(c.same ? Acad::eOk : Acad::eKeyNotFound, table->getAt(c.asked, found));
        EXPECT_EQ(c.same, table->has(c.asked));
        if (c.same) {
            EXPECT_EQ(id, found);
        }
        AcDbLayerTableRecordPointer record(id, AcDb::kForRead);
        const ACHAR* name = nullptr;
        EXPECT_OK(record->getName(name));
        EXPECT_STREQ(c.stored, name);
    }
    ASSERT_OK(table->upgradeOpen());
    AcDbLayerTableRecord again;
    ASSERT_OK(again.setName(L"CUT"));
    EXPECT_EQ(Acad::eDuplicateRecordName, table->add(&again));
}

TEST_F(Layers, ForbiddenNames) {
    AcDbLayerTableRecord record;
    for (const ACHAR ch : std::wstring(L"<>/\\\":;?*|,=`\n\x01"))
        EXPECT_EQ(Acad::eInvalidInput, record.setName((std::wstring(L"a") + ch).c_str())) << ch;
    EXPECT_EQ(Acad::eInvalidInput, record.setName(L""));
    EXPECT_EQ(Acad::eInvalidInput, record.setName(nullptr));
    EXPECT_EQ(Acad::eInvalidInput, record.setName(std::wstring(256, L'x').c_str()));
    EXPECT_OK(record.setName(std::wstring(255, L'x').c_str()));
    AcDbBlockTableRecord block;
    EXPECT_OK(block.setName(L"*U1"));
}

TEST_F(Layers, RenameAndErase) {
    const AcDbObjectId a = AddLayer(L"A");
    const AcDbObjectId b = AddLayer(L"B");
    {
        AcDbLayerTableRecordPointer record(a, AcDb::kForWrite);
        EXPECT_EQ(Acad::eDuplicateRecordName, record->setName(L"b"));
        EXPECT_OK(record->setName(L"a"));
        EXPECT_OK(record->setName(L"C"));
    }
    Erase(b);
    AcDbObjectId found;
    AcDbLayerTablePointer table(db.layerTableId(), AcDb::kForRead);
    EXPECT_EQ(Acad::eKeyNotFound, table->getAt(L"A", found));
    EXPECT_EQ(Acad::eKeyNotFound, table->getAt(L"B", found));
    EXPECT_OK(table->getAt(L"b", found, true));
    EXPECT_EQ(b, found);
    AcDbLine line;
    EXPECT_EQ(Acad::eDeletedEntry, line.setLayer(L"B"));
    EXPECT_EQ(Acad::eDeletedEntry, line.setLayer(b));
    // The iterator gives what lives, in order of creation.
    AcDbLayerTableIterator* made = nullptr;
    ASSERT_OK(table->newIterator(made));
    const std::unique_ptr<AcDbLayerTableIterator> it(made);
    std::wstring names;
    for (; !it->done(); it->step()) {
        AcDbLayerTableRecord* record = nullptr;
        ASSERT_OK(it->getRecord(record));
        AcString name;
        EXPECT_OK(record->getName(name));
        names += name.kACharPtr() + std::wstring(L" ");
        EXPECT_OK(record->close());
    }
    EXPECT_EQ(L"0 C ", names);
}

TEST_F(Layers, SettingTheLayer) {
    const AcDbObjectId cut = AddLayer(L"Cut");
    const AcDbObjectId hidden = AddLayer(L"Hidden");
    {
        AcDbLayerTableRecordPointer record(hidden, AcDb::kForWrite);
        EXPECT_OK(record->setIsHidden(true));
    }
    const AcDbObjectId id = Add(new AcDbLine);
    AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
    EXPECT_EQ(Acad::eKeyNotFound, line->setLayer(L"never made"));
    EXPECT_EQ(Acad::eWrongObjectType, line->setLayer(db.byLayerLinetype()));
    EXPECT_EQ(Acad::eNullObjectId, line->setLayer(AcDbObjectId()));
    EXPECT_OK(line->setLayer(L"CUT"));
    EXPECT_EQ(cut, line->layerId());
    EXPECT_EQ(L"Cut", LayerOf(*line));
    EXPECT_OK(line->setLayer(hidden));
    EXPECT_EQ(cut, line->layerId());
    EXPECT_OK(line->setLayer(hidden, true, true));
    EXPECT_EQ(hidden, line->layerId());
    AcDbDatabase other(true, true);
    EXPECT_EQ(Acad::eWrongDatabase, line->setLayer(other.layerZero()));
    EXPECT_EQ(Acad::eKeyNotFound, line->setLinetype(L"NONE"));
    EXPECT_OK(line->setLinetype(L"BYBLOCK"));
    EXPECT_EQ(db.byBlockLinetype(), line->linetypeId());
    EXPECT_EQ(Acad::eInvalidInput, line->setColorIndex(258));
    EXPECT_EQ(Acad::eInvalidInput, line->setLinetypeScale(0.0));
    AcDbLayerTablePointer table(db.layerTableId(), AcDb::kForRead);
    EXPECT_FALSE(table->has(L"never made"));
}

TEST_F(Layers, CurrentLayer) {
    const AcDbObjectId cut = AddLayer(L"CUT");
    AcDbObjectId frozen = AddLayer(L"FROZEN"), off = AddLayer(L"OFF"), gone = AddLayer(L"GONE");
    {
        AcDbLayerTableRecordPointer a(frozen, AcDb::kForWrite), b(off, AcDb::kForWrite);
        EXPECT_OK(a->setIsFrozen(true));
        b->setIsOff(true);
        b->setIsLocked(true);
    }
    Erase(gone);
    EXPECT_OK(db.setClayer(cut));
    EXPECT_NE(Acad::eOk, db.setClayer(frozen));
    EXPECT_EQ(Acad::eNullObjectId, db.setClayer(AcDbObjectId()));
    EXPECT_EQ(Acad::eWrongObjectType, db.setClayer(db.continuousLinetype()));
    EXPECT_EQ(Acad::eWasErased, db.setClayer(gone));
    EXPECT_EQ(cut, db.clayer());
    EXPECT_OK(db.setClayer(off));
    AcDbLayerTableRecordPointer current(off, AcDb::kForWrite);
    EXPECT_NE(Acad::eOk, current->setIsFrozen(true));
    current->setIsOff(false);
    EXPECT_FALSE(current->isOff());
}

TEST_F(Layers, Colours) {
    AcCmColor color;
    EXPECT_TRUE(color.isByLayer());
    const struct {
        Adesk::UInt8 red, green, blue;
        Adesk::UInt16 index;
    } kNearest[] = {
        {255, 0, 0, 1}, {0, 255, 0, 3}, {255, 255, 255, 7}, {254, 1, 2, 1}, {255, 127, 0, 30}};
    for (const auto& c : kNearest) {
        EXPECT_OK(color.setRGB(c.red, c.green, c.blue));
        EXPECT_TRUE(color.isByColor());
        EXPECT_EQ(c.index, color.colorIndex()) << int(c.red);
    }
    for (const Adesk::UInt16 index : {0, 1, 255, 256, 257}) {
        EXPECT_OK(color.setColorIndex(index));
        EXPECT_EQ(index, color.colorIndex());
    }
}

}  // namespace
}  // namespace test
