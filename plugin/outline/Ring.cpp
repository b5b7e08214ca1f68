#include "StdAfx.h"

#include "Ring.h"

#include <algorithm>
#include <cmath>

#include "Strokes.h"
#include "plane/meeting.h"

namespace outline {
namespace {

using Edges = std::vector<plane::Curve>;

// Points of a line that later ones are joined to are looked at again, so that many small turns do
// not add up; no more than these, since an outline has few that long.
constexpr size_t kRemembered = 64;

plane::Curve WithEnds(const plane::Curve& c, const plane::Point& from, const plane::Point& to) {
    if (!c.IsArc()) return plane::MakeLine(from, to);
    plane::Curve moved = plane::PartOf(c, from, to);
    return moved;
}

class Chain {
public:
    explicit Chain(double tiny) : m_tiny(tiny) {}

    void Add(plane::Curve edge) {
        if (!m_edges.empty()) edge = WithStart(edge, m_edges.back().to);
        if (plane::Distance(edge.from, edge.to) <= m_tiny && edge.Length() <= 4 * m_tiny) {
            // Its end is where the next one starts from; what came before ends there, too.
            if (!m_edges.empty() && !m_edges.back().IsArc()) return;
            return;
        }
        if (m_edges.empty() || !Swallows(edge)) {
            m_edges.push_back(edge);
            m_dropped.clear();
        }
    }
    Edges& Get() { return m_edges; }

private:
    static plane::Curve WithStart(plane::Curve edge, const plane::Point& from) {
        edge.from = from;
        return edge;
    }

    bool Swallows(const plane::Curve& edge) {
        plane::Curve& last = m_edges.back();
        if (last.IsArc() != edge.IsArc()) return false;
        return edge.IsArc() ? SwallowsArc(last, edge) : SwallowsLine(last, edge);
    }

    bool SwallowsLine(plane::Curve& last, const plane::Curve& edge) {
        const plane::Vector chord = edge.to - last.from;
        const double length = plane::Length(chord);
        if (!(plane::Dot(last.Chord(), edge.Chord()) > 0.0) || length == 0.0) return false;
        const auto isOn = [&](const plane::Point& p) {
            return std::fabs(plane::Cross(chord, p - last.from)) <= m_tiny * length;
        };
        if (!isOn(last.to) || !std::all_of(m_dropped.begin(), m_dropped.end(), isOn)) return false;
        if (m_dropped.size() < kRemembered) m_dropped.push_back(last.to);
        last.to = edge.to;
        return true;
    }

    bool SwallowsArc(plane::Curve& last, const plane::Curve& edge) const {
        if ((last.bulge > 0.0) != (edge.bulge > 0.0)) return false;
        const bool isLonger = last.Length() >= edge.Length();
        const plane::Curve &base = isLonger ? last : edge, &part = isLonger ? edge : last;
        for (const plane::Point& p : {part.from, part.Middle(), part.to})
            if (std::fabs(plane::CircleDistance(base, p)) > m_tiny) return false;
        // On one circle, not on two that touch from outside: both bend the same way and meet.
        const double sweep = std::fabs(last.Sweep()) + std::fabs(edge.Sweep());
        if (!(sweep < plane::kFullTurn)) return false;
        plane::Curve joined = base;
        joined.from = last.from;
        joined.to = edge.to;
        joined.bulge = std::copysign(std::tan(sweep / 4), last.bulge);
        last = joined;
        return true;
    }

    const double m_tiny;
    Edges m_edges;
    std::vector<plane::Point> m_dropped;
};

// Where the neighbours of a short edge meet when they are continued.
bool FindCorner(const plane::Curve& before, const plane::Curve& edge, const plane::Curve& after,
                double g, plane::Point& corner) {
    std::vector<plane::Point> points;
    plane::AppendCarrierMeetings(before, after, 0.0, points);
    bool isFound = false;
    double best = 0;
    for (const plane::Point& p : points) {
        const double a = plane::Distance(p, edge.from), b = plane::Distance(p, edge.to);
        if (a > 2 * g || b > 2 * g || (isFound && a + b >= best)) continue;
        isFound = true;
        best = a + b;
        corner = p;
    }
    return isFound;
}

// The axis as the edge that closes the chain.
plane::Curve ClosingEdge(const Edges& edges) {
    return plane::MakeLine({edges.back().to.x, 0.0}, {edges.front().from.x, 0.0});
}

bool DropShortEdges(Edges& edges, double g) {
    bool isChanged = false;
    for (size_t i = 0; i < edges.size() && edges.size() > 2; ++i) {
        if (edges[i].Length() >= g) continue;
        const bool isFirst = i == 0, isLast = i + 1 == edges.size();
        const plane::Curve closing = ClosingEdge(edges);
        const plane::Curve& before = isFirst ? closing : edges[i - 1];
        const plane::Curve& after = isLast ? closing : edges[i + 1];
        plane::Point corner;
        if (!FindCorner(before, edges[i], after, g, corner)) continue;
        if (isFirst || isLast) corner.y = 0.0;
        if (!isFirst) edges[i - 1] = WithEnds(before, before.from, corner);
        if (!isLast) edges[i + 1] = WithEnds(after, corner, after.to);
        edges.erase(edges.begin() + static_cast<std::ptrdiff_t>(i));
        isChanged = true;
        if (i > 0) --i;
    }
    return isChanged;
}

Edges Joined(const Edges& edges, double tiny) {
    Chain chain(tiny);
    for (const plane::Curve& c : edges) chain.Add(c);
    return chain.Get();
}

}  // namespace

std::vector<plane::Curve> ProfileEdges(const std::vector<Piece>& pieces,
                                       const std::vector<Span>& spans, double tiny) {
    Edges edges;
    for (const Span& span : spans) {
        const plane::Curve c = PartOf(pieces[span.piece], span.x0, span.x1);
        if (!edges.empty()) {
            const plane::Point last = edges.back().to;
            if (plane::Distance(last, c.from) > tiny)
                edges.push_back(plane::MakeLine(last, c.from));
        }
        edges.push_back(c);
    }
    return edges;
}

std::vector<plane::Curve> CleanChain(std::vector<plane::Curve> edges, double tiny, double g) {
    if (edges.empty()) return edges;
    // The ends come to the axis: by an upright line, or as they are when they lie on it.
    plane::Point first = edges.front().from, last = edges.back().to;
    if (std::fabs(first.y) <= tiny)
        edges.front().from.y = 0.0;
    else
        edges.insert(edges.begin(), plane::MakeLine({first.x, 0.0}, first));
    if (std::fabs(last.y) <= tiny)
        edges.back().to.y = 0.0;
    else
        edges.push_back(plane::MakeLine(last, {last.x, 0.0}));
    const plane::Point end{last.x, 0.0};
    // A first or last edge without length goes; what is left still ends on the axis.
    const auto join = [&] {
        edges = Joined(edges, tiny);
        if (edges.empty()) return;
        edges.front().from.y = 0.0;
        edges.back().to.y = 0.0;
    };
    join();
    if (edges.empty()) return edges;
    edges.back().to = end;
    while (DropShortEdges(edges, g)) join();
    return edges;
}

bool IsInside(const std::vector<plane::Curve>& edges, const plane::Point& p) {
    // Edges above the point, an even or an odd number of them: upwards from the axis, which closes
    // the chain and which nothing crosses.
    if (p.y < 0.0) return false;
    std::vector<Piece> pieces;
    for (const plane::Curve& c : edges) AppendPieces(c, 0, 0.0, pieces);
    bool isInside = false;
    for (const Piece& piece : pieces)
        if (p.x >= piece.x0 && p.x < piece.x1 && HeightAt(piece, p.x) >= p.y) isInside = !isInside;
    return isInside;
}

}  // namespace outline
