// Outlines from the entities of a drawing.
#pragma once

#include <vector>

#include "host/solid/profile.h"

class AcDbCurve;
class AcDbEntity;

namespace host::solid {

// The outline of a closed planar curve: polyline, circle, or whatever explodes into lines and arcs
// that form one loop. Closed or not is judged later, by Prepare. kWrongKind for other entities,
// ellipses and splines among them; kNotPlanar.
Refusal OutlineOfCurve(const AcDbEntity& curve, Outline& out);

// The closed loops that lines, arcs, circles and polylines form. Ends within kPositionTol are one
// point; a loop passes only through points where exactly two ends meet, other curves are left out.
// Fails (kWrongKind) when an entity is no such curve, kNotPlanar when a loop is not plane; loops is
// unchanged then. Order: by the first curve of each loop. Cost O(n log n).
Refusal LoopsOfCurves(const std::vector<const AcDbCurve*>& curves, std::vector<Outline>& loops);

}  // namespace host::solid
