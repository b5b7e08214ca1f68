#include "StdAfx.h"

#include "Slivers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace outline {
namespace {

// A spike or a slot has no more spans than that: a few marks that cross one another. Longer runs of
// narrow spans are curves that are drawn in fine steps.
constexpr size_t kMostSpans = 16;

class Mender {
public:
    Mender(std::vector<Piece>& pieces, const std::vector<Span>& spans, const Measures& measures,
           Envelope& envelope)
        : m_pieces(pieces), m_spans(spans), m_m(measures), m_envelope(envelope) {}

    std::vector<Span> Mend() {
        std::vector<Span> mended;
        mended.reserve(m_spans.size());
        for (size_t i = 0; i < m_spans.size();) {
            const size_t next = IsNarrow(m_spans[i]) ? MendFrom(i, mended) : i;
            if (next == i) mended.push_back(m_spans[i++]);
            i = (std::max)(i, next);
        }
        return mended;
    }

private:
    bool IsNarrow(const Span& span) const { return span.x1 - span.x0 < 2 * m_m.g; }
    double AtStart(const Span& s) const { return HeightAt(m_pieces[s.piece], s.x0); }
    double AtEnd(const Span& s) const { return HeightAt(m_pieces[s.piece], s.x1); }

    // The first span behind what was mended, or i when nothing was.
    size_t MendFrom(size_t i, std::vector<Span>& mended) {
        double high = -std::numeric_limits<double>::infinity(), low = -high;
        for (size_t j = i; j < m_spans.size() && j < i + kMostSpans; ++j) {
            const Span& span = m_spans[j];
            const Piece& piece = m_pieces[span.piece];
            const double width = span.x1 - m_spans[i].x0;
            if (!(width < 2 * m_m.g)) break;
            high = (std::max)(high, HighestIn(piece, span.x0, span.x1));
            low = (std::min)(low, LowestIn(piece, span.x0, span.x1));
            const bool isFirst = mended.empty(), isLast = j + 1 == m_spans.size();
            if (isFirst && isLast) break;
            const double left = isFirst ? 0.0 : AtEnd(mended.back());
            const double right = isLast ? 0.0 : AtStart(m_spans[j + 1]);
            if (width < m_m.g && high > (std::max)(left, right) + m_m.g) {
                TellSpike(i, j, high - (std::max)(left, right));
                if (!isFirst && !isLast) Level(i, j, left, right, (std::max)(left, right), mended);
                return j + 1;
            }
            if (isFirst || isLast || !(low < (std::min)(left, right) - m_m.g)) continue;
            // A corner or a cusp that the profile comes down to step by step is none.
            if (AtStart(m_spans[i]) > left - m_m.g || AtEnd(span) > right - m_m.g) continue;
            const double level = (std::min)(left, right);
            m_envelope.bridges.push_back(
                {{m_spans[i].x0, level}, {span.x1, level}, span.x1 - m_spans[i].x0});
            Level(i, j, left, right, level, mended);
            return j + 1;
        }
        return i;
    }

    void TellSpike(size_t i, size_t j, double length) {
        plane::Point tip;
        for (size_t k = i; k <= j; ++k) {
            const Span& span = m_spans[k];
            const Piece& piece = m_pieces[span.piece];
            for (const double x : {span.x0, span.x1})
                if (HeightAt(piece, x) > tip.y) tip = {x, HeightAt(piece, x)};
        }
        m_envelope.tails.push_back({tip, length, -1});
    }

    // A straight piece over the spans: from side to side when these are as high, else at a level.
    void Level(size_t i, size_t j, double left, double right, double level,
               std::vector<Span>& mended) {
        const bool isStep = std::fabs(left - right) > m_m.g;
        Piece line;
        line.x0 = m_spans[i].x0;
        line.x1 = m_spans[j].x1;
        line.y0 = isStep ? level : left;
        line.y1 = isStep ? level : right;
        m_pieces.push_back(line);
        mended.push_back({line.x0, line.x1, static_cast<int>(m_pieces.size()) - 1});
    }

    std::vector<Piece>& m_pieces;
    const std::vector<Span>& m_spans;
    const Measures& m_m;
    Envelope& m_envelope;
};

}  // namespace

void DropSlivers(std::vector<Span>& spans, double step) {
    std::vector<Span> kept;
    kept.reserve(spans.size());
    for (const Span& span : spans) {
        if (!kept.empty() && span.x1 - kept.back().x1 <= step) continue;
        kept.push_back(span);
    }
    spans.swap(kept);
}

void MendNarrow(std::vector<Piece>& pieces, std::vector<Span>& spans, const Measures& measures,
                Envelope& envelope) {
    spans = Mender(pieces, spans, measures, envelope).Mend();
}

}  // namespace outline
