// The arithmetic of straight lines, on which whole drawings depend bit for bit. Each function fixes
// the order of its floating-point operations; change one and the goldens change.
#pragma once

#include <cmath>
#include <cstdlib>

#include "gepnt3d.h"
#include "gevec3d.h"

namespace host {

// How far a foot may lie beyond an end and still count as on the segment, in drawing units. Far
// below any drawing tolerance, so a point 0.0003 beyond an end is refused at tolerance 0.0005;
// above the rounding of a corner computed within some 10^5 units of the origin, so that corner is
// accepted.
constexpr double kBeyondEnd = 1e-10;

// A straight piece start + t * dir; lower and upper say whether it ends at t = 0 and at t = 1.
struct Straight {
    AcGePoint3d start;  // at t = 0
    AcGeVector3d dir;   // to t = 1; its length is the unit of t
    bool lower;         // ends at t = 0
    bool upper;         // ends at t = 1
};

// Unit vectors u and v of both: |u - v| < tol or |u + v| < tol. Needs lengths above 0.
inline bool AreParallel(const AcGeVector3d& a, double lengthA, const AcGeVector3d& b,
                        double lengthB, double tol) {
    const AcGeVector3d u = a / lengthA;
    const AcGeVector3d v = b / lengthB;
    return (u - v).length() < tol || (u + v).length() < tol;
}

// Whether t, in units of a straight's length, lies on it or no more than slack beyond an end.
inline bool IsWithin(const Straight& s, double t, double length, double slack) {
    const double along = t * length;
    return (!s.lower || along >= -slack) && (!s.upper || along <= length + slack);
}

// Crossing of two straights neither of which is seen as a point from above; see Crossing.
bool CrossingInSpace(const Straight& a, const Straight& b, const AcGeTol& tol, double& t);

// Whether the straights cross in one point; t receives its place on a only then.
//
// The lines cross as seen from above: c = d1 x d2, t = ((B0 - A0) x d2) / c, u = ((B0 - A0) x d1) /
// c; both places lie on their straight or at most equalPoint beyond an end; they are no farther
// apart in height than equalPoint; the directions are not parallel by equalVector. A straight
// without length crosses nothing. The dear test for parallels comes last: most pairs miss one
// another.
inline bool Crossing(const Straight& a, const Straight& b, const AcGeTol& tol, double& t) {
    // The determinant of both directions seen from above.
    const double c = a.dir.x * b.dir.y - a.dir.y * b.dir.x;
    if (c == 0.0) return CrossingInSpace(a, b, tol, t);
    const AcGeVector3d w = b.start - a.start;
    const double ta = (w.x * b.dir.y - w.y * b.dir.x) / c;  // the place on a
    const double lengthA = a.dir.length();
    if (!IsWithin(a, ta, lengthA, tol.equalPoint())) return false;
    const double tb = (w.x * a.dir.y - w.y * a.dir.x) / c;  // the place on b
    const double lengthB = b.dir.length();
    if (!IsWithin(b, tb, lengthB, tol.equalPoint())) return false;
    const double za = a.start.z + ta * a.dir.z;  // heights there
    const double zb = b.start.z + tb * b.dir.z;
    if (!(std::fabs(za - zb) <= tol.equalPoint())) return false;
    if (AreParallel(a.dir, lengthA, b.dir, lengthB, tol.equalVector())) return false;
    t = ta;
    return true;
}

// Place of the foot of the perpendicular from p, not cut to the ends; dir must have length.
inline double FootOf(const Straight& s, const AcGePoint3d& p) {
    return (p - s.start).dotProduct(s.dir) / s.dir.lengthSqrd();
}

// Whether points within the tolerance past an end lie on a straight, too: a reading of the
// interface that cannot be ruled out. Off but in tests of what must not depend on it, which set it
// or the variable QZ_ACCEPT_BEYOND_ENDS of the environment.
inline bool& AcceptsBeyondEnds() {
    static bool accepts = std::getenv("QZ_ACCEPT_BEYOND_ENDS") != nullptr;
    return accepts;
}

// Whether p lies on the straight: the foot within kBeyondEnd of it, the distance from the foot not
// above equalPoint. Without length: the distance from its point not above equalPoint.
inline bool IsOn(const Straight& s, const AcGePoint3d& p, const AcGeTol& tol) {
    const double length = s.dir.length();
    if (length == 0.0) return s.start.distanceTo(p) <= tol.equalPoint();
    const double t = FootOf(s, p);
    return IsWithin(s, t, length, AcceptsBeyondEnds() ? tol.equalPoint() : kBeyondEnd) &&
           p.distanceTo(s.start + s.dir * t) <= tol.equalPoint();
}

// Place of the closest point: the foot, cut to the ends; 0 without length.
inline double NearestOn(const Straight& s, const AcGePoint3d& p) {
    if (s.dir.lengthSqrd() == 0.0) return 0.0;
    const double t = FootOf(s, p);
    if (s.lower && t < 0.0) return 0.0;
    return s.upper && t > 1.0 ? 1.0 : t;
}

}  // namespace host
