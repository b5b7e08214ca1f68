// The directions in which a sheet is drawn.
#pragma once

#include <vector>

#include "product/detect/Stroke.h"

namespace product::detect {

// Angles in radians in (-pi/4, pi/4], the one with the greatest length of lines first: lines along
// an angle and square to it count for it. Centre lines count ten times their length. Angles with
// less than a thirtieth of the length of the first are left out, and at most `most` are given.
//
// exact  an angle is the mean of its lines within a quarter of a degree
// cost   O(n)
std::vector<double> FindDirections(const Sheet& sheet, size_t most);

}  // namespace product::detect
