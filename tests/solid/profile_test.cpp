// Which outlines are refused, why and where; and what the accepted ones measure.
#include "host/solid/profile.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "outlines.h"

using host::solid::Measure;
using host::solid::Measures;
using host::solid::Outline;
using host::solid::Prepare;
using host::solid::Profile;
using host::solid::Refusal;
using plane::Corner;
using Fault = host::solid::Refusal::Fault;

namespace {

Refusal Try(const Outline& outline, Profile& profile) {
    return Prepare(outline, AcGePoint3d(), AcGeVector3d(1, 0, 0), profile);
}

struct RefusedCase {
    const char* name;
    const char* outline;
    Fault fault;
    double x, y;  // where
};
constexpr double kAny = 12345.0;

const RefusedCase kRefused[] = {
    {"open", "open 0,0 20,0 20,5 0,5", Fault::kOpen, 0, 5},
    {"open by little more than the tolerance", "open 0,0 20,0 20,5 0,5 0,0.0000011", Fault::kOpen,
     0, 0.0000011},
    {"bow tie", "0,0 20,5 20,0 0,5", Fault::kCrossesItself, 10, 2.5},
    {"line through a bulging arc", "0,0 20,0 20,5(0.5) 10,5 10,8 15,8 15,2 0,2",
     Fault::kCrossesItself, kAny, kAny},
    {"arc through an arc", "0,0 30,0 30,5 20,5(1) 10,5 10,20 15,20(0.3) 15,6 8,6 8,5 0,5",
     Fault::kCrossesItself, kAny, kAny},
    {"corner on a line", "0,0 20,0 20,5 10,0.5 5,5 5,2 10,0.5 0,0.5", Fault::kCrossesItself, 10,
     0.5},
    {"arc that touches a line",
     "0,0 20,0 20,2 0,2 0,10 5,10(0.5773502691896257) 15,10 20,10 20,12 -2,12 -2,0", Fault::kNone,
     0, 0},
    {"line walked back", "0,0 20,0 20,5 30,5 20,5 0,5", Fault::kCrossesItself, kAny, 5},
    {"crosses the axis by lines", "0,-1 20,-1 20,5 0,5", Fault::kCrossesAxis, 20, 0},
    {"crosses the axis by an arc", "0,1(0.5) 20,1 20,5 0,5", Fault::kCrossesAxis, kAny, 0},
    {"dips under the axis between two ends on it", "0,0(0.01) 20,0 20,5 0,5", Fault::kCrossesAxis,
     kAny, 0},
    {"single corner on the axis", "0,0 20,5 0,5", Fault::kTouchesAxis, 0, 0},
    {"single corner beside an edge on the axis", "0,0 5,0 5,3 10,0 15,3 15,6 0,6",
     Fault::kTouchesAxis, 10, 0},
    {"arc that touches the axis", "0,2.5(0.5) 10,2.5 10,8 0,8", Fault::kTouchesAxis, 5, 0},
    {"on the axis", "0,0 20,0 10,0", Fault::kNoArea, kAny, kAny},
    {"one line there and back", "0,1 20,7 10,4", Fault::kNoArea, kAny, kAny},
    {"narrower than the tolerance", "0,1 20,1 20,1.0000005 0,1.0000005", Fault::kNoArea, kAny,
     kAny},
    {"all corners in one place", "3,1 3,1 3,1 3,1", Fault::kNoArea, kAny, kAny},
    {"one corner", "3,1", Fault::kNoArea, kAny, kAny},
    {"nothing", "", Fault::kNoArea, kAny, kAny},
    {"an arc there and back", "0,5(0.4) 10,5(-0.4)", Fault::kNoArea, kAny, kAny},
    {"not a number", "0,0 20,0 nan,5 0,5", Fault::kNotFinite, kAny, kAny},
    {"infinite bulge", "0,0 20,0 20,5(inf) 0,5", Fault::kNotFinite, kAny, kAny},
    {"too far", "0,0 1e300,0 1e300,5 0,5", Fault::kTooFar, kAny, kAny},
    {"circle too wide", "0,0 20,0 20,5(1e200) 0,5", Fault::kTooFar, kAny, kAny},
    {"edge on the axis", "0,0 20,0 20,5 0,5", Fault::kNone, 0, 0},
    {"closed by its last corner", "open 0,0 20,0 20,5 0,5 0,0", Fault::kNone, 0, 0},
    {"tube", "0,2 20,2 20,5 0,5", Fault::kNone, 0, 0},
    {"tube that nearly touches the axis", "0,2.500002(0.5) 10,2.500002 10,8 0,8", Fault::kNone, 0,
     0},
    {"dips under the axis by less than the tolerance", "0,-0.0000004 20,0.0000003 20,5 0,5",
     Fault::kNone, 0, 0},
    {"repeated corners", "0,0 0,0 20,0 20,5 20,5 20,5 0,5 0,5", Fault::kNone, 0, 0},
    {"narrow slot", "0,0 20,0 20,5 10.000003,5 10.000003,1 10,1 10,5 0,5", Fault::kNone, 0, 0}};

// A closed polygon of many short lines along the outline.
std::vector<plane::Point> Sampled(const Outline& outline, int perPiece) {
    std::vector<plane::Point> points;
    const std::size_t n = outline.corners.size();
    for (std::size_t i = 0; i < n; ++i) {
        const plane::Point a = outline.corners[i].point, b = outline.corners[(i + 1) % n].point;
        const double half = 2.0 * std::atan(outline.corners[i].bulge);
        const double turn = std::atan2(b.y - a.y, b.x - a.x), chord = Distance(a, b);
        for (int k = 0; k < perPiece; ++k) {
            const double t = static_cast<double>(k) / perPiece;
            const double along =
                half == 0.0 ? chord * t : chord * std::sin(half * t) / std::sin(half);
            const double to = turn - half + half * t;
            points.push_back({a.x + along * std::cos(to), a.y + along * std::sin(to)});
        }
    }
    return points;
}

double PointToLine(const plane::Point& p, const plane::Point& a, const plane::Point& b) {
    const double t = Dot(p - a, b - a) / Dot(b - a, b - a);
    return Distance(p, a + (b - a) * (std::min)(1.0, (std::max)(0.0, t)));
}

// Smallest distance between two stretches of the polygon that are farther apart along it than gap;
// 0 when they cross, -1 when only nearer stretches do, which samples cannot tell for sure.
double OwnDistance(const std::vector<plane::Point>& p, std::size_t gap) {
    const std::size_t n = p.size();
    double least = 1e300;
    bool unclear = false;
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = i + 2; j < n; ++j) {
            const std::size_t apart = (std::min)(j - i, n - (j - i));
            const plane::Point &a = p[i], &b = p[(i + 1) % n], &c = p[j], &d = p[(j + 1) % n];
            if (apart < 2 || Distance(a, c) > Distance(a, b) + Distance(c, d) + 0.1) continue;
            const bool crosses = (Cross(b - a, c - a) > 0) != (Cross(b - a, d - a) > 0) &&
                                 (Cross(d - c, a - c) > 0) != (Cross(d - c, b - c) > 0);
            if (crosses && apart > gap) return 0.0;
            unclear = unclear || crosses;
            if (apart > gap)
                least = (std::min)({least, PointToLine(a, c, d), PointToLine(b, c, d),
                                    PointToLine(c, a, b), PointToLine(d, a, b)});
        }
    return unclear ? -1.0 : least;
}

// True when the outline turns back on itself at some corner by nearly half a turn: its sides then
// stay so near to each other that samples cannot tell whether they cross.
bool HasCusp(const Outline& outline) {
    const std::size_t n = outline.corners.size();
    for (std::size_t i = 0; i < n; ++i) {
        const Corner &a = outline.corners[i], &b = outline.corners[(i + 1) % n],
                     &c = outline.corners[(i + 2) % n];
        const double in = AngleOf(b.point - a.point) + 2.0 * std::atan(a.bulge);
        const double out = AngleOf(c.point - b.point) - 2.0 * std::atan(b.bulge);
        if (std::cos(out - in) < -0.95) return true;
    }
    return false;
}

}  // namespace

TEST(Profile, RefusalsSayWhyAndWhere) {
    for (const RefusedCase& c : kRefused) {
        SCOPED_TRACE(c.name);
        Profile profile;
        profile.frame.origin.set(7, 7, 7);
        const Refusal refusal = Try(ParseOutline(c.outline), profile);
        EXPECT_EQ(static_cast<int>(refusal.fault), static_cast<int>(c.fault)) << refusal.Text();
        EXPECT_EQ(refusal.Status() == Acad::eOk, c.fault == Fault::kNone);
        if (c.fault == Fault::kNone) continue;
        EXPECT_EQ(profile.frame.origin.x, 7) << "changed although refused";
        EXPECT_NEAR(refusal.at.x, c.x == kAny ? refusal.at.x : c.x, 1e-9) << refusal.Text();
        EXPECT_NEAR(refusal.at.y, c.y == kAny ? refusal.at.y : c.y, 1e-9) << refusal.Text();
    }
}

TEST(Profile, AxisMustLieInThePlane) {
    const Outline outline = ParseOutline("0,0 20,0 20,5 0,5");
    struct {
        const char* name;
        AcGePoint3d point;
        AcGeVector3d direction;
        Fault fault;
    } const kCases[] = {{"above", {0, 0, 0.01}, {1, 0, 0}, Fault::kAxisOffPlane},
                        {"tilted", {0, 0, 0}, {1, 0, 0.001}, Fault::kAxisOffPlane},
                        {"across", {0, 0, 0}, {0, 0, 1}, Fault::kAxisOffPlane},
                        {"no direction", {0, 0, 0}, {0, 0, 0}, Fault::kAxisDirection},
                        {"not a number", {0, std::nan(""), 0}, {1, 0, 0}, Fault::kAxisDirection},
                        {"above by noise", {0, 0, 1e-9}, {3, 0, 0}, Fault::kNone},
                        {"along an upright edge", {20, 4, 0}, {0, -1, 0}, Fault::kNone},
                        {"slanted, beside it", {30, 0, 0}, {1, 1, 0}, Fault::kNone}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        Profile profile;
        const Refusal refusal = Prepare(outline, c.point, c.direction, profile);
        EXPECT_EQ(static_cast<int>(refusal.fault), static_cast<int>(c.fault)) << refusal.Text();
    }
}

TEST(Profile, TextsNameThePlace) {
    Profile profile;
    EXPECT_EQ(Try(ParseOutline("0,0 20,5 20,0 0,5"), profile).Text(),
              "the profile crosses or touches itself, at (10, 2.5)");
    EXPECT_EQ(
        Try(ParseOutline("open 0,0 20,0 20,5 0,5"), profile).Text(),
        "the profile is open: its end does not meet its start, at (0, 5) and (0, 0), the gap is 5");
    EXPECT_EQ(Try(ParseOutline("0,0 20,0 nan,5 0,5"), profile).Text(),
              "the profile has a corner that is no finite number (corner 3)");
}

TEST(Profile, MeasuresFollowThePlainIntegral) {
    for (unsigned seed = 1; seed <= 2000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed + 70000);
        const Outline outline = RandomTurnedPart(random, 1 + static_cast<int>(random() % 30));
        Profile profile;
        const Refusal refusal = Try(outline, profile);
        ASSERT_FALSE(refusal) << refusal.Text() << Show(outline);
        const PlainMeasures expected = IntegratePlainly(outline, 0.0);
        const Measures measures = Measure(profile);
        EXPECT_NEAR(measures.volume / expected.volume, 1.0, 1e-11);
        EXPECT_NEAR(measures.area / expected.area, 1.0, 1e-11);
        double left = 1e300, right = -1e300, top = 0.0;
        for (const plane::Point& p : Sampled(outline, 200)) {
            left = (std::min)(left, p.x);
            right = (std::max)(right, p.x);
            top = (std::max)(top, p.y);
        }
        // Samples miss an arc's highest point by at most its sagitta over one step.
        EXPECT_NEAR(measures.length, right - left, 1e-3);
        EXPECT_NEAR(measures.largestDiameter, 2.0 * top, 2e-3);
        EXPECT_GE(measures.length, right - left - 1e-9);
        EXPECT_GE(measures.largestDiameter, 2.0 * top - 1e-9);
    }
}

// Random stars with bulging sides cross themselves about as often as not. Where a polygon along the
// outline is clearly simple or clearly crosses itself, the exact test must say the same.
TEST(Profile, SelfCrossingAgreesWithAPlainSearch) {
    int crossing = 0, simple = 0;
    for (unsigned seed = 1; seed <= 1500; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const auto uniform = [&](double low, double high) {
            return low + (high - low) * (static_cast<double>(random()) / 4294967296.0);
        };
        Outline outline;
        const int corners = 3 + static_cast<int>(random() % 9);
        for (int i = 0; i < corners; ++i) {
            const double angle = 6.283185307179586 * (i + uniform(-0.7, 0.7)) / corners;
            const double radius = uniform(3.0, 9.0);
            const double bulge = random() % 2 == 0 ? 0.0 : std::tan(uniform(-1.3, 1.3) * 0.5);
            outline.corners.push_back(
                {{20.0 + radius * std::cos(angle), 30.0 + radius * std::sin(angle)}, bulge});
        }
        if (HasCusp(outline)) continue;
        constexpr int kPerPiece = 40;
        const double distance = OwnDistance(Sampled(outline, kPerPiece), kPerPiece / 4);
        Profile profile;
        const Fault fault = Try(outline, profile).fault;
        if (distance == 0.0) {
            ++crossing;
            EXPECT_EQ(static_cast<int>(fault), static_cast<int>(Fault::kCrossesItself))
                << Show(outline);
        } else if (distance > 0.05) {
            ++simple;
            EXPECT_EQ(static_cast<int>(fault), static_cast<int>(Fault::kNone)) << Show(outline);
        }
    }
    EXPECT_GT(crossing, 100);
    EXPECT_GT(simple, 200);
}

// Ten thousand pieces in a comb whose teeth stand close: near misses everywhere.
TEST(Profile, LargeOutlines) {
    Outline comb = ParseOutline("0,0 5000,0");
    for (int i = 2500; i-- > 0;) {
        comb.corners.push_back({{2.0 * i + 2.0, 50.0}, 0.3});
        comb.corners.push_back({{2.0 * i + 1.0, 50.0}, 0.0});
        comb.corners.push_back({{2.0 * i + 1.0, 10.0}, -0.9});
        comb.corners.push_back({{2.0 * i + 0.1, 10.0}, 0.0});
        comb.corners.push_back({{2.0 * i + 0.0001, 50.0}, 0.0});
    }
    Profile profile;
    const Refusal none = Try(comb, profile);
    ASSERT_FALSE(none) << none.Text();
    EXPECT_NEAR(Measure(profile).volume / IntegratePlainly(comb, 0.0).volume, 1.0, 1e-9);
    comb.corners[7].point.x += 3.0;
    EXPECT_EQ(static_cast<int>(Try(comb, profile).fault), static_cast<int>(Fault::kCrossesItself));
}
