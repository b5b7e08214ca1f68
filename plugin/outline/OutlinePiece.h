// Curves as graphs of functions, and their upper envelope.
//
// A piece is a part of a curve over which y is a function of x: a straight line that is not
// upright, or the upper or lower half of a circle between its upright tangents. The same code finds
// the profile (x along the axis, y the distance from it) and, with the two exchanged, the faces.
#pragma once

#include <vector>

#include "plane/curve.h"

namespace outline {

struct Piece {
    // The ends, x0 < x1. They are the curve's own: at an upright tangent the circle's formula would
    // give the square root of a rounding error instead.
    double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
    int bend = 0;  // 0 a line, +1 an upper half of a circle, -1 a lower one
    double cx = 0, cy = 0, radius = 0;
    int curve = -1;  // the number that the caller gave
};

// Appends the pieces of a curve that stay a function of x over more than `upright`; narrower ones
// are walls and make none. An arc gives up to three.
void AppendPieces(const plane::Curve& curve, int number, double upright,
                  std::vector<Piece>& pieces);

// The height at x, which is taken into [x0, x1]. Accurate for circles a million times as large as
// the piece: by the difference to the nearer end, not by the centre.
double HeightAt(const Piece& piece, double x);
// The greatest and the least height over [lo, hi] within the piece.
double HighestIn(const Piece& piece, double lo, double hi);
double LowestIn(const Piece& piece, double lo, double hi);
double SlopeAt(const Piece& piece, double x);

// The places strictly between lo and hi, at most two and in order, where the heights of two pieces
// may change their order. Every change of order that is wider than rounding is among them.
int CrossingsOf(const Piece& a, const Piece& b, double lo, double hi, double (&at)[2]);

// The part of a piece over [lo, hi] as a curve, left to right, on the piece's own circle.
plane::Curve PartOf(const Piece& piece, double lo, double hi);

}  // namespace outline
