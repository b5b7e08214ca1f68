// Straight lines: the edges of every tolerance, from both sides.
#include <gtest/gtest.h>

#include <memory>
#include <random>

#include "ge_text.h"
#include "geline3d.h"
#include "gelnsg3d.h"
#include "gemat3d.h"
#include "geplane.h"
#include "geray3d.h"
#include "host/base/angles.h"

namespace {

const char kNone[] = "";

struct CrossCase {
    const char* name;
    const char* a;
    const char* b;
    const char* out;  // empty: they do not cross
    double tol = 1e-10;
};

void ExpectCrossing(const CrossCase& c) {
    SCOPED_TRACE(c.name);
    const AcGePoint3d untouched(-77, 77, 7);
    AcGePoint3d out = untouched;
    const bool crosses = Segment(c.a).intersectWith(Segment(c.b), out, Tol(c.tol));
    EXPECT_EQ(crosses, *c.out != 0);
    EXPECT_EQ(Show(out), Show(*c.out ? Point(c.out) : untouched));
}

TEST(Intersect, WhereTheyMeet) {
    const CrossCase kCases[] = {
        {"cross", "0,0 4,4", "0,4 4,0", "2,2"},
        {"T, end on the inside", "0,0 4,0", "2,0 2,3", "2,0"},
        {"corner", "0,0 4,0", "4,0 4,3", "4,0"},
        {"near miss", "0,0 4,0", "2,1 2,3", kNone},
        {"lines cross, segments do not", "0,0 1,0", "2,-1 2,1", kNone},
        {"the point is not cut to the end", "0,0 4,0", "4.25,-1 4.25,1", "4.25,0", 0.5},
        {"end short by exactly the tolerance", "0,0 4,0", "4.5,-1 4.5,1", "4.5,0", 0.5},
        {"end short by a bit more", "0,0 4,0", "4.5000001,-1 4.5000001,1", kNone, 0.5},
        {"start short by exactly the tolerance", "0,0 4,0", "-0.5,-1 -0.5,1", "-0.5,0", 0.5},
        {"start short by a bit more", "0,0 4,0", "-0.5000001,-1 -0.5000001,1", kNone, 0.5},
        {"the other end short by the tolerance", "0,0 4,0", "2,0.5 2,2", "2,0", 0.5},
        {"the other end short by a bit more", "0,0 4,0", "2,0.5000001 2,2", kNone, 0.5},
        {"slack is a length, not a parameter", "0,0 4096,0", "4096.5,-1 4096.5,1", "4096.5,0", 0.5},
    };
    for (const CrossCase& c : kCases) ExpectCrossing(c);
}

TEST(Intersect, ParallelAndDegenerate) {
    const CrossCase kCases[] = {
        {"parallel", "0,0 4,0", "0,1 4,1", kNone},
        {"collinear apart", "0,0 1,0", "2,0 3,0", kNone},
        {"collinear touching", "0,0 1,0", "1,0 3,0", kNone},
        {"overlapping", "0,0 2,0", "1,0 3,0", kNone},
        {"the same", "0,0 2,1", "0,0 2,1", kNone},
        {"the same turned round", "0,0 2,1", "2,1 0,0", kNone},
        {"no length, on the other", "1,0 1,0", "0,0 4,0", kNone},
        {"other has no length", "0,0 4,0", "1,0 1,0", kNone},
        {"both without length", "1,1 1,1", "1,1 1,1", kNone},
        // At tolerance 0.0005 lines within about 0.0005 radians of one another are parallel.
        {"angle just under the tolerance", "0,0 1000,0", "500,-0.249 1500,0.25", kNone, 0.0005},
        {"angle just above the tolerance", "0,-0.26 1000,0.26", "0,0 1000,0", "500,0", 0.0005},
        {"nearly opposite", "0,0 1000,0", "1000,0.2 0,-0.2", kNone, 0.0005},
    };
    for (const CrossCase& c : kCases) ExpectCrossing(c);
}

TEST(Intersect, Heights) {
    const CrossCase kCases[] = {
        {"same height is carried", "0,0,5 4,4,5", "0,4,5 4,0,5", "2,2,5"},
        {"apart by exactly the tolerance", "0,0,0 4,4,0", "0,4,0.5 4,0,0.5", "2,2", 0.5},
        {"apart by more", "0,0,0 4,4,0", "0,4,0.5000001 4,0,0.5000001", kNone, 0.5},
        {"rising, height of the first", "0,0,0 4,0,4", "1,-1,1 1,1,1", "1,0,1"},
        {"upright through flat", "1,0,-1 1,0,1", "0,0,0 4,0,0", "1,0"},
        {"upright beside flat", "1,1,-1 1,1,1", "0,0,0 4,0,0", kNone},
        {"upright and slanting, one above the other", "0,0,0 0,0,2", "0,-1,0 0,1,2", "0,0,1"},
        {"two upright", "0,0,0 0,0,2", "1,0,0 1,0,2", kNone},
    };
    for (const CrossCase& c : kCases) ExpectCrossing(c);
}

TEST(Intersect, FarFromTheOrigin) {
    const CrossCase kCases[] = {
        {"a million off", "1000000,1000000 1000004,1000004", "1000000,1000004 1000004,1000000",
         "1000002,1000002"},
        {"a thousand million off", "1e9,1e9 1000000004,1e9", "1000000002,999999999 1000000002,1e9",
         "1000000002,1e9"},
    };
    for (const CrossCase& c : kCases) ExpectCrossing(c);
}

TEST(Intersect, LinesAndRaysAreBoundedWhereTheyEnd) {
    const AcGeLineSeg3d upright = Segment("5,-1 5,1");
    const AcGePoint3d p0(0, 0, 0), p1(1, 0, 0);
    AcGePoint3d out;
    EXPECT_TRUE(AcGeLine3d(p0, p1).intersectWith(upright, out));
    EXPECT_EQ(Show(out), "5,0");
    EXPECT_TRUE(AcGeRay3d(p0, p1).intersectWith(upright, out));
    EXPECT_FALSE(AcGeRay3d(p1, p0).intersectWith(upright, out));
    EXPECT_FALSE(AcGeLineSeg3d(p0, p1).intersectWith(upright, out));
    EXPECT_TRUE(upright.intersectWith(AcGeLine3d(p1, p0), out));

    EXPECT_TRUE(Segment("1,2,-1 1,2,1").intersectWith(AcGePlane::kXYPlane, out));
    EXPECT_EQ(Show(out), "1,2");
    EXPECT_FALSE(Segment("1,2,1 1,2,3").intersectWith(AcGePlane::kXYPlane, out));
    EXPECT_FALSE(Segment("1,2,0 5,2,0").intersectWith(AcGePlane::kXYPlane, out));
}

TEST(Intersect, RandomPairsAgreeWithTheFormula) {
    const unsigned seed = 20260401;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> at(-10, 10);
    std::uniform_int_distribution<int> grid(-3, 3);
    int crossings = 0;
    for (int round = 0; round < 200000; ++round) {
        AcGePoint3d p[4];
        for (AcGePoint3d& q : p)
            q = round % 2 ? AcGePoint3d(at(random), at(random), 0)
                          : AcGePoint3d(grid(random), grid(random), 0);
        const AcGeTol tol = Tol(round % 3 ? 0.0005 : 0.25);
        const AcGeVector3d d1 = p[1] - p[0], d2 = p[3] - p[2], w = p[2] - p[0];
        const double c = d1.x * d2.y - d1.y * d2.x;
        const double t = (w.x * d2.y - w.y * d2.x) / c, u = (w.x * d1.y - w.y * d1.x) / c;
        const double eps = tol.equalPoint();
        const auto within = [eps](double s, double l) { return s * l >= -eps && s * l <= l + eps; };
        const bool expected = c != 0.0 && !d1.isParallelTo(d2, tol) && within(t, d1.length()) &&
                              within(u, d2.length());
        const AcGeLineSeg3d a(p[0], p[1]), b(p[2], p[3]);
        AcGePoint3d out(9, 9, 9), back;
        ASSERT_EQ(a.intersectWith(b, out, tol), expected)
            << Show(p[0]) << " " << Show(p[1]) << " | " << Show(p[2]) << " " << Show(p[3]);
        ASSERT_EQ(b.intersectWith(a, back, tol), expected);
        if (!expected) continue;
        ++crossings;
        ASSERT_TRUE(Same(out, p[0] + d1 * t));
    }
    EXPECT_GT(crossings, 10000);
}

struct OnCase {
    const char* name;
    const char* segment;
    const char* point;
    bool on;
    double tol = 0.0005;
};

TEST(IsOn, SegmentAndPoint) {
    const OnCase kCases[] = {
        {"inside", "0,0 10,0", "5,0", true},
        {"start", "0,0 10,0", "0,0", true},
        {"end", "0,0 10,0", "10,0", true},
        {"beside by exactly the tolerance", "0,0 10,0", "5,0.5", true, 0.5},
        {"beside by a bit more", "0,0 10,0", "5,0.50000001", false, 0.5},
        {"beyond the end within the tolerance", "0,0 10,0", "10.0003,0", false},
        {"before the start within the tolerance", "0,0 10,0", "-0.0003,0", false},
        {"beyond the end by rounding", "0,0 10,0", "10.00000000005,0", true},
        {"beyond the end by more than rounding", "0,0 10,0", "10.0000000002,0", false},
        {"before the start by rounding", "0,0 10,0", "-0.00000000005,0", true},
        {"before the start by more than rounding", "0,0 10,0", "-0.0000000002,0", false},
        {"beside the end", "0,0 10,0", "10,0.0003", true},
        {"rounding is a length, not a parameter", "0,0 0.001,0", "0.00100000005,0", true},
        {"above", "0,0 10,0", "5,0,0.001", false},
        {"no length, near", "3,3 3,3", "3,3.5", true, 0.5},
        {"no length, off", "3,3 3,3", "3,3.50000001", false, 0.5},
        {"far off, a computed corner", "1e6,1e6 1000010,1e6", "1000010,1e6", true},
    };
    for (const OnCase& c : kCases) {
        SCOPED_TRACE(c.name);
        const AcGeLineSeg3d segment = Segment(c.segment);
        const AcGeEntity3d& entity = segment;
        const AcGeCurve3d& curve = segment;
        EXPECT_EQ(segment.isOn(Point(c.point), Tol(c.tol)), c.on);
        // The same through every base.
        EXPECT_EQ(entity.isOn(Point(c.point), Tol(c.tol)), c.on);
        double param = -5;
        EXPECT_EQ(curve.isOn(Point(c.point), param, Tol(c.tol)), c.on);
        EXPECT_EQ(param != -5, c.on);
    }
}

TEST(IsOn, EveryCrossingIsOnBoth) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> at(-1000, 1000);
    for (int round = 0; round < 20000; ++round) {
        AcGePoint3d p[4];
        for (AcGePoint3d& q : p) q.set(at(random), at(random), 0);
        const AcGeLineSeg3d a(p[0], p[1]), b(p[2], p[3]);
        AcGePoint3d out;
        if (!a.intersectWith(b, out, Tol(1e-10))) continue;
        ASSERT_TRUE(a.isOn(out, Tol(1e-8)) && b.isOn(out, Tol(1e-8))) << Show(out);
    }
}

TEST(ClosestPoint, IsTheFootOrAnEnd) {
    const struct {
        const char *name, *segment, *point, *closest;
    } kCases[] = {
        {"inside", "0,0 10,0", "3,4", "3,0"},
        {"before", "0,0 10,0", "-3,4", "0,0"},
        {"beyond", "0,0 10,0", "13,4", "10,0"},
        {"the end itself, not start plus difference", "0.1,0.7 0.3,0.2", "9,-9", "0.3,0.2"},
        {"no length", "2,3 2,3", "13,4", "2,3"},
        {"in space", "0,0,0 0,0,8", "1,1,4", "0,0,4"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        const AcGeLineSeg3d segment = Segment(c.segment);
        EXPECT_EQ(Show(segment.closestPointTo(Point(c.point))), Show(Point(c.closest)));
        const AcGeCurve3d& curve = segment;
        EXPECT_EQ(Show(curve.closestPointTo(Point(c.point))), Show(Point(c.closest)));
    }
    EXPECT_EQ(Show(AcGeLine3d(Point("0,0"), Point("1,0")).closestPointTo(Point("-3,4"))), "-3,0");
}

TEST(Segment, ZeroLength) {
    const AcGeLineSeg3d dot = Segment("2,3 2,3");
    EXPECT_EQ(dot.length(), 0.0);
    EXPECT_EQ(dot.direction().length(), 0.0);
    EXPECT_EQ(dot.paramOf(Point("5,5")), 0.0);
    EXPECT_EQ(dot.paramAtLength(0, 1), 1.0);
    EXPECT_FALSE(dot.isParallelTo(Segment("0,0 1,0")));
}

TEST(Segment, EndsAreKeptAsGiven) {
    const AcGeLineSeg3d s = Segment("0.1,0.7 0.3,0.2");
    EXPECT_TRUE(Same(s.startPoint(), Point("0.1,0.7")));
    EXPECT_TRUE(Same(s.endPoint(), Point("0.3,0.2")));
    EXPECT_TRUE(Same(s.evalPoint(1.0), Point("0.3,0.2")));
    EXPECT_EQ(Show(Segment("0,0 4,2").midPoint()), "2,1");
    EXPECT_EQ(Show(Segment("0,0 4,2").baryComb(0.25)), "1,0.5");
}

TEST(Overlap, CommonPiece) {
    const struct {
        const char *name, *a, *b, *common;
    } kCases[] = {
        {"partly", "0,0 4,0", "3,0 9,0", "3,0 4,0"},
        {"turned round", "0,0 4,0", "9,0 3,0", "3,0 4,0"},
        {"inside", "0,0 4,0", "1,0 2,0", "1,0 2,0"},
        {"around", "1,0 2,0", "4,0 0,0", "1,0 2,0"},
        {"touching only", "0,0 4,0", "4,0 9,0", kNone},
        {"apart", "0,0 4,0", "5,0 9,0", kNone},
        {"parallel", "0,0 4,0", "0,1 4,1", kNone},
        {"crossing", "0,0 4,4", "0,4 4,0", kNone},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        AcGeLinearEnt3d* common = nullptr;
        const bool overlaps = Segment(c.a).overlap(Segment(c.b), common);
        const std::unique_ptr<AcGeLinearEnt3d> owner(common);
        ASSERT_EQ(overlaps, *c.common != 0);
        EXPECT_TRUE(!overlaps || common->isEqualTo(Segment(c.common)));
    }
    AcGeLinearEnt3d* common = nullptr;
    ASSERT_TRUE(AcGeLine3d(Point("0,0"), Point("1,0")).overlap(Segment("7,0 3,0"), common));
    std::unique_ptr<AcGeLinearEnt3d> owner(common);
    EXPECT_TRUE(owner->isEqualTo(Segment("3,0 7,0")));
    ASSERT_TRUE(AcGeRay3d(Point("0,0"), Point("1,0"))
                    .overlap(AcGeLine3d(Point("5,0"), Point("-5,0")), common));
    owner.reset(common);
    EXPECT_TRUE(owner->isEqualTo(AcGeRay3d(Point("0,0"), Point("1,0"))));
}

TEST(Entity, KindCopyAndTransform) {
    const AcGeLineSeg3d segment = Segment("1,0 3,0");
    EXPECT_EQ(segment.type(), AcGe::kLineSeg3d);
    for (const AcGe::EntityId kind :
         {AcGe::kLineSeg3d, AcGe::kLinearEnt3d, AcGe::kCurve3d, AcGe::kEntity3d})
        EXPECT_TRUE(segment.isKindOf(kind));
    EXPECT_FALSE(segment.isKindOf(AcGe::kLine3d));
    const std::unique_ptr<AcGeEntity3d> copy(segment.copy());
    copy->transformBy(AcGeMatrix3d::translation({0, 2, 0}));
    EXPECT_TRUE(copy->isEqualTo(Segment("1,2 3,2")));
    EXPECT_FALSE(copy->isEqualTo(segment));
    EXPECT_FALSE(copy->isEqualTo(AcGeLine3d(Point("1,2"), Point("3,2"))));
    copy->scaleBy(2.0, Point("1,2")).rotateBy(host::kPi / 2, AcGeVector3d::kZAxis, Point("1,2"));
    EXPECT_TRUE(copy->isEqualTo(Segment("1,2 1,6")));
}

}  // namespace
