#include "StdAfx.h"

#include "ProfileIndex.h"

#include <algorithm>
#include <limits>

namespace outline {

ProfileIndex::ProfileIndex(const std::vector<Piece>& pieces, const std::vector<Span>& spans)
    : m_pieces(pieces), m_spans(spans) {
    while (m_leaves < spans.size()) m_leaves *= 2;
    m_highest.assign(2 * m_leaves, Nothing());
    for (size_t i = 0; i < spans.size(); ++i)
        m_highest[m_leaves + i] =
            outline::HighestIn(pieces[spans[i].piece], spans[i].x0, spans[i].x1);
    for (size_t i = m_leaves; --i > 0;)
        m_highest[i] = (std::max)(m_highest[2 * i], m_highest[2 * i + 1]);
}

double ProfileIndex::Nothing() { return -std::numeric_limits<double>::infinity(); }

size_t ProfileIndex::SpanBehind(double x) const {
    const auto it = std::upper_bound(m_spans.begin(), m_spans.end(), x,
                                     [](double value, const Span& s) { return value < s.x1; });
    return static_cast<size_t>(it - m_spans.begin());
}

double ProfileIndex::HeightBeside(double x, int side) const {
    size_t i = SpanBehind(x);
    if (side < 0) {
        // The span that ends at x or goes on through it.
        if (i == m_spans.size() || m_spans[i].x0 >= x) {
            if (i == 0) return Nothing();
            --i;
            if (m_spans[i].x1 < x) return Nothing();
        }
    } else if (i == m_spans.size() || m_spans[i].x0 > x) {
        return Nothing();
    }
    return HeightAt(m_pieces[m_spans[i].piece], x);
}

double ProfileIndex::HighestOf(size_t first, size_t last) const {
    double highest = Nothing();
    for (first += m_leaves, last += m_leaves; first < last; first /= 2, last /= 2) {
        if (first % 2 == 1) highest = (std::max)(highest, m_highest[first++]);
        if (last % 2 == 1) highest = (std::max)(highest, m_highest[--last]);
    }
    return highest;
}

double ProfileIndex::HighestIn(double lo, double hi) const {
    const auto part = [&](size_t i) {
        const Span& s = m_spans[i];
        const double a = (std::max)(lo, s.x0), b = (std::min)(hi, s.x1);
        return a <= b ? outline::HighestIn(m_pieces[s.piece], a, b) : Nothing();
    };
    size_t first = SpanBehind(lo);
    if (first > 0 && m_spans[first - 1].x1 >= lo) --first;
    // The first span that begins right of hi.
    const auto it = std::upper_bound(m_spans.begin(), m_spans.end(), hi,
                                     [](double value, const Span& s) { return value < s.x0; });
    const size_t last = static_cast<size_t>(it - m_spans.begin());
    if (first >= last) return Nothing();
    double highest = (std::max)(part(first), part(last - 1));
    if (last - first > 2) highest = (std::max)(highest, HighestOf(first + 1, last - 1));
    return highest;
}

bool ProfileIndex::RisesAbove(const plane::Point& a, const plane::Point& b, double slack,
                              double margin) const {
    const plane::Point &left = a.x <= b.x ? a : b, &right = a.x <= b.x ? b : a;
    if (!(right.x - left.x > 2 * margin)) return false;
    const plane::Vector step = (right - left) * (margin / (right.x - left.x));
    Piece line;
    line.x0 = left.x + step.x;
    line.y0 = left.y + step.y;
    line.x1 = right.x - step.x;
    line.y1 = right.y - step.y;
    return !m_spans.empty() && RisesIn(1, 0, m_leaves, line, slack);
}

bool ProfileIndex::RisesIn(size_t node, size_t first, size_t last, const Piece& line,
                           double slack) const {
    if (first >= m_spans.size()) return false;
    const size_t end = (std::min)(last, m_spans.size());
    const double lo = (std::max)(line.x0, m_spans[first].x0);
    const double hi = (std::min)(line.x1, m_spans[end - 1].x1);
    if (!(hi > lo)) return false;
    if (m_highest[node] <= (std::min)(HeightAt(line, lo), HeightAt(line, hi)) + slack) return false;
    if (last - first > 1) {
        const size_t middle = (first + last) / 2;
        return RisesIn(2 * node, first, middle, line, slack) ||
               RisesIn(2 * node + 1, middle, last, line, slack);
    }
    // The place where a piece lies highest above the line: an end, or where an upper half circle
    // has the line's slope.
    const Piece& piece = m_pieces[m_spans[first].piece];
    const auto rises = [&](double x) { return HeightAt(piece, x) - HeightAt(line, x) > slack; };
    if (rises(lo) || rises(hi)) return true;
    if (piece.bend <= 0) return false;
    const double slope = SlopeAt(line, lo);
    const double x = piece.cx - piece.radius * slope / std::sqrt(1 + slope * slope);
    return x > lo && x < hi && rises(x);
}

}  // namespace outline
