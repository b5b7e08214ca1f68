// The same geometry in numbers of twice the length, straight from the definitions: what the quick
// formulas are measured against.
#pragma once

#include <cmath>
#include <vector>

#include "plane/curve.h"

namespace test {

using Real = __float128;

inline Real Abs(Real x) { return x < 0 ? -x : x; }

// Newton's steps from the double root: each doubles the digits.
inline Real Root(Real x) {
    if (!(x > 0)) return 0;
    Real r = std::sqrt(static_cast<double>(x));
    if (r == 0) return 0;
    for (int i = 0; i < 3; ++i) r = (r + x / r) / 2;
    return r;
}

struct ExactPoint {
    Real x, y;
};

inline ExactPoint Exact(const plane::Point& p) { return {p.x, p.y}; }
inline plane::Point Rounded(const ExactPoint& p) {
    return {static_cast<double>(p.x), static_cast<double>(p.y)};
}
inline Real Between(const ExactPoint& a, const ExactPoint& b) {
    return Root((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y));
}

// The curve that ends and bulge define; centre and radius of the rounded one are not looked at.
struct ExactCurve {
    explicit ExactCurve(const plane::Curve& curve)
        : from(Exact(curve.from)), to(Exact(curve.to)), bulge(curve.bulge) {
        if (bulge == 0) return;
        const Real dx = to.x - from.x, dy = to.y - from.y, k = (1 - bulge * bulge) / (4 * bulge);
        centre = {(from.x + to.x) / 2 - dy * k, (from.y + to.y) / 2 + dx * k};
        radius = Root(dx * dx + dy * dy) * (1 + bulge * bulge) / (4 * Abs(bulge));
    }

    // Whether a point of the whole line or circle lies on the curve.
    bool Holds(const ExactPoint& p) const {
        const Real dx = to.x - from.x, dy = to.y - from.y;
        if (bulge == 0) {
            const Real t = (p.x - from.x) * dx + (p.y - from.y) * dy;
            return t >= 0 && t <= dx * dx + dy * dy;
        }
        const Real side = dx * (p.y - from.y) - dy * (p.x - from.x);
        return bulge > 0 ? side <= 0 : side >= 0;
    }

    Real DistanceTo(const ExactPoint& p) const {
        ExactPoint foot;
        if (bulge == 0) {
            const Real dx = to.x - from.x, dy = to.y - from.y;
            const Real t = ((p.x - from.x) * dx + (p.y - from.y) * dy) / (dx * dx + dy * dy);
            foot = {from.x + dx * t, from.y + dy * t};
        } else {
            const Real away = Between(p, centre);
            if (away == 0) return Between(p, from);
            foot = {centre.x + (p.x - centre.x) * radius / away,
                    centre.y + (p.y - centre.y) * radius / away};
        }
        if (Holds(foot)) return Between(p, foot);
        const Real a = Between(p, from), b = Between(p, to);
        return a < b ? a : b;
    }

    ExactPoint from, to;
    Real bulge;
    ExactPoint centre{0, 0};
    Real radius = 0;
};

// Where the line through two points meets a circle.
inline void CutCircle(const ExactPoint& a, const ExactPoint& b, const ExactCurve& arc,
                      std::vector<ExactPoint>& points) {
    const Real dx = b.x - a.x, dy = b.y - a.y, fx = a.x - arc.centre.x, fy = a.y - arc.centre.y;
    const Real aa = dx * dx + dy * dy, bb = fx * dx + fy * dy;
    const Real square = bb * bb - aa * (fx * fx + fy * fy - arc.radius * arc.radius);
    if (square < 0) return;
    for (const int sign : {-1, 1}) {
        const Real t = (-bb + sign * Root(square)) / aa;
        points.push_back({a.x + dx * t, a.y + dy * t});
    }
}

// The crossings of two curves: no tolerance, no ends.
inline std::vector<ExactPoint> ExactCrossings(const ExactCurve& a, const ExactCurve& b) {
    std::vector<ExactPoint> points, on;
    if (a.bulge == 0 && b.bulge == 0) {
        const Real ux = a.to.x - a.from.x, uy = a.to.y - a.from.y;
        const Real vx = b.to.x - b.from.x, vy = b.to.y - b.from.y, cross = ux * vy - uy * vx;
        if (cross == 0) return {};
        const Real t = ((b.from.x - a.from.x) * vy - (b.from.y - a.from.y) * vx) / cross;
        points.push_back({a.from.x + ux * t, a.from.y + uy * t});
    } else if (a.bulge == 0 || b.bulge == 0) {
        const ExactCurve &line = a.bulge == 0 ? a : b, &arc = a.bulge == 0 ? b : a;
        CutCircle(line.from, line.to, arc, points);
    } else {
        // The radical line: where both circles have the same power.
        const Real gx = b.centre.x - a.centre.x, gy = b.centre.y - a.centre.y;
        const Real square = gx * gx + gy * gy;
        if (square == 0) return {};
        const Real t = (square + a.radius * a.radius - b.radius * b.radius) / (2 * square);
        const ExactPoint at{a.centre.x + gx * t, a.centre.y + gy * t};
        CutCircle(at, {at.x - gy, at.y + gx}, a, points);
    }
    for (const ExactPoint& p : points)
        if (a.Holds(p) && b.Holds(p)) on.push_back(p);
    return on;
}

}  // namespace test
