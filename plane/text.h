// Geometry as one line of text, for tests and messages: "0,0 4,0(0.5) 4,4".
//
// A corner is x,y and in brackets the bulge of the curve that leaves it, when there is one. Corners
// are apart by blanks, chains by " | ". The decimal point is a point whatever the system's
// language.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "plane/ring.h"

namespace plane {

// Significant digits that give the same number again.
inline constexpr int kAllDigits = 17;

// "0.25,-3". Of the digits no more are written than needed; -0 is written 0.
std::string Show(const Point& p, int digits = 6);

// "0,0 4,0(0.5) 4,4".
std::string Show(const std::vector<Corner>& corners, int digits = 6);

// Chains of curves, each curve that begins where the one before ends continuing its chain, to the
// last digit: "0,0 4,0(0.5) 4,4 | 7,7 8,8".
std::string Show(const std::vector<Curve>& curves, int digits = 6);

// The corners of a text; std::invalid_argument, naming the word, when it is none.
std::vector<Corner> ParseCorners(std::string_view text);

// The curves of a text's open chains, in order. "0,0 4,0 4,4 0,4 0,0" is a closed square.
std::vector<Curve> ParseCurves(std::string_view text);

}  // namespace plane
