// Rings of lines and arcs: size, length, and where they meet themselves.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
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
        EXPECT_NEAR(c.minX, box.low.x, 1e-12);
        EXPECT_NEAR(c.minY, box.low.y, 1e-12);
        EXPECT_NEAR(c.maxX, box.high.x, 1e-12);
        EXPECT_NEAR(c.maxY, box.high.y, 1e-12);
    }
}

}  // namespace
