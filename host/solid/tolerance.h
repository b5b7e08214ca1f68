// The fixed tolerances of profiles and solids, in drawing units unless said otherwise.
#pragma once

namespace host::solid {

// Points nearer than this are one for every kernel that reads the files: the position tolerance
// that stands in the head of each SAT file. Pieces, gaps and distances from the axis below it are
// noise.
inline constexpr double kPositionTol = 1e-6;

// Neighbours are joined into one line or arc only when nothing moves by more than this: a tenth of
// the position tolerance, so that snapping and joining together stay below it.
inline constexpr double kJoinTol = 1e-7;

// Unit directions nearer than this are one (radians). The direction tolerance of SAT files.
inline constexpr double kDirectionTol = 1e-10;

// Beyond this a double no longer resolves the position tolerance with a digit to spare.
inline constexpr double kLargestCoordinate = 1e9;

// An arc that bends less than the position tolerance and whose radius is more than this many times
// the profile's size is written as a line: readers lose the precision of such a torus.
inline constexpr double kFlatArcRadius = 1e4;

}  // namespace host::solid
