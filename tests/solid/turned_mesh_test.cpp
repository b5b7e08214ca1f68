// Triangles for pictures: closed, outward, and as large as the solid.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <map>
#include <vector>

#include "host/solid/turned_mesh.h"

namespace {

using namespace host::solid;

struct Case {
    const char* name;
    std::vector<plane::Corner> corners;
};

const Case kCases[] = {
    {"cylinder", {{{0, 0}}, {{30, 0}}, {{30, 8}}, {{0, 8}}}},
    {"cone to a tip", {{{0, 0}}, {{30, 0}}, {{0, 8}}}},
    {"ball nose", {{{0, 0}}, {{35, 0}, std::tan(std::acos(-1.0) / 8)}, {{30, 5}}, {{0, 5}}}},
    {"groove", {{{0, 0}}, {{30, 0}}, {{30, 9}}, {{20, 9}, -0.7}, {{10, 9}}, {{0, 9}}}},
    {"tube", {{{0, 5}}, {{30, 5}}, {{30, 6}, 1.0}, {{0, 6}}}},
    {"flat arc", {{{0, 0}}, {{30, 0}}, {{30, 8}, 1e-7}, {{0, 8}}}},
    {"below the axis, the other way round", {{{0, 0}}, {{0, -8}}, {{30, -4}}, {{30, 0}}}},
};

TEST(TurnedMesh, IsClosedOutwardAndAsLargeAsTheSolid) {
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.name);
        Outline outline;
        outline.corners = c.corners;
        Profile profile;
        ASSERT_FALSE(Prepare(outline, {0, 0, 0}, {1, 0, 0}, profile));
        const Measures measures = Measure(profile);
        const Mesh mesh = TurnedMesh(profile, 1e-4 * measures.largestDiameter);
        double volume = 0, area = 0;
        std::map<std::array<long long, 6>, int> edges;
        for (const auto& t : mesh.triangles) {
            const AcGePoint3d& p = mesh.points[static_cast<size_t>(t[0])];
            const AcGePoint3d& q = mesh.points[static_cast<size_t>(t[1])];
            const AcGePoint3d& r = mesh.points[static_cast<size_t>(t[2])];
            const AcGeVector3d across = (q - p).crossProduct(r - p);
            ASSERT_GT(across.length(), 0.0);
            area += across.length() / 2;
            volume += p.asVector().dotProduct(q.asVector().crossProduct(r.asVector())) / 6;
            for (const int corner : t) {
                const AcGeVector3d& normal = mesh.normals[static_cast<size_t>(corner)];
                EXPECT_NEAR(1.0, normal.length(), 1e-9);
                EXPECT_GT(normal.dotProduct(across), 0.9 * across.length());
            }
            const AcGePoint3d* const ring[] = {&p, &q, &r, &p};
            for (int k = 0; k < 3; ++k) {
                const auto at = [](double v) { return std::llround(v * 1e7); };
                const AcGePoint3d &a = *ring[k], &b = *ring[k + 1];
                ++edges[{at(a.x), at(a.y), at(a.z), at(b.x), at(b.y), at(b.z)}];
                --edges[{at(b.x), at(b.y), at(b.z), at(a.x), at(a.y), at(a.z)}];
            }
        }
        for (const auto& [edge, count] : edges) ASSERT_EQ(0, count) << edge[0] << " " << edge[1];
        EXPECT_NEAR(1.0, volume / measures.volume, 2e-3);
        EXPECT_NEAR(1.0, area / measures.area, 2e-3);
    }
}

}  // namespace
