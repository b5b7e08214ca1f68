#include "host/solid/outline.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "host/solid/tolerance.h"

namespace host::solid {

namespace {

using Fault = Refusal::Fault;
using Corners = std::vector<Corner>;

// An arc of more than 240 degrees is halved. Its ends may be as near as the tolerance, where moving
// one a little would turn or lose the arc.
constexpr double kWidestBulge = 1.7320508075688772;  // tan(240 degrees / 4)

// An axis that leaves the plane by more than this (radians) was not meant to lie in it.
constexpr double kLargestTilt = 1e-3;

bool IsFinite(const AcGePoint3d& p) {
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

bool IsNear(const AcGePoint3d& p) {
    return std::fabs(p.x) <= kLargestCoordinate && std::fabs(p.y) <= kLargestCoordinate &&
           std::fabs(p.z) <= kLargestCoordinate;
}

Refusal Refuse(Fault fault, const AcGePoint3d& at = {}, int corner = -1) {
    Refusal refusal;
    refusal.fault = fault;
    refusal.at = at;
    refusal.corner = corner;
    return refusal;
}

Refusal CheckNumbers(const Outline& outline) {
    for (std::size_t i = 0; i < outline.corners.size(); ++i) {
        const Corner& corner = outline.corners[i];
        const AcGePoint3d at = outline.At(corner.point);
        if (!IsFinite(at) || !std::isfinite(corner.bulge))
            return Refuse(Fault::kNotFinite, {}, static_cast<int>(i));
        const Point next = outline.corners[(i + 1) % outline.corners.size()].point;
        const bool arcTooWide =
            corner.bulge != 0.0 &&
            plane::MakeCurve(corner.point, next, corner.bulge).radius > kLargestCoordinate &&
            std::fabs(corner.bulge) > 1.0;
        if (!IsNear(at) || arcTooWide) return Refuse(Fault::kTooFar, at, static_cast<int>(i));
    }
    return {};
}

// An outline that is not marked as closed is so when its ends meet; the last corner then repeats
// the first and goes.
Refusal CloseCorners(const Outline& outline, Corners& corners) {
    corners = outline.corners;
    if (outline.closed || corners.empty()) return {};
    const Point first = corners.front().point, last = corners.back().point;
    if (corners.size() > 1 && Distance(first, last) <= kPositionTol) {
        corners.pop_back();
        return {};
    }
    Refusal open = Refuse(Fault::kOpen, outline.At(last), static_cast<int>(corners.size()) - 1);
    open.other = outline.At(first);
    return open;
}

// Length of the piece from a corner to a point.
double PieceLength(const Corner& from, const Point& to) {
    return plane::MakeCurve(from.point, to, from.bulge).Length();
}

void DropShortPieces(Corners& corners) {
    Corners kept;
    for (const Corner& corner : corners) {
        if (!kept.empty() && PieceLength(kept.back(), corner.point) < kPositionTol)
            kept.back().bulge = corner.bulge;
        else
            kept.push_back(corner);
    }
    while (kept.size() > 1 && PieceLength(kept.back(), kept.front().point) < kPositionTol)
        kept.pop_back();
    corners = std::move(kept);
}

void HalveWideArcs(Corners& corners) {
    Corners halved;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Point next = corners[(i + 1) % corners.size()].point;
        const double bulge = corners[i].bulge;
        halved.push_back(corners[i]);
        if (std::fabs(bulge) <= kWidestBulge) continue;
        const double half = std::tan(0.5 * std::atan(bulge));
        halved.back().bulge = half;
        halved.push_back({plane::MakeCurve(corners[i].point, next, bulge).Middle(), half});
    }
    corners = std::move(halved);
}

// The profile's size: the longer side of its corners' box.
double SizeOf(const Corners& corners) {
    plane::Box box;
    for (const Corner& corner : corners) box.Add(corner.point);
    return box.Size();
}

void FlattenArcs(Corners& corners) {
    const double size = SizeOf(corners);
    for (std::size_t i = 0; i < corners.size(); ++i) {
        if (corners[i].bulge == 0.0) continue;
        const Piece arc = plane::MakeCurve(
            corners[i].point, corners[(i + 1) % corners.size()].point, corners[i].bulge);
        if (arc.Sagitta() < kPositionTol && !(arc.radius <= kFlatArcRadius * size))
            corners[i].bulge = 0.0;
    }
}

void SnapToAxis(Corners& corners) {
    for (Corner& corner : corners)
        if (std::fabs(corner.point.y) < kPositionTol) corner.point.y = 0.0;
}

// Gives the ends of nearly axis-parallel lines the same coordinate, one coordinate at a time. Each
// end is compared with the already snapped one before it, so nothing drifts along a run of lines;
// the walk starts behind a line that is not snapped, or else closes by pulling the last run over.
void SnapParallel(Corners& corners, double Point::*coordinate) {
    const std::size_t n = corners.size();
    const auto snaps = [&](std::size_t i) {  // the line that starts at corner i
        return corners[i].bulge == 0.0 && std::fabs(corners[(i + 1) % n].point.*coordinate -
                                                    corners[i].point.*coordinate) < kPositionTol;
    };
    std::size_t start = 0;
    while (start < n && snaps((start + n - 1) % n)) ++start;
    if (start == n) return;  // everything within the tolerance: no area, refused later
    for (std::size_t k = 0; k + 1 < n; ++k) {
        const std::size_t i = (start + k) % n;
        if (snaps(i)) corners[(i + 1) % n].point.*coordinate = corners[i].point.*coordinate;
    }
    const std::size_t last = (start + n - 1) % n;
    if (!snaps(last)) return;
    const double old = corners[last].point.*coordinate;
    for (std::size_t k = 0; k < n && corners[(last + n - k) % n].point.*coordinate == old; ++k)
        corners[(last + n - k) % n].point.*coordinate = corners[start].point.*coordinate;
}

}  // namespace

Refusal PlaceOnAxis(const Outline& outline, const AcGePoint3d& axisPoint,
                    const AcGeVector3d& axisDir, Frame& frame, Corners& corners) {
    if (Refusal refusal = CheckNumbers(outline)) return refusal;
    if (!IsFinite(axisPoint) || !IsNear(axisPoint) || !IsFinite(axisDir.asPoint()) ||
        axisDir.length() < kDirectionTol)
        return Refuse(Fault::kAxisDirection, axisPoint);
    if (Refusal refusal = CloseCorners(outline, corners)) return refusal;

    const AcGeVector3d normal = outline.u.crossProduct(outline.v);
    const AcGeVector3d along = axisDir.normal();
    // The axis must stay within the tolerance of the plane as far as the profile reaches.
    const double tilt = along.dotProduct(normal);
    const double off = (axisPoint - outline.origin).dotProduct(normal);
    if (std::fabs(tilt) > kLargestTilt) return Refuse(Fault::kAxisOffPlane, axisPoint);
    for (const Corner& corner : corners) {
        const double x = (outline.At(corner.point) - axisPoint).dotProduct(along);
        if (std::fabs(off + tilt * x) > kPositionTol)
            return Refuse(Fault::kAxisOffPlane, axisPoint);
    }
    frame.axis = tilt == 0.0 ? along : (along - normal * tilt).normal();
    frame.radial = normal.crossProduct(frame.axis);
    const AcGePoint3d onPlane = axisPoint - normal * off;
    frame.origin = onPlane - frame.axis * onPlane.asVector().dotProduct(frame.axis);

    double highest = 0.0;
    for (Corner& corner : corners) {
        const AcGeVector3d q = outline.At(corner.point) - frame.origin;
        corner.point = {q.dotProduct(frame.axis), q.dotProduct(frame.radial)};
    }
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Piece piece = plane::MakeCurve(
            corners[i].point, corners[(i + 1) % corners.size()].point, corners[i].bulge);
        for (const double y : {piece.from.y, piece.Middle().y})
            if (std::fabs(y) > std::fabs(highest)) highest = y;
    }
    if (highest >= 0.0) return {};
    frame.radial.negate();
    for (Corner& corner : corners) {
        corner.point.y = -corner.point.y;
        corner.bulge = -corner.bulge;
    }
    return {};
}

std::vector<Piece> CleanRing(const Corners& drawn) {
    std::vector<Piece> ring;
    Corners corners = drawn;
    HalveWideArcs(corners);
    DropShortPieces(corners);
    if (corners.size() < 2) return ring;
    FlattenArcs(corners);
    SnapToAxis(corners);
    SnapParallel(corners, &Point::x);
    SnapParallel(corners, &Point::y);
    DropShortPieces(
        corners);  // a line of little more than the tolerance may have shrunk to nothing
    if (corners.size() < 2) return ring;
    ring.reserve(corners.size());
    for (std::size_t i = 0; i < corners.size(); ++i)
        ring.push_back(plane::MakeCurve(corners[i].point, corners[(i + 1) % corners.size()].point,
                                        corners[i].bulge));
    return ring;
}

}  // namespace host::solid
