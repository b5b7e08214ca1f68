#include "plain_curves.h"

#include <algorithm>
#include <cmath>

namespace plain {
namespace {

constexpr double kPi = 3.14159265358979323846, kTurn = 2 * kPi;
constexpr double kNothing = -1e300;

double Angle(const Curve& c, P p) { return std::atan2(p.r - c.c.r, p.s - c.c.s); }

// How far around from the start of the arc, in its direction; in [0, turn).
double Around(const Curve& c, P p) {
    double t = (Angle(c, p) - c.from) * (c.sweep > 0 ? 1 : -1);
    t -= kTurn * std::floor(t / kTurn);
    return t;
}

bool IsOnArc(const Curve& c, P p, double slack = 0) {
    const double t = Around(c, p);
    return t <= std::fabs(c.sweep) + slack || t >= kTurn - slack;
}

P OnCircle(const Curve& c, double angle) {
    return {c.c.s + c.radius * std::cos(angle), c.c.r + c.radius * std::sin(angle)};
}

Curve ArcPart(const Curve& c, double t0, double t1) {
    Curve part = c;
    const double sign = c.sweep > 0 ? 1 : -1, whole = std::fabs(c.sweep);
    part.from = c.from + sign * t0;
    part.sweep = sign * (t1 - t0);
    part.a = t0 <= 0 ? c.a : OnCircle(c, part.from);
    part.b = t1 >= whole ? c.b : OnCircle(c, part.from + part.sweep);
    return part;
}

// Where whole lines and circles meet; near misses by less than tol count as touching.
std::vector<P> CarrierMeetings(const Curve& a, const Curve& b, double tol) {
    if (a.isArc && !b.isArc) return CarrierMeetings(b, a, tol);
    if (!a.isArc && !b.isArc) {
        const P u{a.b.s - a.a.s, a.b.r - a.a.r}, v{b.b.s - b.a.s, b.b.r - b.a.r};
        const double cross = u.s * v.r - u.r * v.s;
        if (std::fabs(cross) <= 1e-12 * LengthOf(a) * LengthOf(b)) return {};
        const double t = ((b.a.s - a.a.s) * v.r - (b.a.r - a.a.r) * v.s) / cross;
        return {{a.a.s + u.s * t, a.a.r + u.r * t}};
    }
    P foot, along;
    double radius = b.radius;
    P centre = b.c;
    if (!a.isArc) {
        const double length = LengthOf(a);
        along = {(a.b.s - a.a.s) / length, (a.b.r - a.a.r) / length};
        const double t = (centre.s - a.a.s) * along.s + (centre.r - a.a.r) * along.r;
        foot = {a.a.s + along.s * t, a.a.r + along.r * t};
    } else {
        const double apart = Apart(a.c, b.c);
        if (apart <= 1e-9 * (a.radius + b.radius)) return {};
        const P u{(b.c.s - a.c.s) / apart, (b.c.r - a.c.r) / apart};
        double t = (apart * apart + a.radius * a.radius - b.radius * b.radius) / (2 * apart);
        if (std::fabs(t) > a.radius && std::fabs(t) < a.radius + 2 * tol)
            t = std::copysign(a.radius, t);
        foot = {a.c.s + u.s * t, a.c.r + u.r * t};
        along = {-u.r, u.s};
        centre = a.c;
        radius = a.radius;
    }
    const double off = Apart(foot, centre);
    if (off > radius + tol) return {};
    const double h = std::sqrt((std::max)(0.0, (radius - off) * (radius + off)));
    return {{foot.s - along.s * h, foot.r - along.r * h},
            {foot.s + along.s * h, foot.r + along.r * h}};
}

}  // namespace

double Apart(P a, P b) { return std::hypot(a.s - b.s, a.r - b.r); }

Curve MakeLine(P a, P b) {
    Curve c;
    c.a = a;
    c.b = b;
    return c;
}

Curve MakeCurve(const plane::Curve& curve, double sign) {
    Curve c = MakeLine({curve.from.x, sign * curve.from.y}, {curve.to.x, sign * curve.to.y});
    if (curve.bulge == 0) return c;
    c.isArc = true;
    c.c = {curve.centre.x, sign * curve.centre.y};
    c.radius = curve.radius;
    c.from = Angle(c, c.a);
    c.sweep = sign * 4 * std::atan(curve.bulge);
    return c;
}

std::vector<Curve> AboveAxis(const Curve& c) {
    std::vector<double> cuts{0, c.isArc ? std::fabs(c.sweep) : 1};
    if (!c.isArc) {
        if (c.a.r * c.b.r < 0) cuts.push_back(c.a.r / (c.a.r - c.b.r));
    } else if (std::fabs(c.c.r) < c.radius) {
        const double w = std::sqrt(c.radius * c.radius - c.c.r * c.c.r);
        for (const double s : {c.c.s - w, c.c.s + w})
            if (Around(c, {s, 0}) < std::fabs(c.sweep)) cuts.push_back(Around(c, {s, 0}));
    }
    std::sort(cuts.begin(), cuts.end());
    std::vector<Curve> parts;
    for (size_t i = 1; i < cuts.size(); ++i) {
        Curve part = c;
        if (c.isArc) {
            part = ArcPart(c, cuts[i - 1], cuts[i]);
        } else {
            part = MakeLine(At(c, cuts[i - 1]), At(c, cuts[i]));
        }
        if (!(At(part, 0.5).r > 0) || LengthOf(part) == 0) continue;
        part.a.r = (std::max)(part.a.r, 0.0);
        part.b.r = (std::max)(part.b.r, 0.0);
        parts.push_back(part);
    }
    return parts;
}

double LengthOf(const Curve& c) {
    return c.isArc ? c.radius * std::fabs(c.sweep) : Apart(c.a, c.b);
}

Extent ExtentOf(const Curve& c) {
    Extent e;
    std::vector<P> points{c.a, c.b};
    if (c.isArc)
        for (int i = 0; i < 4; ++i) {
            const P p = OnCircle(c, i * kPi / 2);
            if (IsOnArc(c, p)) points.push_back(p);
        }
    for (const P p : points) {
        e.low = {(std::min)(e.low.s, p.s), (std::min)(e.low.r, p.r)};
        e.high = {(std::max)(e.high.s, p.s), (std::max)(e.high.r, p.r)};
    }
    return e;
}

double WidthOf(const Curve& c) { return ExtentOf(c).high.s - ExtentOf(c).low.s; }

P At(const Curve& c, double share) {
    if (share <= 0) return c.a;
    if (share >= 1) return c.b;
    if (c.isArc) return OnCircle(c, c.from + c.sweep * share);
    return {c.a.s + (c.b.s - c.a.s) * share, c.a.r + (c.b.r - c.a.r) * share};
}

P DirectionAt(const Curve& c, double share) {
    if (!c.isArc) {
        const double length = LengthOf(c);
        return {(c.b.s - c.a.s) / length, (c.b.r - c.a.r) / length};
    }
    const double angle = c.from + c.sweep * share, sign = c.sweep > 0 ? 1 : -1;
    return {-sign * std::sin(angle), sign * std::cos(angle)};
}

P Inward(const Curve& c, bool isStart) {
    const P v = DirectionAt(c, isStart ? 0 : 1);
    return isStart ? v : P{-v.s, -v.r};
}

P NearestOn(const Curve& c, P p) {
    if (!c.isArc) {
        const P v{c.b.s - c.a.s, c.b.r - c.a.r};
        const double square = v.s * v.s + v.r * v.r;
        const double t = ((p.s - c.a.s) * v.s + (p.r - c.a.r) * v.r) / square;
        return At(c, t);
    }
    const double off = Apart(p, c.c);
    if (off > 0 && IsOnArc(c, p))
        return {c.c.s + (p.s - c.c.s) * c.radius / off, c.c.r + (p.r - c.c.r) * c.radius / off};
    return Apart(p, c.a) < Apart(p, c.b) ? c.a : c.b;
}

bool IsOnCarrier(const Curve& c, const Curve& other, double tol) {
    if (c.isArc != other.isArc) return false;
    for (const P p : {other.a, At(other, 0.5), other.b}) {
        double off = 0;
        if (c.isArc) {
            off = Apart(p, c.c) - c.radius;
        } else {
            const P v = DirectionAt(c, 0);
            off = (p.s - c.a.s) * v.r - (p.r - c.a.r) * v.s;
        }
        if (std::fabs(off) > tol) return false;
    }
    return true;
}

bool OnOneCarrier(const Curve& a, const Curve& b, double tol) {
    return LengthOf(a) >= LengthOf(b) ? IsOnCarrier(a, b, tol) : IsOnCarrier(b, a, tol);
}

bool ComeTogether(const Curve& a, const Curve& b, double tol) {
    for (const P p : {a.a, a.b})
        if (Apart(NearestOn(b, p), p) <= tol) return true;
    for (const P p : {b.a, b.b})
        if (Apart(NearestOn(a, p), p) <= tol) return true;
    return false;
}

std::vector<P> Meetings(const Curve& a, const Curve& b, double tol) {
    std::vector<P> points;
    for (const P p : {a.a, a.b})
        if (Apart(NearestOn(b, p), p) <= tol) points.push_back(p);
    for (const P p : {b.a, b.b})
        if (Apart(NearestOn(a, p), p) <= tol) points.push_back(p);
    for (const P p : CarrierMeetings(a, b, tol)) {
        const double slack = tol + 1e-9 * (LengthOf(a) + LengthOf(b));
        if (Apart(NearestOn(a, p), p) <= slack && Apart(NearestOn(b, p), p) <= slack)
            points.push_back(p);
    }
    return points;
}

double AlongFrom(const Curve& c, P start, P direction, P p) {
    if (!c.isArc)
        return (std::max)(0.0, (p.s - start.s) * direction.s + (p.r - start.r) * direction.r);
    // Counter-clockwise when the direction has the centre to its left.
    const bool isLeft = direction.s * (c.c.r - start.r) - direction.r * (c.c.s - start.s) > 0;
    double t = (Angle(c, p) - Angle(c, start)) * (isLeft ? 1 : -1);
    t -= kTurn * std::floor(t / kTurn);
    if (t > kTurn - 1e-9) t = 0;
    return t * c.radius;
}

double HighestOver(const Curve& c, double lo, double hi) {
    const Extent e = ExtentOf(c);
    lo = (std::max)(lo, e.low.s);
    hi = (std::min)(hi, e.high.s);
    if (lo > hi) return kNothing;
    double best = kNothing;
    const auto consider = [&](P p) {
        if (p.s >= lo && p.s <= hi) best = (std::max)(best, p.r);
    };
    consider(c.a);
    consider(c.b);
    for (const double s : {lo, hi}) {
        if (!c.isArc) {
            const double t = (s - c.a.s) / (c.b.s - c.a.s);
            if (t >= 0 && t <= 1) best = (std::max)(best, c.a.r + (c.b.r - c.a.r) * t);
            continue;
        }
        const double h =
            std::sqrt((std::max)(0.0, (c.radius - (s - c.c.s)) * (c.radius + (s - c.c.s))));
        for (const double r : {c.c.r + h, c.c.r - h})
            if (IsOnArc(c, {s, r})) best = (std::max)(best, r);
    }
    if (c.isArc && IsOnArc(c, {c.c.s, c.c.r + c.radius})) consider({c.c.s, c.c.r + c.radius});
    return best;
}

double HighestOverLine(const Curve& c, P a, P b) {
    if (a.s > b.s) std::swap(a, b);
    if (!(b.s > a.s)) return kNothing;
    const double slope = (b.r - a.r) / (b.s - a.s);
    const auto off = [&](P p) {
        if (!(p.s >= a.s && p.s <= b.s)) return kNothing;
        return p.r - (a.r + slope * (p.s - a.s));
    };
    double best = (std::max)(off(c.a), off(c.b));
    for (const P p : {a, b}) {
        const double r = HighestOver(c, p.s, p.s);
        if (r > kNothing) best = (std::max)(best, r - p.r);
    }
    if (c.isArc) {
        const double w = std::hypot(1, slope);
        const P top{c.c.s - c.radius * slope / w, c.c.r + c.radius / w};
        if (IsOnArc(c, top)) best = (std::max)(best, off(top));
    }
    return best;
}

std::vector<double> CrossingsAtHeight(const Curve& c, double r) {
    if (!c.isArc) {
        if ((c.a.r > r) == (c.b.r > r)) return {};
        return {c.a.s + (c.b.s - c.a.s) * (r - c.a.r) / (c.b.r - c.a.r)};
    }
    std::vector<double> at;
    if (std::fabs(r - c.c.r) > c.radius) return at;
    const double w = std::sqrt((c.radius - (r - c.c.r)) * (c.radius + (r - c.c.r)));
    for (const double s : {c.c.s - w, c.c.s + w})
        if (IsOnArc(c, {s, r})) at.push_back(s);
    return at;
}

P Ahead(const Curve& c, P end, P inward, double reach) {
    if (!c.isArc) return {end.s - inward.s * reach, end.r - inward.r * reach};
    const bool isLeft = inward.s * (c.c.r - end.r) - inward.r * (c.c.s - end.s) > 0;
    return OnCircle(c, Angle(c, end) + (isLeft ? -1 : 1) * reach / c.radius);
}

Curve Continued(const Curve& c, P end, P inward, double reach, double sign) {
    if (!c.isArc || c.isApproximate)
        return MakeLine(end, {end.s - inward.s * reach, end.r - inward.r * reach});
    Curve path = c;
    path.a = end;
    path.from = Angle(c, end);
    // Outwards: the other way than inwards.
    const bool isLeft = inward.s * (c.c.r - end.r) - inward.r * (c.c.s - end.s) > 0;
    const double turn = isLeft ? -1 : 1;
    double limit = ((sign > 0 ? 0 : kPi) - path.from) * turn;
    limit -= kTurn * std::floor(limit / kTurn);
    path.sweep = turn * (std::min)(limit, reach / c.radius);
    path.b = OnCircle(path, path.from + path.sweep);
    return path;
}

Curve PartUpTo(const Curve& c, P p) {
    if (!c.isArc) return MakeLine(c.a, p);
    return ArcPart(c, 0, (std::min)(Around(c, p), std::fabs(c.sweep)));
}

std::vector<Curve> BehindAlong(const Curve& c, const Curve& carrier, P start, P direction,
                               double back, double tiny) {
    // Where along c the carrier's mark lies.
    std::vector<double> shares{0, 1};
    if (carrier.isArc) {
        const bool isLeft =
            direction.s * (carrier.c.r - start.r) - direction.r * (carrier.c.s - start.s) > 0;
        const P mark =
            OnCircle(carrier, Angle(carrier, start) + (isLeft ? 1 : -1) * back / carrier.radius);
        const double share = Around(c, mark) / std::fabs(c.sweep);
        if (share > 0 && share < 1) shares.push_back(share);
    } else {
        const P mark{start.s + direction.s * back, start.r + direction.r * back};
        const P v{c.b.s - c.a.s, c.b.r - c.a.r};
        const double share =
            ((mark.s - c.a.s) * v.s + (mark.r - c.a.r) * v.r) / (v.s * v.s + v.r * v.r);
        if (share > 0 && share < 1) shares.push_back(share);
    }
    std::sort(shares.begin(), shares.end());
    std::vector<Curve> kept;
    for (size_t i = 1; i < shares.size(); ++i) {
        const double middle = (shares[i - 1] + shares[i]) / 2;
        if (AlongFrom(carrier, start, direction, At(c, middle)) < back) continue;
        const double whole = std::fabs(c.sweep);
        const Curve part = c.isArc ? ArcPart(c, shares[i - 1] * whole, shares[i] * whole)
                                   : MakeLine(At(c, shares[i - 1]), At(c, shares[i]));
        if (LengthOf(part) > tiny) kept.push_back(part);
    }
    return kept;
}

}  // namespace plain
