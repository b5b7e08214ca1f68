#include "plane/ring.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace plane {
namespace {

// Whether the point lies between an arc and its chord. A point on the chord's line counts as moved
// a little to the right, and by much less upwards: on the side on which CrossesRay() has it.
bool IsUnderArc(const Curve& curve, const Point& p) {
    if (!curve.IsArc() || CircleDistance(curve, p) >= 0.0) return false;
    const Vector chord = curve.Chord();
    double side = Cross(chord, p - curve.from);
    if (side == 0.0) side = chord.y != 0.0 ? -chord.y : chord.x;
    return curve.bulge > 0.0 ? side < 0.0 : side > 0.0;
}

// Whether a ray from p to the right crosses the chord. Half open, so that a shared end counts once.
bool CrossesRay(const Curve& curve, const Point& p) {
    const Point &a = curve.from, &b = curve.to;
    if ((a.y > p.y) == (b.y > p.y)) return false;
    const double side = Cross(b - a, p - a);
    return b.y > a.y ? side > 0.0 : side < 0.0;
}

}  // namespace

std::vector<Curve> CurvesOf(const std::vector<Corner>& corners, bool isClosed) {
    std::vector<Curve> curves;
    const std::size_t count = corners.empty() ? 0 : corners.size() - (isClosed ? 0 : 1);
    curves.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        curves.push_back(
            MakeCurve(corners[i].point, corners[(i + 1) % corners.size()].point, corners[i].bulge));
    return curves;
}

Box BoxOf(const std::vector<Curve>& curves) {
    Box box;
    for (const Curve& curve : curves) box.Add(BoxOf(curve));
    return box;
}

Integrals Integrate(const std::vector<Curve>& ring) {
    Integrals sum;
    for (const Curve& curve : ring) {
        const Integrals part = Integrate(curve);
        sum.area += part.area;
        sum.moment += part.moment;
        sum.length += part.length;
        sum.lengthMoment += part.lengthMoment;
    }
    return sum;
}

bool IsInside(const std::vector<Curve>& ring, const Point& p) {
    bool isInside = false;
    for (const Curve& curve : ring)
        if (CrossesRay(curve, p) != IsUnderArc(curve, p)) isInside = !isInside;
    return isInside;
}

double Distance(const std::vector<Curve>& curves, const Point& p) {
    double least = std::numeric_limits<double>::infinity();
    for (const Curve& curve : curves) least = (std::min)(least, Distance(curve, p));
    return least;
}

}  // namespace plane
