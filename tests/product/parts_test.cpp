// Cutting profiles and rings in two, tips, places and figures of tools.

#include "product/parts/CutRing.h"

#include <gmock/gmock.h>

#include <cmath>
#include <random>
#include <vector>

#include "product/base/Failure.h"
#include "product/parts/Figures.h"
#include "product/parts/Placing.h"
#include "product/parts/SplitLine.h"
#include "product/parts/Tip.h"

namespace {

using host::solid::Outline;
using host::solid::Piece;
using host::solid::Profile;
using plane::MakeCurve;
using namespace product;  // NOLINT

constexpr double kPi = 3.14159265358979323846;

struct Place {
    double x, y, bulge;
};

Outline OutlineOf(const std::vector<Place>& corners) {
    Outline outline;
    for (const Place& c : corners) outline.corners.push_back({{c.x, c.y}, c.bulge});
    return outline;
}

Profile ProfileOf(const std::vector<Place>& corners) {
    Profile profile;
    const host::solid::Refusal refusal = Prepare(OutlineOf(corners), {}, {1, 0, 0}, profile);
    EXPECT_FALSE(refusal) << refusal.Text();
    return profile;
}

double VolumeOf(const Profile& profile) { return Measure(profile).volume; }

double AreaOf(const std::vector<Piece>& ring) {
    double area = 0;
    for (const Piece& piece : ring) area += Integrate(piece).area;
    return area;
}

// Shank 20 from 0 to 60, cone to 10 at 70, cylinder 10 to 95, ball nose at 100.
const std::vector<Place> kBallNose = {
    {0, 0, 0}, {0, 10, 0}, {60, 10, 0}, {70, 5, 0}, {95, 5, -0.41421356237309503}, {100, 0, 0}};

TEST(CutProfile, KnownPartsOfABallNose) {
    const Profile whole = ProfileOf(kBallNose);
    struct Row {
        double at, above;
    };
    const Row rows[] = {
        {95, 2.0 / 3 * kPi * 125},                 // the half ball
        {98, kPi * 4 * (15 - 2) / 3},              // a cap of height 2
        {90, 2.0 / 3 * kPi * 125 + kPi * 25 * 5},  // and a piece of cylinder
        {65, 2.0 / 3 * kPi * 125 + kPi * 25 * 25 + kPi * 5 / 3 * (25 + 56.25 + 37.5)},
        {95 + 5e-7, 2.0 / 3 * kPi * 125},  // a corner takes the cut to itself
    };
    for (const Row& row : rows) {
        const CutProfiles cut = CutProfile(whole, row.at);
        EXPECT_NEAR(row.above, VolumeOf(cut.above), 1e-9 * row.above) << row.at;
        EXPECT_NEAR(VolumeOf(whole), VolumeOf(cut.above) + VolumeOf(cut.below),
                    1e-12 * VolumeOf(whole));
    }
    // The sphere stays one.
    const CutProfiles cap = CutProfile(whole, 98);
    for (const Piece& piece : cap.above.chains.front().pieces)
        EXPECT_TRUE(!piece.IsArc() || piece.centre.y == 0.0);
}

// A shoulder at the cut: the thicker part keeps the whole face, the other one meets it inside.
TEST(CutProfile, AtAShoulderBothPartsAreWhole) {
    const Profile whole =
        ProfileOf({{0, 0, 0}, {0, 5, 0}, {30, 5, 0}, {30, 9, 0}, {40, 9, 0}, {40, 0, 0}});
    const CutProfiles cut = CutProfile(whole, 30);
    EXPECT_NEAR(kPi * 25 * 30, VolumeOf(cut.below), 1e-9);
    EXPECT_NEAR(kPi * 81 * 10, VolumeOf(cut.above), 1e-9);
    for (const Profile* part : {&cut.below, &cut.above})
        EXPECT_EQ(3u, part->chains.front().pieces.size());
}

TEST(CutProfile, RefusesWhatHasNoTwoParts) {
    const Profile whole = ProfileOf(kBallNose);
    for (const double at : {-1.0, 0.0, 100.0, 120.0})
        EXPECT_THROW(CutProfile(whole, at), Failure) << at;
    // An overhang: the line at 15 leaves the contour, meets it again and leaves it once more.
    const Profile hook = ProfileOf({{0, 0, 0},
                                    {0, 5, 0},
                                    {20, 5, 0},
                                    {20, 8, 0},
                                    {10, 8, 0},
                                    {10, 12, 0},
                                    {30, 12, 0},
                                    {30, 0, 0}});
    EXPECT_THROW(CutProfile(hook, 15), Failure);
    EXPECT_NO_THROW(CutProfile(hook, 25));
}

// Random contours of lines and arcs, rising and falling; what the parts come to is compared with
// the whole alone, so a cut at the wrong place would not show here: the table above has places.
TEST(CutRing, PartsOfRandomRingsComeToTheWhole) {
    std::mt19937 random(7);
    const auto uniform = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    int count = 0;
    for (int round = 0; round < 600; ++round) {
        // About an axis anywhere, in any direction.
        const double angle = uniform(-kPi, kPi), c = std::cos(angle), s = std::sin(angle);
        const double dx = uniform(-1e4, 1e4), dy = uniform(-1e4, 1e4);
        std::vector<Place> corners = {{0, 0, 0}};
        double x = 0;
        for (int i = 0; i < 8; ++i) {
            corners.push_back({x, uniform(5, 20), i < 7 ? uniform(-0.3, 0.3) : 0});
            x += uniform(3, 12);
        }
        corners.push_back({corners.back().x, 0, 0});
        for (Place& p : corners) p = {dx + c * p.x - s * p.y, dy + s * p.x + c * p.y, p.bulge};
        Profile whole;
        // Some of them cross themselves; no envelope does.
        if (Prepare(OutlineOf(corners), {dx, dy, 0}, {c, s, 0}, whole)) continue;
        ++count;
        const Reach reach = ReachOf(whole);
        std::vector<Piece> ring;
        for (size_t i = 0; i < corners.size(); ++i) {
            const Place &a = corners[i], &b = corners[(i + 1) % corners.size()];
            ring.push_back(MakeCurve(plane::Point{a.x, a.y}, plane::Point{b.x, b.y}, a.bulge));
        }
        const double at = uniform(reach.low + 0.1, reach.high - 0.1);
        try {
            const CutProfiles parts = CutProfile(whole, at);
            EXPECT_NEAR(VolumeOf(whole), VolumeOf(parts.below) + VolumeOf(parts.above),
                        1e-9 * VolumeOf(whole));
            EXPECT_NEAR(ReachOf(parts.below).high, ReachOf(parts.above).low, 1e-9);
            const CutRings rings = CutRing(ring, plane::Vector{c, s}, at);
            EXPECT_NEAR(AreaOf(ring), AreaOf(rings.before) + AreaOf(rings.behind),
                        1e-7 * std::fabs(AreaOf(ring)));
        } catch (const Failure& failure) {
            // Arcs may bulge over their ends: the only refusal that may come.
            EXPECT_THAT(failure.what(), testing::HasSubstr("more than one place"));
        }
    }
    EXPECT_GT(count, 200);
}

TEST(Tip, IsTheOneEndThatComesToAPoint) {
    struct Row {
        const char* name;
        std::vector<Place> corners;
        TipSide side;
        bool isHigh, isSure;
    };
    const Row rows[] = {
        {"ball", kBallNose, TipSide::Auto, true, true},
        {"drill to the left",
         {{0, 0, 0}, {3, 5, 0}, {50, 5, 0}, {50, 0, 0}},
         TipSide::Auto,
         false,
         true},
        {"points at both ends",
         {{0, 0, 0}, {3, 5, 0}, {20, 5, 0}, {50, 8, 0}, {90, 8, 0}, {95, 0, 0}},
         TipSide::Auto,
         false,
         false},
        {"flat ends: the shorter cylinder",
         {{0, 0, 0}, {0, 8, 0}, {9, 8, 0}, {9, 5, 0}, {50, 5, 0}, {50, 0, 0}},
         TipSide::Auto,
         false,
         false},
        {"a centre hole is no point",
         {{2, 0, 0}, {0, 2, 0}, {0, 8, 0}, {50, 8, 0}, {55, 0, 0}},
         TipSide::Auto,
         true,
         true},
        {"said", kBallNose, TipSide::Left, false, true},
        {"said by the axis", kBallNose, TipSide::Start, false, true},
    };
    for (const Row& row : rows) {
        const Tip tip = TipOf(ProfileOf(row.corners), row.side);
        EXPECT_EQ(row.isHigh, tip.isHigh) << row.name;
        EXPECT_EQ(row.isSure, tip.isSure) << row.name;
    }
    EXPECT_THROW(TipOf(ProfileOf(kBallNose), TipSide::Top), Failure);
}

TEST(Placing, TipAndShankComeToZeroInEachDirection) {
    const Profile whole = ProfileOf(kBallNose);
    const Axis axis = Axis::Level({-7, 0});
    struct Row {
        Placement::Zero zero;
        Placement::Direction direction;
        AcGePoint3d tip, shank;
    };
    const Row rows[] = {
        {Placement::Zero::Tip, Placement::Direction::AsDrawn, {0, 0, 0}, {-100, 0, 0}},
        {Placement::Zero::Tip, Placement::Direction::Down, {0, 0, 0}, {0, 0, 100}},
        {Placement::Zero::Shank, Placement::Direction::Up, {0, 0, 100}, {0, 0, 0}},
        {Placement::Zero::Shank, Placement::Direction::Left, {-100, 0, 0}, {0, 0, 0}},
        {Placement::Zero::AsDrawn, Placement::Direction::Right, {0, 0, 0}, {-100, 0, 0}},
        {Placement::Zero::AxisStart, Placement::Direction::Right, {107, 0, 0}, {7, 0, 0}},
        {Placement::Zero::At, Placement::Direction::Left, {-50, 0, 0}, {50, 0, 0}},
    };
    for (const Row& row : rows) {
        Placement placement;
        placement.zero = row.zero;
        placement.direction = row.direction;
        placement.at = {50, 33};
        const Profile placed = Placed(whole, PlaceOf(whole, axis, true, placement));
        const Reach reach = ReachOf(placed);
        EXPECT_LT(placed.frame.At(reach.high, 0).distanceTo(row.tip), 1e-12);
        EXPECT_LT(placed.frame.At(reach.low, 0).distanceTo(row.shank), 1e-12);
        EXPECT_NEAR(VolumeOf(whole), VolumeOf(placed), 1e-12 * VolumeOf(whole));
    }
}

TEST(SplitLine, IsTheOneAcrossTheWholeSectionAwayFromCorners) {
    const Profile whole = ProfileOf(kBallNose);
    const auto line = [](double x, double low, double high) {
        return DrawnLine{{x, low}, {x, high}, "at " + std::to_string(static_cast<int>(x))};
    };
    struct Row {
        const char* name;
        std::vector<DrawnLine> lines;
        double at;  // 0: refused
    };
    const Row rows[] = {
        {"one", {line(80, -5, 5), line(60, -10, 10), line(70, -5, 5)}, 80},
        {"in two halves", {line(80, -5, 0), line(80, 0, 5)}, 80},
        {"reaching beyond it", {line(80, -9, 9), line(85, -5, 5)}, 80},
        {"the only corner", {line(70, -5, 5)}, 70},
        {"two", {line(80, -5, 5), line(85, -5, 5)}, 0},
        {"corners only", {line(60, -10, 10), line(70, -5, 5)}, 0},
        {"one half of a whole drawing", {line(80, 0, 5)}, 0},
        {"short of the contour", {line(80, -5, 3)}, 0},
        {"the end face", {line(0, -10, 10)}, 0},
        {"slanted", {DrawnLine{{80, -5}, {81, 5}, ""}}, 0},
    };
    for (const Row& row : rows) {
        if (row.at > 0)
            EXPECT_NEAR(row.at, FindSplitLine(whole, row.lines, true, false).at, 1e-9) << row.name;
        else
            EXPECT_THROW(FindSplitLine(whole, row.lines, true, false), Failure) << row.name;
    }
    EXPECT_NEAR(80, FindSplitLine(whole, {line(80, 0, 5)}, true, true).at, 1e-9);
}

TEST(Figures, TellWhatTheProfileShowsAndNothingElse) {
    struct Row {
        const char* name;
        std::vector<Place> corners;
        std::optional<double> dc, lu, dn, dmm, ls, re, chw, kch, sig, pl;
    };
    const std::optional<double> none;
    // Tips are at the high end.
    const Row rows[] = {
        {"ball nose", kBallNose, 10, 30, none, 20, 60, 5, none, none, none, none},
        {"drill of 118 degrees with a chamfered shank",
         {{0, 0, 0},
          {0, 4, 0},
          {1, 5, 0},
          {40, 5, 0},
          {45, 4, 0},
          {80, 4, 0},
          {80 + 4 / std::tan(59 * kPi / 180), 0, 0}},
         8,
         35 + 4 / std::tan(59 * kPi / 180),
         none,
         10,
         40,
         none,
         none,
         none,
         118.0,
         4 / std::tan(59 * kPi / 180)},
        {"slot mill with neck and corner radius",
         {{0, 0, 0},
          {0, 6, 0},
          {50, 6, 0},
          {52, 4, 0},
          {70, 4, 0},
          {70, 10, 0},
          {79, 10, -0.41421356237309503},
          {80, 9, 0},
          {80, 0, 0}},
         20,
         none,
         8,
         12,
         50,
         1,
         none,
         none,
         none,
         none},
        {"end mill with a chamfer of 30 degrees",
         {{0, 0, 0},
          {0, 8, 0},
          {50, 8, 0},
          {50, 6, 0},
          {90, 6, 0},
          {90 + std::sqrt(3.0), 5, 0},
          {90 + std::sqrt(3.0), 0, 0}},
         12,
         40 + std::sqrt(3.0),
         none,
         16,
         50,
         none,
         1,
         30,
         none,
         none},
        {"a pin",
         {{0, 0, 0}, {0, 3, 0}, {20, 3, 0}, {20, 0, 0}},
         6,
         none,
         none,
         none,
         none,
         none,
         none,
         none,
         none,
         none},
    };
    for (const Row& row : rows) {
        const Profile profile = ProfileOf(row.corners);
        FigureRequest request;
        request.isTipSure = true;
        const ToolFigures f = FiguresOf(profile, request);
        const std::pair<const char*, std::pair<std::optional<double>, std::optional<double>>>
            all[] = {{"dc", {row.dc, f.tipDiameter}},    {"lu", {row.lu, f.usableLength}},
                     {"dn", {row.dn, f.neckDiameter}},   {"dmm", {row.dmm, f.shankDiameter}},
                     {"ls", {row.ls, f.shankLength}},    {"re", {row.re, f.cornerRadius}},
                     {"chw", {row.chw, f.chamferWidth}}, {"kch", {row.kch, f.chamferAngle}},
                     {"sig", {row.sig, f.pointAngle}},   {"pl", {row.pl, f.pointLength}}};
        for (const auto& [name, pair] : all) {
            ASSERT_EQ(pair.first.has_value(), pair.second.has_value()) << row.name << " " << name;
            EXPECT_NEAR(pair.first.value_or(0), pair.second.value_or(0), 1e-9)
                << row.name << " " << name;
        }
        request.isTipSure = false;
        const ToolFigures unsure = FiguresOf(profile, request);
        EXPECT_FALSE(unsure.tipDiameter || unsure.shankDiameter || unsure.cornerRadius) << row.name;
        EXPECT_TRUE(unsure.overallLength && unsure.greatestDiameter) << row.name;
    }
}

}  // namespace
