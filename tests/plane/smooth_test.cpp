// Ellipses and splines: places on them, and the arcs that follow them.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "plane/ring.h"
#include "plane/smooth.h"
#include "plane/text.h"

namespace {

using plane::Curve;
using plane::EllipsePiece;
using plane::Nurbs;
using plane::Point;

Nurbs Spline(int degree, std::vector<double> knots, const char* points,
             std::vector<double> weights = {}) {
    Nurbs spline{degree, std::move(knots), {}, std::move(weights)};
    for (const plane::Corner& c : plane::ParseCorners(points)) spline.points.push_back(c.point);
    return spline;
}

// A quarter of the unit circle; an S of two spans; a cubic with a corner in its middle.
Nurbs QuarterCircle() {
    return Spline(2, {0, 0, 0, 1, 1, 1}, "1,0 1,1 0,1", {1, std::sqrt(0.5), 1});
}
Nurbs Wave() { return Spline(3, {0, 0, 0, 0, 1, 2, 2, 2, 2}, "0,0 4,8 8,-8 12,8 16,0"); }
Nurbs Corner() {
    return Spline(3, {0, 0, 0, 0, 1, 1, 1, 2, 2, 2, 2}, "0,0 1,2 3,2 4,0 5,3 7,3 8,0");
}

TEST(PlaneSmooth, PlacesAndDirections) {
    const struct {
        const char* name;
        plane::SmoothCurve curve;
        double t;
        const char* point;
        const char* direction;
    } cases[] = {
        {"ellipse", EllipsePiece{{1, 2}, {4, 0}, {0, 3}, 0, 3}, 0, "5,2", "0,3"},
        {"quarter circle", QuarterCircle(), 0.5, "0.707107,0.707107", "-1.17157,1.17157"},
        {"its start", QuarterCircle(), 0, "1,0", "0,1.41421"},
        {"its end", QuarterCircle(), 1, "0,1", "-1.41421,0"},
        {"wave in the middle", Wave(), 1, "8,0", "6,0"},
        {"wave's end", Wave(), 2, "16,0", "12,-24"},
        {"behind a corner", Corner(), 1, "4,0", "3,9"},
        {"polygon", Spline(1, {0, 0, 1, 2, 2}, "0,0 2,0 2,4"), 1.5, "2,2", "0,4"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ASSERT_TRUE(plane::IsSound(c.curve));
        EXPECT_EQ(c.point, plane::Show(plane::PointAt(c.curve, c.t)));
        const plane::Vector d = plane::DerivativeAt(c.curve, c.t);
        EXPECT_EQ(c.direction, plane::Show(Point{d.x, d.y}));
    }
}

double WorstDistance(const plane::SmoothCurve& curve, const std::vector<Curve>& arcs) {
    double worst = 0;
    const double from = plane::StartOf(curve), to = plane::EndOf(curve);
    constexpr int kSamples = 5000;
    for (int i = 0; i <= kSamples; ++i)
        worst = std::max(
            worst, plane::Distance(arcs, plane::PointAt(curve, from + (to - from) * i / kSamples)));
    return worst;
}

TEST(PlaneSmooth, ArcsStayWithinTheToleranceAndTouch) {
    const struct {
        const char* name;
        plane::SmoothCurve curve;
        int corners;  // where arcs meet at an angle
    } cases[] = {
        {"ellipse", EllipsePiece{{0, 0}, {50, 0}, {0, 10}, 0, plane::kFullTurn}, 0},
        {"flat ellipse", EllipsePiece{{0, 0}, {50, 0}, {0, 0.01}, 0, plane::kFullTurn}, 0},
        {"aslant", EllipsePiece{{1e5, 1e5}, {30, 10}, {5, 20}, 1, 4}, 0},
        {"clockwise", EllipsePiece{{0, 0}, {50, 0}, {0, -10}, 0.2, 3}, 0},
        {"quarter circle", QuarterCircle(), 0},
        {"wave", Wave(), 0},
        {"corner", Corner(), 1},
        {"straight", Spline(3, {0, 0, 0, 0, 1, 1, 1, 1}, "0,0 1,1 2,2 5,5"), 0},
        {"polygon", Spline(1, {0, 0, 1, 2, 2}, "0,0 2,0 2,4"), 1},
        {"starts at rest", Spline(3, {0, 0, 0, 0, 1, 1, 1, 1}, "0,0 0,0 3,1 4,4"), 0},
        {"a loop", Spline(3, {0, 0, 0, 0, 1, 1, 1, 1}, "0,0 9,5 -5,5 4,0"), 0},
    };
    for (const auto& c : cases) {
        std::size_t before = 0;
        for (const double tol : {1e-2, 1e-4, 1e-6}) {
            SCOPED_TRACE(c.name + (" " + std::to_string(tol)));
            const plane::TangentArcs arcs = plane::TangentArcsOf(c.curve, tol);
            ASSERT_FALSE(arcs.curves.empty());
            EXPECT_TRUE(arcs.isWithin);
            EXPECT_LE(WorstDistance(c.curve, arcs.curves), tol);
            EXPECT_TRUE(arcs.curves.front().from ==
                        plane::PointAt(c.curve, plane::StartOf(c.curve)));
            EXPECT_TRUE(arcs.curves.back().to == plane::PointAt(c.curve, plane::EndOf(c.curve)));
            int corners = 0;
            for (std::size_t i = 0; i + 1 < arcs.curves.size(); ++i) {
                EXPECT_TRUE(arcs.curves[i].to == arcs.curves[i + 1].from);
                corners += plane::Length(arcs.curves[i].EndDirection() -
                                         arcs.curves[i + 1].StartDirection()) > 1e-6;
            }
            EXPECT_EQ(c.corners, corners);
            // A hundredth of the tolerance takes about the cube root of it more arcs: 4.6.
            if (before > 8) {
                EXPECT_LE(arcs.curves.size(), before * 8);
            }
            before = arcs.curves.size();
        }
    }
}

TEST(PlaneSmooth, EdgeOnItIsALine) {
    const plane::TangentArcs arcs =
        plane::TangentArcsOf(EllipsePiece{{0, 0}, {5, 0}, {0, 0}, 0, plane::kFullTurn}, 1e-3);
    EXPECT_EQ("5,0 3.06162e-16,0 -5,0 -9.18485e-16,0 5,0", plane::Show(arcs.curves));
}

TEST(PlaneSmooth, WhatIsNotSoundHasNoArcs) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const plane::SmoothCurve bad[] = {
        EllipsePiece{{0, 0}, {5, 0}, {0, 1}, 2, 1},
        EllipsePiece{{nan, 0}, {5, 0}, {0, 1}, 0, 1},
        Nurbs{},
        Spline(3, {0, 0, 0, 0, 1, 1, 1}, "0,0 1,1 2,2 5,5"),
        Spline(3, {0, 0, 0, 0, 1, 1, 1, 0.5}, "0,0 1,1 2,2 5,5"),
        Spline(3, {0, 0, 0, 0, 0, 0, 0, 0}, "0,0 1,1 2,2 5,5"),
        Spline(3, {0, 0, 0, 0, 1, 1, 1, 1}, "0,0 1,1 2,2 5,5", {1, 1, 0, 1}),
        Spline(3, {0, 0, 0, nan, 1, 1, 1, 1}, "0,0 1,1 2,2 5,5"),
    };
    for (const plane::SmoothCurve& curve : bad) {
        EXPECT_FALSE(plane::IsSound(curve));
        EXPECT_TRUE(plane::TangentArcsOf(curve, 1e-3).curves.empty());
    }
    const plane::TangentArcs few = plane::TangentArcsOf(Wave(), 1e-9, 10);
    EXPECT_FALSE(few.isWithin);
    EXPECT_LE(few.curves.size(), 24u);
}

}  // namespace
