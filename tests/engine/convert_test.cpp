// From cloned entities to lines.
#include <limits>
#include <random>

#include "plugin/util/EncircleLayers.h"
#include "plugin/engine/NearBoxes.h"
#include "plugin/engine/UnitRectInfo.h"
#include "support/engine_probe.h"
#include "support/test_drawing.h"
#include "plugin/util/LayerTools.h"

namespace {

using test::EngineProbe;
using test::TestDrawing;

std::string ShowLines(const AcArray<AcDbObjectId>& ids) {
    std::string text;
    for (int i = 0; i < ids.length(); ++i) {
        AcDbObjectPointer<AcDbEntity> entity(ids[i], AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk) {
            text += "? ";
        } else if (const AcDbLine* line = AcDbLine::cast(entity.object())) {
            text += test::Show(line->startPoint()) + ">" + test::Show(line->endPoint()) + " ";
        } else {
            text += test::Narrow(entity->isA()->name()) + " ";
        }
    }
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

// The entities here stand for clones: they are erased and replaced.
TEST(Convert, ToLines) {
    struct Case {
        const char* name;
        const char* entities;
        double precision;
        const char* lines;
        int curves;  // kept for the output
    };
    const Case cases[] = {
        {"lines stay", "L 0,0 1,0 | L 5,5 6,6", 0.3, "0,0>1,0 5,5>6,6", 0},
        {"never part of an outline", "C 0,0 1 | E 0,0 2,0 0.5 0 90 | T 0,0 x", 0.3, "", 0},
        {"arc of length pi, 3 chords", "A 0,0 1 0 180", 1.0,
         "1,0>0.5,0.866025 0.5,0.866025>-0.5,0.866025 -0.5,0.866025>-1,0", 1},
        {"shorter than twice the precision", "A 0,0 1 0 90", 1.0, "1,0>0,1", 1},
        {"a hair longer than that", "S 0,0 1,0 2,0 3,0", 1.499999, "0,0>1.5,0 1.5,0>3,0", 1},
        {"precision 0", "A 0,0 1 0 90", 0.0, "1,0>0,1", 1},
        {"precision below 0", "A 0,0 1 0 90", -1.0, "1,0>0,1", 1},
        {"spline at equal parameter steps", "S 0,0 0,0 0,0 8,0", 3.0, "0,0>1,0 1,0>8,0", 1},
        {"a stretch of no length gives no chord", "S 0,0 0,0 0,0 0,0", 0.3, "", 1},
        {"a polyline's closing side comes last", "P 0,0 1,0 1,1 c", 0.3, "0,0>1,0 1,0>1,1 1,1>0,0",
         0},
        {"an arc of a polyline comes after all lines", "P 0,0 1,0(1) 3,0 | L 9,9 8,8", 2.0,
         "9,9>8,8 0,0>1,0 1,0>3,0", 1},
        {"twice, within 2 x precision", "P 0,0 9,0 9,9 | H 0.5,0 9.5,0 9.5,9", 0.3,
         "0,0>9,0 9,0>9,9", 0},
        {"twice, too far apart", "P 0,0 9,0 9,9 | P 0.6,0 9.6,0 9.6,9", 0.3,
         "0,0>9,0 9,0>9,9 0.6,0>9.6,0 9.6,0>9.6,9", 0},
        {"one corner differs", "P 0,0 9,0 9,9 | P 0,0 9,0 9,9.7", 0.3,
         "0,0>9,0 9,0>9,9 0,0>9,0 9,0>9,9.7", 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TestDrawing d(c.entities);
        EngineProbe engine;
        engine.m_calInfo.m_dArcPrecision = c.precision;
        AcArray<AcDbObjectId> lines;
        engine.ConvertToLines(d.ids(), lines);
        EXPECT_EQ(c.lines, ShowLines(lines));
        EXPECT_EQ(c.curves, engine.m_cloneIds.length());
    }
}

TEST(Convert, NestedBlocksOnTheirOwnLayers) {
    TestDrawing d;
    d.Layer("HIDDEN", "DASHED").Layer("LOCKED", "", "lock");
    d.Block("A", "L@HIDDEN 0,0 1,0 | L@HIDDEN%Continuous 0,0 2,0 | L@LOCKED 0,0 3,0 | A 0,0 1 0 9");
    d.Block("B", "I@LOCKED A 10,0 | L 0,0 4,0").Add("I B 0,0 | L 0,0 5,0");
    EngineProbe engine;
    AcArray<AcDbObjectId> lines;
    engine.ConvertToLines(d.ids(), lines);
    EXPECT_EQ("0,0>5,0 0,0>4,0 10,0>11,0 10,0>12,0 10,0>13,0 11,0>10.9877,0.156434",
              ShowLines(lines));
    engine.RemoveDashedIds(lines);
    EXPECT_EQ("0,0>5,0 0,0>4,0 10,0>12,0 10,0>13,0 11,0>10.9877,0.156434", ShowLines(lines))
        << "dashes that came from the piece's own layer are seen";
}

TEST(Convert, BlocksThatHoldThemselvesOrAreTooLargeEnd) {
    TestDrawing d;
    d.Block("A", "L 0,0 1,0").Block("B", "I A 0,0 | L 0,0 2,0");
    AcDbObjectId blockA;
    {
        AcDbObjectPointer<AcDbBlockTable> table(d.db().blockTableId(), AcDb::kForRead);
        ASSERT_EQ(Acad::eOk, table->getAt(_T("A"), blockA));
        AcDbObjectId blockB;
        ASSERT_EQ(Acad::eOk, table->getAt(_T("B"), blockB));
        AcDbObjectPointer<AcDbBlockTableRecord> record(blockA, AcDb::kForWrite);
        auto* reference = new AcDbBlockReference(AcGePoint3d(), blockB);
        ASSERT_EQ(Acad::eOk, record->appendAcDbEntity(reference));
        ASSERT_EQ(Acad::eOk, reference->close());
    }
    EngineProbe engine;
    AcArray<AcDbObjectId> lines;
    d.Add("I A 0,0");
    engine.ConvertToLines(d.ids(), lines);
    EXPECT_EQ("0,0>1,0 0,0>2,0", ShowLines(lines));

    TestDrawing large;
    large.Block("A", "L 0,0 1,0").Add("M A 0,0 30000,30000 1,1 | L 0,0 2,0");
    engine.ConvertToLines(large.ids(), lines);
    EXPECT_EQ("0,0>2,0", ShowLines(lines));
}

TEST(Convert, UnequalScalesLoseOnlyWhatCannotFollow) {
    TestDrawing d;
    d.Block("A", "L 0,0 1,1 | H 0,0 1,0(1) 1,1 | P 0,0 1,2 | C 0,0 1 | T 0,0 x").Add("I A 0,0 1,3");
    EngineProbe engine;
    AcArray<AcDbObjectId> lines;
    engine.ConvertToLines(d.ids(), lines);
    EXPECT_EQ("0,0>1,3 0,0>1,0 0,0>1,6", ShowLines(lines));
}

TEST(Convert, TinyPrecisionOnHugeArcsIsCapped) {
    TestDrawing d("A 0,0 1e9 0 180");
    EngineProbe engine;
    engine.m_calInfo.m_dArcPrecision = 1e-12;
    AcArray<AcDbObjectId> lines;
    engine.ConvertToLines(d.ids(), lines);
    EXPECT_EQ(99999, lines.length());
}

TEST(Convert, DashedNames) {
    struct Case {
        const char* linetype;
        bool dashed;
    };
    for (const Case& c : {Case{"DASHED", true}, Case{"ACAD_dash2", true}, Case{"CENTERX2", true},
                          Case{"Center", true}, Case{"center", false}, Case{"Dashed", false},
                          Case{"HIDDEN", false}}) {
        SCOPED_TRACE(c.linetype);
        TestDrawing d(std::string("L%") + c.linetype + " 0,0 1,0 | A%DASHED 0,0 1 0 90");
        EngineProbe engine;
        AcArray<AcDbObjectId> ids = d.ids();
        engine.RemoveDashedIds(ids);
        EXPECT_EQ(c.dashed ? 1 : 2, ids.length()) << "only lines are looked at";
        EXPECT_EQ(c.dashed, d.ids()[0].isErased());
    }
}

TEST(Convert, LayerOperations) {
    TestDrawing d("L@A 0,0 1,0 | L@b 0,0 2,0 | A@A 0,0 1 0 9 | L@TEMPENCIRCLELINECLONE 0,0 3,0");
    EngineProbe engine;
    AcArray<AcDbObjectId> ids = d.ids();
    EXPECT_EQ("AcDbArc", ShowLines(engine.GetAllArc(ids)));
    engine.RemoveIdsInLayer(ids, {_T("B"), _T("none")});
    EXPECT_EQ("0,0>1,0 AcDbArc 0,0>3,0", ShowLines(ids));
    engine.RemoveDimLineIds(ids);
    EXPECT_EQ(3, ids.length());
    engine.DeleteCloneEnts();
    EXPECT_EQ("0,0>1,0 AcDbArc ?", ShowLines(ids));
}

TEST(Convert, MoveKeepsDashesOfTheLayer) {
    for (const bool bExclude : {true, false}) {
        TestDrawing d;
        d.Layer("HIDDEN", "DASHED").Layer("WORK").Add("L@HIDDEN 0,0 1,0 | L 0,0 2,0");
        EngineProbe engine;
        engine.m_calInfo.m_bExcludeDashed = bExclude;
        engine.SetLineLayerAndType(d.ids(), _T("work"));
        for (int i = 0; i < 2; ++i) {
            AcDbObjectPointer<AcDbEntity> line(d.ids()[i], AcDb::kForRead);
            EXPECT_EQ(FindLayer(_T("WORK")), line->layerId());
            AcString name;
            ASSERT_EQ(Acad::eOk, line->linetype(name));
            EXPECT_EQ(!bExclude ? "ByLayer" : i == 0 ? "DASHED" : "Continuous", test::Narrow(name));
        }
    }
}

TEST(NearBoxes, SameAsTheWalkOverAllKept) {
    for (unsigned int seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> at(0, 4);
        const double threshold = seed % 4 == 0 ? 0.0 : 0.4 * (seed % 4);
        const double far = seed % 5 == 0 ? 1e18 : 0;
        CNearBoxes boxes(threshold);
        std::vector<CQZRect> kept;
        for (int n = 0; n < 300; ++n) {
            const double x = at(random) + (n % 2 ? far : 0);
            const double y = at(random);
            const CQZRect box(AcGePoint3d(x, y, 0), AcGePoint3d(x + 1, y + 1 + at(random) / 8, 0));
            bool bNear = false;
            for (const CQZRect& other : kept) {
                const auto close = [&](double x1, double y1, double x2, double y2) {
                    return AcGeVector2d(x1 - x2, y1 - y2).length() < threshold;
                };
                bNear = bNear || (close(box.min.x, box.min.y, other.min.x, other.min.y) &&
                                  close(box.min.x, box.max.y, other.min.x, other.max.y) &&
                                  close(box.max.x, box.min.y, other.max.x, other.min.y) &&
                                  close(box.max.x, box.max.y, other.max.x, other.max.y));
            }
            if (!bNear) kept.push_back(box);
            ASSERT_EQ(bNear, boxes.IsNearOrKeep(box)) << n;
        }
        EXPECT_TRUE(seed % 4 == 0 || kept.size() < 300) << "nothing was near";
    }
}

TEST(LineInfo, BreakPointsAndRecords) {
    AcGeTol tol;
    tol.setEqualPoint(0.0005);
    CLineInfo line;
    line.m_endPt.set(10, 0, 0);
    line.AddBreakPoints({{5, 0.0004, 0},
                         {5.0002, 0, 0},
                         {5, 0.0006, 0},
                         {10.0003, 0, 0},
                         {10, 0, 0},
                         {2, 0, 0},
                         {0, 0, 0}},
                        tol);
    line.Sort();
    std::string shown;
    for (const AcGePoint3d& pt : line.m_breakPts) shown += test::Show(pt) + " ";
    EXPECT_EQ("0,0 2,0 5,0.0004 10,0 ", shown) << "near ones, those beyond the end are refused";

    CLineInfo turned;
    turned.m_startPt = line.m_endPt;
    EXPECT_TRUE(line.IsEqual(turned, tol));
    turned.m_endPt.set(0.0006, 0, 0);
    EXPECT_FALSE(line.IsEqual(turned, tol));

    TestDrawing d("L 1,2,3 4,5,6 | C 0,0 1");
    EXPECT_EQ(0.0, CLineInfo(d.ids()[0]).m_startPt.z);
    EXPECT_EQ(d.ids()[0], CLineInfo(d.ids()[0]).m_id);
    EXPECT_TRUE(CLineInfo(d.ids()[1]).m_id.isNull());
    EXPECT_TRUE(CLineInfo(AcDbObjectId()).m_bValid);
}

TEST(UnitRectInfo, NearestToTheViewerFirst) {
    struct Case {
        E_RemoveLine_Dir dir;
        const char* sorted;
    };
    for (const Case& c : {Case{E_Dir_Bottom, "0,0 0,1 1,0 "}, Case{E_Dir_Top, "0,1 0,0 1,0 "},
                          Case{E_Dir_Right, "0,1 1,0 0,0 "}, Case{E_Dir_Left, "0,1 0,0 1,0 "}}) {
        CUnitRectInfo cell;
        AcGeTol tol;
        tol.setEqualPoint(0.0005);
        for (const AcGePoint3d& pt : {AcGePoint3d(0, 0, 0), AcGePoint3d(5e-7, 1, 0),
                                      AcGePoint3d(1, 4e-7, 0), AcGePoint3d(1, 0.0003, 0)}) {
            cell.AddPoint(pt, tol);
        }
        cell.Sort(c.dir);
        std::string shown;
        for (const AcGePoint3d& pt : cell.m_points) {
            shown += test::Show(AcGePoint3d(std::round(pt.x), std::round(pt.y), 0)) + " ";
        }
        EXPECT_EQ(c.sorted, shown) << c.dir;
    }
}

}  // namespace
