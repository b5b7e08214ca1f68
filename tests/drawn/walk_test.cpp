// The walk through what a drawing shows: blocks, properties, limits.
#include "tests/drawn/shown.h"

namespace {

using test::Shown;
using test::TestDrawing;

// Sets properties of an entity that the drawing's text cannot.
template <class Change>
void ChangeEntity(const AcDbObjectId& id, Change change) {
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    ASSERT_EQ(Acad::eOk, entity.openStatus());
    ASSERT_EQ(Acad::eOk, change(*entity.object()));
}

AcDbObjectId BlockId(TestDrawing& d, const ACHAR* name) {
    AcDbObjectPointer<AcDbBlockTable> table(d.db().blockTableId(), AcDb::kForRead);
    AcDbObjectId id;
    test::Check(table->getAt(name, id));
    return id;
}

AcDbObjectId FirstOf(const AcDbObjectId& blockId) {
    AcDbObjectPointer<AcDbBlockTableRecord> block(blockId, AcDb::kForRead);
    AcDbBlockTableRecordIterator* raw = nullptr;
    AcDbObjectId id;
    test::Check(block->newIterator(raw));
    const std::unique_ptr<AcDbBlockTableRecordIterator> it(raw);
    test::Check(it->getEntityId(id));
    return id;
}

TEST(DrawnWalk, BlocksInTheirPlaces) {
    TestDrawing d;
    d.Block("B", "L 0,0 2,0 | L 2,0 2,1");
    d.Block("N", "I B 10,0 | L 0,0 0,5");
    const struct {
        const char* name;
        const char* entities;
        const char* shown;
    } rows[] = {
        {"as it is", "L 1,2 3,4 | T 0,0 note",
         "0/Continuous/7 0: 1,2 3,4\n0/Continuous/7 0: AcDbText\n"},
        {"placed", "I B 5,5", "0/Continuous/7 1: 5,5 7,5\n0/Continuous/7 1: 7,5 7,6\n"},
        {"scaled, turned", "I B 5,5 2 90",
         "0/Continuous/7 1: 5,5 5,9\n0/Continuous/7 1: 5,9 3,9\n"},
        {"mirrored", "I B 5,5 -1,1", "0/Continuous/7 1: 5,5 3,5\n0/Continuous/7 1: 3,5 3,6\n"},
        {"unequal", "I B 5,5 3,0.5", "0/Continuous/7 1: 5,5 11,5\n0/Continuous/7 1: 11,5 11,5.5\n"},
        {"nested", "I N 100,0 2",
         "0/Continuous/7 2: 120,0 124,0\n0/Continuous/7 2: 124,0 124,2\n"
         "0/Continuous/7 1: 100,0 100,10\n"},
        {"array, row by row", "M B 0,0 2,2 10,20",
         "0/Continuous/7 1: 0,0 2,0\n0/Continuous/7 1: 2,0 2,1\n"
         "0/Continuous/7 1: 20,0 22,0\n0/Continuous/7 1: 22,0 22,1\n"
         "0/Continuous/7 1: 0,10 2,10\n0/Continuous/7 1: 2,10 2,11\n"
         "0/Continuous/7 1: 20,10 22,10\n0/Continuous/7 1: 22,10 22,11\n"},
    };
    for (const auto& row : rows) {
        const int before = d.ids().length();
        d.Add(row.entities);
        AcDbObjectIdArray ids;
        for (int i = before; i < d.ids().length(); ++i) ids.append(d.ids()[i]);
        EXPECT_EQ(row.shown, Shown(d.db()).Of(ids)) << row.name;
    }
}

TEST(DrawnWalk, ArrayStepsAlongTheTurnedReferenceInsideATurnedOne) {
    TestDrawing d;
    d.Block("P", "L 0,0 1,0");
    d.Block("A", "M P 0,0 1,3 0,10");
    d.Add("I A 100,0 2 90");
    EXPECT_EQ(
        "0/Continuous/7 2: 100,0 100,2\n0/Continuous/7 2: 100,20 100,22\n"
        "0/Continuous/7 2: 100,40 100,42\n",
        Shown(d.db()).ModelSpace());
}

// The block holds a line on layer 0 with ByBlock's line type, one of its own, one by layer.
TEST(DrawnWalk, LayerZeroAndByBlockAreThoseOfTheReference) {
    TestDrawing d;
    d.Layer("CUT", "DASHED").Layer("OWN", "CENTER");
    d.Block("B", "L%ByBlock 0,0 1,0 | L@OWN 0,0 2,0 | L@OWN%HIDDEN 0,0 3,0 | L 0,0 4,0");
    d.Block("N", "I%ByBlock B 0,0");
    d.Add("I@CUT%PHANTOM B 0,0 | I@CUT B 0,0 | I@CUT%PHANTOM N 0,0 | L%ByBlock 0,0 9,0");
    for (const int i : {0, 2})
        ChangeEntity(d.ids()[i], [](AcDbEntity& e) { return e.setColorIndex(3); });
    ChangeEntity(FirstOf(BlockId(d, _T("B"))), [](AcDbEntity& e) { return e.setColorIndex(0); });
    ChangeEntity(FirstOf(BlockId(d, _T("N"))), [](AcDbEntity& e) { return e.setColorIndex(0); });
    ChangeEntity(d.ids()[3], [](AcDbEntity& e) { return e.setColorIndex(0); });
    EXPECT_EQ(
        "CUT/PHANTOM/3 1: 0,0 1,0\nOWN/CENTER/7 1: 0,0 2,0\nOWN/HIDDEN/7 1: 0,0 3,0\n"
        "CUT/DASHED/7 1: 0,0 4,0\n"
        "CUT/DASHED/7 1: 0,0 1,0\nOWN/CENTER/7 1: 0,0 2,0\nOWN/HIDDEN/7 1: 0,0 3,0\n"
        "CUT/DASHED/7 1: 0,0 4,0\n"
        "CUT/PHANTOM/3 2: 0,0 1,0\nOWN/CENTER/7 2: 0,0 2,0\nOWN/HIDDEN/7 2: 0,0 3,0\n"
        "CUT/DASHED/7 2: 0,0 4,0\n"
        "0/Continuous/7 0: 0,0 9,0\n",
        Shown(d.db()).ModelSpace());
}

TEST(DrawnWalk, WhatDoesNotShow) {
    TestDrawing d;
    d.Layer("OFF", "", "off").Layer("ICE", "", "freeze").Layer("LOCK", "", "lock");
    d.Block("B", "L 0,0 1,0 | L@OWN 0,0 2,0 | L@ICE 0,0 3,0");
    d.Add("I@OFF B 0,0 | I@ICE B 10,0 | I@LOCK B 20,0 | L@OFF 0,0 9,0 | I B 30,0");
    ChangeEntity(d.ids()[4], [](AcDbEntity& e) { return e.setVisibility(AcDb::kInvisible); });
    // Of the block on the layer that is off what has its own layer shows; a frozen one hides all.
    EXPECT_EQ(
        "OWN/Continuous/7 1: 0,0 2,0\nLOCK/Continuous/7 1 locked: 20,0 21,0\n"
        "OWN/Continuous/7 1 locked: 20,0 22,0\n",
        Shown(d.db()).ModelSpace());
    SDrawnOptions all;
    all.m_bWithHidden = true;
    EXPECT_EQ(
        "OFF/Continuous/7 1 off: 0,0 1,0\nOWN/Continuous/7 1: 0,0 2,0\n"
        "ICE/Continuous/7 1 frozen: 0,0 3,0\n"
        "ICE/Continuous/7 1 frozen: 10,0 11,0\nOWN/Continuous/7 1 frozen: 10,0 12,0\n"
        "ICE/Continuous/7 1 frozen: 10,0 13,0\n"
        "LOCK/Continuous/7 1 locked: 20,0 21,0\nOWN/Continuous/7 1 locked: 20,0 22,0\n"
        "ICE/Continuous/7 1 frozen locked: 20,0 23,0\n"
        "OFF/Continuous/7 0 off: 0,0 9,0\n"
        "0/Continuous/7 1 invisible: 30,0 31,0\nOWN/Continuous/7 1 invisible: 30,0 32,0\n"
        "ICE/Continuous/7 1 frozen invisible: 30,0 33,0\n",
        Shown(d.db(), all).ModelSpace());
}

TEST(DrawnWalk, AttributesShowBesideTheirReference) {
    TestDrawing d;
    d.Block("B", "L 0,0 1,0");
    {
        AcDbObjectPointer<AcDbBlockTableRecord> block(BlockId(d, _T("B")), AcDb::kForWrite);
        AcDbEntity* definition =
            new AcDbAttributeDefinition(AcGePoint3d(0, 0, 0), _T("x"), _T("TAG"), _T("?"));
        ASSERT_EQ(Acad::eOk, block->appendAcDbEntity(definition));
        ASSERT_EQ(Acad::eOk, definition->close());
    }
    d.Layer("CUT").Add("I@CUT B 5,0");
    {
        AcDbObjectPointer<AcDbBlockReference> reference(d.ids()[0], AcDb::kForWrite);
        for (const bool isHidden : {false, true}) {
            auto* attribute = new AcDbAttribute(AcGePoint3d(7, 0, 0), _T("12"), _T("TAG"));
            ASSERT_EQ(Acad::eOk, attribute->setInvisible(isHidden));
            ASSERT_EQ(Acad::eOk, reference->appendAttribute(attribute));
            ASSERT_EQ(Acad::eOk, attribute->setLayer(d.db().layerZero()));
            ASSERT_EQ(Acad::eOk, attribute->close());
        }
    }
    EXPECT_EQ("CUT/Continuous/7 1: 5,0 6,0\n0/Continuous/7 0: AcDbAttribute\n",
              Shown(d.db()).ModelSpace());
    SDrawnOptions whole;
    whole.m_bIntoBlocks = false;
    EXPECT_EQ("CUT/Continuous/7 0: AcDbBlockReference\n0/Continuous/7 0: AcDbAttribute\n",
              Shown(d.db(), whole).ModelSpace());
}

// The database given is the one that counts, although another one is the working one.
TEST(DrawnWalk, LooksAtTheDatabaseThatItIsGiven) {
    TestDrawing drawing;
    drawing.Layer("CUT", "CENTER").Add("L@CUT 0,0 1,0 | L%ByBlock 0,0 2,0");
    TestDrawing working("L 5,5 6,6");
    ASSERT_EQ(&working.db(), acdbHostApplicationServices()->workingDatabase());
    Shown shown(drawing.db());
    EXPECT_EQ("CUT/CENTER/7 0: 0,0 1,0\n0/Continuous/7 0: 0,0 2,0\n", shown.ModelSpace());
    EXPECT_EQ("", shown.Of(working.ids()));
    EXPECT_NE(std::string::npos, shown.Faults().find("lies in another drawing"));
}

TEST(DrawnWalk, WhatIsOpenOrErasedIsNamed) {
    TestDrawing d("L 0,0 1,0 | L 0,0 2,0 | L 0,0 3,0");
    AcDbObjectPointer<AcDbEntity> open(d.ids()[0], AcDb::kForWrite);
    ChangeEntity(d.ids()[1], [](AcDbEntity& e) { return e.erase(); });
    Shown shown(d.db());
    EXPECT_EQ("0/Continuous/7 0: 0,0 3,0\n", shown.Of(d.ids()));
    EXPECT_NE(std::string::npos, shown.Faults().find("cannot be read and is left out"));
}

// References to blocks that do not exist yet are made by adding to the definition afterwards.
void AddReference(TestDrawing& d, const ACHAR* owner, const ACHAR* block, int times = 1) {
    const AcDbObjectId blockId = BlockId(d, block);
    AcDbObjectPointer<AcDbBlockTableRecord> record(BlockId(d, owner), AcDb::kForWrite);
    for (int i = 0; i < times; ++i) {
        auto* reference = new AcDbBlockReference(AcGePoint3d(1, 0, 0), blockId);
        ASSERT_EQ(Acad::eOk, record->appendAcDbEntity(reference));
        ASSERT_EQ(Acad::eOk, reference->close());
    }
}

TEST(DrawnWalk, BlockThatHoldsItselfIsLeftOutOnce) {
    TestDrawing d;
    d.Block("A", "L 0,0 1,0").Block("B", "I A 0,0");
    AddReference(d, _T("A"), _T("B"), 3);
    d.Add("I A 0,0");
    Shown shown(d.db());
    EXPECT_EQ("0/Continuous/7 1: 0,0 1,0\n", shown.ModelSpace());
    EXPECT_EQ(0u, shown.Faults().find("block \"A\" holds itself by the reference "));
    EXPECT_EQ(shown.Faults().find('\n') + 1, shown.Faults().size());
}

// Two references a level, forty levels: the walk ends and names a block.
TEST(DrawnWalk, DoublingBlocksEndWithAMessage) {
    TestDrawing d;
    d.Block("L0", "L 0,0 1,0");
    std::string last = "L0";
    for (int level = 1; level <= 40; ++level) {
        const std::string name = "L" + std::to_string(level);
        d.Block(name, "I " + last + " 0,0 | I " + last + " 0,5");
        last = name;
    }
    d.Add("I " + last + " 0,0");
    SDrawnOptions options;
    options.m_nMost = 20000;
    size_t items = 0;
    CDrawnWalk walk(&d.db(), options);
    walk.Walk(d.ids(), [&](const SDrawnItem&) { ++items; });
    EXPECT_GT(items, 5000u);
    EXPECT_LT(items, 20000u);
    ASSERT_EQ(1u, walk.Faults().size());
    EXPECT_EQ(SDrawnFault::TooMuch, walk.Faults()[0].m_kind);
    EXPECT_EQ(_T('L'), walk.Faults()[0].m_strBlock[0]);
    // The next walk starts afresh.
    d.Add("L 0,0 7,7");
    AcDbObjectIdArray line;
    line.append(d.ids()[1]);
    walk.Walk(line, [&](const SDrawnItem& item) { EXPECT_EQ(d.ids()[1], item.m_id); });
    EXPECT_EQ(1u, walk.Faults().size());
}

TEST(DrawnWalk, SixtyThousandLevels) {
    TestDrawing d;
    d.Block("L0", "L 0,0 1,0");
    AcDbObjectId below = BlockId(d, _T("L0"));
    {
        AcDbObjectPointer<AcDbBlockTable> table(d.db().blockTableId(), AcDb::kForWrite);
        for (int level = 1; level <= 60000; ++level) {
            auto* record = new AcDbBlockTableRecord;
            AcDbObjectId id;
            test::Check(record->setName(test::Widen("L" + std::to_string(level)).c_str()));
            test::Check(table->add(id, record));
            auto* reference = new AcDbBlockReference(AcGePoint3d(0, 0, 0), below);
            test::Check(record->appendAcDbEntity(reference));
            test::Check(reference->close());
            test::Check(record->close());
            below = id;
        }
    }
    AcDbObjectIdArray ids;
    {
        AcDbObjectPointer<AcDbBlockTableRecord> space(acdbSymUtil()->blockModelSpaceId(&d.db()),
                                                      AcDb::kForWrite);
        auto* reference = new AcDbBlockReference(AcGePoint3d(0, 0, 0), below);
        AcDbObjectId id;
        test::Check(space->appendAcDbEntity(id, reference));
        test::Check(reference->close());
        ids.append(id);
    }
    Shown shown(d.db());
    EXPECT_EQ("0/Continuous/7 60001: 0,0 1,0\n", shown.Of(ids));
    EXPECT_EQ("", shown.Faults());
}

}  // namespace
