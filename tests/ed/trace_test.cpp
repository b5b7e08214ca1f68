// Boundary tracing through the editor's function.
#include <cmath>

#include "aced.h"
#include "dbelipse.h"
#include "host/ed/shown_parts.h"
#include "support/scripted_input.h"
#include "support/test_drawing.h"

namespace {

using test::TestDrawing;

// The traced loops as text, " ; " between them; the status alone when there are none.
std::string Trace(const AcGePoint3d& seed, bool islands = true) {
    AcDbVoidPtrArray loops;
    loops.append(nullptr);  // whatever was there before goes
    const Acad::ErrorStatus es = acedTraceBoundary(seed, islands, loops);
    std::string text;
    for (int i = 0; i < loops.length(); ++i) {
        const std::unique_ptr<AcDbPolyline> loop(static_cast<AcDbPolyline*>(loops[i]));
        EXPECT_TRUE(loop->objectId().isNull()) << "in no drawing";
        text += (i > 0 ? " ; " : "") + test::Show(*loop);
    }
    if (es == Acad::eOk) return text;
    EXPECT_EQ("", text);
    return es == Acad::eInvalidInput ? "no" : test::Narrow(acadErrorStatusText(es));
}

struct Case {
    const char* name;
    const char* entities;
    const char* seed;
    const char* loops;
};

void CheckAll(const std::vector<Case>& cases) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TestDrawing drawing(c.entities);
        const std::string before = drawing.Dump();
        EXPECT_EQ(c.loops, Trace(test::ParsePoint(c.seed)));
        EXPECT_EQ(before, drawing.Dump());
    }
}

TEST(TraceBoundary, Lines) {
    CheckAll({
        {"a square", "P 0,0 4,0 4,4 0,4 c", "1,1", "0,0 4,0 4,4 0,4 c"},
        {"lines in any order and direction", "L 0,0 4,0 | L 0,4 0,0 | L 4,4 4,0 | L 4,4 0,4", "1,1",
         "0,0 4,0 4,4 0,4 c"},
        {"crossing lines", "L -1,0 5,0 | L 4,-1 4,5 | L 5,4 -1,4 | L 0,5 0,-1", "1,1",
         "0,0 4,0 4,4 0,4 c"},
        {"one of two halves", "P 0,0 4,0 4,4 0,4 c | L 2,-1 2,5", "3,1", "2,0 4,0 4,4 2,4 c"},
        {"ends in the air bound nothing", "P 0,0 4,0 4,4 0,4 c | L 2,0 2,3 | L 1,1 3,2", "1,2",
         "0,0 4,0 4,4 0,4 c"},
        {"a line between islands bounds nothing",
         "P 0,0 9,0 9,9 0,9 c | P 1,1 2,1 2,2 1,2 c | P 5,5 6,5 6,6 5,6 c | L 2,2 5,5", "8,1",
         "0,0 9,0 9,9 0,9 c ; 1,1 2,1 2,2 1,2 c ; 5,5 6,5 6,6 5,6 c"},
        {"drawn twice, and in parts", "P 0,0 4,0 4,4 0,4 c | L 4,0 0,0 | L 1,0 3,0 | L 4,-2 4,2",
         "1,1", "0,0 4,0 4,4 0,4 c"},
        {"far from the origin", "P 500000,500000 500004,500000 500004,500004 c", "500003,500001",
         "500000,500000 500004,500000 500004,500004 c"},
        {"heavy and 3D polylines lie in the plane", "H 0,0 4,0 4,4 | Q 4,4,7 0,4,8 0,0,9", "1,1",
         "0,0 4,0 4,4 0,4 c"},
    });
}

TEST(TraceBoundary, Arcs) {
    CheckAll({
        {"a circle is two half turns", "C 0,0 2", "1,1", "-2,0(1) 2,0(1) c"},
        {"rounded corner", "P 0,0 4,0 4,4(0.414213562373095) 2,6 0,6 c", "1,1",
         "0,0 4,0 4,4(0.414214) 2,6 0,6 c"},
        {"walked against the arc", "P 0,0 0,6 2,6(-0.414213562373095) 4,4 4,0 c", "1,1",
         "0,0 4,0 4,4(0.414214) 2,6 0,6 c"},
        {"hollow corner", "P 0,0 4,0 4,4(-0.414213562373095) 2,6 0,6 c", "1,1",
         "0,0 4,0 4,4(-0.414214) 2,6 0,6 c"},
        {"mirrored arc", "A 0,0 3 0 90 m | L 3,0 0,0 | L 0,0 0,3", "1,1",
         "0,0 3,0(0.414214) 0,3 c"},
        {"circle cut by a line", "C 0,0 5 | L -9,3 9,3", "0,4", "-4,3 4,3(0.5) c"},
        {"the other part, its halves joined", "C 0,0 5 | L -9,3 9,3", "0,0", "-4,3(2) 4,3 c"},
        {"lens of two circles", "C -3,0 5 | C 3,0 5", "0,0", "0,-4(0.5) 0,4(0.5) c"},
        {"line that touches a circle", "C 0,0 2 | P -4,2 4,2 4,-4 -4,-4 c", "3,-3",
         "-4,-4 4,-4 4,2 -4,2 c ; -2,0(1) 2,0(1) c"},
        {"circles that touch in a circle", "C 0,0 4 | C -2,0 2 | C 2,0 2", "0,3",
         "-4,0(-1) 0,0(-1) 4,0(1) c"},
        {"the wedge between a line and the arc that leaves it",
         "L -9,0 9,0 | A 0,100 100 265 275 | L 5,-1 5,1", "4.9,0.05",
         "0,0 5,0 5,0.125078(-0.0125059) c"},
        {"an arc that ends on an arc", "C 0,0 5 | A 5,0 5 90 270", "-3,0",
         "2.5,-4.33013(-0.57735) 2.5,4.33013(1.73205) c"},
        {"a seed level with the ends of its arcs", "C 0,0 1", "0.5,0", "-1,0(1) 1,0(1) c"},
    });
}

TEST(TraceBoundary, SplinesAndEllipsesAreChords) {
    TestDrawing drawing("E 0,0 4,0 0.5 0 360 | S 10,0 10,8 18,8 18,0 | L 10,0 18,0");
    const double pi = 3.14159265358979323846;
    for (const auto& [seed, area] :
         {std::make_pair(AcGePoint3d(1, 0, 0), 8 * pi), {AcGePoint3d(14, 1, 0), 38.4}}) {
        AcDbVoidPtrArray loops;
        ASSERT_EQ(Acad::eOk, acedTraceBoundary(seed, true, loops));
        ASSERT_EQ(1, loops.length());
        const std::unique_ptr<AcDbPolyline> loop(static_cast<AcDbPolyline*>(loops[0]));
        EXPECT_FALSE(loop->hasBulges());
        double traced = 0.0;
        ASSERT_EQ(Acad::eOk, loop->getArea(traced));
        EXPECT_NEAR(area, traced, 1e-3 * area);
    }
}

TEST(TraceBoundary, WhatIsNoBoundary) {
    CheckAll({
        {"outside", "P 0,0 4,0 4,4 0,4 c", "5,5", "no"},
        {"on an edge", "P 0,0 4,0 4,4 0,4 c", "4,1", "no"},
        {"on a corner", "P 0,0 4,0 4,4 0,4 c", "4,4", "no"},
        {"on a line that ends in the air", "P 0,0 4,0 4,4 0,4 c | L 2,0 2,2", "2,1", "no"},
        {"on an arc", "C 0,0 2", "0,2", "no"},
        {"a gap", "L 0,0 4,0 | L 4,0.00001 4,4 | L 4,4 0,0", "2,1", "no"},
        {"ends that differ in the seventh digit meet", "L 0,0 4,0 | L 4,0.0000005 4,4 | L 4,4 0,0",
         "2,1", "0,0 4,0 4,4 c"},
        {"an empty drawing", "", "0,0", "no"},
        {"texts bound nothing", "T 0,0 xyz", "0.1,0.1", "no"},
        {"neither number nor place", "P 0,0 4,0 4,4 0,4 c | L nan,0 4,9 | L 0,1e300 9,9", "1,1",
         "0,0 4,0 4,4 0,4 c"},
    });
    const TestDrawing drawing("C 0,0 2");
    EXPECT_EQ("no", Trace({std::nan(""), 0, 0}));
    EXPECT_EQ("no", Trace({0, HUGE_VAL, 0}));
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    EXPECT_EQ("eNoDocument", Trace({0, 0, 0}));
}

TEST(TraceBoundary, IslandsOnRequest) {
    const TestDrawing drawing(
        "P 0,0 20,0 20,20 0,20 c | C 5,5 2 | C 5,5 1 | P 10,10 15,10 15,15 10,15 c | L 1,18 9,18");
    EXPECT_EQ("0,0 20,0 20,20 0,20 c ; 3,5(1) 7,5(1) c ; 10,10 15,10 15,15 10,15 c",
              Trace({1, 1, 0}));
    EXPECT_EQ("0,0 20,0 20,20 0,20 c", Trace({1, 1, 0}, false));
    EXPECT_EQ("3,5(1) 7,5(1) c ; 4,5(1) 6,5(1) c", Trace({6.5, 5, 0}));
    EXPECT_EQ("4,5(1) 6,5(1) c", Trace({5, 5, 0}));
}

TEST(TraceBoundary, OnlyWhatIsShown) {
    TestDrawing d("P 0,0 9,0 9,9 0,9 c");
    d.Layer("OFF", "", "off").Layer("FROZEN", "", "freeze").Layer("LOCKED", "", "lock");
    d.Block("B", "L 0,0 0,9 | L@OFF 1,0 1,9").Block("OUTER", "I B 0,0");
    const std::string whole = "0,0 9,0 9,9 0,9 c";
    d.Add("L@OFF 2,0 2,9 | L@FROZEN 3,0 3,9 | L 4,0 4,9");
    {
        AcDbObjectPointer<AcDbEntity> line(d.ids().last(), AcDb::kForWrite);
        ASSERT_EQ(Acad::eOk, line->setVisibility(AcDb::kInvisible));
    }
    EXPECT_EQ(whole, Trace({8, 1, 0}));
    d.Add("L@LOCKED 5,0 5,9");
    EXPECT_EQ("5,0 9,0 9,9 5,9 c", Trace({8, 1, 0}));
    d.Add("I OUTER 6,0");
    EXPECT_EQ("6,0 9,0 9,9 6,9 c", Trace({8, 1, 0})) << "a block's line; another is on a layer off";
    d.Add("I@OFF OUTER 6.5,0");
    EXPECT_EQ("6,0 9,0 9,9 6,9 c", Trace({8, 1, 0}));
}

// References in references: as deep as the host goes, and no deeper.
TEST(TraceBoundary, DeepBlocks) {
    for (const auto& [depth, loops] : {std::pair<int, const char*>{100, "0,0 4,0 4,4 0,4 c"},
                                       {host::ShownParts::kMostNested, "0,0 4,0 4,4 0,4 c"},
                                       {host::ShownParts::kMostNested + 1, "no"}}) {
        SCOPED_TRACE(depth);
        TestDrawing d;
        // The polyline is one level of parts itself.
        d.Block("B1", "P 0,0 4,0 4,4 0,4 c");
        for (int i = 2; i < depth; ++i)
            d.Block("B" + std::to_string(i), "I B" + std::to_string(i - 1) + " 0,0");
        d.Add("I B" + std::to_string(depth - 1) + " 0,0");
        EXPECT_EQ(loops, Trace({1, 1, 0}));
    }
    // A block that holds itself shows the rest of what it holds, once.
    TestDrawing d;
    d.Block("SELF", "P 0,0 4,0 4,4 0,4 c");
    AcDbObjectId self;
    {
        AcDbObjectPointer<AcDbBlockTable> table(d.db().blockTableId(), AcDb::kForRead);
        ASSERT_EQ(Acad::eOk, table->getAt(_T("SELF"), self));
        AcDbObjectPointer<AcDbBlockTableRecord> block(self, AcDb::kForWrite);
        auto* reference = new AcDbBlockReference(AcGePoint3d(1, 1, 0), self);
        AcDbObjectId id;
        ASSERT_EQ(Acad::eOk, block->appendAcDbEntity(id, reference));
        ASSERT_EQ(Acad::eOk, reference->close());
    }
    d.Add("I SELF 0,0");
    EXPECT_EQ("0,0 4,0 4,4 0,4 c", Trace({2, 2, 0}));
}

TEST(TraceBoundary, TheCurrentDocument) {
    test::ScriptedInput input;
    ASSERT_NE(nullptr, host::Session::Get().New());
    const TestDrawing other("C 0,0 2");
    EXPECT_EQ("no", Trace({0, 0, 0})) << "the working database is another drawing's";
}

// Only what lies within the screen bounds anything: a view that ends with the frame, or cuts it,
// and one that looks elsewhere find nothing.
TEST(TraceBoundary, WithinTheScreen) {
    test::ScriptedInput input;
    AcApDocument* const document = host::Session::Get().New();
    ASSERT_NE(nullptr, document);
    ASSERT_EQ(Acad::eOk, acDocManager->lockDocument(document));
    { TestDrawing drawing(*document->database(), "P 0,0 4,0 4,2 0,2 c"); }
    ASSERT_EQ(Acad::eOk, acDocManager->unlockDocument(document));
    const struct {
        const char* name;
        double x, y, width, height;
        const char* loops;
    } views[] = {
        {"a tenth wider", 2, 1, 4.4, 2.2, "0,0 4,0 4,2 0,2 c"},
        {"ends with it", 2, 1, 4, 2, "no"},
        {"wide enough only", 2, 1, 4.4, 2, "no"},
        {"high enough only", 2, 1, 4, 2.2, "no"},
        {"beside it", 2.3, 1, 4.4, 2.2, "no"},
        {"elsewhere", 20, 1, 4.4, 2.2, "no"},
    };
    for (const auto& row : views) {
        SCOPED_TRACE(row.name);
        AcDbViewTableRecord view;
        view.setCenterPoint(AcGePoint2d(row.x, row.y));
        view.setWidth(row.width);
        view.setHeight(row.height);
        ASSERT_EQ(Acad::eOk, acedSetCurrentView(&view, nullptr));
        EXPECT_EQ(row.loops, Trace({1, 1, 0}));
    }
}

}  // namespace
