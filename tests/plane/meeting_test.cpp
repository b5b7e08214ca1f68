// Where two lines or arcs meet: literal pairs, and random ones against numbers of twice the length.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "plane/meeting.h"
#include "plane/text.h"
#include "tests/plane/exact.h"
#include "tests/plane/random_curves.h"

namespace {

using plane::Curve;
using plane::Point;

std::string Joined(std::vector<Point> points, double tol) {
    std::string text;
    std::sort(points.begin(), points.end(), [](const Point& a, const Point& b) {
        return a.x < b.x || (a.x == b.x && a.y < b.y);
    });
    const Point* last = nullptr;
    for (const Point& p : points) {
        if (last != nullptr && plane::Distance(*last, p) <= 4 * tol) continue;
        const Point shown{std::round(p.x * 1e12) / 1e12, std::round(p.y * 1e12) / 1e12};
        text += (text.empty() ? "" : " ") + plane::Show(shown);
        last = &p;
    }
    return text;
}

TEST(PlaneMeeting, Pairs) {
    const struct {
        const char* name;
        const char* pair;
        double tol;
        const char* meetings;  // by x; what repeats within the tolerance once
    } cases[] = {
        {"lines cross", "0,0 4,4 | 0,4 4,0", 1e-9, "2,2"},
        {"lines miss", "0,0 4,4 | 3,0 4,0", 1e-9, ""},
        {"a corner", "0,0 4,0 | 4,0 4,4", 1e-9, "4,0"},
        {"an end on a line", "0,0 4,0 | 2,0 2,3", 1e-9, "2,0"},
        {"an end nearly on a line", "0,0 4,0 | 2,1e-7 2,3", 1e-6, "2,0"},
        {"an end not quite on a line", "0,0 4,0 | 2,1e-5 2,3", 1e-6, ""},
        {"parallel", "0,0 4,0 | 0,1 4,1", 1e-9, ""},
        {"lines on one another", "0,0 4,0 | 1,0 6,0", 1e-9, "1,0 4,0"},
        {"line through an arc", "-2,0 2,0 | 0,-1(1) 0,1", 1e-9, "1,0"},
        {"line through both sides", "-2,0.6 2,0.6 | -0.6,-0.8(2) -0.6,0.8", 1e-9, "0.8,0.6"},
        {"line through the same side twice", "-2,0.96 2,0.96 | -0.6,-0.8(2) -0.6,0.8", 1e-9,
         "-0.28,0.96 0.28,0.96"},
        {"line touches an arc", "-2,1 2,1 | 1,0(1) -1,0", 1e-9, "0,1"},
        {"line passes within the tolerance", "-2,1.0000005 2,1.0000005 | 1,0(1) -1,0", 1e-6, "0,1"},
        {"line just inside is one touch, too", "-2,0.9999995 2,0.9999995 | 1,0(1) -1,0", 1e-6,
         "0,1"},
        {"line passes outside of it", "-2,1.00001 2,1.00001 | 1,0(1) -1,0", 1e-6, ""},
        {"line beside a flat arc", "0,1 4,1 | 0,0(1e-7) 4,0", 1e-9, ""},
        {"line across a flat arc", "2,-1 2,1 | 0,0(1e-7) 4,0", 1e-9, "2,-2e-07"},
        {"flat arc dips through a line", "0,-1e-7 4,-1e-7 | 0,0(1e-7) 4,0", 1e-12,
         "0.585786,-1e-07 3.41421,-1e-07"},
        {"flat arc touches a line", "0,-2e-7 4,-2e-7 | 0,0(1e-7) 4,0", 1e-12, "2,-2e-07"},
        {"flat arcs cross", "0,0(1e-6) 4,0 | 0,-2e-6(-1e-6) 4,-2e-6", 1e-12,
         "0.585786,-1e-06 3.41421,-1e-06"},
        {"flat arcs touch", "0,0(1e-6) 4,0 | 0,-4e-6(-1e-6) 4,-4e-6", 1e-12, "2,-2e-06"},
        {"circles cross", "1,0(1) -1,0 | 2,0(1) 0,0", 1e-9, "0.5,0.866025"},
        {"circles touch outside", "0,-1(1) 0,1 | 2,1(1) 2,-1", 1e-9, "1,0"},
        {"circles touch inside", "0,-2(1) 0,2 | 1,-1(1) 1,1", 1e-9, "2,0"},
        {"circles apart", "0,-1(1) 0,1 | 3,1(1) 3,-1", 1e-9, ""},
        {"one circle, overlapping", "1,0(1) -1,0 | 0,1(1) 0,-1", 1e-9, "-1,0 0,1"},
        {"a million away", "1000000,0 1000004,4 | 1000000,4 1000004,0", 1e-9, "1e+06,2"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::vector<Curve> pair = plane::ParseCurves(c.pair);
        ASSERT_EQ(2u, pair.size());
        for (const bool isTurned : {false, true}) {
            const Curve a = isTurned ? pair[1].Reversed() : pair[0];
            const Curve b = isTurned ? pair[0].Reversed() : pair[1];
            // What was found before stays, wherever it lies.
            const Point former{-7e3, 5e3};
            std::vector<Point> points{former};
            plane::AppendMeetings(a, b, c.tol, points);
            ASSERT_FALSE(points.empty());
            EXPECT_EQ(former, points.front());
            points.erase(points.begin());
            EXPECT_EQ(c.meetings, Joined(points, c.tol));
            EXPECT_EQ(!points.empty(), plane::Meeting(a, b, c.tol).has_value());
        }
    }
}

TEST(PlaneMeeting, NeighboursMeetOnceMore) {
    const struct {
        const char* chain;
        const char* meeting;
    } cases[] = {
        {"0,0 4,0 4,4", ""},           {"0,0 4,0 1,0", "1,0"},
        {"0,0 4,0 -1,0", "0,0"},       {"-2,0 1,0(3) 0,-0.5", "-0.666667,0"},
        {"0,0(1) 2,0 2,5", ""},        {"0,0(-1) 2,0(1) 1,1", "1,1"},
        {"0,0(0.5) 4,0(0.5) 0,1", ""},
    };
    for (const auto& c : cases) {
        const std::vector<Curve> pair = plane::ParseCurves(c.chain);
        const auto p = plane::SecondMeeting(pair.at(0), pair.at(1), 1e-9);
        EXPECT_EQ(c.meeting, p ? plane::Show(*p) : "") << c.chain;
    }
}

TEST(PlaneMeeting, Stretches) {
    const struct {
        const char* pair;
        double tol;
        const char* middle;
    } cases[] = {
        {"0,0 4,0 | 1,0 6,0", 1e-9, "2.5,0"},
        {"0,0 4,0 | 6,0 1,0", 1e-9, "2.5,0"},
        {"0,0 4,0 | 4,0 6,0", 1e-9, ""},
        {"0,0 4,0 | 1,1e-7 6,1e-7", 1e-6, "2.5,0"},
        {"0,0 4,0 | 1,1e-5 6,1e-5", 1e-6, ""},
        {"1,0(1) -1,0 | 0,1(1) 0,-1", 1e-9, "-0.707107,0.707107"},
        {"1,0(1) -1,0 | 0,-1(-1) 0,1", 1e-9, "-0.707107,0.707107"},
        {"1,0(1) -1,0 | -1,0(1) 1,0", 1e-9, ""},
        {"1,0(1) -1,0 | 0,1(2.414213562373095) -1,0", 1e-9, ""},
        {"1,0(2.414213562373095) 0,-1 | 0.707106781186547,-0.707106781186547(0.41421356237309503) "
         "0.707106781186547,0.707106781186547",
         1e-9, "0.92388,0.382683"},
        {"0,0 4,0 | 0,0(1) 4,0", 1e-9, ""},
    };
    for (const auto& c : cases) {
        const std::vector<Curve> pair = plane::ParseCurves(c.pair);
        const auto p = plane::Stretch(pair.at(0), pair.at(1), c.tol);
        EXPECT_EQ(c.middle, p ? plane::Show(*p) : "") << c.pair;
    }
}

// Whether a runs no farther than 3 tol from b all the way from one of its points to another.
bool StaysNear(const Curve& a, const test::ExactCurve& b, const Point& p, const Point& q,
               double tol) {
    const double from = plane::ShareOf(a, p), to = plane::ShareOf(a, q);
    for (int i = 0; i <= 16; ++i) {
        const Point at = plane::PointAt(a, std::clamp(from + (to - from) * i / 16, 0.0, 1.0));
        if (b.DistanceTo(test::Exact(at)) > 3 * tol) return false;
    }
    return true;
}

// Promises: every point found lies within the tolerance of both curves, and every crossing is
// found, or a place beside it up to which the curves stay together.
TEST(PlaneMeeting, KeepsItsPromisesOnRandomPairs) {
    int found = 0, crossings = 0, flat = 0;
    for (const double offset : {0.0, 1e6}) {
        for (const double tol : {1e-6, 2e-9}) {
            test::RandomCurves random(23, offset);
            for (int round = 0; round < 10000; ++round) {
                const Curve a = random.Curve(), b = random.Partner(a);
                const test::ExactCurve exactA(a), exactB(b);
                std::vector<Point> points;
                plane::AppendMeetings(a, b, tol, points);
                SCOPED_TRACE(plane::Show(std::vector<Curve>{a, b}, 17) + " round " +
                             std::to_string(round));
                const double room = tol * 1.001 + 1e-14 + 1e-15 * offset;
                for (const Point& p : points) {
                    EXPECT_LE(static_cast<double>(exactA.DistanceTo(test::Exact(p))), room);
                    EXPECT_LE(static_cast<double>(exactB.DistanceTo(test::Exact(p))), room);
                    ++found;
                }
                for (const test::ExactPoint& q : test::ExactCrossings(exactA, exactB)) {
                    const Point at = test::Rounded(q);
                    EXPECT_TRUE(std::any_of(points.begin(), points.end(),
                                            [&](const Point& p) {
                                                return plane::Distance(p, at) <= tol ||
                                                       StaysNear(a, exactB, p, at, tol) ||
                                                       StaysNear(b, exactA, p, at, tol);
                                            }))
                        << "at " << plane::Show(at, 17);
                    ++crossings;
                    flat += a.bulge != 0 && std::fabs(a.bulge) < 1e-4;
                }
            }
        }
    }
    EXPECT_GT(found, 20000);
    EXPECT_GT(crossings, 10000);
    EXPECT_GT(flat, 1000);
}

}  // namespace
