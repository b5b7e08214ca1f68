// The two earlier pipelines and the passes that only they use.
#include "plugin/util/EncircleLayers.h"
#include "engine/compare_engines.h"
#include "support/envelope_run.h"

namespace {

using test::Compare;
using test::EngineProbe;
using test::LineMaker;
using test::Lines;
using test::Outcome;
using test::ShowEnvelope;
using test::TestDrawing;

TEST(FastAgainstPlain, RemoveCrossLine) {
    Compare("merging", 1500, 60, [](auto& engine, Lines& lines, LineMaker&, Outcome& out) {
        engine.RemoveCrossLine(lines);
        out.Add(lines, "merged");
        engine.RemoveCrossLine(lines);
        out.Add(lines, "merged again");
    });
    // Enough merged lines that they are indexed in their turn.
    Compare("many merged", 4, 900, [](auto& engine, Lines& lines, LineMaker& maker, Outcome& out) {
        CBlockAppender space;
        for (const auto& segment : maker.Grid(800))
            lines.push_back(test::AddRecord(space, segment.first, segment.second));
        for (int i = 0; i < 800; ++i) {
            const AcGePoint3d p(maker.Real(0, 200), double(maker.Next(3)), 0);
            lines.push_back(test::AddRecord(space, p, AcGePoint3d(p.x + 1, p.y, 0)));
        }
        engine.RemoveCrossLine(lines);
        out.Add(lines, "merged");
    });
}

TEST(FastAgainstPlain, RemoveLine) {
    Compare("older visibility", 1500, 60,
            [](auto& engine, Lines& lines, LineMaker& maker, Outcome& out) {
                if (maker.Next(2) == 0) engine.BreakLines(lines);
                const auto dir = static_cast<E_RemoveLine_Dir>(maker.Next(4));
                out.Add(engine.RemoveLine(dir, lines), "seen");
            });
}

TEST(RemoveCrossLine, MergesWhatLiesOnOneAnother) {
    struct Case {
        const char* name;
        const char* lines;
        const char* merged;
    };
    const Case cases[] = {
        {"overlapping", "0,0 10,0 | 5,0 15,0", "0,0 15,0"},
        {"upright, drawn downwards", "0,10 0,2 | 0,0 0,5", "0,0 0,10"},
        {"through a third", "0,0 4,0 | 8,0 12,0 | 3,0 9,0", "0,0 12,0"},
        {"touching ends overlap by the tolerance", "0,0 4,0 | 4,0 8,0", "0,0 8,0"},
        {"a gap", "0,0 4,0 | 4.00001,0 8,0", "0,0 4,0 | 4.00001,0 8,0"},
        {"parallel", "0,0 4,0 | 1,1 5,1", "0,0 4,0 | 1,1 5,1"},
        {"parallel from one x: told apart by the boxes", "0,0 4,0 | 0,1 4,1", "0,0 4,0 | 0,1 4,1"},
        {"oblique ones stay", "0,0 4,4 | 2,2 6,6", "0,0 4,4 | 2,2 6,6"},
        {"a dropped line merges nothing", "0,0 4,0 ! | 2,0 6,0", "0,0 4,0 ! | 2,0 6,0"},
        {"but takes others in", "0,0 4,0 | 2,0 6,0 !", "0,0 6,0 !"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TestDrawing drawing;
        Lines lines = test::ParseLines(c.lines);
        EngineProbe().RemoveCrossLine(lines);
        EXPECT_EQ(c.merged, test::Show(lines));
        EXPECT_EQ(lines.size(), test::DrawingBits(drawing.db()).size()) << "entities";
    }
}

TEST(IsPtInLineSpecifiedDir, SideOfTheLine) {
    struct Case {
        const char* name;
        const char* point;
        const char* line;
        std::string hiddenFrom;  // b t r l
    };
    const Case cases[] = {
        {"under a level line", "5,0", "0,3 10,3", "t"},
        {"over it", "5,6", "0,3 10,3", "b"},
        {"on it", "5,3.0004", "0,3 10,3", ""},
        {"level with an end", "0.0004,0", "0,3 10,3", ""},
        {"left of an upright line", "0,5", "3,10 3,0", "r"},
        {"right of it", "6,5", "3,10 3,0", "l"},
        {"under a rising line", "5,3", "0,0 10,10", "tl"},
        {"over a falling line", "5,7", "0,10 10,0", "bl"},
        {"on an oblique line", "5,5", "0,0 10,10", ""},
        {"beyond an oblique line's ends", "12,0", "0,0 10,10", ""},
    };
    EngineProbe engine;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::vector<std::string> ends = test::Split(c.line, ' ');
        std::string hidden;
        for (const auto& [name, dir] : {std::make_pair('b', E_Dir_Bottom),
                                        {'t', E_Dir_Top},
                                        {'r', E_Dir_Right},
                                        {'l', E_Dir_Left}}) {
            AcGePoint3d start = test::ParsePoint(ends.at(0));
            AcGePoint3d end = test::ParsePoint(ends.at(1));
            CLineInfo line;
            line.m_startPt = start;
            line.m_endPt = end;
            Lines lines = {line};
            engine.UpdateLineStartEndPt(dir, lines);
            if (engine.IsPtInLineSpecifiedDir(test::ParsePoint(c.point), lines[0].m_startPt,
                                              lines[0].m_endPt, dir))
                hidden += name;
        }
        EXPECT_EQ(c.hiddenFrom, hidden);
    }
}

TEST(Earlier, Outlines) {
    // A shank with a shoulder, the upper half.
    const std::string kHalf = "L 0,0 0,5 | L 0,5 20,5 | L 20,5 20,3 | L 20,3 40,3 | L 40,3 40,0";
    struct Case {
        const char* name;
        std::string entities;
        const char* options;
        const char* outline;
    };
    const Case cases[] = {
        {"upper half", kHalf, "", "0,0 0,5 20,5 20,3 40,3 40,0 c"},
        {"lower half", "L 0,0 0,-5 | L 0,-5 20,-5 | L 20,-5 20,0", "lower",
         "0,0 0,-5 20,-5 20,0 c"},
        {"both halves: the ends go down to the other one", kHalf + " | L 0,0 0,-5 | L 40,0 40,-3",
         "", "0,-5 0,0 0,5 20,5 20,3 40,3 40,0 40,-3 c"},
        {"no vertical ends", "L 0,5 20,5", "vertical", "0,5 20,5 c"},
        {"no axis", "P 0,-5 0,5 20,5 20,-5 c", "noaxis", "0,-5 0,5 20,5 20,-5 c"},
        {"chords stay chords", "L 0,0 0,2 | L 0,2 4,2 | A 4,0 2 0 90 | L 6,0 6,0", "p=1.5",
         "0,0 0,2 4,2 5.41421,1.41421 6,0 c"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.outline, ShowEnvelope(c.entities, std::string("by=1 ") + c.options));
        // The second form gives the same, 1000 to the right.
        TestDrawing d(c.entities);
        AcDbObjectPointer<AcDbPolyline> polyline(
            test::RunEnvelope(d.ids(), test::RunOptions(std::string("by=2 ") + c.options)),
            AcDb::kForWrite);
        ASSERT_EQ(Acad::eOk, polyline.openStatus());
        EXPECT_EQ(Acad::eOk, polyline->transformBy(AcGeMatrix3d::translation({-1000, 0, 0})));
        EXPECT_EQ(c.outline, test::Show(*polyline));
    }
}

TEST(Earlier, DimensionLinesTakePart) {
    TestDrawing d("L 0,0 0,5 | L 0,5 20,5 | L 20,5 20,0");
    const AcDbObjectId layer = d.LayerId(kDimensionLayer);
    for (int i = 0; i < d.ids().length(); ++i) {
        AcDbObjectPointer<AcDbEntity> line(d.ids()[i], AcDb::kForWrite);
        ASSERT_EQ(Acad::eOk, line->setLayer(layer));
    }
    EXPECT_EQ("none", ShowEnvelope(d.ids(), ""));
    EXPECT_EQ("none", ShowEnvelope(d.ids(), "by=hatch"));
    EXPECT_EQ("0,0 0,5 20,5 20,0 c", ShowEnvelope(d.ids(), "by=1"));
}

}  // namespace
