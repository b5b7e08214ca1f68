// Questions about a profile: how high it is somewhere, and where it rises above a line.
#pragma once

#include <vector>

#include "UpperEnvelope.h"

namespace outline {

class ProfileIndex {
public:
    // Both are kept by reference and must stay.
    // cost  O(n), memory O(n)
    ProfileIndex(const std::vector<Piece>& pieces, const std::vector<Span>& spans);

    // Stands for "no curve is there".
    static double Nothing();

    // The height just right (side > 0) or just left of x; at the place of a step that of this side.
    double HeightBeside(double x, int side) const;
    // The greatest height over [lo, hi].
    double HighestIn(double lo, double hi) const;
    // True when the profile rises above the straight line from a to b by more than `slack`
    // somewhere between, farther than `margin` from both. cost  O(log n) unless the profile runs
    // along the line for long
    bool RisesAbove(const plane::Point& a, const plane::Point& b, double slack,
                    double margin) const;

    const std::vector<Piece>& Pieces() const { return m_pieces; }
    const std::vector<Span>& Spans() const { return m_spans; }
    // The first span that ends right of x.
    size_t SpanBehind(double x) const;

private:
    double HighestOf(size_t first, size_t last) const;
    bool RisesIn(size_t node, size_t first, size_t last, const Piece& line, double slack) const;

    const std::vector<Piece>& m_pieces;
    const std::vector<Span>& m_spans;
    size_t m_leaves = 1;
    std::vector<double> m_highest;  // a binary tree: the root at 1, span i at m_leaves + i
};

}  // namespace outline
