// Lines and circular arcs in the XY plane: what boundary tracing works with.
#pragma once

#include <vector>

#include "gepnt2d.h"

namespace host {

// Points closer than this are one, in drawing units: files state coordinates with six digits. A gap
// that a person draws is a thousand times wider and stays a gap.
constexpr double kNodeTol = 1e-6;

struct PlaneCurve {
    AcGePoint2d start, end;
    // What it was made from; the two halves of a circle share one.
    int source = 0;
    bool isArc = false;
    bool isChord = false;  // of a curve that is neither line nor arc
    // Of an arc: angle of the start in radians, and the turn to the end, counter-clockwise
    // positive, at most a full turn less something.
    AcGePoint2d center;
    double radius = 0.0;
    double startAngle = 0.0;
    double sweep = 0.0;

    static PlaneCurve Line(const AcGePoint2d& start, const AcGePoint2d& end);
    static PlaneCurve Arc(const AcGePoint2d& center, double radius, double startAngle,
                          double sweep);

    // Where along the curve the point lies that is nearest to p: 0 at the start, 1 at the end;
    // beyond the ends outside of that, within a line's length or an arc's other half.
    double ParamOf(const AcGePoint2d& p) const;
    AcGePoint2d PointAt(double param) const;
    double DistanceTo(const AcGePoint2d& p) const;
    bool IsThrough(const AcGePoint2d& p) const { return DistanceTo(p) <= kNodeTol; }
    double Length() const;
};

// A box in the plane.
struct PlaneBox {
    AcGePoint2d min, max;
};

// Exact but for rounding.
PlaneBox BoxOf(const PlaneCurve& curve);

// Appends the points at which two curves meet, at most four and two more for each curve.
//
// Crossings are computed, not searched. Curves that pass within kNodeTol of touching meet in the
// one point where they come closest, and an end that lies within kNodeTol of the other curve is a
// meeting. Along a stretch that both share only its ends are.
void AppendMeetings(const PlaneCurve& a, const PlaneCurve& b, std::vector<AcGePoint2d>& points);

}  // namespace host
