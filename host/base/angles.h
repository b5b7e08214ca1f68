// Angles in radians.
#pragma once

#include <cmath>

#include "plane/point.h"

namespace host {

inline constexpr double kPi = plane::kHalfTurn;
inline constexpr double kTwoPi = plane::kFullTurn;
inline constexpr double kDegree = kPi / 180.0;

// The direction (x, y) counter-clockwise from +x, in [0, 2 pi); 0 when both are 0. A direction just
// below +x, whose angle rounds to a full turn, gives 0.
inline double FullAngle(double y, double x) {
    double angle = std::atan2(y, x);
    if (angle < 0.0) angle += kTwoPi;
    return angle < kTwoPi ? angle + 0.0 : 0.0;  // + 0.0 turns -0 into 0
}

// The angle plus as many full turns as bring it into [from, from + 2 pi).
inline double TurnedInto(double angle, double from) {
    const double turned = angle + kTwoPi * std::ceil((from - angle) / kTwoPi);
    return turned < from + kTwoPi ? turned : turned - kTwoPi;
}

}  // namespace host
