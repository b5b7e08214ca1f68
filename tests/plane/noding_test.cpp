// Curves cut where they meet, as numbers that were worked out by hand.
#include <gtest/gtest.h>

#include <sstream>

#include "plane/noding.h"
#include "plane/text.h"

namespace {

constexpr double kTol = 1e-6;

// "0-1 1-2(0.5)": the pieces by their nodes, with the bulges of arcs; then the nodes.
std::string Noded(const char* text) {
    const std::vector<plane::Curve> curves = plane::ParseCurves(text);
    const plane::Noding noding = plane::NodeCurves(curves, kTol);
    std::ostringstream out;
    for (const plane::NodedPiece& piece : noding.pieces) {
        const plane::Curve curve = plane::CurveOf(piece, curves, noding);
        EXPECT_EQ(curve.from, noding.nodes[piece.from]);
        EXPECT_EQ(curve.to, noding.nodes[piece.to]);
        out << piece.from << "-" << piece.to;
        if (curve.IsArc()) out << "(" << curve.bulge << ")";
        out << " ";
    }
    out << "of";
    for (const plane::Point& node : noding.nodes) out << " " << plane::Show(node);
    return out.str();
}

TEST(Noding, PiecesBetweenTheMeetings) {
    const struct {
        const char *name, *curves, *noded;
    } rows[] = {
        {"nothing", "", "of"},
        {"one line", "0,0 4,0", "0-1 of 0,0 4,0"},
        {"a cross", "-1,0 1,0 | 0,-1 0,1", "0-4 4-1 2-4 4-3 of -1,0 1,0 0,-1 0,1 0,0"},
        {"a T keeps the end that was drawn", "0,0 4,0 | 2,0.0000004 2,3",
         "0-2 2-1 2-3 of 0,0 4,0 2,4e-07 2,3"},
        {"ends within the tolerance are one place", "0,0 4,0 | 4,0.0000004 4,4",
         "0-1 1-2 of 0,0 4,0 4,4"},
        {"ends beyond it are two", "0,0 4,0 | 4,0.00001 4,4", "0-1 2-3 of 0,0 4,0 4,1e-05 4,4"},
        {"a line drawn twice, once the other way", "0,0 4,0 | 4,0 0,0", "0-1 of 0,0 4,0"},
        {"a part drawn over", "0,0 4,0 | 1,0 3,0", "0-2 2-3 3-1 of 0,0 4,0 1,0 3,0"},
        {"an arc and its chord stay apart", "-1,0(1) 1,0 | -1,0 1,0", "0-1(1) 0-1 of -1,0 1,0"},
        {"a half circle cut in halves", "-1,0(1) 1,0 | 0,-3 0,3",
         "0-4(0.414214) 4-1(0.414214) 2-4 4-3 of -1,0 1,0 0,-3 0,3 0,-1"},
        {"a line that touches an arc", "-1,0(1) 1,0 | -2,-1 2,-1",
         "0-4(0.414214) 4-1(0.414214) 2-4 4-3 of -1,0 1,0 -2,-1 2,-1 0,-1"},
        {"a line shorter than the tolerance is none", "0,0 0.0000001,0", "of 0,0"},
    };
    for (const auto& row : rows) EXPECT_EQ(row.noded, Noded(row.curves)) << row.name;
}

}  // namespace
