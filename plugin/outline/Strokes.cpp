#include "StdAfx.h"

#include "Strokes.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "CurveTree.h"
#include "plane/box.h"

namespace outline {
namespace {

// Lines whose directions differ by more are not compared: at the length of a whole drawing that is
// a hundred times `tiny`, so that what is compared decides and not this number.
constexpr double kAngleGap = 1e-7;
// Directions are counted from here on, radians, so that level lines do not lie on the seam.
constexpr double kSeam = -0.000731;
// How many strokes that are not ended yet a curve is compared with: more lie within `tiny` of one
// another only in drawings that are finer than their own coordinates.
constexpr size_t kOpenStrokes = 8;
// How many lines near one end are compared with its own when directions differ.
constexpr int kNearLines = 64;

struct Key {
    double value = 0;
    size_t item = 0;
    bool operator<(const Key& k) const {
        return value != k.value ? value < k.value : item < k.item;
    }
};
using Items = std::vector<size_t>;

// Sorts by value and calls use(items) for each run in which neighbours are no farther apart than
// gap(value) and the last no farther from the first than four times that.
template <class Value, class Gap, class Use>
void ForEachRun(const Items& items, const Value& value, const Gap& gap, const Use& use) {
    std::vector<Key> keys;
    keys.reserve(items.size());
    for (const size_t i : items) keys.push_back({value(i), i});
    std::sort(keys.begin(), keys.end());
    Items run;
    for (size_t k = 0; k < keys.size();) {
        run.clear();
        const double begin = keys[k].value, width = gap(begin);
        do {
            run.push_back(keys[k].item);
            ++k;
        } while (k < keys.size() && keys[k].value - keys[k - 1].value <= width &&
                 keys[k].value - begin <= 4 * width);
        use(run);
    }
}

// --- Lines

class LineJoiner {
public:
    LineJoiner(const std::vector<Contour>& curves, double tiny, double meet,
               std::vector<Contour>& out)
        : m_curves(curves), m_tiny(tiny), m_meet(meet), m_out(out) {}

    void Join(const Items& lines) {
        plane::Box box;
        for (const size_t i : lines) box.Add(plane::BoxOf(m_curves[i].curve));
        m_reach = lines.empty() ? 0.0 : plane::Distance(box.low, box.high);
        ForEachRun(
            lines, [&](size_t i) { return DirectionOf(i); }, [](double) { return kAngleGap; },
            [&](const Items& run) { JoinParallel(run); });
    }

private:
    struct Open {
        plane::Point from, to;
        double low = 0, high = 0;  // along the common direction
        int source = -1;
        size_t only = 0;  // the curve itself, when it is still alone
        bool isAlone = true, isApproximate = false;
    };

    double DirectionOf(size_t i) const {
        const plane::Vector v = m_curves[i].curve.Chord();
        double angle = std::atan2(v.y, v.x);
        if (angle < kSeam) angle += plane::kHalfTurn;
        if (angle >= plane::kHalfTurn + kSeam) angle -= plane::kHalfTurn;
        return angle;
    }

    void JoinParallel(const Items& run) {
        if (run.size() == 1) return m_out.push_back(m_curves[run[0]]);
        // Where directions differ by what shows at the drawing's length, no common one tells lines
        // apart.
        if ((DirectionOf(run.back()) - DirectionOf(run.front())) * m_reach > m_tiny)
            return JoinLeaning(run);
        TakeDirection(run);
        const auto offset = [&](size_t i) {
            const plane::Point middle = m_curves[i].curve.Middle();
            return plane::Cross(m_along, {middle.x, middle.y});
        };
        // Short lines lie off by what their direction is off at the longest one's length.
        ForEachRun(
            run, offset, [&](double) { return 2 * m_tiny; },
            [&](const Items& line) { JoinOnLine(line); });
    }

    void TakeDirection(const Items& lines) {
        size_t longest = lines[0];
        for (const size_t i : lines)
            if (m_curves[i].curve.Length() > m_curves[longest].curve.Length()) longest = i;
        m_along = plane::Unit(m_curves[longest].curve.Chord());
    }

    // Lines in nearly one direction, by what lies at their ends.
    void JoinLeaning(const Items& run) {
        std::vector<Contour> lines;
        for (const size_t i : run) lines.push_back(m_curves[i]);
        const CurveTree tree(lines);
        std::vector<int> root(run.size());
        std::iota(root.begin(), root.end(), 0);
        const auto find = [&](int i) {
            while (root[i] != i) i = root[i] = root[root[i]];
            return i;
        };
        for (size_t i = 0; i < run.size(); ++i)
            for (const plane::Point& p : {lines[i].curve.from, lines[i].curve.to}) {
                int left = kNearLines;
                tree.Visit(p, m_meet, [&](int k) {
                    const plane::Curve &own = lines[i].curve, &other = lines[k].curve;
                    if (plane::Distance(other, p) <= m_meet && AreOnOneLine(own, other))
                        root[find(k)] = find(static_cast<int>(i));
                    return --left > 0;
                });
            }
        std::vector<Items> groups(run.size());
        for (size_t i = 0; i < run.size(); ++i) groups[find(static_cast<int>(i))].push_back(run[i]);
        for (const Items& group : groups) {
            if (group.empty()) continue;
            TakeDirection(group);
            JoinOnLine(group);
        }
    }

    // The ends of the shorter lie on the longer's line.
    bool AreOnOneLine(const plane::Curve& a, const plane::Curve& b) const {
        const bool isLonger = a.Length() >= b.Length();
        const plane::Curve &base = isLonger ? a : b, &part = isLonger ? b : a;
        const plane::Vector u = plane::Unit(base.Chord());
        for (const plane::Point& p : {part.from, part.to})
            if (std::fabs(plane::Cross(u, p - base.from)) > m_tiny) return false;
        return true;
    }

    void JoinOnLine(const Items& line) {
        if (line.size() == 1) return m_out.push_back(m_curves[line[0]]);
        std::vector<std::pair<double, size_t>> order;
        for (const size_t i : line) {
            const plane::Curve& c = m_curves[i].curve;
            order.push_back({(std::min)(Along(c.from), Along(c.to)), i});
        }
        std::sort(order.begin(), order.end());
        std::vector<Open> open;
        for (const auto& [low, i] : order) {
            bool isJoined = false;
            for (Open& stroke : open)
                if (!isJoined && low <= stroke.high + m_meet) isJoined = Extend(stroke, i);
            if (isJoined) continue;
            if (open.size() == kOpenStrokes) {
                Close(open.front());
                open.erase(open.begin());
            }
            open.push_back(Begin(i));
        }
        for (const Open& stroke : open) Close(stroke);
    }

    double Along(const plane::Point& p) const { return plane::Dot(m_along, {p.x, p.y}); }

    Open Begin(size_t i) const {
        const plane::Curve& c = m_curves[i].curve;
        Open stroke;
        const bool isForward = Along(c.from) <= Along(c.to);
        stroke.from = isForward ? c.from : c.to;
        stroke.to = isForward ? c.to : c.from;
        stroke.low = Along(stroke.from);
        stroke.high = Along(stroke.to);
        stroke.source = m_curves[i].source;
        stroke.isApproximate = m_curves[i].isApproximate;
        stroke.only = i;
        return stroke;
    }

    bool Extend(Open& stroke, size_t i) const {
        const Open other = Begin(i);
        if (!AreOnOneLine(plane::MakeLine(stroke.from, stroke.to), m_curves[i].curve)) return false;
        stroke.isAlone = false;
        stroke.isApproximate = stroke.isApproximate && other.isApproximate;
        stroke.source = (std::min)(stroke.source, other.source);
        if (other.low < stroke.low) {
            stroke.low = other.low;
            stroke.from = other.from;
        }
        if (other.high > stroke.high) {
            stroke.high = other.high;
            stroke.to = other.to;
        }
        return true;
    }

    void Close(const Open& stroke) const {
        if (stroke.isAlone) return m_out.push_back(m_curves[stroke.only]);
        Contour joined;
        joined.curve = plane::MakeLine(stroke.from, stroke.to);
        joined.source = stroke.source;
        joined.isApproximate = stroke.isApproximate;
        m_out.push_back(joined);
    }

    const std::vector<Contour>& m_curves;
    const double m_tiny, m_meet;
    std::vector<Contour>& m_out;
    plane::Vector m_along;
    double m_reach = 0;  // how far apart lines may lie
};

// --- Arcs

class ArcJoiner {
public:
    ArcJoiner(const std::vector<Contour>& curves, double tiny, double meet,
              std::vector<Contour>& out)
        : m_curves(curves), m_tiny(tiny), m_meet(meet), m_out(out) {}

    void Join(const Items& arcs) {
        const auto gap = [&](double radius) { return m_tiny * (1 + radius); };
        ForEachRun(
            arcs, [&](size_t i) { return Arc(i).radius; }, gap,
            [&](const Items& alike) {
                if (alike.size() == 1) return m_out.push_back(m_curves[alike[0]]);
                const double width = gap(Arc(alike[0]).radius);
                const auto constant = [&](double) { return width; };
                ForEachRun(
                    alike, [&](size_t i) { return Arc(i).centre.x; }, constant,
                    [&](const Items& column) {
                        ForEachRun(
                            column, [&](size_t i) { return Arc(i).centre.y; }, constant,
                            [&](const Items& circle) { JoinOnCircle(circle); });
                    });
            });
    }

private:
    // A part of the circle, counter-clockwise.
    struct Open {
        double begin = 0, sweep = 0;  // radians
        plane::Point from, to;
        int source = -1;
        size_t first = 0;
        bool isAlone = true, isApproximate = false;
    };

    const plane::Curve& Arc(size_t i) const { return m_curves[i].curve; }

    Open Begin(size_t i, const plane::Point& centre) const {
        const plane::Curve& arc = Arc(i);
        Open part;
        part.from = arc.bulge > 0.0 ? arc.from : arc.to;
        part.to = arc.bulge > 0.0 ? arc.to : arc.from;
        part.begin = plane::AngleOf(part.from - centre);
        part.sweep = std::fabs(arc.Sweep());
        part.source = m_curves[i].source;
        part.isApproximate = m_curves[i].isApproximate;
        part.first = i;
        return part;
    }

    bool IsOnCircle(const plane::Curve& part, const plane::Curve& base) const {
        return std::fabs(plane::CircleDistance(base, part.from)) <= m_tiny &&
               std::fabs(plane::CircleDistance(base, part.to)) <= m_tiny &&
               std::fabs(plane::CircleDistance(base, part.Middle())) <= m_tiny;
    }

    void JoinOnCircle(const Items& circle) {
        if (circle.size() == 1) return m_out.push_back(m_curves[circle[0]]);
        size_t longest = circle[0];
        for (const size_t i : circle)
            if (Arc(i).Length() > Arc(longest).Length()) longest = i;
        std::vector<Open> parts;
        for (const size_t i : circle) {
            // What lies near, yet not on it, stays by itself.
            if (!IsOnCircle(Arc(i), Arc(longest)))
                m_out.push_back(m_curves[i]);
            else
                parts.push_back(Begin(i, Arc(longest).centre));
        }
        std::sort(parts.begin(), parts.end(), [](const Open& a, const Open& b) {
            return a.begin != b.begin ? a.begin < b.begin : a.first < b.first;
        });
        const double meet = m_meet / Arc(longest).radius;
        std::vector<Open> joined;
        for (const Open& part : parts)
            if (joined.empty() || !Extend(joined.back(), part, part.begin, meet))
                joined.push_back(part);
        // Across the seam of the angles: the last may run into the first ones.
        while (joined.size() > 1 &&
               Extend(joined.back(), joined.front(), joined.front().begin + plane::kFullTurn, meet))
            joined.erase(joined.begin());
        for (const Open& part : joined) Close(part, Arc(longest), meet);
    }

    static bool Extend(Open& stroke, const Open& part, double begin, double meet) {
        const double end = stroke.begin + stroke.sweep;
        if (begin > end + meet) return false;
        stroke.isAlone = false;
        stroke.isApproximate = stroke.isApproximate && part.isApproximate;
        stroke.source = (std::min)(stroke.source, part.source);
        if (begin + part.sweep > end) {
            stroke.sweep = begin + part.sweep - stroke.begin;
            stroke.to = part.to;
        }
        return true;
    }

    void Close(const Open& part, const plane::Curve& base, double meet) const {
        if (part.isAlone) return m_out.push_back(m_curves[part.first]);
        Contour joined;
        joined.source = part.source;
        joined.isApproximate = part.isApproximate;
        if (part.sweep >= plane::kFullTurn - meet) {
            for (const plane::Curve& half : plane::HalvesOfCircle(base.centre, base.radius)) {
                joined.curve = half;
                m_out.push_back(joined);
            }
            return;
        }
        joined.curve =
            part.sweep < 1.0
                ? ArcBetween(part.from, part.to, base.centre, base.radius, true)
                : plane::MakeArcOnCircle(part.from, part.to, base.centre, base.radius, true);
        m_out.push_back(joined);
    }

    const std::vector<Contour>& m_curves;
    const double m_tiny, m_meet;
    std::vector<Contour>& m_out;
};

}  // namespace

plane::Curve ArcBetween(const plane::Point& from, const plane::Point& to,
                        const plane::Point& centre, double radius, bool turnsLeft) {
    const double ratio = plane::Distance(from, to) / (2.0 * radius);
    // Beyond that the angle at the centre is exact enough, and may be more than half a turn.
    if (ratio > 1e-3) return plane::MakeArcOnCircle(from, to, centre, radius, turnsLeft);
    plane::Curve arc = plane::MakeLine(from, to);
    arc.bulge = (turnsLeft ? 1.0 : -1.0) * std::tan(0.5 * std::asin(ratio));
    arc.centre = centre;
    arc.radius = radius;
    return arc;
}

std::vector<Contour> JoinStrokes(const std::vector<Contour>& curves, double tiny, double meet) {
    Items lines, arcs;
    for (size_t i = 0; i < curves.size(); ++i)
        (curves[i].curve.IsArc() ? arcs : lines).push_back(i);
    std::vector<Contour> out;
    out.reserve(curves.size());
    LineJoiner(curves, tiny, meet, out).Join(lines);
    ArcJoiner(curves, tiny, meet, out).Join(arcs);
    return out;
}

}  // namespace outline
