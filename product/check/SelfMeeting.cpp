#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>

#include "product/base/Outline.h"

namespace product {
namespace {

// Relative to the ring's size; see the declaration of FindSelfMeeting.
constexpr double kRelativeTol = 1e-9;
// Radians; directions closer than this leave it open on which side a strand lies: a touch.
constexpr double kAngleTol = 1e-7;

const double kTurn = 2 * std::acos(-1.0);

double Cross(Point a, Point b) { return a.x * b.y - a.y * b.x; }
double Dot(Point a, Point b) { return a.x * b.x + a.y * b.y; }
Point Minus(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
Point Along(Point p, Point d, double t) { return {p.x + d.x * t, p.y + d.y * t}; }
double Distance(Point a, Point b) { return std::hypot(a.x - b.x, a.y - b.y); }

// Angle brought into [0, 2π).
double Positive(double angle) { return angle - kTurn * std::floor(angle / kTurn); }

struct Edge {
    int index = 0;  // of its first vertex in the ring
    Vertex from;
    Point start, end;
    Circle circle;  // of a bulged edge
    Box box;

    bool IsArc() const { return from.bulge != 0; }
    double AngleOf(Point p) const {
        return std::atan2(p.y - circle.centre.y, p.x - circle.centre.x);
    }

    // How far along the arc the direction lies, radians from its start in running direction.
    double Progress(double angle) const {
        const double start0 = AngleOf(start);
        return Positive(from.bulge > 0 ? angle - start0 : start0 - angle);
    }

    // Whether a point of the edge's line or circle belongs to the edge.
    bool Holds(Point p, double tol) const {
        if (Distance(p, start) <= tol || Distance(p, end) <= tol) return true;
        if (IsArc()) return Progress(AngleOf(p)) <= std::abs(Sweep(from.bulge));
        const Point d = Minus(end, start);
        const double t = Dot(Minus(p, start), d) / Dot(d, d);
        return t >= 0 && t <= 1;
    }

    // Unit direction of travel at a point of the edge.
    Point Tangent(Point p) const {
        if (!IsArc()) {
            const Point d = Minus(end, start);
            const double length = std::hypot(d.x, d.y);
            return {d.x / length, d.y / length};
        }
        const Point r = Minus(p, circle.centre);
        const double turn = (from.bulge > 0 ? 1 : -1) / std::hypot(r.x, r.y);
        return {-r.y * turn, r.x * turn};
    }
};

// Two ways in which edges meet: in points, or along a stretch (then one point of it).
struct Contact {
    std::vector<Point> points;
    bool alongStretch = false;
    Point stretch;
};

void AddIfOnBoth(const Edge& a, const Edge& b, Point p, double tol, Contact& out) {
    if (a.Holds(p, tol) && b.Holds(p, tol)) out.points.push_back(p);
}

// Ends of either edge that lie on the other: the meetings of edges on one line or circle.
void AddEnds(const Edge& a, const Edge& b, double tol, Contact& out) {
    for (const Point p : {a.start, a.end}) AddIfOnBoth(a, b, p, tol, out);
    for (const Point p : {b.start, b.end}) AddIfOnBoth(a, b, p, tol, out);
}

void MeetLines(const Edge& a, const Edge& b, double tol, Contact& out) {
    const Point da = Minus(a.end, a.start), db = Minus(b.end, b.start);
    const double lengthA = std::hypot(da.x, da.y);
    const double offStart = Cross(da, Minus(b.start, a.start)) / lengthA;
    const double offEnd = Cross(da, Minus(b.end, a.start)) / lengthA;
    if (std::abs(offStart) <= tol && std::abs(offEnd) <= tol) {
        const double t0 = Dot(Minus(b.start, a.start), da) / lengthA;
        const double t1 = Dot(Minus(b.end, a.start), da) / lengthA;
        const double low = std::max(0.0, std::min(t0, t1));
        const double high = std::min(lengthA, std::max(t0, t1));
        out.alongStretch = high - low > tol;
        out.stretch = Along(a.start, da, (low + high) / 2 / lengthA);
        if (!out.alongStretch) AddEnds(a, b, tol, out);
        return;
    }
    const double c = Cross(da, db);
    if (c == 0) return;
    AddIfOnBoth(a, b, Along(a.start, da, Cross(Minus(b.start, a.start), db) / c), tol, out);
}

void MeetLineArc(const Edge& line, const Edge& arc, double tol, Contact& out) {
    const Point d = line.Tangent(line.start);
    const double foot = Dot(Minus(arc.circle.centre, line.start), d);
    const Point nearest = Along(line.start, d, foot);
    const double off = Distance(nearest, arc.circle.centre);
    if (off > arc.circle.radius + tol) return;
    const double half =
        std::sqrt(std::max(0.0, (arc.circle.radius - off) * (arc.circle.radius + off)));
    AddIfOnBoth(line, arc, Along(nearest, d, half), tol, out);
    if (half > tol) AddIfOnBoth(line, arc, Along(nearest, d, -half), tol, out);
}

// Arcs of one circle: do they share more than points?
void MeetOnOneCircle(const Edge& a, const Edge& b, double tol, Contact& out) {
    const double slack = tol / a.circle.radius;
    const double sweepA = std::abs(Sweep(a.from.bulge)), sweepB = std::abs(Sweep(b.from.bulge));
    const bool same = (a.from.bulge > 0) == (b.from.bulge > 0);
    // Where b begins on a's own scale, when both are run in a's direction.
    const double begin = a.Progress(a.AngleOf(same ? b.start : b.end));
    for (const double shift : {0.0, -kTurn}) {
        const double low = std::max(0.0, begin + shift);
        const double high = std::min(sweepA, begin + shift + sweepB);
        if (high - low <= slack) continue;
        const double angle = a.AngleOf(a.start) + (a.from.bulge > 0 ? 1 : -1) * (low + high) / 2;
        out.alongStretch = true;
        out.stretch = {a.circle.centre.x + a.circle.radius * std::cos(angle),
                       a.circle.centre.y + a.circle.radius * std::sin(angle)};
        return;
    }
    AddEnds(a, b, tol, out);
}

void MeetArcs(const Edge& a, const Edge& b, double tol, Contact& out) {
    const Point between = Minus(b.circle.centre, a.circle.centre);
    const double d = std::hypot(between.x, between.y);
    const double ra = a.circle.radius, rb = b.circle.radius;
    if (d <= tol) {
        if (std::abs(ra - rb) <= tol) MeetOnOneCircle(a, b, tol, out);
        return;
    }
    if (d > ra + rb + tol || d < std::abs(ra - rb) - tol) return;
    const double along = (d * d + (ra - rb) * (ra + rb)) / (2 * d);
    const double half = std::sqrt(std::max(0.0, (ra - along) * (ra + along)));
    const Point unit{between.x / d, between.y / d};
    const Point foot = Along(a.circle.centre, unit, along);
    const Point normal{-unit.y, unit.x};
    AddIfOnBoth(a, b, Along(foot, normal, half), tol, out);
    if (half > tol) AddIfOnBoth(a, b, Along(foot, normal, -half), tol, out);
}

Contact Meet(const Edge& a, const Edge& b, double tol) {
    Contact out;
    if (!a.IsArc() && !b.IsArc()) MeetLines(a, b, tol, out);
    if (a.IsArc() && b.IsArc()) MeetArcs(a, b, tol, out);
    if (a.IsArc() != b.IsArc()) MeetLineArc(a.IsArc() ? b : a, a.IsArc() ? a : b, tol, out);
    return out;
}

class Finder {
public:
    explicit Finder(const std::vector<Vertex>& ring) {
        const Box box = ExtentsOf(ring);
        if (box.IsEmpty()) return;
        m_tol =
            kRelativeTol * std::max({box.Width(), box.Height(), std::abs(box.minX),
                                     std::abs(box.maxX), std::abs(box.minY), std::abs(box.maxY)});
        for (size_t i = 0; i < ring.size(); ++i) AddEdge(ring, i);
    }

    std::optional<SelfMeeting> Run() {
        std::vector<int> order(m_edges.size());
        std::iota(order.begin(), order.end(), 0);
        std::sort(order.begin(), order.end(),
                  [this](int a, int b) { return m_edges[a].box.minX < m_edges[b].box.minX; });
        for (size_t i = 0; i < order.size(); ++i)
            for (size_t j = i + 1; j < order.size(); ++j) {
                const Box& a = m_edges[order[i]].box;
                const Box& b = m_edges[order[j]].box;
                if (b.minX > a.maxX + m_tol) break;
                if (b.minY <= a.maxY + m_tol && a.minY <= b.maxY + m_tol)
                    Compare(std::min(order[i], order[j]), std::max(order[i], order[j]));
            }
        return m_found;
    }

private:
    void AddEdge(const std::vector<Vertex>& ring, size_t i) {
        const Vertex& next = ring[(i + 1) % ring.size()];
        Edge edge;
        edge.index = static_cast<int>(i);
        edge.from = ring[i];
        edge.start = {ring[i].x, ring[i].y};
        edge.end = {next.x, next.y};
        if (Distance(edge.start, edge.end) <= m_tol) return;
        edge.box = ExtentsOf({ring[i], {next.x, next.y, 0}});
        if (edge.IsArc()) edge.circle = CircleOf(ring[i], edge.end);
        m_edges.push_back(edge);
    }

    const Edge& After(int i) const { return m_edges[(i + 1) % m_edges.size()]; }
    const Edge& Before(int i) const { return m_edges[(i + m_edges.size() - 1) % m_edges.size()]; }

    // Whether the two edges follow one another at this point.
    bool IsSharedCorner(int a, int b, Point p) const {
        const int count = static_cast<int>(m_edges.size());
        return ((a + 1) % count == b && Distance(p, m_edges[a].end) <= m_tol) ||
               ((b + 1) % count == a && Distance(p, m_edges[b].end) <= m_tol);
    }

    // Directions in which the ring leaves p: where it came from, and where it goes.
    std::pair<double, double> Strand(int i, Point p) const {
        const bool atStart = Distance(p, m_edges[i].start) <= m_tol;
        const bool atEnd = Distance(p, m_edges[i].end) <= m_tol;
        const Point in = atStart ? Before(i).Tangent(Before(i).end) : m_edges[i].Tangent(p);
        const Point out = atEnd ? After(i).Tangent(After(i).start) : m_edges[i].Tangent(p);
        return {std::atan2(-in.y, -in.x), std::atan2(out.y, out.x)};
    }

    // Strands cross when the directions of one separate those of the other.
    Meeting KindAt(int a, int b, Point p) const {
        const auto [backA, outA] = Strand(a, p);
        const auto [backB, outB] = Strand(b, p);
        const double split = Positive(backA - outA);
        int sides = 0;
        for (const double angle : {Positive(backB - outA), Positive(outB - outA)}) {
            const double toOut = std::min(angle, kTurn - angle);
            if (toOut < kAngleTol || std::abs(angle - split) < kAngleTol) return Meeting::Touch;
            sides += angle < split ? 1 : -1;
        }
        return sides == 0 ? Meeting::Crossing : Meeting::Touch;
    }

    void Compare(int a, int b) {
        const Contact contact = Meet(m_edges[a], m_edges[b], m_tol);
        if (contact.alongStretch) Note(Meeting::Overlap, contact.stretch, a, b);
        for (const Point p : contact.points)
            if (!IsSharedCorner(a, b, p)) Note(KindAt(a, b, p), p, a, b);
    }

    void Note(Meeting kind, Point at, int a, int b) {
        const SelfMeeting found{kind, at, m_edges[a].index, m_edges[b].index};
        const auto rank = [](const SelfMeeting& m) {
            return std::make_tuple(m.kind == Meeting::Touch, m.firstEdge, m.secondEdge);
        };
        if (!m_found || rank(found) < rank(*m_found)) m_found = found;
    }

    std::vector<Edge> m_edges;
    double m_tol = 0;
    std::optional<SelfMeeting> m_found;
};

}  // namespace

std::optional<SelfMeeting> FindSelfMeeting(const std::vector<Vertex>& ring) {
    return Finder(ring).Run();
}

}  // namespace product
