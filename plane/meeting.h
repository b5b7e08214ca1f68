// Where lines and arcs meet.
//
// Meetings are computed, not searched. Two curves meet where they are no farther apart than the
// tolerance: in crossings, in the one point where they come closest when they pass each other
// within the tolerance of touching, and in ends that lie on the other curve. Along a stretch that
// both share, only its ends are meetings; see Stretch() for the stretch itself.
//
// The independent check of contours (product/check) must not use anything of this file: what it
// checks was found with it.
#pragma once

#include <optional>
#include <vector>

#include "plane/curve.h"

namespace plane {

// Appends the points at which two curves meet: first the ends of a and of b that lie on both, then
// what was computed, so that what was drawn to meet meets exactly. At most four ends and two more;
// points may repeat one another within the tolerance, and a common corner comes twice.
//
// tol     drawing units; not below what the coordinates resolve, about 1e-15 of the largest
// result  each point lies within tol of both curves. Every crossing is within tol of one of them,
//         and so is one point of every stretch in which the curves stay within tol.
// cost    constant
void AppendMeetings(const Curve& a, const Curve& b, double tol, std::vector<Point>& points);

// The first of those points.
std::optional<Point> Meeting(const Curve& a, const Curve& b, double tol);

// Where two neighbours, b starting where a ends, come together once more; nothing when they only
// share the corner. By symmetry, so that it is exact also where both are nearly tangent.
std::optional<Point> SecondMeeting(const Curve& a, const Curve& b, double tol);

// The middle of the stretch along which two curves run on one line or one circle, in either
// direction; nothing unless it is longer than the tolerance. Circles count as one when their
// centres and their radii are no farther apart than the tolerance.
std::optional<Point> Stretch(const Curve& a, const Curve& b, double tol);

// Where the curve meets the axis y = 0 on its way, ends included; of two places the first found.
std::optional<Point> AxisPoint(const Curve& curve, double tol);

// The points where the whole line of a curve, or the whole circle, meets that of another, whatever
// their ends: none, one when they touch within the tolerance, two. Lines that are parallel within
// 1e-12 radians have none, nor have circles in one another's place.
//
// Used to lengthen curves beyond their ends.
void AppendCarrierMeetings(const Curve& a, const Curve& b, double tol, std::vector<Point>& points);

}  // namespace plane
