// One small drawing with its outline for each paragraph of the rules.
#include "outline_text.h"

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

TEST(SmallDrawings, BothHalvesAreSwept) {
    EXPECT_EQ(
        "0,0 0,10 30,10 30,12 40,12 40,0",
        test::Show(Find("0,0 0,10 30,10 30,-8 0,-8 0,0 | 30,-8 30,-12 40,-12 40,0", Half::Both)));
}

TEST(SmallDrawings, TwoToolsAreRefused) {
    const Envelope found = Find("0,0 0,10 20,10 30,0 40,10 60,10 60,0");
    EXPECT_EQ(Refusal::TwoTools, found.refusal);
    EXPECT_NEAR(30, found.place.x, 1e-9);
    EXPECT_TRUE(found.edges.empty());
}

}  // namespace
