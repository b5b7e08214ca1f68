#include "plain_law.h"

#include <algorithm>
#include <cmath>

#include "plain_curves.h"

namespace plain {
namespace {

constexpr double kNothing = -1e300;
constexpr double kDegree = 0.017453292519943295;

P Plus(P a, P v, double t) { return {a.s + v.s * t, a.r + v.r * t}; }

}  // namespace

Law::Law(const outline::Request& request) : m_isVertical(request.verticalEnds) {
    Clip(request);
    if (m_curves.empty()) {
        isEmpty = true;
        return;
    }
    DropNothing();
    for (Curve& c : m_curves) c.isUpright = WidthOf(c) <= tiny;
    if (std::all_of(m_curves.begin(), m_curves.end(), [](const Curve& c) { return c.isUpright; })) {
        isEmpty = true;
        return;
    }
    AddJoins();
    FindEnds();
    Build();
    Cut();
    TraceFaces(m_isVertical);
}

void Law::Clip(const outline::Request& request) {
    double lo = 1e300, hi = -1e300, top = 0;
    for (const outline::Contour& contour : request.curves) {
        for (const double sign : {1.0, -1.0}) {
            if (request.half == outline::Half::Upper && sign < 0) continue;
            if (request.half == outline::Half::Lower && sign > 0) continue;
            for (const Curve& c : AboveAxis(MakeCurve(contour.curve, sign))) {
                m_curves.push_back(c);
                m_curves.back().isApproximate = contour.isApproximate;
                const Extent e = ExtentOf(c);
                lo = (std::min)(lo, e.low.s);
                hi = (std::max)(hi, e.high.s);
                top = (std::max)(top, e.high.r);
            }
        }
    }
    if (m_curves.empty()) return;
    size = std::hypot(hi - lo, top);
    const outline::Lengths& l = request.lengths;
    g = l.point > 0 ? l.point : (std::min)(0.0005, 5e-6 * size);
    d = l.side > 0 ? l.side : (std::min)(5.0, size / 10);
    o = l.overshoot > 0 ? l.overshoot : (std::min)(0.5, size / 100);
    tiny = (std::max)((std::min)(1e-9 * size, g / 8), request.rounding);
}

void Law::DropNothing() {
    double top = 0;
    for (const Curve& c : m_curves) top = (std::max)(top, ExtentOf(c).high.r);
    const auto isNothing = [&](const Curve& c) {
        return ExtentOf(c).high.r <= g || LengthOf(c) < g;
    };
    m_curves.erase(std::remove_if(m_curves.begin(), m_curves.end(), isNothing), m_curves.end());
    double lo = 1e300, hi = -1e300;
    for (const Curve& c : m_curves)
        if (c.isArc || ExtentOf(c).high.r > 0.01 * top) {
            lo = (std::min)(lo, ExtentOf(c).low.s);
            hi = (std::max)(hi, ExtentOf(c).high.s);
        }
    std::vector<Curve> kept;
    for (const Curve& c : m_curves) {
        bool isCentre = false;
        if (!c.isArc && ExtentOf(c).high.r <= 0.01 * top && lo < hi) {
            double from = 1e300, to = -1e300;
            for (const Curve& other : m_curves)
                if (!other.isArc && IsOnCarrier(c, other, g)) {
                    from = (std::min)(from, ExtentOf(other).low.s);
                    to = (std::max)(to, ExtentOf(other).high.s);
                }
            isCentre = from < lo - g && to > hi + g;
        }
        if (!isCentre) kept.push_back(c);
    }
    m_curves.swap(kept);
}

void Law::AddJoins() {
    for (size_t i = 0; i < m_curves.size(); ++i)
        for (size_t k = 0; k < m_curves.size(); ++k)
            for (const P p : {m_curves[i].a, m_curves[i].b}) {
                const P q = NearestOn(m_curves[k], p);
                if (i != k && Apart(p, q) > tiny && Apart(p, q) < g) {
                    m_joins.push_back(MakeLine(p, q));
                    m_joins.back().isUpright = std::fabs(p.s - q.s) <= tiny;
                }
            }
}

bool Law::Leaves(const Curve& c, const End& end) const {
    for (const bool isStart : {true, false}) {
        if (Apart(isStart ? c.a : c.b, end.at) > g) continue;
        const P v = Inward(c, isStart);
        if (v.s * end.inward.s + v.r * end.inward.r > 0 &&
            std::fabs(v.s * end.inward.r - v.r * end.inward.s) <= 1e-3)
            return Doubles(c, m_curves[end.curve]);
    }
    return false;
}

// Whether the shorter of both lies along the longer. Such as only touch are a corner.
bool Law::Doubles(const Curve& a, const Curve& b) const {
    const bool isShorter = LengthOf(a) <= LengthOf(b);
    const Curve &part = isShorter ? a : b, &whole = isShorter ? b : a;
    for (int i = 0; i <= 4; ++i) {
        const P p = At(part, i / 4.0);
        if (Apart(NearestOn(whole, p), p) > g) return false;
    }
    return true;
}

void Law::FindEnds() {
    for (size_t i = 0; i < m_curves.size(); ++i)
        for (const bool isStart : {true, false}) {
            End end;
            end.curve = static_cast<int>(i);
            end.at = isStart ? m_curves[i].a : m_curves[i].b;
            end.inward = Inward(m_curves[i], isStart);
            if (GoesOn(end)) continue;
            end.isFree = end.at.r > g;
            for (size_t k = 0; k < m_curves.size() && end.isFree; ++k)
                if (k != i && Apart(NearestOn(m_curves[k], end.at), end.at) <= g &&
                    !Leaves(m_curves[k], end))
                    end.isFree = false;
            end.isSeen = end.at.r > g &&
                         HighestOf(m_curves, end.at.s - 2 * g, end.at.s + 2 * g) <= end.at.r + g;
            for (const int side : {0, 1})
                end.falls[side] = end.isSeen && HeightBeside(end.at.s, side) < end.at.r - g;
            if (end.isFree) FindTail(end);
            m_ends.push_back(end);
        }
}

// Curves on one line or circle are one: what ends within it is no end.
bool Law::GoesOn(const End& end) const {
    const Curve& own = m_curves[end.curve];
    const P ahead = Ahead(own, end.at, end.inward, 1.01 * g);
    for (size_t k = 0; k < m_curves.size(); ++k)
        if (static_cast<int>(k) != end.curve && OnOneCarrier(own, m_curves[k], tiny) &&
            Apart(NearestOn(m_curves[k], ahead), ahead) <= tiny)
            return true;
    return false;
}

std::vector<int> Law::OneCurve(int start) const {
    std::vector<int> list{start};
    std::vector<bool> isIn(m_curves.size());
    isIn[start] = true;
    for (size_t i = 0; i < list.size(); ++i)
        for (size_t k = 0; k < m_curves.size(); ++k)
            if (!isIn[k] && OnOneCarrier(m_curves[list[i]], m_curves[k], tiny) &&
                ComeTogether(m_curves[list[i]], m_curves[k], g)) {
                isIn[k] = true;
                list.push_back(static_cast<int>(k));
            }
    return list;
}

void Law::FindTail(End& end) const {
    const Curve& own = m_curves[end.curve];
    const std::vector<int> one = OneCurve(end.curve);
    std::vector<bool> isOne(m_curves.size());
    double whole = 0;
    for (const int i : one) {
        isOne[i] = true;
        for (const P p : {m_curves[i].a, m_curves[i].b})
            whole = (std::max)(whole, AlongFrom(own, end.at, end.inward, p));
    }
    end.tail = whole;
    end.isWhole = true;
    for (size_t k = 0; k < m_curves.size(); ++k) {
        if (isOne[k] || Leaves(m_curves[k], end)) continue;
        for (const int i : one)
            for (const P p : Meetings(m_curves[i], m_curves[k], g)) {
                const double t = AlongFrom(own, end.at, end.inward, p);
                if (t < end.tail) {
                    end.tail = t;
                    end.isWhole = false;
                }
            }
    }
    end.back = end.tail;
}

double Law::HighestOf(const std::vector<Curve>& list, double lo, double hi) const {
    double best = kNothing;
    for (const std::vector<Curve>* all : {&list, &m_joins})
        for (const Curve& c : *all)
            if (!c.isUpright) best = (std::max)(best, HighestOver(c, lo, hi));
    return best;
}

double Law::HeightBeside(double s, int side) const {
    const double at = s + (side == 0 ? -2 : 2) * tiny;
    return HighestOf(m_curves, at, at);
}

bool Law::RisesAbove(P from, P to) const {
    // Strictly between: what begins or ends where the line does is no part of it.
    const double width = std::fabs(to.s - from.s);
    if (!(width > 8 * tiny)) return false;
    const P v{(to.s - from.s) / width, (to.r - from.r) / width};
    const P a = Plus(from, v, 2 * tiny), b = Plus(to, v, -2 * tiny);
    for (const std::vector<Curve>* all : {&m_curves, &m_joins})
        for (const Curve& c : *all)
            if (!c.isUpright && HighestOverLine(c, a, b) > g) return true;
    return false;
}

bool Law::IsWallMissing(const End& end, int side) const {
    const double foot = HeightBeside(end.at.s, side);
    if (!(foot > g)) return false;
    const std::vector<int> one = OneCurve(end.curve);
    bool isThere = false;
    for (const End& other : m_ends) {
        const bool isOwn = std::find(one.begin(), one.end(), other.curve) != one.end();
        if (!isOwn && std::fabs(other.at.s - end.at.s) <= 2 * g &&
            std::fabs(other.at.r - foot) <= 2 * g)
            isThere = true;
    }
    for (const Curve& c : m_curves)
        if (!c.isArc && std::fabs(c.a.s - c.b.s) <= std::sin(kDegree) * LengthOf(c) &&
            std::fabs(c.a.s - end.at.s) <= 2 * g && (std::max)(c.a.r, c.b.r) > foot + g &&
            (std::min)(c.a.r, c.b.r) < end.at.r - g)
            return false;
    return isThere;
}

void Law::Build() {
    struct Plan {
        double rank, length;
        int end, side;
        P to;
        std::vector<Curve> curves;
    };
    std::vector<Plan> plans;
    const auto isUpright = [](const End& e) { return std::fabs(e.inward.s) <= std::sin(kDegree); };
    for (size_t i = 0; i < m_ends.size(); ++i)
        for (const int side : {0, 1}) {
            const End& e = m_ends[i];
            if (!e.isFree || !e.falls[side] || IsWallMissing(e, side)) continue;
            const double sign = side == 0 ? -1 : 1, reach = (std::max)(e.tail / 2, o);
            // Its own curve goes on.
            Plan own{1e300, 1e300, static_cast<int>(i), side, {}, {}};
            if (-e.inward.s * sign > 0) {
                const Curve path = Continued(m_curves[e.curve], e.at, e.inward, reach, sign);
                for (size_t k = 0; k < m_curves.size(); ++k) {
                    if (static_cast<int>(k) == e.curve || Leaves(m_curves[k], e)) continue;
                    for (const P p : Meetings(path, m_curves[k], g)) {
                        const double t = AlongFrom(path, e.at, Inward(path, true), p);
                        if (t >= own.length || t > reach || (p.s - e.at.s) * sign <= 0) continue;
                        own.length = t;
                        own.to = p;
                    }
                }
                if (own.length < 1e300 && !RisesAbove(e.at, own.to)) {
                    own.rank = own.length - 2 * g;
                    own.curves = {PartUpTo(path, own.to)};
                    plans.push_back(own);
                }
            }
            for (size_t k = 0; k < m_ends.size(); ++k) {
                const End& f = m_ends[k];
                const double length = Apart(e.at, f.at);
                if (f.curve == e.curve || !f.falls[1 - side] || (f.at.s - e.at.s) * sign <= tiny)
                    continue;
                double limit = f.isFree ? (std::min)(e.tail, f.tail) : e.tail / 2;
                if (f.isFree && isUpright(e) && isUpright(f)) limit = 0;
                if (length > (std::max)(limit, o) || RisesAbove(e.at, f.at)) continue;
                plans.push_back(
                    {length, length, static_cast<int>(i), side, f.at, {MakeLine(e.at, f.at)}});
            }
        }
    std::stable_sort(plans.begin(), plans.end(), [&](const Plan& a, const Plan& b) {
        const P p = m_ends[a.end].at, q = m_ends[b.end].at;
        return a.rank != b.rank ? a.rank < b.rank : p.s != q.s ? p.s < q.s : p.r < q.r;
    });
    m_rest.clear();
    for (const Plan& plan : plans) {
        const P from = m_ends[plan.end].at;
        bool isTaken = m_ends[plan.end].isJoined[plan.side];
        for (const End& f : m_ends)
            isTaken = isTaken || (Apart(f.at, plan.to) <= tiny && f.isJoined[1 - plan.side]);
        if (isTaken) continue;
        for (End& f : m_ends) {
            if (Apart(f.at, from) <= 2 * g) f.isJoined[plan.side] = true;
            if (Apart(f.at, plan.to) <= 2 * g) f.isJoined[1 - plan.side] = true;
        }
        bridges.push_back({from, plan.to, plan.length});
        m_rest.insert(m_rest.end(), plan.curves.begin(), plan.curves.end());
    }
    for (Curve& c : m_rest) c.isUpright = WidthOf(c) <= tiny;
}

void Law::Cut() {
    std::vector<std::vector<const End*>> cuts(m_curves.size());
    for (End& e : m_ends) {
        if (!e.isFree || e.isJoined[0] || e.isJoined[1]) continue;
        const bool isMark =
            e.isSeen && !m_curves[e.curve].isArc && std::fabs(e.inward.s) * e.tail <= g;
        if (e.tail > o && !isMark) {
            freeEnds.push_back(e.at);
            continue;
        }
        e.isCut = true;
        cutEnds.push_back(e.at);
        for (const int i : OneCurve(e.curve)) cuts[i].push_back(&e);
    }
    for (size_t i = 0; i < m_curves.size(); ++i) {
        std::vector<Curve> parts{m_curves[i]};
        for (const End* e : cuts[i]) {
            std::vector<Curve> left;
            for (const Curve& c : parts) {
                if (e->isWhole) continue;
                for (const Curve& part :
                     BehindAlong(c, m_curves[e->curve], e->at, e->inward, e->back, tiny))
                    left.push_back(part);
            }
            parts.swap(left);
        }
        for (Curve& c : parts) {
            c.isUpright = WidthOf(c) <= tiny;
            m_rest.push_back(c);
        }
    }
    m_rest.insert(m_rest.end(), m_joins.begin(), m_joins.end());
    s0 = 1e300;
    s1 = -1e300;
    for (const Curve& c : m_rest) {
        if (c.isUpright) continue;
        s0 = (std::min)(s0, ExtentOf(c).low.s);
        s1 = (std::max)(s1, ExtentOf(c).high.s);
    }
    if (!(s0 < s1)) isEmpty = true;
}

double Law::R(double s) const {
    if (s < s0 || s > s1) return -1;
    double best = kNothing, before = kNothing, after = 1e300;
    for (const Curve& c : m_rest) {
        if (c.isUpright) continue;
        best = (std::max)(best, HighestOver(c, s, s));
        const Extent e = ExtentOf(c);
        if (e.high.s < s) before = (std::max)(before, e.high.s);
        if (e.low.s > s) after = (std::min)(after, e.low.s);
    }
    if (best > kNothing) return best;
    const auto at = [&](double x) {
        double height = kNothing;
        for (const Curve& c : m_rest)
            if (!c.isUpright) height = (std::max)(height, HighestOver(c, x, x));
        return height;
    };
    const double a = at(before), b = at(after);
    return a + (b - a) * (s - before) / (after - before);
}

// --- Faces: from the top down along a fine comb of heights, with more teeth where something is.

double Law::OutermostAt(double r, bool isRight) const {
    double best = 1e300;
    for (const Curve& c : m_rest) {
        std::vector<double> at = CrossingsAtHeight(c, r);
        for (const P p : {c.a, c.b})
            if (std::fabs(p.r - r) <= tiny / 100 && std::fabs(c.a.r - c.b.r) > tiny)
                at.push_back(p.s);
        for (const double s : at)
            if (s > s0 - tiny && s < s1 + tiny)
                best = (std::min)(best, (std::max)(isRight ? s1 - s : s - s0, 0.0));
    }
    return best;
}

bool Law::IsUnder(double r, double from, double to, bool isRight, double slack) const {
    std::vector<double> at;
    constexpr int kTeeth = 40;
    for (int i = 0; i <= kTeeth; ++i) at.push_back(from + (to - from) * i / kTeeth);
    for (const Curve& c : m_rest)
        for (const double s : {c.a.s, c.b.s, c.c.s}) {
            const double u = isRight ? s1 - s : s - s0;
            for (const double off : {-2 * tiny, 2 * tiny})
                if (u + off > from && u + off < to) at.push_back(u + off);
        }
    for (const double u : at) {
        const double inside = (std::min)((std::max)(u, 2 * tiny), s1 - s0);
        if (!(R(isRight ? s1 - inside : s0 + inside) > r + slack)) return false;
    }
    return true;
}

void Law::TraceFaces(bool isVertical) {
    if (isVertical || isEmpty) return;
    TraceFace(false);
    TraceFace(true);
}

void Law::TraceFace(bool isRight) {
    const double top = R(isRight ? s1 - 2 * tiny : s0 + 2 * tiny), step = 4 * tiny;
    const double depth = (std::min)(d, (s1 - s0) / 3);
    std::vector<double> heights;
    for (int i = 0; i <= 400; ++i) heights.push_back(top * i / 400);
    for (const Curve& c : m_rest) {
        std::vector<double> at{c.a.r, c.b.r};
        for (const Curve& other : m_rest)
            for (const P p : Meetings(c, other, 0)) at.push_back(p.r);
        if (c.isArc) at.insert(at.end(), {c.c.r, c.c.r - c.radius, c.c.r + c.radius});
        std::vector<double> uprights{isRight ? s1 - depth : s0 + depth};
        for (const Curve& other : m_rest) uprights.insert(uprights.end(), {other.a.s, other.b.s});
        for (const double s : uprights)
            for (const P p : Meetings(c, MakeLine({s, -size}, {s, size}), 0)) at.push_back(p.r);
        for (const double r : at) heights.insert(heights.end(), {r - step, r, r + step});
    }
    std::sort(heights.rbegin(), heights.rend());
    double u = 0, before = top;
    bool isStraight = false;
    std::vector<Stop>& face = m_faces[isRight];
    for (const double r : heights) {
        if (r >= top - step / 2 || r <= 0) continue;
        const double next = OutermostAt(r, isRight);
        if (next <= u + 2 * step && next <= depth && IsUnder(r, 0, next, isRight, 1e-12 * size)) {
            isStraight = false;
        } else if (!isStraight) {
            const bool isJump = before - r <= 4 * step && next - u > g;
            isStraight = next > depth || !IsUnder(r, 0, next, isRight, 1e-12 * size);
            if (isJump && !isStraight) {
                isStraight = r <= 2 * g || !IsUnder(r, u, next, isRight, g);
                const P corner{isRight ? s1 - u : s0 + u, r};
                for (const P p : freeEnds) isStraight = isStraight || Apart(p, corner) <= 2 * g;
            }
        }
        if (!isStraight) u = next;
        face.push_back({r, u, isStraight});
        before = r;
    }
}

double Law::Depth(double r, bool isRight) const {
    const Stop* last = nullptr;
    for (const Stop& stop : m_faces[isRight])
        if (stop.r >= r) last = &stop;
    if (last == nullptr) return 0;
    return last->isStraight ? last->depth : OutermostAt(r, isRight);
}

bool Law::IsFree(P p) const {
    if (p.r < 0 || p.s < s0 || p.s > s1) return true;
    if (p.r > R(p.s)) return true;
    return p.s - s0 < Depth(p.r, false) || s1 - p.s < Depth(p.r, true);
}

std::string Faults(const Law& law, const std::vector<plane::Curve>& edges) {
    if (edges.empty()) return "no outline";
    std::string faults;
    const auto tell = [&](const char* what, P p) {
        faults +=
            std::string(what) + " at " + std::to_string(p.s) + "," + std::to_string(p.r) + "\n";
    };
    if (edges.front().from.y != 0 || edges.back().to.y != 0) faults += "does not end on the axis\n";
    for (size_t i = 1; i < edges.size(); ++i)
        if (edges[i].from != edges[i - 1].to) tell("is torn", {edges[i].from.x, edges[i].from.y});
    std::vector<Curve> curves;
    for (const plane::Curve& e : edges) curves.push_back(MakeCurve(e, 1));
    for (const Curve& c : curves) {
        for (int i = 0; i < 7; ++i) {
            const double share = (i + 0.5) / 7;
            const P p = At(c, share), v = DirectionAt(c, share);
            // Along the outline the inside lies to the right.
            const double off = 1e-6 * law.size;
            const P inside = Plus(p, {v.r, -v.s}, off), outside = Plus(p, {-v.r, v.s}, off);
            if (LengthOf(c) < 16 * off || inside.r < 0) continue;
            // Between two edges that nearly touch there is no place so far from both.
            const auto isNear = [&](const Curve& other) {
                for (const P q : {inside, outside})
                    if (&other != &c && (Apart(NearestOn(other, q), q) < 0.99 * off ||
                                         !Meetings(MakeLine(p, q), other, 0).empty()))
                        return true;
                return false;
            };
            if (std::any_of(curves.begin(), curves.end(), isNear)) continue;
            if (law.IsFree(inside)) tell("free inside", inside);
            if (!law.IsFree(outside)) tell("not free outside", outside);
        }
    }
    return faults;
}

}  // namespace plain
