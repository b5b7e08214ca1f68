// The same tools as entities of every kind: what a drawing is made of does not change its outline.
#include <algorithm>
#include <cmath>
#include <random>
#include <string>

#include "outline_text.h"
#include "plain_law.h"
#include "plugin/outline/ContourReader.h"
#include "plugin/outline/ExactEnvelope.h"
#include "random_tool.h"
#include "result_chain.h"
#include "support/test_drawing.h"

namespace {

using Curves = std::vector<plane::Curve>;

std::string At(const plane::Point& p) { return plane::Show(p, 17); }

std::string Number(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

std::string LineOrArc(const plane::Curve& c) {
    if (!c.IsArc()) return "L " + At(c.from) + " " + At(c.to);
    const plane::Curve arc = c.bulge > 0 ? c : c.Reversed();
    const auto degrees = [&](const plane::Point& p) {
        return Number(plane::AngleOf(p - arc.centre) / test::kDegree);
    };
    return "A " + At(arc.centre) + " " + Number(arc.radius) + " " + degrees(arc.from) + " " +
           degrees(arc.to);
}

std::string Polyline(const plane::Curve& c, const char* letter) {
    return std::string(letter) + " " + At(c.from) + "(" + Number(c.bulge) + ") " + At(c.to);
}

// An arc as a part of an ellipse that is stretched across its start.
std::string Ellipse(const plane::Curve& c) {
    const plane::Curve arc = c.bulge > 0 ? c : c.Reversed();
    const plane::Vector major = arc.from - arc.centre;
    return "E " + At(arc.centre) + " " + At({major.x, major.y}) + " 0.8 0 " +
           Number(arc.Sweep() / test::kDegree);
}

std::string Spline(const plane::Curve& c, double bend) {
    const plane::Vector chord = c.Chord(), aside = plane::Left(chord) * bend;
    return "S " + At(c.from) + " " + At(c.from + chord * 0.3 + aside) + " " +
           At(c.from + chord * 0.6 + aside * 2.0) + " " + At(c.to);
}

struct Written {
    std::string drawing, block;
};

// Each curve as some entity; a share of them in a block that is inserted where it belongs.
Written Write(const Curves& curves, std::mt19937& random, bool withFree) {
    Written written;
    for (const plane::Curve& c : curves) {
        std::string entity;
        const unsigned kind = random() % (withFree ? 7 : 4);
        if (kind == 1)
            entity = Polyline(c, "P");
        else if (kind == 2)
            entity = Polyline(c, "H");
        else if (kind == 4 && c.IsArc() && std::fabs(c.bulge) > 0.05)
            entity = Ellipse(c);
        else if (kind >= 5 && !c.IsArc() && c.Length() > 1)
            entity = Spline(c, 0.02);
        else
            entity = LineOrArc(c);
        std::string& text = random() % 3 == 0 ? written.block : written.drawing;
        text += (text.empty() ? "" : " | ") + entity;
    }
    return written;
}

Curves Placed(const Curves& curves, double scale, double degrees, const plane::Vector& move) {
    Curves placed;
    const auto place = [&](const plane::Point& p) {
        const plane::Vector v =
            plane::Turned(plane::Vector{p.x, p.y} * scale, degrees * test::kDegree);
        return plane::Point{v.x + move.x, v.y + move.y};
    };
    for (plane::Curve c : curves) {
        c.from = place(c.from);
        c.to = place(c.to);
        c.centre = place(c.centre);
        c.radius *= scale;
        placed.push_back(c);
    }
    return placed;
}

Curves ToolOf(unsigned seed) {
    Curves curves;
    for (const outline::Contour& c : test::RandomTool(seed).Make(seed % 4 != 0))
        curves.push_back(c.curve);
    return curves;
}

SExactRequest RequestFor(test::TestDrawing& drawing) {
    SExactRequest request;
    request.m_ids = drawing.ids();
    request.m_axisTo.set(1, 0, 0);
    request.m_half = SExactRequest::E_Half_Upper;
    return request;
}

// The block holds its part of the tool turned, moved and scaled; its reference undoes that.
void Fill(test::TestDrawing& drawing, const Curves& curves, unsigned seed, bool withFree) {
    std::mt19937 random(seed);
    const Written whole = Write(curves, random, withFree);
    std::mt19937 again(seed);
    const Written moved = Write(Placed(curves, 0.5, 90, {7, -3}), again, withFree);
    drawing.Block("PART", moved.block).Block("ALL", "I PART 0,0");
    if (!whole.drawing.empty()) drawing.Add(whole.drawing);
    // The inverse of p -> turn(p / 2) + (7, -3).
    if (!moved.block.empty()) drawing.Add("I ALL 6,14 2 -90");
}

TEST(Entities, WhatItIsDrawnWithDoesNotMatter) {
    for (unsigned seed = 0; seed < 120; ++seed) {
        SCOPED_TRACE(seed);
        const Curves curves = ToolOf(seed);
        SExactRequest plainRequest;
        plainRequest.m_curves = curves;
        plainRequest.m_axisTo.set(1, 0, 0);
        plainRequest.m_half = SExactRequest::E_Half_Upper;
        const SExactResult expected = CExactEnvelope(plainRequest).Find();
        test::TestDrawing drawing;
        Fill(drawing, curves, seed, false);
        const SExactResult found = CExactEnvelope(RequestFor(drawing)).Find();
        ASSERT_EQ(expected.m_refusal, found.m_refusal);
        EXPECT_EQ(expected.m_bridges.size(), found.m_bridges.size());
        EXPECT_EQ(expected.m_tails.size(), found.m_tails.size());
        EXPECT_LE(test::FarthestApart(test::ChainOf(expected), test::ChainOf(found)),
                  1e-9 * expected.m_dSize);
    }
}

// Splines and ellipses become arcs: the outline follows these ray by ray.
TEST(Entities, SplinesAndEllipsesHoldRayByRay) {
    int drawn = 0, free = 0;
    for (unsigned seed = 0; seed < 16; ++seed) {
        SCOPED_TRACE(seed);
        test::TestDrawing drawing;
        Fill(drawing, ToolOf(seed), seed, true);
        SExactRequest request = RequestFor(drawing);
        request.m_dCurve = 2e-4;
        const SExactResult found = CExactEnvelope(request).Find();
        if (found.m_refusal != SExactResult::E_Refusal_None) continue;
        outline::Request rules;
        rules.curves = ReadContour(request, found.m_dCurve).m_curves;
        const outline::Envelope envelope = outline::FindEnvelope(rules);
        const plain::Law law(rules);
        EXPECT_EQ("", plain::Faults(law, envelope.edges)) << test::Show(envelope);
        EXPECT_LE(test::FarthestApart(test::ChainOf(found), envelope.edges), 1e-9 * found.m_dSize);
        ++drawn;
        free += std::any_of(rules.curves.begin(), rules.curves.end(),
                            [](const outline::Contour& c) { return c.isApproximate; });
    }
    EXPECT_GT(drawn, 10);
    EXPECT_GT(free, 10);
}

}  // namespace
