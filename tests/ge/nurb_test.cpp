// Splines against curves that are known otherwise.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "ge_text.h"
#include "genurb3d.h"
#include "geplane.h"
#include "host/base/angles.h"

namespace {

using host::kPi;

AcGePoint3dArray Array(const char* text) {
    AcGePoint3dArray points;
    for (const AcGePoint3d& p : Points(text)) points.append(p);
    return points;
}

AcGeKnotVector Knots(const std::vector<double>& knots) {
    return AcGeKnotVector(static_cast<int>(knots.size()), knots.data());
}

AcGeDoubleArray Weights(const std::vector<double>& weights) {
    AcGeDoubleArray array;
    for (const double w : weights) array.append(w);
    return array;
}

AcGeNurbCurve3d Circle() {
    const double w = std::sqrt(0.5);
    return AcGeNurbCurve3d(2, Knots({0, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 4}),
                           Array("1,0 1,1 0,1 -1,1 -1,0 -1,-1 0,-1 1,-1 1,0"),
                           Weights({1, w, 1, w, 1, w, 1, w, 1}));
}

TEST(Nurb, RationalCircle) {
    const AcGeNurbCurve3d circle = Circle();
    ASSERT_EQ(circle.numControlPoints(), 9);
    EXPECT_TRUE(circle.isRational() && circle.isClosed());
    EXPECT_NEAR(circle.length(0, 4), 2 * kPi, 1e-9);
    EXPECT_NEAR(circle.length(0, 1), kPi / 2, 1e-10);
    for (int i = 0; i <= 400; ++i) {
        AcGeVector3dArray d;
        const AcGePoint3d p = circle.evalPoint(i * 0.01, 1, d);
        ASSERT_NEAR(p.asVector().length(), 1, 1e-14);
        ASSERT_NEAR(p.asVector().dotProduct(d[0]), 0, 1e-13);
    }
    EXPECT_TRUE(circle.closestPointTo(Point("3,4")).isEqualTo(Point("0.6,0.8"), Tol(1e-12)));
    AcGePlane plane;
    EXPECT_TRUE(circle.isPlanar(plane) && plane.normal().isParallelTo(AcGeVector3d::kZAxis));
    EXPECT_TRUE(Same(circle.startPoint(), Point("1,0")));
    EXPECT_TRUE(Same(circle.evalPoint(-3), Point("1,0")) &&
                Same(circle.evalPoint(9), Point("1,0")));
}

TEST(Nurb, DegreeOneIsThePolygon) {
    const AcGeNurbCurve3d polygon(1, Knots({0, 0, 3, 7, 7}), Array("0,0 3,0 3,4"));
    EXPECT_TRUE(polygon.evalPoint(1.5) == Point("1.5,0"));
    EXPECT_TRUE(polygon.evalPoint(5) == Point("3,2"));
    EXPECT_NEAR(polygon.length(0, 7), 7, 1e-12);
    EXPECT_DOUBLE_EQ(polygon.paramAtLength(1, 4), 5);
    EXPECT_TRUE(polygon.closestPointTo(Point("4,-1")) == Point("3,0"));
    AcGePoint3dArray pts;
    AcGeDoubleArray params;
    polygon.getSamplePoints(0, 7, 0.1, pts, params);
    ASSERT_EQ(pts.length(), 3);
    EXPECT_TRUE(pts[1] == Point("3,0"));
}

// A parabola y = x^2 over [0, 2] as a quadratic; its length has a closed form.
TEST(Nurb, ParabolaLengthAndBezierForm) {
    const AcGeNurbCurve3d parabola(2, Knots({0, 0, 0, 1, 1, 1}), Array("0,0 1,0 2,4"));
    const double exact = std::sqrt(17.0) + std::asinh(4.0) / 4;
    EXPECT_NEAR(parabola.length(0, 1), exact, 1e-10 * exact);
    for (int i = 0; i <= 10; ++i) {
        const AcGePoint3d p = parabola.evalPoint(i / 10.0);
        EXPECT_NEAR(p.y, p.x * p.x, 1e-14);
    }
}

// De Boor's scheme agrees with the sum over the basis functions of Cox and de Boor's recursion.
double Basis(const std::vector<double>& u, int i, int p, double t) {
    if (p == 0) return u[i] <= t && t < u[i + 1] ? 1 : 0;
    const double left = u[i + p] - u[i], right = u[i + p + 1] - u[i + 1];
    return (left > 0 ? (t - u[i]) / left * Basis(u, i, p - 1, t) : 0) +
           (right > 0 ? (u[i + p + 1] - t) / right * Basis(u, i + 1, p - 1, t) : 0);
}

TEST(Nurb, AnyDegreeAndKnotsMatchTheBasisSum) {
    std::mt19937 random(41);
    std::uniform_real_distribution<double> at(-5, 5), weight(0.2, 3);
    std::uniform_int_distribution<int> step(0, 2);
    for (int round = 0; round < 200; ++round) {
        const int degree = 1 + round % 6, count = degree + 1 + round % 5;
        std::vector<double> knots{0}, weights;
        AcGePoint3dArray points;
        for (int i = 1; i < count + degree + 1; ++i) knots.push_back(knots.back() + step(random));
        for (int i = 0; i < count; ++i) {
            points.append(AcGePoint3d(at(random), at(random), at(random)));
            weights.push_back(round % 2 ? weight(random) : 1.0);
        }
        const AcGeNurbCurve3d curve(degree, Knots(knots), points, Weights(weights));
        if (!(knots[degree] < knots[count])) {
            EXPECT_EQ(curve.numControlPoints(), 0);
            continue;
        }
        ASSERT_EQ(curve.numControlPoints(), count);
        for (int k = 0; k < 20; ++k) {
            const double t = knots[degree] + (knots[count] - knots[degree]) * k / 20.0;
            AcGeVector3d sum;
            double w = 0;
            for (int i = 0; i < count; ++i) {
                const double b = Basis(knots, i, degree, t) * weights[i];
                sum += points[i].asVector() * b;
                w += b;
            }
            ASSERT_TRUE(curve.evalPoint(t).isEqualTo((sum / w).asPoint(), Tol(1e-10)))
                << "round " << round << " t " << t;
        }
    }
}

TEST(Nurb, Periodic) {
    // One period of knots: a closed, smooth curve.
    const AcGePoint3dArray square = Array("1,1 -1,1 -1,-1 1,-1");
    const AcGeNurbCurve3d loop(3, Knots({0, 1, 2, 3, 4}), square, true);
    ASSERT_EQ(loop.numControlPoints(), 7);
    EXPECT_TRUE(loop.isPeriodic() && loop.isClosed());
    AcGeVector3dArray first, last;
    loop.evalPoint(0, 2, first);
    loop.evalPoint(4, 2, last);
    EXPECT_TRUE(first[0].isEqualTo(last[0]) && first[1].isEqualTo(last[1]));
    // A quarter of the parameters is a quarter turn of the curve.
    const AcGePoint3d p = loop.evalPoint(0.3), q = loop.evalPoint(1.3);
    EXPECT_TRUE(q == AcGePoint3d(-p.y, p.x, 0));
    // The same written out in full, as drawings hold it.
    const AcGeNurbCurve3d full(3, Knots({-3, -2, -1, 0, 1, 2, 3, 4, 5, 6, 7}),
                               Array("1,1 -1,1 -1,-1 1,-1 1,1 -1,1 -1,-1"), true);
    for (int i = 0; i <= 32; ++i) EXPECT_TRUE(full.evalPoint(i / 8.0) == loop.evalPoint(i / 8.0));
}

TEST(Nurb, FitPointsAreOnTheCurve) {
    std::mt19937 random(9);
    std::uniform_real_distribution<double> at(-10, 10);
    for (int round = 0; round < 60; ++round) {
        AcGePoint3dArray points;
        for (int i = 0; i < 2 + round % 9; ++i)
            points.append(AcGePoint3d(at(random), at(random), round % 3 ? 0 : at(random)));
        const AcGeVector3d start(1, 2, 0), end(-3, 1, 0);
        const bool tangents = round % 2 == 0;
        const AcGeNurbCurve3d curve(points, start, end, tangents, tangents);
        ASSERT_EQ(curve.numControlPoints(), points.length() + 2);
        for (int i = 0; i < points.length(); ++i)
            ASSERT_TRUE(curve.evalPoint(curve.knotAt(i + 3)).isEqualTo(points[i], Tol(1e-9)));
        AcGeVector3dArray first, last;
        curve.evalPoint(curve.startParam(), 2, first);
        curve.evalPoint(curve.endParam(), 2, last);
        if (tangents) {
            EXPECT_TRUE(first[0].isCodirectionalTo(start) && last[0].isCodirectionalTo(end));
        } else {
            EXPECT_LT(first[1].length() + last[1].length(), 1e-9);
        }
    }
    // Fit points of a straight line stay on it; twins are left out.
    const AcGeNurbCurve3d line(Array("0,0 1,1 1,1 5,5"), {}, {}, false, false);
    EXPECT_EQ(line.numFitPoints(), 3);
    EXPECT_NEAR(line.length(line.startParam(), line.endParam()), 5 * std::sqrt(2.0), 1e-10);
    AcGePlane plane;
    EXPECT_TRUE(line.isPlanar(plane) && plane.isEqualTo(AcGePlane::kXYPlane));
}

// Some programs write a corner as control points at one place. The spans there have no length but
// that of the coordinates' rounding, on which halving would go on for ever.
TEST(Nurb, CornersAsEqualControlPoints) {
    const AcGePoint3dArray corners = Array("0.1,0 0.1,10.1 20.3,10.7 20,15 60.123,15.77 60,0");
    for (const int times : {3, 4, 5, 9})
        for (const double away : {0.0, 1e3, 1e6}) {
            SCOPED_TRACE(std::to_string(times) + " times at " + std::to_string(away));
            const AcGeVector3d move(away, away / 7, 0);
            AcGePoint3dArray controls;
            double length = 0.0;
            for (int i = 0; i < corners.length(); ++i) {
                for (int k = 0; k < times; ++k) controls.append(corners[i] + move);
                if (i > 0) length += corners[i].distanceTo(corners[i - 1]);
            }
            std::vector<double> knots(4, 0.0);
            const int inner = controls.length() - 4;
            for (int i = 1; i <= inner; ++i) knots.push_back(i);
            knots.insert(knots.end(), 4, inner + 1.0);
            const AcGeNurbCurve3d curve(3, Knots(knots), controls, false);
            EXPECT_NEAR(length, curve.length(0.0, inner + 1.0), 1e-11 * (length + away));
            AcGePoint3dArray points;
            AcGeDoubleArray params;
            curve.getSamplePoints(0.0, inner + 1.0, 1e-3, points, params);
            EXPECT_LT(points.length(), 100 * inner);
        }
}

TEST(Nurb, WrongDataMakeNoCurve) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const struct {
        const char* name;
        int degree;
        std::vector<double> knots;
        const char* points;
        std::vector<double> weights;
    } kCases[] = {
        {"no degree", 0, {0, 1, 2}, "0,0 1,1", {}},
        {"enormous degree", 1000, {0, 1, 2}, "0,0 1,1", {}},
        {"too few points", 3, {0, 0, 0, 0, 1, 1, 1}, "0,0 1,1 2,2", {}},
        {"too few knots", 2, {0, 0, 0, 1, 1}, "0,0 1,1 2,2", {}},
        {"no points", 3, {}, "", {}},
        {"falling knots", 2, {0, 0, 0, 1, 0.5, 1}, "0,0 1,1 2,2", {}},
        {"no interval", 2, {1, 1, 1, 1, 1, 1}, "0,0 1,1 2,2", {}},
        {"knot not a number", 2, {0, 0, 0, nan, 1, 1}, "0,0 1,1 2,2", {}},
        {"point not a number", 2, {0, 0, 0, 1, 1, 1}, "0,0 nan,1 2,2", {}},
        {"weights missing", 2, {0, 0, 0, 1, 1, 1}, "0,0 1,1 2,2", {1, 1}},
        {"weight 0", 2, {0, 0, 0, 1, 1, 1}, "0,0 1,1 2,2", {1, 0, 1}},
        {"weight below 0", 2, {0, 0, 0, 1, 1, 1}, "0,0 1,1 2,2", {1, -1, 1}},
    };
    for (const auto& c : kCases) {
        for (const bool periodic : {false, true}) {
            SCOPED_TRACE(c.name);
            const AcGeNurbCurve3d curve(c.degree, Knots(c.knots), Array(c.points),
                                        Weights(c.weights), periodic);
            EXPECT_EQ(curve.numControlPoints(), 0);
            // Still safe to ask.
            EXPECT_TRUE(Same(curve.evalPoint(0.5), AcGePoint3d::kOrigin));
            EXPECT_EQ(curve.length(0, 1), 0.0);
            EXPECT_EQ(curve.paramAtLength(0, 1), 0.0);
            EXPECT_EQ(curve.paramOf(Point("1,1")), 0.0);
            AcGePoint3dArray pts;
            curve.getSamplePoints(3, pts);
            EXPECT_EQ(pts.length(), 3);
        }
    }
    EXPECT_EQ(AcGeNurbCurve3d(Array("1,1 1,1"), {}, {}).numControlPoints(), 0);
    EXPECT_EQ(AcGeNurbCurve3d(Array("1,1 nan,1"), {}, {}).numControlPoints(), 0);
}

}  // namespace
