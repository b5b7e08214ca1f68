// Arcs, ellipses, and what all curves share: sampling, lengths, closest points.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <vector>

#include "ge_text.h"
#include "gearc3d.h"
#include "geell3d.h"
#include "geline3d.h"
#include "gemat3d.h"
#include "genurb3d.h"
#include "geplane.h"
#include "host/base/angles.h"

namespace {

using host::kPi;

const AcGeVector3d& kX = AcGeVector3d::kXAxis;
const AcGeVector3d& kZ = AcGeVector3d::kZAxis;

AcGeCircArc3d Arc(const char* center, double radius, double from, double to,
                  const AcGeVector3d& normal = kZ) {
    return AcGeCircArc3d(Point(center), normal, normal.perpVector(), radius, from, to);
}

AcGeNurbCurve3d Wave() {
    AcGePoint3dArray points;
    for (const AcGePoint3d& p : Points("0,0 1,2 3,3 5,-1 6,0 9,4")) points.append(p);
    return AcGeNurbCurve3d(points, AcGeVector3d(), AcGeVector3d(), false, false);
}

// Curves of every kind, for laws that hold for all.
std::vector<std::unique_ptr<AcGeCurve3d>> Zoo() {
    std::vector<std::unique_ptr<AcGeCurve3d>> zoo;
    zoo.push_back(std::make_unique<AcGeLineSeg3d>(Segment("1,2 -3,5")));
    zoo.push_back(std::make_unique<AcGeCircArc3d>(Arc("1,2", 3, 0.5, 2.5)));
    zoo.push_back(std::make_unique<AcGeCircArc3d>(Arc("1,2,3", 3, 5.5, 7.5, {1, 2, -3})));
    zoo.push_back(std::make_unique<AcGeCircArc3d>(Point("0,0"), kZ, 2.0));
    zoo.push_back(std::make_unique<AcGeEllipArc3d>(Point("1,1"), AcGeVector3d(1, 1, 0),
                                                   AcGeVector3d(-1, 1, 0), 5, 1, 0.2, 4));
    zoo.push_back(std::make_unique<AcGeNurbCurve3d>(Wave()));
    return zoo;
}

TEST(Sampling, EqualStepsWithExactEnds) {
    for (const auto& curve : Zoo()) {
        SCOPED_TRACE(curve->type());
        AcGeInterval interval;
        AcGePoint3d start, end;
        curve->getInterval(interval, start, end);
        const double from = interval.lowerBound(), to = interval.upperBound();
        for (const int count : {2, 3, 7, 20}) {
            AcGePoint3dArray pts;
            AcGeDoubleArray params;
            pts.append(Point("9,9"));  // replaced
            curve->getSamplePoints(count, pts, params);
            ASSERT_EQ(pts.length(), count);
            ASSERT_EQ(params.length(), count);
            for (int i = 0; i + 1 < count; ++i)
                EXPECT_EQ(params[i], from + i * (to - from) / (count - 1));
            EXPECT_EQ(params.last(), to);
            EXPECT_TRUE(Same(pts.first(), start));
            EXPECT_TRUE(Same(pts.last(), end));
        }
        for (const int count : {1, 0, -4}) {
            AcGePoint3dArray pts;
            curve->getSamplePoints(count, pts);
            ASSERT_EQ(pts.length(), 1);
            EXPECT_TRUE(Same(pts[0], start));
        }
    }
    AcGePoint3dArray pts;
    AcGeLine3d().getSamplePoints(5, pts);
    EXPECT_TRUE(pts.isEmpty());
}

TEST(Sampling, ChordsStayWithinTheTolerance) {
    for (const auto& curve : Zoo()) {
        SCOPED_TRACE(curve->type());
        AcGeInterval interval;
        curve->getInterval(interval);
        const double eps = 0.01;
        AcGePoint3dArray pts;
        AcGeDoubleArray params;
        curve->getSamplePoints(interval.lowerBound(), interval.upperBound(), eps, pts, params);
        ASSERT_EQ(pts.length(), params.length());
        EXPECT_EQ(params.first(), interval.lowerBound());
        EXPECT_EQ(params.last(), interval.upperBound());
        EXPECT_LT(pts.length(), 100);
        for (int i = 1; i < pts.length(); ++i) {
            const AcGeLineSeg3d chord(pts[i - 1], pts[i]);
            for (int k = 0; k <= 50; ++k) {
                const double t = params[i - 1] + (params[i] - params[i - 1]) * k / 50;
                ASSERT_LE(chord.closestPointTo(curve->evalPoint(t)).distanceTo(curve->evalPoint(t)),
                          eps);
            }
        }
    }
    AcGePoint3dArray pts;
    AcGeDoubleArray params;
    Segment("0,0 9,9").getSamplePoints(0, 1, 0.01, pts, params);
    EXPECT_EQ(pts.length(), 2);
}

TEST(Curve, DerivativesMatchDifferences) {
    for (const auto& curve : Zoo()) {
        SCOPED_TRACE(curve->type());
        AcGeInterval range;
        curve->getInterval(range);
        for (int i = 1; i < 30; ++i) {
            const double t = range.lowerBound() + range.length() * i / 30, h = 1e-4;
            AcGeVector3dArray d;
            const AcGePoint3d p = curve->evalPoint(t, 2, d);
            ASSERT_EQ(d.length(), 2);
            const AcGePoint3d ahead = curve->evalPoint(t + h), behind = curve->evalPoint(t - h);
            EXPECT_LT(((ahead - behind) / (2 * h) - d[0]).length(), 1e-5);
            EXPECT_LT((((ahead - p) - (p - behind)) / (h * h) - d[1]).length(), 1e-3);
        }
    }
}

TEST(Curve, LengthIsThatOfManyChords) {
    for (const auto& curve : Zoo()) {
        SCOPED_TRACE(curve->type());
        AcGeInterval range;
        curve->getInterval(range);
        AcGePoint3dArray pts;
        curve->getSamplePoints(20001, pts);
        double sum = 0;
        for (int i = 1; i < pts.length(); ++i) sum += pts[i].distanceTo(pts[i - 1]);
        const double length = curve->length(range.lowerBound(), range.upperBound());
        EXPECT_NEAR(length, sum, 1e-6 * sum);
        EXPECT_GE(length, sum * (1 - 1e-12));
        EXPECT_EQ(length, curve->length(range.upperBound(), range.lowerBound()));
        // And back: the parameter at a length has that length.
        for (const double part : {0.0, 0.1, 0.5, 0.99}) {
            const double t = curve->paramAtLength(range.lowerBound(), part * length);
            EXPECT_NEAR(curve->length(range.lowerBound(), t), part * length, 1e-9 * length);
            const double back = curve->paramAtLength(range.upperBound(), part * length, false);
            EXPECT_NEAR(curve->length(back, range.upperBound()), part * length, 1e-9 * length);
        }
        EXPECT_EQ(curve->paramAtLength(range.lowerBound(), 2 * length), range.upperBound());
    }
    EXPECT_DOUBLE_EQ(AcGeLine3d(Point("0,0"), Point("3,4")).paramAtLength(1, 10), 3);
    EXPECT_DOUBLE_EQ(AcGeLine3d(Point("0,0"), Point("3,4")).paramAtLength(1, 10, false), -1);
}

TEST(Curve, ClosestPointBeatsEverySample) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> at(-8, 8);
    for (const auto& curve : Zoo()) {
        SCOPED_TRACE(curve->type());
        AcGePoint3dArray pts;
        curve->getSamplePoints(4001, pts);
        for (int i = 0; i < 60; ++i) {
            const AcGePoint3d p(at(random), at(random), i % 2 ? at(random) : 0.0);
            double nearest = 1e300;
            for (const AcGePoint3d& q : pts) nearest = std::fmin(nearest, p.distanceTo(q));
            const double distance = curve->distanceTo(p);
            ASSERT_LE(distance, nearest + 1e-12) << Show(p);
            ASSERT_GE(distance, nearest - 0.01) << Show(p);
            ASSERT_TRUE(curve->evalPoint(curve->paramOf(p)).isEqualTo(curve->closestPointTo(p)));
        }
        // Points of the curve are on it, and know their parameter.
        AcGeInterval range;
        curve->getInterval(range);
        const double t = range.lowerBound() + 0.37 * range.length();
        double param = 0;
        EXPECT_TRUE(curve->isOn(curve->evalPoint(t), param, Tol(1e-8)));
        EXPECT_NEAR(param, t, 1e-6);
        EXPECT_FALSE(curve->isOn(curve->evalPoint(t) + AcGeVector3d(0, 0, 0.1), Tol(0.01)));
        EXPECT_TRUE(curve->isOn(t) && !curve->isOn(range.upperBound() + 1));
    }
}

TEST(Curve, BoxHoldsTheCurve) {
    for (const auto& curve : Zoo()) {
        SCOPED_TRACE(curve->type());
        const AcGeBoundBlock3d box = curve->boundBlock();
        AcGePoint3dArray pts;
        curve->getSamplePoints(3001, pts);
        AcGeBoundBlock3d around(pts[0], pts[0]);
        for (const AcGePoint3d& p : pts) {
            ASSERT_TRUE(box.contains(p)) << Show(p);
            around.extend(p);
        }
        if (curve->type() == AcGe::kNurbCurve3d) continue;  // its box is that of the control points
        EXPECT_TRUE(box.isEqualTo(around, Tol(1e-4)));
    }
}

TEST(Curve, TransformMovesEveryPoint) {
    std::mt19937 random(17);
    std::uniform_real_distribution<double> at(-2, 2);
    for (int round = 0; round < 20; ++round) {
        AcGeMatrix3d map =
            AcGeMatrix3d::rotation(at(random), {at(random), at(random), at(random)}) *
            AcGeMatrix3d::scaling(0.1 + std::fabs(at(random)));
        if (round % 2) map.preMultBy(AcGeMatrix3d::mirroring(AcGePlane::kYZPlane));
        for (const auto& curve : Zoo()) {
            SCOPED_TRACE(curve->type());
            const std::unique_ptr<AcGeCurve3d> moved(static_cast<AcGeCurve3d*>(curve->copy()));
            moved->transformBy(map);
            AcGePoint3dArray before, after;
            curve->getSamplePoints(13, before);
            moved->getSamplePoints(13, after);
            for (int i = 0; i < 13; ++i)
                ASSERT_TRUE(after[i].isEqualTo(map * before[i], Tol(1e-9)));
        }
    }
}

TEST(CircArc, FromAnglesAndThreePoints) {
    const AcGeCircArc3d arc = Arc("1,2", 3, 0, kPi / 2);
    EXPECT_TRUE(arc.startPoint() == Point("4,2"));
    EXPECT_TRUE(arc.endPoint() == Point("1,5"));
    EXPECT_DOUBLE_EQ(arc.length(0, kPi / 2), 1.5 * kPi);
    EXPECT_TRUE(Arc("0,0", 1, 0, 1, -kZ).refVec().isEqualTo(-kX));

    const AcGeCircArc3d through(Point("4,2"), Point("1,5"), Point("-2,2"));
    EXPECT_TRUE(through.center() == Point("1,2"));
    EXPECT_NEAR(through.radius(), 3, 1e-14);
    EXPECT_TRUE(through.normal().isEqualTo(kZ));
    EXPECT_TRUE(through.startPoint() == Point("4,2"));
    EXPECT_TRUE(through.endPoint() == Point("-2,2"));
    EXPECT_NEAR(through.endAng(), kPi, 1e-14);
    // The long way round when the middle point lies there.
    EXPECT_NEAR(AcGeCircArc3d(Point("4,2"), Point("1,-1"), Point("1,5")).endAng(), 1.5 * kPi,
                1e-14);
    EXPECT_EQ(AcGeCircArc3d(Point("0,0"), Point("1,1"), Point("2,2")).radius(), 0.0);
}

TEST(CircArc, ClosestPointIsCutToTheSweep) {
    const AcGeCircArc3d arc = Arc("0,0", 1, 1.75 * kPi, 2.25 * kPi);  // across the reference vector
    EXPECT_TRUE(arc.closestPointTo(Point("5,0")) == Point("1,0"));
    EXPECT_TRUE(arc.closestPointTo(Point("0,5")) == arc.endPoint());
    EXPECT_TRUE(arc.closestPointTo(Point("0,-5")) == arc.startPoint());
    EXPECT_FALSE(arc.isOn(Point("0,1")));
    EXPECT_TRUE(arc.isOn(Point("1,0")));
    EXPECT_FALSE(arc.isClosed());
    EXPECT_TRUE(AcGeCircArc3d().isClosed());
    AcGePlane plane;
    EXPECT_TRUE(arc.isPlanar(plane) && plane.isEqualTo(AcGePlane::kXYPlane));
}

TEST(CircArcDeathTest, RefusesToBecomeAnEllipse) {
    AcGeMatrix3d squeeze;
    squeeze.entry[0][0] = 2;
    EXPECT_DEATH(Arc("0,0", 1, 0, 1).transformBy(squeeze), "would become an ellipse");
}

TEST(Ellipse, KnownLengths) {
    const auto around = [](double a, double b) {
        return AcGeEllipArc3d(AcGePoint3d(), kX, AcGeVector3d::kYAxis, a, b).length(0, 2 * kPi);
    };
    // Complete elliptic integrals, 4 a E(e); values from tables of E (k^2 = 0.75, 0.9999).
    EXPECT_NEAR(around(1, 1), 2 * kPi, 1e-12);
    EXPECT_NEAR(around(2, 1), 9.688448220547675, 1e-10);
    EXPECT_NEAR(around(10, 1), 40.63974180100895, 1e-9);
    EXPECT_NEAR(around(1, 0), 4.0, 1e-9);
}

// A map that squeezes and shears changes the axes of an ellipse and its parameters, never its
// points.
TEST(Ellipse, AnyAffineMap) {
    std::mt19937 random(23);
    std::uniform_real_distribution<double> at(-3, 3);
    for (int round = 0; round < 300; ++round) {
        AcGeMatrix3d map;
        for (int row = 0; row < 3; ++row)
            for (int col = 0; col < 4; ++col) map.entry[row][col] = at(random);
        const AcGeCircArc3d arc = Arc("1,2", 1.5, 0.3, 4);
        AcGeEllipArc3d ellipse(arc);
        ellipse.transformBy(map);
        ASSERT_GE(ellipse.majorRadius(), ellipse.minorRadius());
        ASSERT_TRUE(ellipse.majorAxis().isPerpendicularTo(ellipse.minorAxis(), Tol(1e-9)));
        AcGePoint3dArray before, after;
        arc.getSamplePoints(9, before);
        ellipse.getSamplePoints(9, after);
        for (int i = 0; i < 9; ++i) ASSERT_TRUE(after[i].isEqualTo(map * before[i], Tol(1e-9)));
    }
    AcGeMatrix3d flat;
    flat.entry[0][0] = 0.5;
    AcGeEllipArc3d ellipse{AcGeCircArc3d()};
    ellipse.transformBy(flat);
    EXPECT_TRUE(ellipse.majorAxis().isParallelTo(AcGeVector3d::kYAxis));
    EXPECT_EQ(ellipse.minorRadius(), 0.5);
}

TEST(BoundBlock, MovesWithItsCorners) {
    AcGeBoundBlock3d box(Point("0,0"), Point("2,1"));
    box.transformBy(AcGeMatrix3d::rotation(kPi / 2, kZ));
    EXPECT_TRUE(box.isEqualTo(AcGeBoundBlock3d(Point("-1,0"), Point("0,2"))));
    EXPECT_FALSE(box.isDisjoint(AcGeBoundBlock3d(Point("0,2"), Point("3,3"))));  // touching
    EXPECT_TRUE(box.isDisjoint(AcGeBoundBlock3d(Point("0.1,0"), Point("3,3"))));
    EXPECT_TRUE(box.swell(0.5).contains(Point("0.5,2.5,0.5")));
}

}  // namespace
