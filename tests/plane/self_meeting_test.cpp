// Where closed rings of lines and arcs meet themselves.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "plane/ring.h"
#include "plane/text.h"

namespace {

using plane::Curve;

struct MeetingCase {
    const char* name;
    const char* ring;
    const char* meeting;  // kind, first and second curve, place; "" for a simple ring
};
const MeetingCase kMeetings[] = {
    {"square", "0,0 4,0 4,4 0,4", ""},
    {"bow tie", "0,0 4,4 4,0 0,4", "crossing 0 2 2,2"},
    {"corner passes through an edge", "0,0 4,0 4,4 2,0 1,-2 0,4", "crossing 0 2 2,0"},
    {"corner touches an edge", "0,0 4,0 4,4 2,0 0,4", "touch 0 2 2,0"},
    {"two corners touch", "0,0 2,2 4,0 4,4 2,2 0,4", "touch 0 3 2,2"},
    {"two corners cross", "0,0 2,2 4,4 4,0 2,2 0,4", "crossing 0 3 2,2"},
    {"goes back on itself", "0,0 4,0 4,2 6,2 4,2 4,4 0,4", "overlap 2 3 5,2"},
    {"runs along an earlier edge", "0,0 6,0 6,3 4,3 4,0 2,0 2,3 0,3", "overlap 0 4 3,0"},
    {"a corner given twice is no meeting", "0,0 4,0 4,0 4,4 0,4", ""},
    {"half disc", "-1,0(1) 1,0", ""},
    {"lens of two arcs", "-1,0(0.5) 1,0(0.5)", ""},
    {"arc bulges through the opposite side", "0,0(-1) 4,0 4,1 0,1", "crossing 0 2 0.2679,1"},
    {"spike into an arc", "0,0(-1) 4,0 5,3 2,3 2,1 0,3", "crossing 0 3 2,2"},
    {"arc touches a line from below", "0,0(-1) 4,0 4,2 0,2", "touch 0 2 2,2"},
    {"arc clears a line narrowly", "0,0(-1) 4,0 4,2.0001 0,2.0001", ""},
    {"two arcs cross", "0,0(-1) 4,0 2,-3 6,-3 6,0(1) 2,0 0,-3", "crossing 0 4 3,1.732"},
    {"arc runs back on its own circle",
     "1,0(0.41421356237309503) 0,1(-0.41421356237309503) 1,0 3,-1", "overlap 0 1 0.7071,0.7071"},
    {"far from the origin", "1000000,0 1000004,4 1000004,0 1000000,4", "crossing 0 2 1e+06,2"},
    {"a neighbour crosses once more", "0,0 6,0(-3) 5,1 5,3 0,3", "crossing 0 1 3.667,0"},
    {"nearly straight arc dips through a line", "0,0(1e-4) 4,0 4,-1e-4 0,-1e-4",
     "crossing 0 2 0.5858,-0.0001"},
};

std::string Show(const std::optional<plane::SelfMeeting>& meeting) {
    if (!meeting) return "";
    static const char* const kNames[] = {"touch", "crossing", "overlap"};
    return kNames[static_cast<int>(meeting->kind)] + (" " + std::to_string(meeting->first)) + " " +
           std::to_string(meeting->second) + " " + plane::Show(meeting->at, 4);
}

TEST(PlaneRing, MeetingsWithItself) {
    for (const MeetingCase& c : kMeetings) {
        SCOPED_TRACE(c.name);
        const std::vector<Curve> ring = plane::CurvesOf(plane::ParseCorners(c.ring));
        EXPECT_EQ(c.meeting, Show(plane::FindSelfMeeting(ring, 1e-9)));

        // Kind and place stay what they are when the ring runs the other way round.
        std::vector<Curve> back;
        for (std::size_t i = ring.size(); i-- > 0;) back.push_back(ring[i].Reversed());
        const auto meeting = plane::FindSelfMeeting(back, 1e-9);
        EXPECT_EQ(c.meeting[0] != 0, meeting.has_value());
        if (meeting) {
            EXPECT_EQ(c.meeting[0], Show(meeting)[0]);
        }
    }
}

// Strands a little apart meet or not as the tolerance says, on both sides of its edge.
TEST(PlaneRing, ToleranceDecidesWhatMeets) {
    for (const char* const text :
         {"0,0 4,0 4,4 2,5e-7 0,4", "0,0(-1) 4,0 4,2.0000005 0,2.0000005"}) {
        const std::vector<Curve> ring = plane::CurvesOf(plane::ParseCorners(text));
        EXPECT_TRUE(plane::FindSelfMeeting(ring, 1e-6).has_value()) << text;
        EXPECT_TRUE(plane::FindSelfMeeting(ring, 5.0001e-7).has_value()) << text;
        EXPECT_FALSE(plane::FindSelfMeeting(ring, 4.9999e-7).has_value()) << text;
    }
}

// Random rings of short arcs: the same answer as when every arc is cut into many chords, unless the
// two come so close that the chords themselves decide.
TEST(PlaneRing, ArcsMeetAsTheirChordsDo) {
    std::mt19937 random(4711);
    std::uniform_real_distribution<double> place(0, 10), bulge(-0.9, 0.9);
    int crossings = 0;
    for (int round = 0; round < 200; ++round) {
        std::vector<plane::Corner> corners(static_cast<std::size_t>(3 + round % 4));
        for (plane::Corner& c : corners) {
            c.point = {place(random), 0};
            c.point.y = place(random);
            c.bulge = round % 3 ? bulge(random) : 0;
        }
        const std::vector<Curve> ring = plane::CurvesOf(corners);
        std::vector<plane::Corner> chords;
        for (const Curve& curve : ring) {
            const int parts = curve.IsArc() ? 120 : 1;
            for (int k = 0; k < parts; ++k)
                chords.push_back({plane::PointAt(curve, static_cast<double>(k) / parts), 0});
        }
        const auto exact = plane::FindSelfMeeting(ring, 1e-8);
        const auto cut = plane::FindSelfMeeting(plane::CurvesOf(chords), 1e-8);
        EXPECT_EQ(exact.has_value(), cut.has_value())
            << "seed 4711, ring " << round << ": " << plane::Show(ring);
        crossings += exact && exact->kind == plane::MeetingKind::Crossing;
    }
    EXPECT_GT(crossings, 50);
    EXPECT_LT(crossings, 190);
}

}  // namespace
