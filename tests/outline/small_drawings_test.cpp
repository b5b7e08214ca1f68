// One small drawing with its outline for each paragraph of the rules.
#include <iterator>

#include "outline_text.h"
#include "plain_law.h"

namespace {

using outline::Envelope;
using outline::Half;
using outline::Refusal;
using outline::Request;

struct SmallCase {
    const char* name;
    const char* drawing;
    const char* outline;
    int bridges = 0, gaps = 0, tails = 0, openEnds = 0;
};

Envelope Find(const std::string& text, Half half = Half::Upper) {
    Request request;
    request.curves = test::ParseContour(text);
    request.half = half;
    request.lengths.side = 5;
    return outline::FindEnvelope(request);
}

// The same chain with corners within a millionth.
std::string Rounded(const char* text) { return plane::Show(plane::ParseCurves(text), 9); }

const SmallCase kCases[] = {
    {"one line", "0,10 50,10", "0,0 0,10 50,10 50,0", 0, 0, 0, 2},
    {"a gap in the top is bridged, whatever lies inside",
     "0,0 0,10 25,10 | 25.3,10 50,10 | 50,10 50,0 | 0,4 50,4", "0,0 0,10 50,10 50,0", 1},
    {"an end goes on to an upright edge that reaches across the axis",
     "0,0 0,10 19.7,10 | 20,-10 20,10 | 20,6 40,6 40,0 | 0,3 40,3", "0,0 0,10 20,10 20,6 40,6 40,0",
     1},
    {"two overshoots that face each other",
     "0,0 0,10 20.3,10 | 20,10 20,6 40,6 40,12 | 39.8,12 60,12 60,0",
     "0,0 0,10 20,10 20,6 40,6 40,12 60,12 60,0", 0, 0, 2},
    {"a lip longer than an overshoot", "0,0 0,10 21.5,10 | 20,10 20,6 40,6 40,12 60,12 60,0",
     "0,0 0,10 21.5,10 21.5,6 40,6 40,12 60,12 60,0", 0, 0, 0, 1},
    {"extension lines", "0,0 0,10 20,10 20,12 60,12 60,0 | 20,10 20,30 | 60,12 60,30",
     "0,0 0,10 20,10 20,12 60,12 60,0", 0, 0, 2},
    {"a centre line drawn full", "0,0 0,10 20,10 20,12 60,12 60,0 | -8,0.01 68,0.01",
     "0,0 0,10 20,10 20,12 60,12 60,0"},
    {"nothing drawn between", "0,0 0,10 20,10 20,0 | 30,0 30,6 50,6 50,0",
     "0,0 0,10 20,10 30,6 50,6 50,0", 0, 1},
    {"deep bore with a mouth", "0,10 0,5 1,4 30,4 30,0 | 0,10 50,10 50,0",
     "1,0 1,4 0,5 0,10 50,10 50,0"},
    {"dovetail, its face not drawn", "0,10 6,4 30,4 30,0", "0,0 0,10 6,4 30,4 30,0", 0, 0, 0, 1},
    {"two arcs on one circle",
     "0,0 0,10 | 0,10 10,10 | 20,0 20,-10 | "
     "20,0(0.176326980708464973) 17.66044443118978,6.427876096865393 | "
     "17.43144825477394,6.691306063588582(0.212556561670022126) 10,10 | 0,1 15,1",
     "0,0 0,10 10,10(-0.414213562373095049) 20,0", 1},
    {"T-slot cutter, no inner faces", "0,0 0,10 5,10 | 5,4 30,4 30,0",
     "0,0 0,10 5,10 5,4 30,4 30,0", 0, 0, 0, 1},
    // What counts as contour.
    {"what lies on the axis is nothing", "0,0 0,10 50,10 50,0 | -5,0 60,0", "0,0 0,10 50,10 50,0"},
    {"what is shorter than a point is nothing", "0,0 0,10 50,10 50,0 | 20,15 20.0001,15",
     "0,0 0,10 50,10 50,0"},
    {"a centre line in two parts",
     "0,0 0,10 20,10 20,12 60,12 60,0 | -8,0.01 30,0.01 | 35,0.01 68,0.01",
     "0,0 0,10 20,10 20,12 60,12 60,0"},
    {"what runs past one end only is no centre line", "0,0 0,10 50,10 50,0 | 5,0.05 60,0.05",
     "0,0 0,10 50,10 50,0.05 60,0.05 60,0", 0, 0, 0, 1},
    {"ends closer than a point are joined", "0,0 0,10 20,10 | 20.0001,10 20.0001,6 50,6 50,0",
     "0,0 0,10 20.0001,10 20.0001,6 50,6 50,0"},
    // Free ends and marks.
    {"a doubled curve ends freely", "0,0 0,10 25,10 | 0,10 25,10 | 25.3,10 50,10 50,0",
     "0,0 0,10 50,10 50,0", 1},
    {"a part of a line drawn over ends nowhere", "0,0 0,10 50,10 50,0 | 10,10 30,10",
     "0,0 0,10 50,10 50,0"},
    {"a mark that is not quite upright", "0,0 0,10 20,10 20,12 60,12 60,0 | 20,10 20.00002,30",
     "0,0 0,10 20,10 20,12 60,12 60,0", 0, 0, 1},
    {"what leans is drawn", "0,0 0,10 20,10 20,12 60,12 60,0 | 20,12 22,30",
     "0,0 0,10 20,10 20,12 22,30 22,12 60,12 60,0", 0, 0, 0, 1},
    // Bridges.
    {"two ends at different heights", "0,0 0,10 25,10 | 25.4,9.9 50,9.9 50,0",
     "0,0 0,10 25,10 25.4,9.9 50,9.9 50,0", 1},
    {"an opening longer than both tails allow", "0,0 0,10 25,10 | 40,10 50,10 50,0",
     "0,0 0,10 50,10 50,0", 0, 1},
    {"two extension lines are not joined", "0,0 0,10 60,10 60,0 | 20,12 20,30 | 23,12 23,30",
     "0,0 0,10 60,10 60,0", 0, 0, 4},
    {"only a wall is missing", "0,0 0,10 20,10 | 20,6 40,6 40,0", "0,0 0,10 20,10 20,6 40,6 40,0",
     0, 0, 0, 1},
    {"both go on to what stands between",
     "0,0 0,10 20,10 | 22,10 50,10 50,0 | 20.5,8 20.5,14 21.5,14 21.5,8",
     "0,0 0,10 20.5,10 20.5,14 21.5,14 21.5,10 50,10 50,0", 2},
    {"nothing is joined below what stands between",
     "0,0 0,10 20,10 | 25,10 50,10 50,0 | 22,14 23,14",
     "0,0 0,10 20,10 22,14 23,14 25,10 50,10 50,0", 0, 2},
    // Overshoots.
    {"lines that cross at a corner", "0,0 0,10 20.3,10 | 20,10.2 20,6 40,6 40,0",
     "0,0 0,10 20,10 20,6 40,6 40,0", 0, 0, 2},
    {"both copies of an overshoot", "0,0 0,10 20.3,10 | 0,10 20.3,10 | 20,10 20,6 40,6 40,0",
     "0,0 0,10 20,10 20,6 40,6 40,0", 0, 0, 1},
    // Faces.
    {"a face that goes too deep and comes back", "0,10 7,7 0,4 0,0 | 0,10 50,10 50,0",
     "0,0 0,4 5,6.142857143 5,7.857142857 0,10 50,10 50,0"},
    {"a face deeper than a third of the profile", "4,0 4,3 0,6 9,6 9,0", "3,0 3,3.75 0,6 9,6 9,0"},
    {"a face jumps where a curve ends joined", "0,10 0,6 3,6 3,0 | 0,10 50,10 50,0",
     "3,0 3,6 0,6 0,10 50,10 50,0"},
    {"no face jumps at a free end", "0,10 0,6 | 3,6 3,0 | 0,10 50,10 50,0", "0,0 0,10 50,10 50,0"},
    {"the other face", "0,0 0,10 50,10 44,6 44,0", "0,0 0,10 50,10 45,6.666666667 45,0"},
    {"lines along the axis make no face", "0,10 50,10 50,0 | 2,4 50,4", "0,0 0,10 50,10 50,0", 0, 0,
     0, 1},
    // The outline.
    {"pieces on one line are one", "0,0 0,10 20,10 | 20,10 35,10 | 30,10 50,10 50,0",
     "0,0 0,10 50,10 50,0"},
    {"an edge shorter than a point goes", "0,0 0,10 49.9999,10 50,9.9999 50,0",
     "0,0 0,10 50,10 50,0"},
    {"a chamfer is no such edge", "0,0 0,10 49.99,10 50,9.99 50,0",
     "0,0 0,10 49.99,10 50,9.99 50,0"},
    {"arcs are the drawing's own", "0,0 0,10(-0.414213562373095049) 10,20 50,20 50,0",
     "0,0 0,10(-0.414213562) 10,20 50,20 50,0"},
};

TEST(SmallDrawings, Outlines) {
    for (const SmallCase& c : kCases) {
        SCOPED_TRACE(c.name);
        const Envelope found = Find(c.drawing);
        EXPECT_EQ(Refusal::None, found.refusal);
        EXPECT_EQ(Rounded(c.outline), test::Show(found));
        EXPECT_EQ(c.bridges, static_cast<int>(found.bridges.size()));
        EXPECT_EQ(c.gaps, static_cast<int>(found.gaps.size()));
        EXPECT_EQ(c.tails, static_cast<int>(found.tails.size()));
        EXPECT_EQ(c.openEnds, static_cast<int>(found.openEnds.size()));
    }
}

// The other half is the same mirrored, and the rules hold ray by ray.
TEST(SmallDrawings, HoldInEitherHalf) {
    for (const SmallCase& c : kCases) {
        SCOPED_TRACE(c.name);
        Request request;
        request.curves = test::ParseContour(c.drawing);
        request.lengths.side = 5;
        EXPECT_EQ("", plain::Faults(plain::Law(request), outline::FindEnvelope(request).edges));
        for (outline::Contour& contour : request.curves) {
            plane::Curve& curve = contour.curve;
            for (plane::Point* p : {&curve.from, &curve.to, &curve.centre}) p->y = -p->y;
            if (curve.IsArc()) curve.bulge = -curve.bulge;
        }
        request.half = Half::Lower;
        EXPECT_EQ(Rounded(c.outline), test::Show(outline::FindEnvelope(request)));
    }
}

// By the letter a face follows the line to where it meets the profile, and what lies outside of it
// hangs by that point: a choice that the plain form of the rules does not know.
TEST(SmallDrawings, NoPartHangsByAPoint) {
    EXPECT_EQ("0,0 0,10(-0.2) 4,5 4,9 30,9 30,0",
              test::Show(Find("0,10 4,5 0,2 | 0,10(-0.2) 4,5 4,9 30,9 30,0")));
    EXPECT_EQ("0,0 0,10(-0.2) 4,5 4,9 30,9 30,0",
              test::Show(Find("0,10 4,5 4,0 | 0,10(-0.2) 4,5 4,9 30,9 30,0")));
}

TEST(SmallDrawings, FacesThatAreToBeVertical) {
    Request request;
    request.curves = test::ParseContour("0,10 0,6 3,6 3,0 | 0,10 50,10 44,6 44,0");
    request.verticalEnds = true;
    EXPECT_EQ("0,0 0,10 50,10 50,0", test::Show(outline::FindEnvelope(request)));
}

// Each shorter than a point, together a chamfer and a round nose.
TEST(SmallDrawings, ChainsOfTheShortestCurvesCount) {
    Request request;
    constexpr int kCount = 70000;
    plane::Point last;
    const auto lineTo = [&](const plane::Point& p) {
        request.curves.push_back({plane::MakeLine(last, p), 0, false});
        last = p;
    };
    for (int i = 1; i <= kCount; ++i) {
        const double angle = i * plane::kHalfTurn / 2 / kCount;
        lineTo({10 - 10 * std::cos(angle), 10 * std::sin(angle)});
    }
    lineTo({50, 10});
    lineTo({50, 0});
    const Envelope found = outline::FindEnvelope(request);
    ASSERT_EQ(Refusal::None, found.refusal);
    double area = 0;
    for (const plane::Curve& c : found.edges) area += plane::Integrate(c).area;
    EXPECT_NEAR(400 + 25 * plane::kHalfTurn, -area, 1e-3);
}

TEST(SmallDrawings, BothHalvesAreSwept) {
    EXPECT_EQ(
        "0,0 0,10 30,10 30,12 40,12 40,0",
        test::Show(Find("0,0 0,10 30,10 30,-8 0,-8 0,0 | 30,-8 30,-12 40,-12 40,0", Half::Both)));
}

// What has no width, what lies within a point of itself, and cusps.
const SmallCase kNarrowCases[] = {
    {"two extension lines at a wall, nearer than a point",
     "0,0 0,10 20,10 20,6 40,6 40,0 | 20,10 20,30 | 20.000001,10 20.000001,30",
     "0,0 0,10 20.000001,10 20.000001,6 40,6 40,0", 0, 0, 2},
    {"two extension lines on a top, nearer than a point",
     "0,0 0,10 20,10 20,6 40,6 40,0 | 10,10 10,30 | 10.00001,10 10.00001,30",
     "0,0 0,10 20,10 20,6 40,6 40,0", 0, 0, 2},
    {"two extension lines that cross",
     "0,0 0,10 20,10 20,6 40,6 40,0 | 10,10 10,30 | 10.000001,10 9.999999,30.000001",
     "0,0 0,10 20,10 20,6 40,6 40,0", 0, 0, 2},
    {"two extension lines, one shorter",
     "0,0 0,10 20,10 20,6 40,6 40,0 | 20,10 20,30 | 20.00001,10 20.00001,22",
     "0,0 0,10 20.00001,10 20.00001,6 40,6 40,0", 0, 0, 2},
    {"a slot beside a wall", "0,0 0,10 20,10 20,6 | 20.0003,6 40,6 40,0 | 0,3 40,3",
     "0,0 0,10 20,10 20,6 40,6 40,0", 1},
    {"a mark in two parts that leans by less than a point",
     "0,0 0,168.8 26.2,168.8 | 26.2000013,168.8 26.19999975,185.7 | 26.19999975,185.7 "
     "26.1999982,202.6",
     "0,0 0,168.8 26.2000013,168.8 26.2000013,0", 0, 0, 1},
    {"round teeth that touch in cusps", "0,0 0,10 5,10(-1) 5.1,10(-1) 5.2,10(-1) 5.3,10 40,10 40,0",
     "0,0 0,10 5,10(-1) 5.1,10(-1) 5.2,10(-1) 5.3,10 40,10 40,0"},
    {"a ball", "5,0(-1) 15,0", "5,0(-1) 15,0"},
};

TEST(SmallDrawings, WhatHasNoWidthDoesNotShow) {
    for (const SmallCase& c : kNarrowCases) {
        SCOPED_TRACE(c.name);
        const Envelope found = Find(c.drawing);
        EXPECT_EQ(Refusal::None, found.refusal);
        EXPECT_EQ(Rounded(c.outline), test::Show(found));
        EXPECT_EQ(c.bridges, static_cast<int>(found.bridges.size()));
        EXPECT_EQ(c.tails, static_cast<int>(found.tails.size()));
    }
}

// Ends that were meant to lie at one height, apart by the noise of what drew them: a face does not
// run back along the neck between them.
TEST(SmallDrawings, NoiseAtAFacesFootDoesNotShow) {
    for (const double noise : {0.0, 1e-13, 1e-12, 1e-11, 1e-10, 1e-9}) {
        SCOPED_TRACE(noise);
        Request request;
        request.lengths.side = 5;
        const plane::Point at[][2] = {{{0, 0}, {0, 6}},
                                      {{0, 6}, {30, 6}},
                                      {{30, 6 + 0.1 * noise}, {35, 6 + 0.5 * noise}},
                                      {{35, 6}, {34.7, 8}},
                                      {{34.7, 8}, {38, 8}},
                                      {{38, 8}, {37.7, 6 + noise}},
                                      {{37.7, 6 - 0.1 * noise}, {37.7, 0}}};
        for (const auto& line : at)
            request.curves.push_back({plane::MakeLine(line[0], line[1]), 0, false});
        const Envelope found = outline::FindEnvelope(request);
        ASSERT_EQ(Refusal::None, found.refusal);
        ASSERT_EQ(6u, found.edges.size());
        EXPECT_NEAR(37.7, found.edges[4].to.x, 1e-5);
        EXPECT_NEAR(6, found.edges[4].to.y, 1e-5);
    }
}

// A face whose neck is as deep as the step of the profile: turned, rounding must not open it.
TEST(SmallDrawings, TurningDoesNotOpenAFace) {
    const std::string drawing = "-40,0 -40,6 2,6 2,12 | 0,0 0,9(-0.41421356237309503) 1,10 2,10";
    for (const double degrees : {0.0, 5.7, 57.3, 114.6, 200.0}) {
        SCOPED_TRACE(degrees);
        Request request;
        for (outline::Contour contour : test::ParseContour(drawing)) {
            // There and back: the rounding of both stays.
            for (const double turn : {degrees, -degrees})
                for (plane::Point* p :
                     {&contour.curve.from, &contour.curve.to, &contour.curve.centre}) {
                    const plane::Vector v =
                        plane::Turned(plane::Vector{p->x, p->y}, turn * plane::kHalfTurn / 180);
                    *p = {v.x, v.y};
                }
            request.curves.push_back(contour);
        }
        const Envelope found = outline::FindEnvelope(request);
        const plane::Point corners[] = {{-40, 6}, {0, 6}, {0, 9}, {1, 10}, {2, 10}, {2, 0}};
        ASSERT_EQ(std::size(corners), found.edges.size());
        for (size_t i = 0; i < std::size(corners); ++i)
            EXPECT_LE(plane::Distance(corners[i], found.edges[i].to), 1e-9) << i;
    }
}

TEST(SmallDrawings, TwoToolsAreRefused) {
    const Envelope found = Find("0,0 0,10 20,10 30,0 40,10 60,10 60,0");
    EXPECT_EQ(Refusal::TwoTools, found.refusal);
    EXPECT_NEAR(30, found.place.x, 1e-9);
    EXPECT_TRUE(found.edges.empty());
    // A single arc that touches the axis between its ends.
    for (const char* drawing : {"0,10(1) 20,10", "0,0 0,10(1) 20,10 20,0"})
        EXPECT_EQ(Refusal::TwoTools, Find(drawing).refusal) << drawing;
}

}  // namespace
