// What boundary tracing sees of a drawing.
#pragma once

#include <vector>

#include "host/ed/plane_curve.h"

class AcDbDatabase;
class AcDbEntity;

namespace host {

// The curves shown in the current space, in the order of the drawing, laid into the XY plane:
// lines, arcs, circles and the parts of polylines and block references as they are; ellipses,
// splines and arcs in other planes as chords at most kChordTol (relative to their size) away.
// Left out: what is off, frozen or invisible, curves without an end, points, and anything with a
// coordinate that is no number or beyond kMaxCoordinate.
std::vector<PlaneCurve> FindShownCurves(AcDbDatabase& database);

// Appends the curves of one entity, by the same rules.
void AppendPlaneCurves(const AcDbEntity& entity, std::vector<PlaneCurve>& curves);

constexpr double kChordTol = 1e-4;
// Drawing units; doubles beyond it no longer tell kNodeTol apart.
constexpr double kMaxCoordinate = 1e9;

}  // namespace host
