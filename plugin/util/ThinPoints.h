#pragma once

#include "arxHeaders.h"

// Drops every inner point at which the polyline goes straight on.
//
// Three neighbours lose the middle one when the directions of their two steps (modulo a half turn)
// differ by less than dTolDeg degrees, or both are within dTolDeg of vertical, or both within
// dTolDeg of horizontal; the next point is then tested against the same first one. Steps of length
// zero have no direction and keep their points.
// cost     O(n)
void ThinPoints(AcGePoint3dArray& pts, double dTolDeg);
