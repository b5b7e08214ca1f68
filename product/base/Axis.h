// The axis of rotation in the drawing's plane, and the halves of the drawing on its sides.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "product/base/Outline.h"

namespace product {

// "Up" is to the left of the axis' direction. Both: what a turning tool sweeps.
enum class Half { Upper, Lower, Both };

// The line through two points, directed from the first to the second. They must be apart. The first
// one is what users give as "the centre".
struct Axis {
    Point from, to;

    // Through a point along the drawing's x axis, however far out the point lies.
    static Axis Level(const Point& centre) {
        return {centre, {centre.x + (std::max)(1.0, std::abs(centre.x)), centre.y}};
    }
    // Directed along the drawing's x axis, exactly.
    bool IsLevel() const { return from.y == to.y && from.x < to.x; }
};

// Coordinates along an axis and away from it: x the place from a point on the axis on, y the
// distance to the left of its direction; to its right for the lower half. A level axis brings no
// rounding but that of the difference.
class AxisFrame {
public:
    explicit AxisFrame(const Axis& axis, bool isLower = false);
    // The same with its origin where the foot of a point lies on the axis.
    AxisFrame(const Axis& axis, const Point& origin, bool isLower);

    Point In(const Point& p) const;   // from the drawing's coordinates
    Point Out(const Point& p) const;  // to the drawing's coordinates

private:
    Point m_origin;
    Point m_along{1, 0};  // unit
    double m_sign;        // -1 for the lower half
};

// The box of a closed ring in the axis' own coordinates, arcs included beyond their end points.
Box BoxAbout(const Axis& axis, const std::vector<Vertex>& ring);

}  // namespace product
