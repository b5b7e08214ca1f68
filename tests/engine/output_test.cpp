// From outline points to the polyline.
#include <algorithm>
#include <limits>
#include <random>

#include "plugin/engine/ArcIndex.h"
#include "plugin/util/EncircleLayers.h"
#include "support/engine_probe.h"
#include "support/test_drawing.h"
#include "plugin/util/ArcReader.h"
#include "plugin/util/LayerTools.h"

namespace {

using test::EngineProbe;
using test::TestDrawing;

const double kNaN = std::numeric_limits<double>::quiet_NaN();

// "x,y" points, or "r@a" for the point of that radius at the angle a (degrees) about the origin.
AcArray<AcGePoint3d> Points(const std::string& text) {
    AcArray<AcGePoint3d> points;
    for (const std::string& word : test::Split(text, ' ')) {
        const size_t at = word.find('@');
        if (at == std::string::npos) {
            points.append(test::ParsePoint(word));
        } else {
            const double radius = std::stod(word);
            const double angle = std::stod(word.substr(at + 1)) * test::kDegree;
            points.append(AcGePoint3d(radius * std::cos(angle), radius * std::sin(angle), 0));
        }
    }
    return points;
}

std::string Draw(TestDrawing& d, const std::string& points, double axis) {
    EngineProbe engine;
    engine.m_cloneIds = d.ids();
    AcDbObjectId id;
    engine.DrawPolyLine(AcArray<AcDbObjectId>(), Points(points), axis, id);
    AcDbObjectPointer<AcDbPolyline> polyline(id, AcDb::kForRead);
    if (polyline.openStatus() != Acad::eOk) return "none";
    EXPECT_EQ(FindLayer(kEnvelopeLayer), polyline->layerId());
    EXPECT_EQ(d.db().byLayerLinetype(), polyline->linetypeId());
    EXPECT_EQ(d.db().layerZero(), d.db().clayer());
    return test::Show(*polyline.object());
}

TEST(DrawPolyLine, Table) {
    struct Case {
        const char* name;
        const char* arcs;
        const char* points;
        double axis;
        const char* drawn;
    };
    const Case cases[] = {
        {"ends go to the axis", "", "0,1 0,5 9,5 9,1", 0, "0,0 0,5 9,5 9,0 c"},
        {"no axis: ends stay", "", "0,1 0,5 9,5 9,1", kNaN, "0,1 0,5 9,5 9,1 c"},
        {"one point", "", "0,1", 0, "none"},
        {"nothing", "", "", 0, "none"},
        {"two points", "", "0,1 9,1", 3, "0,3 9,3 c"},
        {"counter-clockwise stretch", "A 0,0 10 0 90", "20,0 10@0 10@30 10@60 10@90 -5,20", kNaN,
         "20,0 10,0(0.414214) 0,10 -5,20 c"},
        {"clockwise stretch", "A 0,0 10 0 90", "-5,20 10@90 10@60 10@30 10@0 20,0", kNaN,
         "-5,20 0,10(-0.414214) 10,0 20,0 c"},
        {"part of an arc", "A 0,0 10 0 180", "20,0 10@30 10@60 10@90 -5,20", kNaN,
         "20,0 8.66025,5(0.267949) 0,10 -5,20 c"},
        {"mirrored arc", "A 0,0 10 0 90 m", "20,0 10@0 10@30 10@60 10@90 -5,20", kNaN,
         "20,0 10,0(0.414214) 0,10 -5,20 c"},
        {"arc through angle 0", "A 0,0 10 270 90", "-5,20 10@90 10@45 10@0 10@-45 10@-90 -5,-20",
         kNaN, "-5,20 0,10(-1) 0,-10 -5,-20 c"},
        {"ends on the arc", "A 0,0 10 0 90", "-5,20 10@90 10@60 10@30 10@0", 0,
         "-5,0 0,10(-0.414214) 10,0 c"},
        {"all on the arc", "A 0,0 10 0 180", "10@180 10@120 10@60 10@0", 0, "-10,0(-1) 10,0 c"},
        {"beside the arc by more than 0.0001", "A 0,0 10 0 90",
         "20,0 10.0002@0 10.0002@45 10.0002@90 -5,20", kNaN,
         "20,0 10.0002,0 7.07121,7.07121 0,10.0002 -5,20 c"},
        {"loose points go along once begun", "A 0,0 10 0 90", "20,0 10@0 10.009@45 10@90 -5,20",
         kNaN, "20,0 10,0(0.414214) 0,10 -5,20 c"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TestDrawing d(c.arcs);
        EXPECT_EQ(c.drawn, Draw(d, c.points, c.axis));
    }
}

TEST(DrawPolyLine, SecondOfTwoArcsBeginsOnePointLate) {
    // The point that both share ends the first stretch; the walk goes on behind it.
    TestDrawing d("A 0,0 10 90 180 | A 10,10 10 90 180");
    EXPECT_EQ(
        "-20,0 -10,0(-0.414214) 0,10 1.33975,15(-0.267949) 10,20 20,20 c",
        Draw(d, "-20,0 10@180 10@150 10@120 10@90 1.339746,15 5,18.660254 10,20 20,20", kNaN));
}

TEST(AddPolyLinePt, WithoutAnArcPointsAreStraight) {
    TestDrawing d("A 0,0 10 0 90 | L 0,0 1,0");
    EngineProbe engine;
    AcDbPolyline polyline;
    int index = 0;
    engine.AddPolyLinePt(&polyline, AcDbObjectId(), Points("1,1 2,2 3,3"), true, index);
    engine.AddPolyLinePt(&polyline, d.ids()[1], Points("4,4 5,5"), false, index);
    engine.AddPolyLinePt(&polyline, d.ids()[0], Points("10@0"), false, index);
    engine.AddPolyLinePt(&polyline, d.ids()[0], Points("10@0 7,7 10@90"), true, index);
    EXPECT_EQ("1,1 2,2 3,3 4,4 5,5 10,0 10,0(0.414214)", test::Show(polyline));
    EXPECT_EQ(7, index);
}

TEST(MidLine, HorizontalVerticalSlanted) {
    struct Case {
        const char* line;
        bool found;
        double axis;
    };
    for (const Case& c :
         {Case{"L 0,5 100,5.0005", true, 5}, Case{"L 0,5 100,5.0009765625", true, 5},
          Case{"L 0,5 100,5.01", false, 7}, Case{"L 3,0 3.0005,50", true, 3},
          Case{"C 0,5 1", false, 7}, Case{"L 2,4 2,4", true, 4}}) {
        SCOPED_TRACE(c.line);
        TestDrawing d(c.line);
        EngineProbe engine;
        engine.m_calInfo.m_tolLine.setEqualPoint(0.0009765625);  // the edge itself counts
        engine.m_calInfo.m_midLineId = d.ids()[0];
        double axis = 7;
        EXPECT_EQ(c.found, engine.GetMidLineAxisValue(axis));
        EXPECT_EQ(c.axis, axis);
    }
    double axis = 7;
    EXPECT_FALSE(EngineProbe().GetMidLineAxisValue(axis));
}

TEST(CurvesThroughAPoint, AreOfAnyKind) {
    TestDrawing d(
        "L 0,0 10,0 | A 5,0 5 0 180 | S 0,0 3,4 6,-4 10,0 | P 10,0 10,5 0,5 c | T 10,0 ten"
        " | L 0,1e-3 10,1e-3 | A 5,0 5 0 180 m");
    const struct {
        double x, y;
        const char* through;
    } cases[] = {{10, 0, "0 1 2 3 6 "}, {10 + 9e-5, 0, "0 1 2 3 6 "}, {10 + 2e-4, 0, ""},
                 {5, 5, "1 3 6 "},      {5, 5 + 9e-5, "1 3 6 "},      {5, 1e-3, "5 "},
                 {5, -5, ""},           {0, 0, "0 1 2 6 "},           {5, 1e-4, "0 "}};
    EngineProbe engine;
    for (const auto& c : cases) {
        std::string found;
        const AcDbObjectIdArray through = engine.IsPointOnArc(d.ids(), AcGePoint3d(c.x, c.y, 7));
        for (int i = 0; i < through.length(); ++i)
            found += std::to_string(d.ids().find(through[i])) + " ";
        EXPECT_EQ(c.through, found) << c.x << "," << c.y;
    }
}

TEST(ArcIndex, SameAsTheWalkOverAllArcs) {
    for (unsigned int seed = 1; seed <= 30; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> unit(0, 1);
        const double shift = seed % 3 == 0 ? 1e6 : 0;
        TestDrawing d;
        const int count = static_cast<int>(1 + 60 * unit(random));
        for (int i = 0; i < count; ++i) {
            char text[200];
            // Centres on a coarse raster, so that arcs share points.
            std::snprintf(text, sizeof text, "A %.17g,%.17g %.17g %d %d%s",
                          shift + std::floor(4 * unit(random)), std::floor(4 * unit(random)),
                          seed % 5 == 0 ? 1000 * unit(random) : std::ceil(3 * unit(random)),
                          static_cast<int>(360 * unit(random)),
                          static_cast<int>(720 * unit(random)), i % 3 == 0 ? " m" : "");
            d.Add(text);
        }
        const CArcIndex index(d.ids());
        EngineProbe engine;
        int hits = 0;
        for (int n = 0; n < 400; ++n) {
            SArc arc;
            ASSERT_TRUE(ReadArc(d.ids()[n % count], arc));
            const double angle = arc.m_dStartAngle + 7 * (unit(random) - 0.1) * (n % 4);
            const double radius = arc.m_dRadius + (n % 3 == 0 ? 1.2e-4 * (unit(random) - 0.2) : 0);
            const AcGePoint3d pt(arc.m_centre.x + radius * std::cos(angle),
                                 arc.m_centre.y + radius * std::sin(angle), 0);
            std::string expected;
            const AcArray<AcDbObjectId> through = engine.IsPointOnArc(d.ids(), pt);
            for (int i = 0; i < through.length(); ++i) {
                expected += std::to_string(d.ids().find(through[i])) + " ";
            }
            std::string found;
            for (const size_t i : index.FindThrough(pt)) {
                found += std::to_string(d.ids().find(index.GetId(i))) + " ";
            }
            ASSERT_EQ(expected, found) << pt.x << "," << pt.y;
            hits += through.length();
        }
        EXPECT_GT(hits, 100);
    }
}

}  // namespace
