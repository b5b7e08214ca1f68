// The curves of entities: lines and arcs as drawn, ellipses and splines as tangent arcs.
#include "tests/drawn/shown.h"

#include "plane/ring.h"

namespace {

using test::TestDrawing;

SDrawnShape ShapeOf(TestDrawing& d, double tolerance = 1e-4) {
    SDrawnShape shape;
    CDrawnWalk walk(&d.db());
    walk.Walk(d.ids(), [&](const SDrawnItem& item) {
        EXPECT_TRUE(GetDrawnShape(item.m_entity, item.m_place, tolerance, shape));
    });
    return shape;
}

TEST(DrawnShape, LinesAndArcsAsTheyAreDrawn) {
    const struct {
        const char* name;
        const char* block;  // of B
        const char* entities;
        const char* curves;
        bool isClosed, isRound;
    } rows[] = {
        {"line", "", "L 1,2 3,4", "1,2 3,4", false, false},
        {"arc", "", "A 0,0 2 0 90", "2,0(0.414214) 0,2", false, false},
        {"arc across the start of the angles", "", "A 0,0 2 270 90", "0,-2(1) 0,2", false, false},
        {"arc seen from behind", "", "A 0,0 2 0 90 m", "0,2(-0.414214) 2,0", false, false},
        {"wide arc in two halves", "", "A 0,0 2 0 300",
         "2,0(0.767327) -1.73205,1(0.767327) 1,-1.73205", false, false},
        {"circle", "", "C 5,0 1", "6,0(1) 4,0(1) 6,0", true, true},
        {"light polyline", "", "P 0,0 4,0(1) 4,2 0,2 c", "0,0 4,0(1) 4,2 0,2 0,0", true, false},
        {"light polyline, open", "", "P 0,0 0,0 4,0(-0.5) 4,2", "0,0 4,0(-0.5) 4,2", false, false},
        {"heavy polyline", "", "H 0,0 4,0(1) 4,2 c", "0,0 4,0(1) 4,2 0,0", true, false},
        {"polyline in space", "", "Q 0,0,1 4,0,2 4,2,3 c", "0,0 4,0 4,2 0,0", true, false},
        {"a wide bulge in two halves", "", "P 0,0(5) 1,0", "0,0(0.819804) 0.5,-2.5(0.819804) 1,0",
         false, false},
        {"arc in a block", "A 0,0 2 0 90", "I B 10,0 2 90", "10,4(0.414214) 6,0", false, false},
        {"arc in a mirrored block", "A 0,0 2 0 90", "I B 10,0 -1,1", "8,0(-0.414214) 10,2", false,
         false},
        {"polyline in a mirrored block", "P 0,0(1) 4,0", "I B 0,0 1,-1", "0,0(-1) 4,0", false,
         false},
        {"circle in a block", "C 1,0 1", "I B 10,0 2", "14,0(1) 10,0(1) 14,0", true, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TestDrawing d;
        d.Block("B", row.block).Add(row.entities);
        const SDrawnShape shape = ShapeOf(d);
        EXPECT_EQ(row.curves, test::ShowCurves(shape.m_curves));
        EXPECT_EQ(row.isClosed, shape.m_bClosed);
        EXPECT_EQ(row.isRound, shape.m_bRound);
        EXPECT_TRUE(shape.m_smooth.empty());
        EXPECT_EQ(std::vector<int>(shape.m_curves.size(), SDrawnShape::kExact), shape.m_smoothOf);
    }
}

// An arc's own numbers, which a bulge would round.
TEST(DrawnShape, ArcKeepsItsCentreAndRadius) {
    TestDrawing d("A 1000000.1,0.3 17.7 10 11");
    const SDrawnShape shape = ShapeOf(d);
    ASSERT_EQ(1u, shape.m_curves.size());
    EXPECT_EQ(1000000.1, shape.m_curves[0].centre.x);
    EXPECT_EQ(0.3, shape.m_curves[0].centre.y);
    EXPECT_EQ(17.7, shape.m_curves[0].radius);
}

TEST(DrawnShape, SmoothCurvesAreExactAndFollowed) {
    const struct {
        const char* name;
        const char* block;
        const char* entities;
        const char* places;  // on the curve
        bool isClosed, isRound;
    } rows[] = {
        {"ellipse", "", "E 0,0 10,0 0.5 0 360", "10,0 0,5 -10,0 0,-5 6,4", true, true},
        {"part of an ellipse", "", "E 0,0 10,0 0.5 0 90", "10,0 6,4 8,3 0,5", false, false},
        {"circle in a block scaled unequally", "C 0,0 5", "I B 0,0 2,1", "10,0 0,5 6,4 -8,-3", true,
         true},
        {"arc in one", "A 0,0 5 0 90", "I B 0,0 2,1", "10,0 6,4 8,3 0,5", false, false},
        {"polyline's arc in one", "P 5,0(0.41421356237309503) 0,5", "I B 0,0 2,1",
         "10,0 6,4 8,3 0,5", false, false},
        {"arc clockwise in one", "P 0,5(-0.41421356237309503) 5,0", "I B 0,0 2,1",
         "0,5 6,4 8,3 10,0", false, false},
        {"turned after scaling", "A 0,0 5 0 90", "I B 0,0 2,1 90", "0,10 -4,6 -3,8 -5,0", false,
         false},
        {"spline", "", "S 0,0 0,4 4,4 4,0", "0,0 2,3 4,0", false, false},
        {"spline scaled unequally", "S 0,0 0,4 4,4 4,0", "I B 0,0 2,1", "0,0 4,3 8,0", false,
         false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TestDrawing d;
        d.Block("B", row.block).Add(row.entities);
        for (const double tolerance : {1e-2, 1e-5}) {
            const SDrawnShape shape = ShapeOf(d, tolerance);
            ASSERT_EQ(1u, shape.m_smooth.size());
            EXPECT_TRUE(shape.m_bWithin);
            EXPECT_EQ(row.isClosed, shape.m_bClosed);
            EXPECT_EQ(row.isRound, shape.m_bRound);
            EXPECT_EQ(std::vector<int>(shape.m_curves.size(), 0), shape.m_smoothOf);
            for (const plane::Corner& place : plane::ParseCorners(row.places))
                EXPECT_LE(plane::Distance(shape.m_curves, place.point), tolerance)
                    << plane::Show(place.point);
            const plane::SmoothCurve& smooth = shape.m_smooth[0];
            const double from = plane::StartOf(smooth), to = plane::EndOf(smooth);
            for (int i = 0; i <= 500; ++i)
                EXPECT_LE(plane::Distance(shape.m_curves,
                                          plane::PointAt(smooth, from + (to - from) * i / 500)),
                          tolerance);
            if (row.isClosed) {
                EXPECT_TRUE(shape.m_curves.front().from == shape.m_curves.back().to);
            }
        }
    }
}

TEST(DrawnShape, OtherEntitiesHaveNone) {
    TestDrawing d("T 0,0 note | P 1,1 | L 2,2 2,2");
    AcDbObjectPointer<AcDbBlockTableRecord> space(acdbSymUtil()->blockModelSpaceId(&d.db()),
                                                  AcDb::kForWrite);
    auto* ray = new AcDbRay;
    ASSERT_EQ(Acad::eOk, space->appendAcDbEntity(ray));
    ASSERT_EQ(Acad::eOk, ray->close());
    ASSERT_EQ(Acad::eOk, space.close());
    int items = 0;
    CDrawnWalk walk(&d.db());
    walk.WalkSpace(acdbSymUtil()->blockModelSpaceId(&d.db()), [&](const SDrawnItem& item) {
        SDrawnShape shape;
        EXPECT_FALSE(GetDrawnShape(item.m_entity, item.m_place, 1e-3, shape));
        ++items;
    });
    EXPECT_EQ(4, items);
}

}  // namespace
