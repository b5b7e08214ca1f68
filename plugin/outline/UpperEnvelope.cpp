#include "StdAfx.h"

#include "UpperEnvelope.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace outline {
namespace {

using Spans = std::vector<Span>;

class Merger {
public:
    Merger(const std::vector<Piece>& pieces, double tie) : m_pieces(pieces), m_tie(tie) {}

    // Appends to out the envelope of two envelopes.
    void Merge(const Span* a, const Span* aEnd, const Span* b, const Span* bEnd, Spans& out) {
        m_first = out.size();
        double x = -std::numeric_limits<double>::infinity();
        while (a != aEnd && b != bEnd) {
            const double a0 = (std::max)(a->x0, x), b0 = (std::max)(b->x0, x);
            if (a0 < b0) {
                x = (std::min)(a->x1, b0);
                Emit(a0, x, a->piece, out);
            } else if (b0 < a0) {
                x = (std::min)(b->x1, a0);
                Emit(b0, x, b->piece, out);
            } else {
                x = (std::min)(a->x1, b->x1);
                Choose(a0, x, a->piece, b->piece, out);
            }
            if (a->x1 <= x) ++a;
            if (b->x1 <= x) ++b;
        }
        for (; a != aEnd; ++a) Emit((std::max)(a->x0, x), a->x1, a->piece, out);
        for (; b != bEnd; ++b) Emit((std::max)(b->x0, x), b->x1, b->piece, out);
    }

private:
    void Emit(double x0, double x1, int piece, Spans& out) const {
        if (!(x1 > x0)) return;
        if (out.size() > m_first && out.back().piece == piece && out.back().x1 == x0) {
            out.back().x1 = x1;
            return;
        }
        out.push_back({x0, x1, piece});
    }

    // Between x0 and x1 both are there.
    void Choose(double x0, double x1, int a, int b, Spans& out) const {
        if (!(x1 > x0)) return;
        const Piece &p = m_pieces[a], &q = m_pieces[b];
        if (a == b) return Emit(x0, x1, a, out);
        if (p.bend == 0 && q.bend == 0) {
            const double before = HeightAt(p, x0) - HeightAt(q, x0);
            const double after = HeightAt(p, x1) - HeightAt(q, x1);
            if (before >= 0 && after >= 0 && before + after > 2 * m_tie)
                return Emit(x0, x1, a, out);
            if (before <= 0 && after <= 0 && before + after < -2 * m_tie)
                return Emit(x0, x1, b, out);
        } else if (LowestIn(p, x0, x1) > HighestIn(q, x0, x1)) {
            return Emit(x0, x1, a, out);
        } else if (LowestIn(q, x0, x1) > HighestIn(p, x0, x1)) {
            return Emit(x0, x1, b, out);
        }
        double at[2];
        const int count = CrossingsOf(p, q, x0, x1, at);
        double from = x0;
        for (int i = 0; i <= count; ++i) {
            const double to = i < count ? at[i] : x1;
            if (to > from) Emit(from, to, HigherIn(from, to, a, b, out), out);
            from = (std::max)(from, to);
        }
    }

    // No crossing lies between: the middle decides, or, where both touch there, what is clearest
    // beside it; on a tie all along the piece before.
    int HigherIn(double from, double to, int a, int b, const Spans& out) const {
        const Piece &p = m_pieces[a], &q = m_pieces[b];
        const auto offAt = [&](double share) {
            const double x = from + (to - from) * share;
            return HeightAt(p, x) - HeightAt(q, x);
        };
        double off = offAt(0.5);
        if (std::fabs(off) <= m_tie)
            for (const double share : {0.25, 0.75, 0.02, 0.98}) {
                const double beside = offAt(share);
                if (std::fabs(beside) > std::fabs(off)) off = beside;
            }
        if (off > m_tie) return a;
        if (off < -m_tie) return b;
        if (out.size() > m_first && out.back().x1 == from) {
            if (out.back().piece == a) return a;
            if (out.back().piece == b) return b;
        }
        if (p.x1 != q.x1) return p.x1 > q.x1 ? a : b;
        return (std::min)(a, b);
    }

    const std::vector<Piece>& m_pieces;
    const double m_tie;
    size_t m_first = 0;  // of the envelope that is being made
};

// A floor under the envelope: over each column of equal width the greatest height that one piece
// has all over it. What lies nowhere above its columns' floors never shows.
class Floors {
public:
    Floors(const std::vector<Piece>& pieces, double low, double high) : m_low(low), m_perWidth(0) {
        m_count = 1;
        while (m_count < pieces.size()) m_count *= 2;
        if (high > low) m_perWidth = static_cast<double>(m_count) / (high - low);
        m_floor.assign(2 * m_count, -std::numeric_limits<double>::infinity());
        m_least = m_floor;
        for (const Piece& p : pieces) Raise(p);
        // What a wide column has, its halves have; then the least of both halves upwards.
        for (size_t i = 1; i < m_count; ++i)
            for (const size_t half : {2 * i, 2 * i + 1})
                m_floor[half] = (std::max)(m_floor[half], m_floor[i]);
        for (size_t i = m_count; i < 2 * m_count; ++i) m_least[i] = m_floor[i];
        for (size_t i = m_count; --i > 0;)
            m_least[i] = (std::min)(m_least[2 * i], m_least[2 * i + 1]);
    }

    bool MayShow(const Piece& p, double tie) const {
        size_t first = Column(p.x0), last = Column(p.x1) + 1;
        double least = std::numeric_limits<double>::infinity();
        for (first += m_count, last += m_count; first < last; first /= 2, last /= 2) {
            if (first % 2 == 1) least = (std::min)(least, m_least[first++]);
            if (last % 2 == 1) least = (std::min)(least, m_least[--last]);
        }
        return HighestIn(p, p.x0, p.x1) >= least - tie;
    }

private:
    size_t Column(double x) const {
        const double column = (x - m_low) * m_perWidth;
        return column <= 0 ? 0 : (std::min)(static_cast<size_t>(column), m_count - 1);
    }
    // The columns wholly under the piece, as few wide ones.
    void Raise(const Piece& p) {
        size_t first = Column(p.x0) + 1, last = Column(p.x1);
        if (first >= last) return;
        const double height = LowestIn(p, p.x0, p.x1);
        for (first += m_count, last += m_count; first < last; first /= 2, last /= 2) {
            if (first % 2 == 1) Lift(first++, height);
            if (last % 2 == 1) Lift(--last, height);
        }
    }
    void Lift(size_t node, double height) { m_floor[node] = (std::max)(m_floor[node], height); }

    const double m_low;
    double m_perWidth;
    size_t m_count = 1;
    // Binary trees over the columns: the root at 1, column i at m_count + i.
    std::vector<double> m_floor, m_least;
};

std::vector<int> PiecesThatMayShow(const std::vector<Piece>& pieces, double tie) {
    double low = std::numeric_limits<double>::infinity(), high = -low;
    for (const Piece& p : pieces) {
        low = (std::min)(low, p.x0);
        high = (std::max)(high, p.x1);
    }
    std::vector<int> kept;
    if (pieces.empty()) return kept;
    const Floors floors(pieces, low, high);
    for (size_t i = 0; i < pieces.size(); ++i)
        if (floors.MayShow(pieces[i], tie)) kept.push_back(static_cast<int>(i));
    return kept;
}

}  // namespace

std::vector<Span> UpperEnvelope(const std::vector<Piece>& pieces, double tie) {
    std::vector<std::pair<double, int>> order;
    order.reserve(pieces.size());
    for (const int i : PiecesThatMayShow(pieces, tie)) order.push_back({pieces[i].x0, i});
    std::sort(order.begin(), order.end());
    // Runs that are merged two by two; their borders stand in `ends`.
    Spans spans, next;
    std::vector<size_t> ends{0}, nextEnds;
    for (const auto& [x, i] : order) {
        spans.push_back({x, pieces[i].x1, i});
        ends.push_back(spans.size());
    }
    Merger merger(pieces, tie);
    while (ends.size() > 2) {
        next.clear();
        nextEnds.assign(1, 0);
        for (size_t i = 0; i + 1 < ends.size(); i += 2) {
            const Span* base = spans.data();
            const size_t last = (std::min)(i + 2, ends.size() - 1);
            merger.Merge(base + ends[i], base + ends[i + 1], base + ends[i + 1], base + ends[last],
                         next);
            nextEnds.push_back(next.size());
        }
        spans.swap(next);
        ends.swap(nextEnds);
    }
    return spans;
}

}  // namespace outline
