// The profile of a solid of revolution: an outline made ready to be turned about an axis.
//
// Glossary
//   outline  what was drawn: corners with bulges in a plane, the last joins the first
//   frame    the axis and the direction away from it in which the profile lies
//   piece    a line or arc of the profile, in frame coordinates: x along the axis, y >= 0 above it
//   chain    pieces in order; from axis to axis, or all the way round when the profile does not
//   touch
//            the axis (a tube). Each chain turns into one closed shell: the first is the outside,
//            the others are cavities that reach the axis.
//   tip      an end of a chain at which a cone or arc comes to a point on the axis
#pragma once

#include <string>
#include <vector>

#include "acadstrc.h"
#include "gepnt3d.h"

#include "plane/ring.h"

namespace host::solid {

using plane::Corner;
using plane::Point;
using plane::Vector;
// A line or arc of a profile.
using Piece = plane::Curve;

// Corners in the plane through origin with the orthogonal unit directions u and v.
struct Outline {
    AcGePoint3d origin;
    AcGeVector3d u{1, 0, 0}, v{0, 1, 0};
    std::vector<Corner> corners;
    bool closed = true;  // false: closed only if the last corner lies on the first

    AcGePoint3d At(const Point& p) const { return origin + u * p.x + v * p.y; }
};

// The axis: origin is its point nearest to the world's origin, so that x of a profile about an axis
// along the world's x is the drawing's x, digit for digit.
struct Frame {
    AcGePoint3d origin;
    AcGeVector3d axis{1, 0, 0};    // unit
    AcGeVector3d radial{0, 1, 0};  // unit, at right angles to axis

    AcGePoint3d At(double x, double y) const { return origin + axis * x + radial * y; }
    AcGePoint3d At(const Point& p) const { return At(p.x, p.y); }
    // Across the plane of the profile.
    AcGeVector3d Normal() const { return axis.crossProduct(radial); }
};

struct Chain {
    std::vector<Piece> pieces;
    bool closed = false;  // all the way round, away from the axis
};

// Material lies left of travel in every chain.
struct Profile {
    Frame frame;
    std::vector<Chain> chains;
};

// Why an outline cannot be revolved, and where.
struct Refusal {
    enum class Fault {
        kNone,
        kNotFinite,      // a number is not finite; at corner `corner`
        kTooFar,         // beyond kLargestCoordinate; at corner `corner`
        kOpen,           // the ends `at` and `other` do not meet
        kNotPlanar,      // the curve has no plane
        kAxisDirection,  // the axis has no direction
        kAxisOffPlane,   // the axis does not lie in the outline's plane
        kCrossesItself,  // comes within the position tolerance of itself at `at`
        kCrossesAxis,    // lies on both sides of the axis; crosses it at `at`
        kTouchesAxis,    // touches the axis at the single point `at`: the solid would pinch there
        kNoArea,         // encloses nothing wider than the tolerance
        kWrongKind       // the entity is no curve or region that can be revolved
    };
    Fault fault = Fault::kNone;
    AcGePoint3d at, other;
    int corner = -1;

    explicit operator bool() const { return fault != Fault::kNone; }
    // One sentence in English with the place: "the profile crosses itself at (12.5, 3)".
    std::string Text() const;
    Acad::ErrorStatus Status() const;
};

// Makes an outline ready to be revolved about an axis.
//
// Checks it in this order: numbers, closed, plane and axis, area, self-crossing, axis. Then drops
// pieces shorter than kPositionTol, snaps ends within it to the axis and nearly axis-parallel lines
// to parallel ones, takes arcs for lines whose radius is beyond kFlatArcRadius times the size and
// that bend less than the tolerance, moves sphere centres onto the axis, joins neighbours on one
// line or circle when nothing moves by more than kJoinTol, drops what lies on the axis, and turns
// the outline so that the material is on the left.
//
// out   changed only on success; no corner moves by more than 2 kPositionTol.
// cost  O(n log n).
Refusal Prepare(const Outline& outline, const AcGePoint3d& axisPoint, const AcGeVector3d& axisDir,
                Profile& out);

// Whether an outline is a plane loop that bounds an area, without an axis. area changes on success
// only.
Refusal CheckOutline(const Outline& outline, double& area);

// Volume, surface and size of the solid, exact up to rounding.
struct Measures {
    double volume = 0.0;
    double area = 0.0;
    double largestDiameter = 0.0;
    double length = 0.0;  // overall, along the axis
};
Measures Measure(const Profile& profile);

}  // namespace host::solid
