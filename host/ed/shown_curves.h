// What boundary tracing and object snap see of a drawing.
#pragma once

#include <vector>

#include "host/ed/tolerance.h"
#include "plane/curve.h"

class AcDbDatabase;
class AcDbEntity;

namespace host {

// A line or an arc of the drawing.
struct ShownCurve {
    plane::Curve shape;
    // What it was made from, counted within one list; the two halves of a circle share one.
    int source = 0;
    bool isChord = false;  // of a curve that is neither line nor arc
    // Of an arc as its entity states it, to the last digit, for what is drawn from it again: the
    // angle of the start in radians, and the turn to the end, counter-clockwise positive, at most a
    // full turn less something.
    double startAngle = 0.0;
    double sweep = 0.0;

    // The part of an arc's sweep at which p lies as seen from the centre: below 0 before the start,
    // above 1 behind the end, as far as half of what the arc leaves out.
    double TurnedTo(const plane::Point& p) const;
    // True for a point within kNodeTol of the curve.
    bool IsThrough(const plane::Point& p) const { return Distance(shape, p) <= kNodeTol; }
};

// The curves shown in the current space, in the order of the drawing, laid into the XY plane:
// lines, arcs, circles and the parts of polylines and block references as they are; ellipses,
// splines and arcs in other planes as chords at most kChordTol away. Left out: what is off, frozen
// or invisible, curves without an end, points, and anything with a coordinate that is no number or
// beyond kMaxCoordinate. The drawing is not changed.
//
// cost  O(curves); polylines and blocks are taken apart in memory
std::vector<ShownCurve> FindShownCurves(AcDbDatabase& database);

// Appends the curves of one entity, by the same rules.
void AppendShownCurves(const AcDbEntity& entity, std::vector<ShownCurve>& curves);

}  // namespace host
