#include "StdAfx.h"

#include "Bridges.h"

#include <algorithm>
#include <cmath>
#include <queue>

namespace outline {
namespace {

// Sine of one degree: within it a curve counts as upright when ends are bridged.
constexpr double kUprightSine = 0.017452406437283512;

// A bridge that could be built.
struct Plan {
    double rank = 0;  // length, less 2g for the first kind
    int end = -1;
    int side = 0;     // 0 left, 1 right
    int target = -1;  // an end, or -1: somewhere on a stroke
    double length = 0;
    plane::Point to;
    plane::Curve curve;
};

// The shortest first; equal ones from left to right, so that the order of curves does not matter.
struct IsLater {
    const std::vector<StrokeEnd>* ends;
    bool operator()(const Plan& a, const Plan& b) const {
        if (a.rank != b.rank) return a.rank > b.rank;
        const plane::Point &p = (*ends)[a.end].at, &q = (*ends)[b.end].at;
        if (p.x != q.x) return p.x > q.x;
        if (p.y != q.y) return p.y > q.y;
        return a.side != b.side ? a.side > b.side : a.end > b.end;
    }
};

class Builder {
public:
    explicit Builder(const Scene& scene) : m_scene(scene), m_tails(scene.ends.size(), -1.0) {
        const auto& ends = scene.ends;
        for (size_t i = 0; i < ends.size(); ++i) {
            m_bySite.push_back(static_cast<int>(i));
            for (const int side : {0, 1})
                if (ends[i].isSeen && ends[i].falls[side])
                    m_facing[side].push_back(static_cast<int>(i));
        }
        const auto isLeft = [&](int a, int b) {
            const plane::Point &p = ends[a].at, &q = ends[b].at;
            return p.x != q.x ? p.x < q.x : a < b;
        };
        std::sort(m_bySite.begin(), m_bySite.end(), isLeft);
        for (auto& list : m_facing) std::sort(list.begin(), list.end(), isLeft);
        for (size_t i = 0; i < scene.strokes.size(); ++i) {
            const plane::Curve& c = scene.strokes[i].curve;
            if (!c.IsArc() && std::fabs(plane::Unit(c.Chord()).x) <= kUprightSine)
                m_walls.push_back(static_cast<int>(i));
        }
        std::sort(m_walls.begin(), m_walls.end(), [&](int a, int b) {
            return scene.strokes[a].curve.from.x < scene.strokes[b].curve.from.x;
        });
        m_taken[0].assign(ends.size(), false);
        m_taken[1].assign(ends.size(), false);
    }

    Bridges Build() {
        std::priority_queue<Plan, std::vector<Plan>, IsLater> plans(IsLater{&m_scene.ends});
        for (const int side : {0, 1})
            for (const int e : m_facing[side])
                if (m_scene.ends[e].isFree && !IsWallMissing(e, side)) Propose(e, side, plans);
        Bridges built;
        while (!plans.empty()) {
            const Plan plan = plans.top();
            plans.pop();
            if (m_taken[plan.side][plan.end]) continue;
            if (plan.target >= 0 && m_taken[1 - plan.side][plan.target]) {
                Propose(plan.end, plan.side, plans);
                continue;
            }
            if (plan.target < 0 && IsTakenAt(plan.to, 1 - plan.side)) continue;
            Take(plan, built);
        }
        built.isJoined.resize(m_scene.ends.size());
        for (size_t i = 0; i < m_scene.ends.size(); ++i)
            built.isJoined[i] = m_taken[0][i] || m_taken[1][i];
        return built;
    }

private:
    using Queue = std::priority_queue<Plan, std::vector<Plan>, IsLater>;

    const StrokeEnd& End(int e) const { return m_scene.ends[e]; }
    double G() const { return m_scene.measures.g; }
    double O() const { return m_scene.measures.o; }

    bool RisesAbove(const plane::Point& a, const plane::Point& b) const {
        return m_scene.profile.RisesAbove(a, b, G(), 2 * m_scene.measures.tiny);
    }

    // No tail is longer than its stroke.
    double MostOf(int e) const { return m_scene.strokes[End(e).stroke].curve.Length(); }

    double TailOf(int e) {
        if (m_tails[e] < 0) {
            const double whole = m_scene.strokes[End(e).stroke].curve.Length();
            m_tails[e] = FindWayBack(m_scene.strokes, m_scene.tree, End(e), G(), whole).length;
        }
        return m_tails[e];
    }

    // Ends whose place in s is within 2g.
    template <class Use>
    void ForEndsAt(double s, const Use& use) const {
        auto it = std::lower_bound(m_bySite.begin(), m_bySite.end(), s - 2 * G(),
                                   [&](int e, double value) { return End(e).at.x < value; });
        for (; it != m_bySite.end() && End(*it).at.x <= s + 2 * G(); ++it) use(*it);
    }

    // Another curve ends at the same s, at the height to which the profile falls, and between the
    // two no wall is drawn.
    bool IsWallMissing(int e, int side) const {
        const StrokeEnd& end = End(e);
        const int sign = side == 0 ? -1 : 1;
        const double step = 2 * m_scene.measures.tiny;
        const double foot = m_scene.profile.HeightBeside(end.at.x + sign * step, sign);
        if (!(foot > G())) return false;
        bool isThere = false;
        ForEndsAt(end.at.x, [&](int k) {
            const StrokeEnd& other = End(k);
            isThere =
                isThere || (other.stroke != end.stroke && std::fabs(other.at.y - foot) <= 2 * G());
        });
        return isThere && !IsWallDrawn(end.at.x, foot + G(), end.at.y - G());
    }

    bool IsWallDrawn(double s, double low, double high) const {
        const auto from = [&](int w) { return m_scene.strokes[w].curve.from.x; };
        auto it = std::lower_bound(m_walls.begin(), m_walls.end(), s - 2 * G(),
                                   [&](int w, double value) { return from(w) < value; });
        for (; it != m_walls.end() && from(*it) <= s + 2 * G(); ++it) {
            const plane::Curve& wall = m_scene.strokes[*it].curve;
            if ((std::max)(wall.from.y, wall.to.y) > low &&
                (std::min)(wall.from.y, wall.to.y) < high)
                return true;
        }
        return false;
    }

    // Puts the nearest that an end can still be joined to on that side among the plans.
    void Propose(int e, int side, Queue& plans) {
        Plan first, other;
        const bool hasFirst = GoOn(e, side, first), hasOther = FindFacing(e, side, other);
        if (hasFirst && (!hasOther || first.length <= other.length + 2 * G()))
            plans.push(first);
        else if (hasOther)
            plans.push(other);
    }

    // The first kind: the curve goes on as it is.
    bool GoOn(int e, int side, Plan& plan) {
        const StrokeEnd& end = End(e);
        const plane::Vector out = -end.inward;
        const int sign = side == 0 ? -1 : 1;
        if (!(out.x * sign > 0.0)) return false;
        const Contour& stroke = m_scene.strokes[end.stroke];
        const double reach = (std::max)(MostOf(e) / 2, O());
        plane::Curve path;
        if (!stroke.curve.IsArc() || stroke.isApproximate) {
            path = plane::MakeLine(end.at, end.at + out * reach);
        } else if (!MakeArcOn(stroke.curve, end, reach, sign, path)) {
            return false;
        }
        const auto contact = m_scene.tree.FirstAlong(path, G(), [&](int k) {
            return k == end.stroke || (end.hasTwin && IsTwin(m_scene.strokes[k], stroke, end, G()));
        });
        if (!contact || contact->length > reach) return false;
        if (contact->length > O() && contact->length > TailOf(e) / 2) return false;
        if (!((contact->at.x - end.at.x) * sign > 0.0)) return false;
        if (RisesAbove(end.at, contact->at)) return false;
        plan.length = contact->length;
        plan.rank = plan.length - 2 * G();
        plan.end = e;
        plan.side = side;
        plan.to = contact->at;
        plan.curve = plane::MakeLine(end.at, contact->at);
        if (!path.IsArc()) return true;
        // What is met a little beside the circle is reached by a short line from it.
        const plane::Point foot = plane::NearestPoint(path, contact->at);
        const bool isOn = plane::Distance(foot, contact->at) <= m_scene.measures.tiny;
        plan.curve = ArcBetween(end.at, isOn ? contact->at : foot, path.centre, path.radius,
                                path.bulge > 0.0);
        return true;
    }

    // On its circle, until it has gone the length or comes to the upright tangent.
    bool MakeArcOn(const plane::Curve& arc, const StrokeEnd& end, double reach, int sign,
                   plane::Curve& path) const {
        const bool turnsLeft = (arc.bulge > 0.0) != end.isStart;
        const double start = plane::AngleOf(end.at - arc.centre);
        const double stop = sign > 0 ? 0.0 : plane::kHalfTurn;
        double left = turnsLeft ? stop - start : start - stop;
        while (left <= 0.0) left += plane::kFullTurn;
        while (left > plane::kFullTurn) left -= plane::kFullTurn;
        const double sweep = (std::min)(left, (reach + G()) / arc.radius);
        if (!(sweep > 0.0)) return false;
        const plane::Vector out = end.at - arc.centre;
        path = plane::MakeLine(end.at, arc.centre + plane::Turned(out, turnsLeft ? sweep : -sweep));
        path.bulge = (turnsLeft ? 1.0 : -1.0) * std::tan(sweep / 4);
        path.centre = arc.centre;
        path.radius = arc.radius;
        return true;
    }

    // The nearest end across the fall.
    bool FindFacing(int e, int side, Plan& plan) {
        const StrokeEnd& end = End(e);
        const int sign = side == 0 ? -1 : 1;
        const std::vector<int>& list = m_facing[1 - side];
        auto it = std::lower_bound(list.begin(), list.end(), end.at.x,
                                   [&](int k, double s) { return End(k).at.x < s; });
        double best = (std::max)(MostOf(e), O()) + G();
        bool isFound = false;
        const auto look = [&](int k) {
            const StrokeEnd& other = End(k);
            if (std::fabs(other.at.x - end.at.x) > best) return false;
            const double length = plane::Distance(end.at, other.at);
            if (length < best && (other.at.x - end.at.x) * sign > m_scene.measures.tiny &&
                MayJoin(e, k, side, length)) {
                best = length;
                isFound = true;
                plan.target = k;
            }
            return true;
        };
        if (sign > 0) {
            for (; it != list.end() && look(*it);) ++it;
        } else {
            while (it != list.begin() && look(*--it)) {
            }
        }
        if (!isFound) return false;
        plan.length = plan.rank = best;
        plan.end = e;
        plan.side = side;
        plan.to = End(plan.target).at;
        plan.curve = plane::MakeLine(end.at, plan.to);
        return true;
    }

    bool MayJoin(int e, int k, int side, double length) {
        const StrokeEnd &end = End(e), &other = End(k);
        if (other.stroke == end.stroke || m_taken[1 - side][k]) return false;
        if (length > O()) {
            // What is quickly known first.
            const double most = other.isFree ? (std::min)(MostOf(e), MostOf(k)) : MostOf(e) / 2;
            if (length > most || RisesAbove(end.at, other.at)) return false;
            if (!other.isFree) return length <= TailOf(e) / 2;
            if (end.IsUpright(kUprightSine) && other.IsUpright(kUprightSine)) return false;
            return length <= TailOf(e) && length <= TailOf(k);
        }
        return !RisesAbove(end.at, other.at);
    }

    // Where a curve goes on to may be an end that is joined on that side already.
    bool IsTakenAt(const plane::Point& p, int side) const {
        bool isTaken = false;
        ForEndsAt(p.x, [&](int k) {
            isTaken = isTaken ||
                      (m_taken[side][k] && plane::Distance(End(k).at, p) <= m_scene.measures.tiny);
        });
        return isTaken;
    }

    // Ends in the same place count as joined, too: a curve may be drawn twice.
    void Take(const Plan& plan, Bridges& built) {
        const auto take = [&](const plane::Point& p, int side) {
            ForEndsAt(p.x, [&](int k) {
                if (plane::Distance(End(k).at, p) <= 2 * G()) m_taken[side][k] = true;
            });
        };
        const plane::Point from = End(plan.end).at;
        take(from, plan.side);
        take(plan.to, 1 - plan.side);
        built.curves.push_back(plan.curve);
        const plane::Point arrived = plan.curve.to;
        if (arrived != plan.to) built.curves.push_back(plane::MakeLine(arrived, plan.to));
        const bool isForward = from.x <= plan.to.x;
        built.reports.push_back(
            {isForward ? from : plan.to, isForward ? plan.to : from, plan.length});
    }

    const Scene& m_scene;
    std::vector<double> m_tails;   // of each end; -1 not known yet
    std::vector<int> m_bySite;     // all ends from left to right
    std::vector<int> m_facing[2];  // seen ends where the profile falls to that side
    std::vector<int> m_walls;      // strokes within a degree of upright, from left to right
    std::vector<bool> m_taken[2];
};

}  // namespace

Bridges FindBridges(const Scene& scene) { return Builder(scene).Build(); }

}  // namespace outline
