// Boxes against dense sampling, and the questions every curve answers.

#include "db_test.h"
#include "dbray.h"
#include "host/db/access.h"
#include "host/db/image.h"

namespace test {
namespace {

class Extents : public DbTest {};

std::unique_ptr<AcDbSpline> RandomSpline(Random& random) {
    const int degree = random.Int(1, 4);
    const int count = degree + 1 + random.Int(0, 5);
    AcGePoint3dArray controls;
    AcGeDoubleArray knots, weights;
    for (int i = 0; i < count; ++i) controls.append(random.Point());
    for (int i = 0; i < count + degree + 1; ++i) {
        const int inner = (std::min)((std::max)(i - degree, 0), count - degree);
        knots.append(static_cast<double>(inner));
    }
    const bool rational = random.Int(0, 1) != 0;
    for (int i = 0; rational && i < count; ++i) weights.append(random.Real(0.3, 3.0));
    auto spline = std::make_unique<AcDbSpline>();
    EXPECT_OK(spline->setNurbsData(degree, rational, false, false, controls, knots, weights, 0.0));
    return spline;
}

std::vector<std::unique_ptr<AcDbCurve>> RandomCurves(Random& random) {
    std::vector<std::unique_ptr<AcDbCurve>> curves;
    const AcGeVector3d normal = random.Int(0, 2) == 0
                                    ? AcGeVector3d(0, 0, random.Int(0, 1) != 0 ? 1 : -1)
                                    : random.Direction();
    curves.push_back(std::make_unique<AcDbLine>(random.Point(), random.Point()));
    curves.push_back(std::make_unique<AcDbArc>(random.Point(), normal, random.Real(0.1, 5),
                                               random.Real(-7, 7), random.Real(-7, 7)));
    curves.push_back(std::make_unique<AcDbCircle>(random.Point(), normal, random.Real(0.1, 5)));
    curves.push_back(std::make_unique<AcDbEllipse>(
        random.Point(), normal, normal.perpVector() * random.Real(0.5, 5), random.Real(0.05, 1.0),
        random.Real(0, 6), random.Real(6.1, 9)));
    curves.push_back(RandomSpline(random));
    auto polyline = Polyline("0,0(0.5) 4,0(-1.7) 4,3(0.01) 1,5", random.Int(0, 1) != 0);
    EXPECT_OK(polyline->setNormal(normal));
    curves.push_back(std::move(polyline));
    AcGePoint3dArray vertices;
    for (int i = 0; i < 4; ++i) vertices.append(random.Point());
    curves.push_back(std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, vertices, true));
    return curves;
}

// The box holds every sample and is no larger than dense samples show.
TEST_F(Extents, BoxesFitDenseSamples) {
    for (unsigned seed = 0; seed < 50; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        for (const auto& curve : RandomCurves(random)) {
            SCOPED_TRACE(Show(*curve));
            const AcDbExtents box = BoxOf(*curve);
            double first = 0.0, last = 0.0;
            ASSERT_OK(curve->getStartParam(first));
            ASSERT_OK(curve->getEndParam(last));
            AcDbExtents sampled;
            constexpr int kSamples = 2520;  // hits the corners of up to ten segments
            for (int i = 0; i <= kSamples; ++i) {
                AcGePoint3d point;
                ASSERT_OK(curve->getPointAtParam(first + (last - first) * i / kSamples, point));
                sampled.addPoint(point);
            }
            AcDbExtents both = box;
            both.addExt(sampled);
            ExpectSameBox(box, both, 1e-9);     // nothing outside
            ExpectSameBox(box, sampled, 2e-4);  // nothing to spare
        }
    }
}

// param -> point -> param, param -> distance -> param, and lengths that add up.
TEST_F(Extents, ParametersPointsAndDistances) {
    for (unsigned seed = 0; seed < 15; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        for (const auto& curve : RandomCurves(random)) {
            SCOPED_TRACE(Show(*curve));
            double first = 0.0, last = 0.0, length = 0.0;
            ASSERT_OK(curve->getStartParam(first));
            ASSERT_OK(curve->getEndParam(last));
            ASSERT_OK(curve->getDistAtParam(last, length));
            double previous = 0.0;
            AcGePoint3d lastPoint;
            ASSERT_OK(curve->getStartPoint(lastPoint));
            double chords = 0.0;
            for (int i = 0; i <= 100; ++i) {
                const double param = first + (last - first) * i / 100;
                AcGePoint3d point, on;
                double dist = 0.0, back = 0.0;
                ASSERT_OK(curve->getPointAtParam(param, point));
                ASSERT_OK(curve->getDistAtParam(param, dist));
                EXPECT_GE(dist, previous - 1e-9);
                previous = dist;
                chords += lastPoint.distanceTo(point);
                lastPoint = point;
                if (i % 25 != 0) continue;
                ASSERT_OK(curve->getParamAtDist(dist, back));
                AcGePoint3d again;
                ASSERT_OK(curve->getPointAtParam(back, again));
                EXPECT_LT(again.distanceTo(point), 1e-6);
                EXPECT_OK(curve->getClosestPointTo(point, on));
                EXPECT_LT(on.distanceTo(point), 1e-6);
                EXPECT_OK(curve->getParamAtPoint(point, back));
            }
            EXPECT_LE(chords, length * (1.0 + 1e-9));
            EXPECT_GT(chords, length * 0.97);
            double ignored = 0.0;
            EXPECT_NE(Acad::eOk, curve->getParamAtDist(length + 1.0, ignored));
            AcGePoint3d outside;
            EXPECT_NE(Acad::eOk, curve->getPointAtParam(last + 1.0, outside));
            EXPECT_NE(Acad::eOk, curve->getParamAtPoint(AcGePoint3d(500, 500, 0), ignored));
        }
    }
}

TEST_F(Extents, ReversedCurvesRunBackwards) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        for (const auto& curve : RandomCurves(random)) {
            AcGePoint3d start, end, newStart, newEnd;
            ASSERT_OK(curve->getStartPoint(start));
            ASSERT_OK(curve->getEndPoint(end));
            const AcDbExtents box = BoxOf(*curve);
            const Acad::ErrorStatus es = curve->reverseCurve();
            if (es == Acad::eNotApplicable) continue;
            ASSERT_OK(es);
            ASSERT_OK(curve->getStartPoint(newStart));
            ASSERT_OK(curve->getEndPoint(newEnd));
            EXPECT_LT(newStart.distanceTo(end), 1e-9) << Show(*curve);
            EXPECT_LT(newEnd.distanceTo(start), 1e-9) << Show(*curve);
            ExpectSameBox(box, BoxOf(*curve), 1e-9);
        }
    }
}

TEST_F(Extents, Areas) {
    const struct {
        const char* vertices;
        double area;
    } kAreas[] = {
        {"0,0 4,0 4,3", 6.0},         {"0,0 4,0 4,4 0,4", 16.0},
        {"0,4 4,4 4,0 0,0", 16.0},    {"0,0(1) 4,0(1)", 4 * kPi},
        {"0,0(-1) 4,0(-1)", 4 * kPi}, {"1000000,0(1) 1000004,0 1000004,4", 8.0 + 2 * kPi}};
    for (const auto& c : kAreas) {
        double area = 0.0;
        EXPECT_OK(Polyline(c.vertices, true)->getArea(area));
        EXPECT_NEAR(c.area, area, 1e-6) << c.vertices;
    }
    double area = 0.0;
    EXPECT_OK(AcDbCircle(AcGePoint3d(), AcGeVector3d::kZAxis, 2.0).getArea(area));
    EXPECT_NEAR(4 * kPi, area, 1e-12);
    EXPECT_EQ(Acad::eNotApplicable, AcDbLine().getArea(area));
}

TEST_F(Extents, WidthsThicknessAndUnbounded) {
    auto polyline = Polyline("0,0 10,0");
    EXPECT_OK(polyline->setConstantWidth(2.0));
    EXPECT_OK(polyline->setThickness(3.0));
    ExpectSameBox(AcDbExtents({0, -1, 0}, {10, 1, 3}), BoxOf(*polyline), 1e-12);
    auto bow = Polyline("0,0(1) 4,0");
    EXPECT_OK(bow->setConstantWidth(1.0));
    ExpectSameBox(AcDbExtents({-0.5, -2.5, 0}, {4.5, 0, 0}), BoxOf(*bow), 1e-12);
    AcDbExtents box({1, 1, 1}, {2, 2, 2});
    EXPECT_EQ(Acad::eInvalidExtents, AcDbRay().getGeomExtents(box));
    EXPECT_EQ(Acad::eInvalidExtents, AcDbXline().getGeomExtents(box));
    EXPECT_EQ(Acad::eNullExtents, AcDbPolyline().getGeomExtents(box));
    EXPECT_EQ(Acad::eNullExtents, AcDbSpline().getGeomExtents(box));
    EXPECT_EQ(Acad::eNullExtents, AcDbText().getGeomExtents(box));
    EXPECT_EQ(Acad::eNullExtents, AcDbBlockReference().getGeomExtents(box));
    EXPECT_EQ(Acad::eNullExtents, AcDb3dSolid().getGeomExtents(box));
    EXPECT_EQ(1.0, box.minPoint().x);
}

// A block in a block in a block ..., each holding references to the one before.
class Nested : public Extents {
protected:
    Nested() {
        last = AddBlock(L"B0");
        Add(new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 5, 0)), last);
    }
    void Wrap(const std::vector<AcGePoint3d>& places, double turn = 0.0) {
        const std::wstring name = L"B" + std::to_wstring(++count);
        const AcDbObjectId block = AddBlock(name.c_str());
        for (const AcGePoint3d& place : places) {
            auto* reference = new AcDbBlockReference(place, last);
            EXPECT_OK(reference->setRotation(turn));
            Add(reference, block);
        }
        last = block;
    }
    AcDbExtents Box(const AcGePoint3d& at = AcGePoint3d()) {
        return BoxOf(AcDbBlockReference(at, last));
    }

    AcDbObjectId last;
    int count = 0;
};

TEST_F(Nested, TwoInEachOfForty) {
    // Up to the budget every piece is taken by itself, after that each block once: 2^40 of them.
    for (int i = 1; i <= 40; ++i) {
        Wrap({AcGePoint3d(0, 0, 0), AcGePoint3d(1, 2, 0)}, i % 2 == 0 ? kPi / 2 : -kPi / 2);
        Box();
    }
    const AcDbExtents box = Box(AcGePoint3d(100, 200, 0));
    // Every second level stands, and its two steps go along the axes of the level around it.
    AcDbExtents expected(AcGePoint3d(), AcGePoint3d(10, 5, 0));
    for (int i = 1; i <= 40; ++i) {
        expected.transformBy(AcGeMatrix3d::rotation(i % 2 == 0 ? kPi / 2 : -kPi / 2,
                                                    AcGeVector3d::kZAxis, AcGePoint3d()));
        expected.expandBy(AcGeVector3d(1, 2, 0));
    }
    EXPECT_NEAR(expected.minPoint().x + 100, box.minPoint().x, 1e-9);
    EXPECT_NEAR(expected.minPoint().y + 200, box.minPoint().y, 1e-9);
    EXPECT_NEAR(expected.maxPoint().x + 100, box.maxPoint().x, 1e-9);
    EXPECT_NEAR(expected.maxPoint().y + 200, box.maxPoint().y, 1e-9);
}

TEST_F(Nested, AsDeepAsOneLikes) {
    for (int i = 0; i < 20000; ++i) Wrap({AcGePoint3d(1, 0, 0)});
    EXPECT_EQ(20010.0, Box().maxPoint().x);
    EXPECT_EQ(20000.0, Box().minPoint().x);
}

TEST_F(Nested, ArraysOfArrays) {
    // 90,000 cells in each of three levels; spacings and turns place the outermost cells.
    const double turn = kPi / 2;
    for (int i = 0; i < 3; ++i) {
        const std::wstring name = L"A" + std::to_wstring(i);
        const AcDbObjectId block = AddBlock(name.c_str());
        auto* array = new AcDbMInsertBlock(AcGePoint3d(), last, 300, 300, 2.0, -3.0);
        EXPECT_OK(array->setRotation(turn));
        Add(array, block);
        last = block;
    }
    // A level turns what is inside by a right angle; columns then go up and rows to the left.
    double width = 10.0, height = 5.0;
    for (int i = 0; i < 3; ++i) {
        std::swap(width, height);
        width += 299 * 3.0;
        height += 299 * 2.0;
    }
    const AcDbExtents box = Box();
    EXPECT_NEAR(width, box.maxPoint().x - box.minPoint().x, 1e-9);
    EXPECT_NEAR(height, box.maxPoint().y - box.minPoint().y, 1e-9);
    AcDbVoidPtrArray pieces;
    Wrap(std::vector<AcGePoint3d>(100));
    AcDbMInsertBlock many(AcGePoint3d(), last, 300, 300, 1.0, 1.0);
    EXPECT_EQ(Acad::eOutOfMemory, many.explode(pieces));
    EXPECT_TRUE(pieces.isEmpty());
}

TEST_F(Nested, InsideItself) {
    Wrap({AcGePoint3d(1, 0, 0)});
    const AcDbObjectId inner = last;
    Wrap({AcGePoint3d(1, 0, 0)});
    Add(new AcDbBlockReference(AcGePoint3d(7, 0, 0), last), inner);
    EXPECT_EQ(12.0, Box().maxPoint().x);
}

TEST_F(Extents, Pictures) {
    AcDbWipeout wipeout;
    host::Access::Origin(wipeout) = AcGePoint3d(10, 20, 0);
    host::Access::UVector(wipeout) = AcGeVector3d(4, 0, 0);
    host::Access::VVector(wipeout) = AcGeVector3d(0, 4, 0);
    ExpectSameBox(AcDbExtents({10, 20, 0}, {14, 24, 0}), BoxOf(wipeout), 1e-12);
    // The upper left quarter: rows count downwards.
    host::Access::Boundary(wipeout) = {AcGePoint2d(-0.5, -0.5), AcGePoint2d(0, 0)};
    ExpectSameBox(AcDbExtents({10, 22, 0}, {12, 24, 0}), BoxOf(wipeout), 1e-12);
}

TEST_F(Extents, HatchesByTheirLoops) {
    AcDbHatch hatch;
    host::HatchData& data = host::Access::Hatch(hatch);
    host::HatchLoop loop;
    loop.flags = 2;
    loop.vertices = {{AcGePoint2d(0, 0), 0.0},
                     {AcGePoint2d(4, 0), 1.0},
                     {AcGePoint2d(4, 4), 0.0},
                     {AcGePoint2d(0, 4), 0.0}};
    data.loops.push_back(loop);
    host::HatchLoop edges;
    host::HatchEdge arc;
    arc.kind = host::HatchEdgeKind::kArc;
    arc.center = AcGePoint2d(20, 0);
    arc.radius = 1.0;
    arc.counterClockwise = false;  // from -90 to -180 seen clockwise: the third quadrant's mirror
    arc.startAngle = 0.0;
    arc.endAngle = kPi / 2;
    edges.edges.push_back(arc);
    data.loops.push_back(edges);
    ExpectSameBox(AcDbExtents({0, -1, 0}, {21, 4, 0}), BoxOf(hatch), 1e-12);
    const AcDbExtents before = BoxOf(hatch);
    EXPECT_OK(hatch.transformBy(AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kZAxis)));
    AcDbExtents turned = before;
    turned.transformBy(AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kZAxis));
    ExpectSameBox(turned, BoxOf(hatch), 1e-9);
    // Explodes to its outline when solid, to lines inside it when patterned.
    EXPECT_EQ(2, Pieces(hatch).Count());
    data.solid = false;
    data.patternLines = {{0.0, AcGePoint2d(0, 0), AcGeVector2d(0, 0.5), {}}};
    const Pieces lines(hatch);
    EXPECT_GT(lines.Count(), 8);
    AcDbExtents drawn;
    for (int i = 0; i < lines.Count(); ++i) drawn.addExt(BoxOf(lines[i]));
    AcDbExtents both = BoxOf(hatch);
    both.addExt(drawn);
    ExpectSameBox(BoxOf(hatch), both, 1e-3);
}

TEST_F(Extents, DimensionsByTheirBlock) {
    const AcDbObjectId block = AddBlock(L"*D1");
    Add(new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(0, 9, 0)), block);
    Add(new AcDbPoint(AcGePoint3d(100, 100, 0)), block);
    AcDbRotatedDimension dimension;
    EXPECT_OK(dimension.setXLine1Point(AcGePoint3d(1, 1, 0)));
    EXPECT_OK(dimension.setXLine2Point(AcGePoint3d(5, 1, 0)));
    ExpectSameBox(AcDbExtents({1, 1, 0}, {5, 1, 0}), BoxOf(dimension), 1e-12);
    EXPECT_OK(dimension.setDimBlockId(block));
    ExpectSameBox(AcDbExtents({0, 0, 0}, {0, 9, 0}), BoxOf(dimension), 1e-12);
    EXPECT_OK(dimension.transformBy(AcGeMatrix3d::translation(AcGeVector3d(3, 4, 0))));
    ExpectSameBox(AcDbExtents({3, 4, 0}, {3, 13, 0}), BoxOf(dimension), 1e-12);
    EXPECT_EQ("L 3,4 3,13 | AcDbPoint", Show(Pieces(dimension)));
    // Inside a block that is turned and stretched its drawing follows.
    const AcDbObjectId outer = AddBlock(L"WITH_DIMENSION");
    Add(AcDbEntity::cast(dimension.clone()), outer);
    AcDbBlockReference reference(AcGePoint3d(100, 0, 0), outer);
    EXPECT_OK(reference.setRotation(kPi / 2));
    EXPECT_OK(reference.setScaleFactors(AcGeScale3d(1, 2, 1)));
    ExpectSameBox(AcDbExtents({74, 3, 0}, {92, 3, 0}), BoxOf(reference), 1e-12);
}

TEST_F(Extents, PolylineQuestions) {
    auto polyline = Polyline("0,0 4,0(1) 4,4 4,4", true);
    const AcDbPolyline::SegType kTypes[] = {AcDbPolyline::kLine, AcDbPolyline::kArc,
                                            AcDbPolyline::kCoincident, AcDbPolyline::kLine,
                                            AcDbPolyline::kEmpty};
    for (unsigned i = 0; i < 5; ++i) EXPECT_EQ(kTypes[i], polyline->segType(i)) << i;
    AcGeCircArc3d arc;
    ASSERT_OK(polyline->getArcSegAt(1, arc));
    EXPECT_EQ("4,2", Show(arc.center()));
    EXPECT_NEAR(2.0, arc.radius(), 1e-12);
    AcGeLineSeg3d line;
    EXPECT_EQ(Acad::eInvalidIndex, polyline->getLineSegAt(1, line));
    ASSERT_OK(polyline->getLineSegAt(3, line));
    EXPECT_EQ("0,0", Show(line.endPoint()));
    EXPECT_EQ(Acad::eInvalidIndex, polyline->addVertexAt(9, AcGePoint2d()));
    EXPECT_EQ(Acad::eInvalidIndex, polyline->removeVertexAt(4));
    double bulge = 0.0;
    EXPECT_EQ(Acad::eInvalidIndex, polyline->getBulgeAt(4, bulge));
    AcGeCurve3d* curve = nullptr;
    EXPECT_EQ(Acad::eNotImplementedYet, polyline->getAcGeCurve(curve));
    EXPECT_OK(polyline->removeVertexAt(3));
    EXPECT_OK(polyline->removeVertexAt(2));
    EXPECT_EQ(Acad::eDegenerateGeometry, polyline->removeVertexAt(0));
    AcGePoint3d point;
    EXPECT_OK(polyline->setNormal(AcGeVector3d(0, 0, -1)));
    EXPECT_OK(polyline->getPointAt(1, point));
    EXPECT_EQ("-4,0", Show(point));
}

}  // namespace
}  // namespace test
