// The outline moves with the drawing, whatever the axis, and does not depend on how it is drawn.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "plugin/outline/ExactEnvelope.h"
#include "random_tool.h"
#include "result_chain.h"

namespace {

using Curves = std::vector<plane::Curve>;

// A map of the plane that keeps shapes: mirrored, scaled, turned, moved.
struct Motion {
    double scale = 1, angle = 0, dx = 0, dy = 0;
    bool isMirrored = false;

    plane::Point operator()(const plane::Point& p) const {
        const plane::Vector v =
            plane::Turned(plane::Vector{scale * p.x, scale * (isMirrored ? -p.y : p.y)}, angle);
        return {v.x + dx, v.y + dy};
    }
    plane::Curve operator()(plane::Curve c) const {
        c.from = (*this)(c.from);
        c.to = (*this)(c.to);
        if (!c.IsArc()) return c;
        c.centre = (*this)(c.centre);
        c.radius *= scale;
        if (isMirrored) c.bulge = -c.bulge;
        return c;
    }
};

Curves ToolOf(unsigned seed) {
    Curves curves;
    for (const outline::Contour& c : test::RandomTool(seed).Make(seed % 4 != 0))
        curves.push_back(c.curve);
    return curves;
}

SExactResult Find(const Curves& curves, const Motion& motion) {
    SExactRequest request;
    for (const plane::Curve& c : curves) request.m_curves.push_back(motion(c));
    const plane::Point from = motion(plane::Point{0, 0}), to = motion(plane::Point{1, 0});
    request.m_axisFrom.set(from.x, from.y, 0);
    request.m_axisTo.set(to.x, to.y, 0);
    request.m_half = motion.isMirrored ? SExactRequest::E_Half_Lower : SExactRequest::E_Half_Upper;
    return CExactEnvelope(request).Find();
}

void ExpectSame(const Curves& plain, const Curves& other, const Motion& motion, const char* what) {
    const SExactResult expected = Find(plain, {}), found = Find(other, motion);
    EXPECT_EQ(expected.m_refusal, found.m_refusal) << what;
    if (expected.m_refusal != SExactResult::E_Refusal_None) return;
    Curves moved;
    for (const plane::Curve& c : test::ChainOf(expected)) moved.push_back(motion(c));
    EXPECT_LE(test::FarthestApart(moved, test::ChainOf(found)), 1e-9 * found.m_dSize) << what;
}

TEST(Placement, TheOutlineMovesWithTheDrawing) {
    for (unsigned seed = 0; seed < 150; ++seed) {
        SCOPED_TRACE(seed);
        const Curves curves = ToolOf(seed);
        std::mt19937 random(seed);
        const double angle = std::uniform_real_distribution<double>(-3, 3)(random);
        ExpectSame(curves, curves, {1, 0, 1e6, -1e6, false}, "moved");
        ExpectSame(curves, curves, {1, angle, 0, 0, false}, "turned");
        ExpectSame(curves, curves, {1, angle, 3000, 500, true}, "mirrored and turned");
        // Up to that size every default is a share of it.
        if (Find(curves, {}).m_dSize < 50)
            ExpectSame(curves, curves, {0.05, 0, 0, 0, false}, "scaled");
    }
}

TEST(Placement, HowItIsDrawnDoesNotMatter) {
    for (unsigned seed = 0; seed < 150; ++seed) {
        SCOPED_TRACE(seed);
        const Curves curves = ToolOf(seed);
        std::mt19937 random(seed);
        Curves shuffled = curves, doubled, split;
        std::shuffle(shuffled.begin(), shuffled.end(), random);
        for (const plane::Curve& c : curves) {
            doubled.push_back(c);
            doubled.push_back(c.Reversed());
            const plane::Point middle =
                plane::PointAt(c, std::uniform_real_distribution<double>(0.2, 0.8)(random));
            split.push_back(plane::PartOf(c, c.from, middle));
            split.push_back(plane::PartOf(c, middle, c.to));
        }
        ExpectSame(curves, shuffled, {}, "shuffled");
        ExpectSame(curves, doubled, {}, "doubled");
        ExpectSame(curves, split, {}, "split");
    }
}

}  // namespace
