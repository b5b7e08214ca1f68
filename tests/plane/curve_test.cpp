// One line or arc: its middle, box, length and integrals, places along it, distances.
#include <gtest/gtest.h>

#include <cmath>

#include "plane/ring.h"
#include "plane/text.h"
#include "tests/plane/exact.h"
#include "tests/plane/random_curves.h"

namespace {

using plane::Curve;
using plane::Point;

Curve One(const char* text) { return plane::ParseCurves(text).at(0); }

std::string Show(const plane::Box& box) {
    return plane::Show(box.low) + " " + plane::Show(box.high);
}

TEST(PlaneCurve, MiddleBoxAndLength) {
    const struct {
        const char* name;
        const char* curve;
        const char* middle;
        const char* box;
        double length;
    } cases[] = {
        {"line", "0,0 3,4", "1.5,2", "0,0 3,4", 5},
        {"half circle below", "-1,0(1) 1,0", "0,-1", "-1,-1 1,0", plane::kHalfTurn},
        {"half circle above", "-1,0(-1) 1,0", "0,1", "-1,0 1,1", plane::kHalfTurn},
        {"quarter", "1,0(0.41421356237309503) 0,1", "0.707107,0.707107", "0,0 1,1",
         plane::kHalfTurn / 2},
        {"three quarters", "1,0(2.4142135623730949) 0,-1", "-0.707107,0.707107", "-1,-1 1,1",
         1.5 * plane::kHalfTurn},
        {"nearly a full turn", "1,0(1000) 1,0.004", "3,0.002", "1,-0.998001 3,1.002",
         2 * plane::kHalfTurn - 4e-3},
        {"nearly straight", "0,0(1e-7) 4,0", "2,-2e-07", "0,-2e-07 4,0", 4},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Curve curve = One(c.curve);
        EXPECT_EQ(c.middle, plane::Show(curve.Middle()));
        EXPECT_EQ(c.box, Show(plane::BoxOf(curve)));
        EXPECT_NEAR(c.length, curve.Length(), 2e-5 * (curve.bulge > 100) + 1e-12);
        EXPECT_NEAR(c.length, plane::Integrate(curve).length, 2e-5 * (curve.bulge > 100) + 1e-9);
        const Curve back = curve.Reversed();
        EXPECT_EQ(c.middle, plane::Show(back.Middle()));
        EXPECT_NEAR(-plane::Integrate(curve).area, plane::Integrate(back).area, 1e-12);
    }
}

TEST(PlaneCurve, HalvesOfACircleShareTheirEnds) {
    for (const double angle : {0.0, 0.1, 3.0}) {
        const auto halves = plane::HalvesOfCircle({1e6, -3}, 2.5, angle);
        EXPECT_TRUE(halves[0].to == halves[1].from && halves[1].to == halves[0].from);
        const plane::Integrals sum = plane::Integrate({halves[0], halves[1]});
        EXPECT_NEAR(2.5 * 2.5 * plane::kHalfTurn, sum.area, 1e-8);
        EXPECT_EQ("999997.5,-5.5 1000002,-0.5",
                  plane::Show(plane::BoxOf({halves[0], halves[1]}).low, 7) + " " +
                      plane::Show(plane::BoxOf({halves[0], halves[1]}).high, 7));
    }
}

TEST(PlaneCurve, PlacesAlongIt) {
    const struct {
        const char* curve;
        double share;
        const char* point;
    } cases[] = {
        {"0,0 8,0", 0.25, "2,0"},
        {"0,0 8,0", -0.5, "-4,0"},
        {"-1,0(1) 1,0", 0.5, "0,-1"},
        {"-1,0(1) 1,0", 1.25, "0.707107,0.707107"},
        {"-1,0(-1) 1,0", 0.25, "-0.707107,0.707107"},
        {"-1,0(-1) 1,0", -0.25, "-0.707107,-0.707107"},
        {"0,0(1e-6) 4,0", 0.25, "1,-1.5e-06"},
        {"0,0(1e-6) 4,0", 2, "8,1.6e-05"},
    };
    for (const auto& c : cases) {
        const Curve curve = One(c.curve);
        EXPECT_EQ(c.point, plane::Show(plane::PointAt(curve, c.share))) << c.curve;
        if (c.share < 1.5) {
            EXPECT_NEAR(c.share, plane::ShareOf(curve, plane::PointAt(curve, c.share)), 1e-12)
                << c.curve;
        }
        // Beside the curve the share is that of its nearest point.
        const Point p = plane::PointAt(curve, 0.3);
        const Point off = p + plane::Left(plane::DirectionAt(curve, p)) * 0.5;
        EXPECT_NEAR(0.3, plane::ShareOf(curve, off), 1e-9) << c.curve;
    }
    const Curve part = plane::PartOf(One("-1,0(-1) 1,0"), {0, 1}, {1, 0});
    EXPECT_EQ("0,1(-0.414214) 1,0", plane::Show(std::vector<Curve>{part}));
}

// Against numbers of twice the length, near the origin and a million away.
TEST(PlaneCurve, DistancesAreExactToRounding) {
    for (const double offset : {0.0, 1e6}) {
        test::RandomCurves random(20, offset);
        const double noise = 1e-13 + 4e-16 * offset;
        for (int round = 0; round < 4000; ++round) {
            const Curve curve = random.Curve();
            const test::ExactCurve exact(curve);
            const double share = random.Number(0, 1);
            const Point on = plane::PointAt(curve, share);
            SCOPED_TRACE(plane::Show(std::vector<Curve>{curve}, 17) + " round " +
                         std::to_string(round));
            // An arc of nearly a full turn is as far from its centre as its ends are close.
            const double wide = noise * (1 + std::fabs(curve.bulge));
            EXPECT_LE(static_cast<double>(exact.DistanceTo(test::Exact(on))), wide * 10);
            EXPECT_NEAR(share, plane::ShareOf(curve, on), wide * 100);
            const Point p = random.Point();
            const double distance = plane::Distance(curve, p);
            EXPECT_NEAR(static_cast<double>(exact.DistanceTo(test::Exact(p))), distance,
                        wide * 100);
            EXPECT_NEAR(distance, plane::Distance(p, plane::NearestPoint(curve, p)), wide * 100);
            // Nothing of the curve leaves its box, and the box is no wider than the curve.
            plane::Box box = plane::BoxOf(curve), seen;
            for (int i = 0; i <= 64; ++i) seen.Add(plane::PointAt(curve, i / 64.0));
            EXPECT_TRUE(box.Meets(seen, 0));
            const double slack = curve.Length() * std::fabs(curve.Sweep()) / 64 / 8 + wide * 100;
            EXPECT_NEAR(box.low.x, seen.low.x, slack);
            EXPECT_NEAR(box.high.x, seen.high.x, slack);
            EXPECT_NEAR(box.low.y, seen.low.y, slack);
            EXPECT_NEAR(box.high.y, seen.high.y, slack);
        }
    }
}

// A ring cut into ever more chords has its area, moment and length in the limit.
TEST(PlaneRing, IntegralsAreThoseOfManyChords) {
    test::RandomCurves random(21);
    for (int round = 0; round < 100; ++round) {
        const Curve curve = random.Curve();
        if (std::fabs(curve.bulge) > 3) continue;
        plane::Integrals sum;
        constexpr int kParts = 2000;
        for (int i = 0; i < kParts; ++i) {
            const auto part = plane::Integrate(
                plane::MakeLine(plane::PointAt(curve, static_cast<double>(i) / kParts),
                                plane::PointAt(curve, (i + 1.0) / kParts)));
            sum.area += part.area;
            sum.moment += part.moment;
            sum.length += part.length;
            sum.lengthMoment += part.lengthMoment;
        }
        const auto exact = plane::Integrate(curve);
        const double scale = 1e-5 * (1 + curve.radius * std::fabs(curve.bulge));
        EXPECT_NEAR(sum.area, exact.area, scale * 10) << round;
        EXPECT_NEAR(sum.moment, exact.moment, scale * 100) << round;
        EXPECT_NEAR(sum.length, exact.length, scale) << round;
        EXPECT_NEAR(sum.lengthMoment, exact.lengthMoment, scale * 10) << round;
    }
}

TEST(PlaneRing, Inside) {
    const struct {
        const char* ring;
        const char* inside;
        const char* outside;
    } cases[] = {
        {"0,0 4,0 4,4 0,4", "2,2 0.001,0.001 3.999,3.999", "-1,2 5,2 2,-1 2,5 4.001,4"},
        {"-1,0(1) 1,0(1)", "0,0 0,0.999 -0.999,0 0.5,-0.5", "0.8,0.8 -0.8,-0.8 1.001,0 0,1.001"},
        {"0,0(-1) 4,0", "2,1 2,1.999 0.1,0.05", "2,-0.001 2,2.001 0,1 4,1"},
        {"0,0(1) 4,0 4,4 0,4", "2,-1 2,-1.999 2,0 3,3", "0,-1 4,-1 2,-2.001"},
        {"0,0(-1) 4,0 4,4 0,4", "2,3 0.1,2 3.9,0.7", "2,0.5 2,1.999 2,-1"},
        {"0,0 4,0 4,4 2,1 0,4", "1,0.5 2,0.9 0.5,3", "2,1.1 2,3"},
    };
    for (const auto& c : cases) {
        const std::vector<Curve> ring = plane::CurvesOf(plane::ParseCorners(c.ring));
        for (const plane::Corner& p : plane::ParseCorners(c.inside))
            EXPECT_TRUE(plane::IsInside(ring, p.point)) << c.ring << ": " << plane::Show(p.point);
        for (const plane::Corner& p : plane::ParseCorners(c.outside))
            EXPECT_FALSE(plane::IsInside(ring, p.point)) << c.ring << ": " << plane::Show(p.point);
    }
}

TEST(PlaneText, ReadsWhatItShows) {
    for (const char* const text : {"", "1,2", "0,0 4,0(0.5) 4,4", "-0.125,1e+06(-2.5) 3,1e-300"})
        EXPECT_EQ(text, plane::Show(plane::ParseCorners(text))) << text;
    for (const char* const text : {"0,0 4,0(0.5) 4,4", "0,0 1,1 | 2,2(-1) 3,3 4,4"})
        EXPECT_EQ(text, plane::Show(plane::ParseCurves(text))) << text;
    test::RandomCurves random(22, 1e6);
    for (int round = 0; round < 200; ++round) {
        const Point p = random.Point();
        EXPECT_TRUE(p == plane::ParseCorners(plane::Show(p, plane::kAllDigits)).at(0).point);
    }
    for (const char* const text : {"1", "1,", "1,2(", "1,2(3", "1,2(3)4", "a,b", "1;2", "1,2,3"})
        EXPECT_THROW(plane::ParseCorners(text), std::invalid_argument) << text;
}

}  // namespace
