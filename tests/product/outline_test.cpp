// Rings of lines and arcs: size, length, and where they meet themselves.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <sstream>

#include "product/base/Outline.h"

namespace {

using product::Vertex;

const double kPi = std::acos(-1.0);

// "0,0 4,0,1 4,4": corners with an optional bulge.
std::vector<Vertex> Ring(const std::string& text) {
    std::vector<Vertex> ring;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        std::replace(word.begin(), word.end(), ',', ' ');
        std::istringstream numbers(word);
        Vertex v;
        numbers >> v.x >> v.y >> v.bulge;
        ring.push_back(v);
    }
    return ring;
}

TEST(Outline, SizeAndLength) {
    const struct {
        const char* name;
        std::vector<Vertex> ring;
        double length, minX, minY, maxX, maxY;
    } cases[] = {
        {"square", Ring("0,0 4,0 4,4 0,4"), 16, 0, 0, 4, 4},
        {"half disc below its chord", Ring("-1,0,1 1,0"), 2 + kPi, -1, -1, 1, 0},
        {"half disc above its chord", Ring("-1,0,-1 1,0"), 2 + kPi, -1, 0, 1, 1},
        {"three quarters of a circle",
         {{1, 0, std::tan(3 * kPi / 8)}, {0, -1, 0}},
         1.5 * kPi + std::sqrt(2.0),
         -1,
         -1,
         1,
         1},
        {"quarter that passes no extreme point",
         {{std::cos(0.1), std::sin(0.1), std::tan(0.2 / 4)}, {std::cos(0.3), std::sin(0.3), 0}},
         0.2 + 2 * std::sin(0.1),
         std::cos(0.3),
         std::sin(0.1),
         std::cos(0.1),
         std::sin(0.3)},
        {"corner given twice", Ring("0,0 4,0 4,0,1 4,4 0,4"), 12 + 2 * kPi, 0, 0, 6, 4},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_NEAR(c.length, product::LengthOf(c.ring), 1e-12);
        const product::Box box = product::ExtentsOf(c.ring);
        EXPECT_NEAR(c.minX, box.minX, 1e-12);
        EXPECT_NEAR(c.minY, box.minY, 1e-12);
        EXPECT_NEAR(c.maxX, box.maxX, 1e-12);
        EXPECT_NEAR(c.maxY, box.maxY, 1e-12);
    }
}

struct MeetingCase {
    const char* name;
    const char* ring;
    const char* meeting;  // kind, first and second edge, place; "" for a simple ring
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
    {"half disc", "-1,0,1 1,0", ""},
    {"lens of two arcs", "-1,0,0.5 1,0,0.5", ""},
    {"arc bulges through the opposite side", "0,0,-1 4,0 4,1 0,1", "crossing 0 2 0.2679,1"},
    {"spike into an arc", "0,0,-1 4,0 5,3 2,3 2,1 0,3", "crossing 0 3 2,2"},
    {"arc touches a line from below", "0,0,-1 4,0 4,2 0,2", "touch 0 2 2,2"},
    {"arc clears a line narrowly", "0,0,-1 4,0 4,2.0001 0,2.0001", ""},
    {"two arcs cross", "0,0,-1 4,0 2,-3 6,-3 6,0,1 2,0 0,-3", "crossing 0 4 3,1.732"},
    {"arc runs back on its own circle", "1,0,0.41421356237309503 0,1,-0.41421356237309503 1,0 3,-1",
     "overlap 0 1 0.7071,0.7071"},
    {"far from the origin", "1000000,0 1000004,4 1000004,0 1000000,4", "crossing 0 2 1e+06,2"},
};

std::string Show(const std::optional<product::SelfMeeting>& meeting) {
    if (!meeting) return "";
    static const char* const kNames[] = {"touch", "crossing", "overlap"};
    std::ostringstream text;
    text.precision(4);
    text << kNames[static_cast<int>(meeting->kind)] << ' ' << meeting->firstEdge << ' '
         << meeting->secondEdge << ' ' << meeting->at.x << ',' << meeting->at.y;
    return text.str();
}

TEST(Outline, MeetingsWithItself) {
    for (const MeetingCase& c : kMeetings) {
        SCOPED_TRACE(c.name);
        std::vector<Vertex> ring = Ring(c.ring);
        EXPECT_EQ(c.meeting, Show(product::FindSelfMeeting(ring)));

        // Kind and place stay what they are when the ring runs the other way round.
        std::vector<Vertex> back(ring.rbegin(), ring.rend());
        for (size_t i = 0; i < back.size(); ++i)
            back[i].bulge = -ring[(2 * ring.size() - 2 - i) % ring.size()].bulge;
        const auto meeting = product::FindSelfMeeting(back);
        EXPECT_EQ(c.meeting[0] != 0, meeting.has_value());
        if (meeting) {
            EXPECT_EQ(c.meeting[0], Show(meeting)[0]);
        }
    }
}

// Random rings of short arcs: the same answer as when every arc is cut into many chords, unless the
// two come so close that the chords themselves decide.
TEST(Outline, ArcsMeetAsTheirChordsDo) {
    std::mt19937 random(4711);
    std::uniform_real_distribution<double> place(0, 10), bulge(-0.9, 0.9);
    int crossings = 0;
    for (int round = 0; round < 200; ++round) {
        std::vector<Vertex> ring(3 + round % 4);
        for (Vertex& v : ring) v = {place(random), place(random), round % 3 ? bulge(random) : 0};
        std::vector<Vertex> chords;
        for (size_t i = 0; i < ring.size(); ++i) {
            const product::Point to{ring[(i + 1) % ring.size()].x, ring[(i + 1) % ring.size()].y};
            chords.push_back({ring[i].x, ring[i].y, 0});
            if (ring[i].bulge == 0) continue;
            const product::Circle c = product::CircleOf(ring[i], to);
            const double start = std::atan2(ring[i].y - c.centre.y, ring[i].x - c.centre.x);
            const int parts = 120;
            for (int k = 1; k < parts; ++k) {
                const double angle = start + product::Sweep(ring[i].bulge) * k / parts;
                chords.push_back({c.centre.x + c.radius * std::cos(angle),
                                  c.centre.y + c.radius * std::sin(angle), 0});
            }
        }
        const auto exact = product::FindSelfMeeting(ring);
        const auto cut = product::FindSelfMeeting(chords);
        EXPECT_EQ(exact.has_value(), cut.has_value()) << "seed 4711, ring " << round;
        crossings += exact && exact->kind == product::Meeting::Crossing;
    }
    EXPECT_GT(crossings, 50);
    EXPECT_LT(crossings, 190);
}

}  // namespace
