#include "host/solid/outline_of.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>

#include "dbents.h"
#include "dbpl.h"
#include "gemat3d.h"
#include "host/base/angles.h"
#include "host/solid/tolerance.h"

namespace host::solid {

namespace {

// Sine of the angle between planes that still count as one. Radii are far below kPositionTol /
// kPlaneTol, so an arc in such a plane stays within the tolerance.
constexpr double kPlaneTol = 1e-9;

Refusal Refuse(Refusal::Fault fault) {
    Refusal refusal;
    refusal.fault = fault;
    return refusal;
}

// A line or arc between two points; its bulge counts about the normal.
struct Strand {
    AcGePoint3d from, to;
    double bulge = 0.0;
    AcGeVector3d normal;

    Strand Reversed() const { return {to, from, -bulge, normal}; }
};

struct Strands {
    std::vector<Strand> open;
    std::vector<Outline> loops;  // circles and closed polylines
};

Outline PlaneThrough(const AcGePoint3d& point, const AcGeVector3d& normal) {
    AcGePoint3d ignored;
    AcGeVector3d n;
    Outline out;
    AcGeMatrix3d::planeToWorld(normal).getCoordSystem(ignored, out.u, out.v, n);
    out.origin = (n * point.asVector().dotProduct(n)).asPoint();
    return out;
}

Point InPlane(const Outline& plane, const AcGePoint3d& p) {
    const AcGeVector3d q = p - plane.origin;
    return {q.dotProduct(plane.u), q.dotProduct(plane.v)};
}

Outline CircleOutline(const AcGePoint3d& centre, const AcGeVector3d& normal, double radius) {
    Outline out = PlaneThrough(centre, normal);
    const Point c = InPlane(out, centre);
    out.corners = {{{c.x - radius, c.y}, 1.0}, {{c.x + radius, c.y}, 1.0}};
    return out;
}

Refusal PolylineOutline(const AcDbPolyline& polyline, Outline& out) {
    Outline outline = PlaneThrough(AcGePoint3d(), polyline.normal());
    outline.origin += polyline.normal() * polyline.elevation();
    outline.closed = polyline.isClosed();
    outline.corners.resize(polyline.numVerts());
    for (unsigned int i = 0; i < polyline.numVerts(); ++i) {
        Corner& corner = outline.corners[i];
        AcGePoint2d place;
        if (polyline.getPointAt(i, place) != Acad::eOk ||
            polyline.getBulgeAt(i, corner.bulge) != Acad::eOk)
            return Refuse(Refusal::Fault::kWrongKind);
        corner.point = {place.x, place.y};
    }
    out = std::move(outline);
    return {};
}

Refusal TakePolyline(const AcDbPolyline& polyline, Strands& strands) {
    Outline outline;
    if (Refusal refusal = PolylineOutline(polyline, outline)) return refusal;
    if (outline.closed) {
        strands.loops.push_back(std::move(outline));
        return {};
    }
    for (std::size_t i = 0; i + 1 < outline.corners.size(); ++i)
        strands.open.push_back({outline.At(outline.corners[i].point),
                                outline.At(outline.corners[i + 1].point), outline.corners[i].bulge,
                                polyline.normal()});
    return {};
}

Refusal TakeArc(const AcDbArc& arc, Strands& strands) {
    const double sweep = arc.totalAngle();
    if (sweep >= kTwoPi) {
        strands.loops.push_back(CircleOutline(arc.center(), arc.normal(), arc.radius()));
        return {};
    }
    Strand strand;
    if (arc.getStartPoint(strand.from) != Acad::eOk || arc.getEndPoint(strand.to) != Acad::eOk)
        return Refuse(Refusal::Fault::kWrongKind);
    strand.bulge = std::tan(0.25 * sweep);
    strand.normal = arc.normal();
    strands.open.push_back(strand);
    return {};
}

Refusal TakeCurve(const AcDbEntity& entity, Strands& strands);

// Heavy polylines and the like: their pieces, which are ours to delete.
Refusal TakePieces(const AcDbEntity& entity, Strands& strands) {
    AcDbVoidPtrArray pieces;
    if (!entity.isKindOf(AcDbCurve::desc()) || entity.explode(pieces) != Acad::eOk)
        return Refuse(Refusal::Fault::kWrongKind);
    std::vector<std::unique_ptr<AcDbEntity>> owned;
    for (int i = 0; i < pieces.length(); ++i)
        owned.emplace_back(static_cast<AcDbEntity*>(pieces.at(i)));
    for (const auto& piece : owned)
        if (Refusal refusal = TakeCurve(*piece, strands)) return refusal;
    return {};
}

Refusal TakeCurve(const AcDbEntity& entity, Strands& strands) {
    if (const auto* line = AcDbLine::cast(&entity)) {
        strands.open.push_back({line->startPoint(), line->endPoint(), 0.0, AcGeVector3d()});
        return {};
    }
    if (const auto* arc = AcDbArc::cast(&entity)) return TakeArc(*arc, strands);
    if (const auto* circle = AcDbCircle::cast(&entity)) {
        strands.loops.push_back(
            CircleOutline(circle->center(), circle->normal(), circle->radius()));
        return {};
    }
    if (const auto* polyline = AcDbPolyline::cast(&entity)) return TakePolyline(*polyline, strands);
    return TakePieces(entity, strands);
}

// Numbers the points where ends meet: ends within the tolerance, chains of them included, have one.
std::vector<std::size_t> NumberEnds(const std::vector<Strand>& strands) {
    const std::size_t n = 2 * strands.size();
    const auto point = [&](std::size_t end) -> const AcGePoint3d& {
        return end % 2 == 0 ? strands[end / 2].from : strands[end / 2].to;
    };
    std::vector<std::size_t> order(n), number(n);
    for (std::size_t i = 0; i < n; ++i) order[i] = number[i] = i;
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return point(a).x != point(b).x ? point(a).x < point(b).x : a < b;
    });
    const auto root = [&](std::size_t i) {
        while (number[i] != i) i = number[i] = number[number[i]];
        return i;
    };
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = i + 1; j < n && point(order[j]).x - point(order[i]).x <= kPositionTol;
             ++j)
            if (point(order[i]).distanceTo(point(order[j])) <= kPositionTol)
                number[root(order[i])] = root(order[j]);
    for (std::size_t i = 0; i < n; ++i) number[i] = root(i);
    return number;
}

// Follows ends from strand to strand through points where exactly two meet.
class LoopFinder {
public:
    explicit LoopFinder(const std::vector<Strand>& strands)
        : strands_(strands), number_(NumberEnds(strands)), meeting_(number_.size()) {
        for (std::size_t end = 0; end < number_.size(); ++end)
            meeting_[number_[end]].push_back(end);
    }

    std::vector<std::vector<Strand>> Find() {
        std::vector<std::vector<Strand>> loops;
        std::vector<bool> used(strands_.size(), false);
        for (std::size_t i = 0; i < strands_.size(); ++i) {
            if (used[i]) continue;
            std::vector<Strand> loop;
            std::size_t end = 2 * i;  // the end at which the current strand is entered
            bool closed = false;
            while (!closed) {
                used[end / 2] = true;
                const Strand& strand = strands_[end / 2];
                loop.push_back(end % 2 == 0 ? strand : strand.Reversed());
                const std::size_t exit = end ^ 1;
                const std::vector<std::size_t>& ends = meeting_[number_[exit]];
                if (ends.size() != 2) break;
                end = ends[0] == exit ? ends[1] : ends[0];
                closed = end == 2 * i;
                if (!closed && used[end / 2]) break;
            }
            if (closed) loops.push_back(std::move(loop));
        }
        return loops;
    }

private:
    const std::vector<Strand>& strands_;
    std::vector<std::size_t> number_;
    std::vector<std::vector<std::size_t>> meeting_;
};

// A normal of straight corners: across the farthest corner and the one farthest beside it, as seen
// from the first, so that corners parallel to XY give z exactly and crossing sides do not cancel.
AcGeVector3d NormalOfCorners(const std::vector<Strand>& loop) {
    AcGeVector3d far, normal;
    for (const Strand& strand : loop) {
        const AcGeVector3d q = strand.from - loop[0].from;
        if (q.lengthSqrd() > far.lengthSqrd()) far = q;
    }
    for (const Strand& strand : loop) {
        const AcGeVector3d n = far.crossProduct(strand.from - loop[0].from);
        if (n.lengthSqrd() > normal.lengthSqrd()) normal = n;
    }
    // All in one line: any plane through it.
    return normal.lengthSqrd() > 0.0 ? normal : far.perpVector();
}

// The plane's normal, upward where it can: of an arc, else by the corners.
AcGeVector3d LoopNormal(const std::vector<Strand>& loop) {
    AcGeVector3d normal;
    for (const Strand& strand : loop)
        if (strand.bulge != 0.0) normal = strand.normal;
    if (normal.lengthSqrd() == 0.0) normal = NormalOfCorners(loop);
    normal.normalize();
    const bool down = normal.z != 0.0   ? normal.z < 0.0
                      : normal.y != 0.0 ? normal.y < 0.0
                                        : normal.x < 0.0;
    return down ? -normal : normal;
}

Refusal OutlineOfLoop(const std::vector<Strand>& loop, Outline& out) {
    const AcGeVector3d normal = LoopNormal(loop);
    Outline outline = PlaneThrough(loop[0].from, normal);
    for (const Strand& strand : loop) {
        const bool offPlane =
            std::fabs((strand.from - outline.origin).dotProduct(normal)) > kPositionTol;
        const bool tilted =
            strand.bulge != 0.0 && strand.normal.crossProduct(normal).length() > kPlaneTol;
        if (offPlane || tilted) return Refuse(Refusal::Fault::kNotPlanar);
        const double sign = strand.normal.dotProduct(normal) < 0.0 ? -1.0 : 1.0;
        outline.corners.push_back({InPlane(outline, strand.from), sign * strand.bulge});
    }
    out = std::move(outline);
    return {};
}

}  // namespace

Refusal OutlineOfCurve(const AcDbEntity& curve, Outline& out) {
    if (const auto* polyline = AcDbPolyline::cast(&curve)) return PolylineOutline(*polyline, out);
    const auto* other = AcDbCurve::cast(&curve);
    if (other == nullptr) return Refuse(Refusal::Fault::kWrongKind);
    std::vector<Outline> loops;
    if (Refusal refusal = LoopsOfCurves({other}, loops)) return refusal;
    if (loops.size() != 1) return Refuse(Refusal::Fault::kWrongKind);
    out = std::move(loops[0]);
    return {};
}

Refusal LoopsOfCurves(const std::vector<const AcDbCurve*>& curves, std::vector<Outline>& loops) {
    Strands strands;
    for (const AcDbCurve* curve : curves)
        if (Refusal refusal = TakeCurve(*curve, strands)) return refusal;
    for (const std::vector<Strand>& loop : LoopFinder(strands.open).Find()) {
        Outline outline;
        if (Refusal refusal = OutlineOfLoop(loop, outline)) return refusal;
        strands.loops.push_back(std::move(outline));
    }
    loops = std::move(strands.loops);
    return {};
}

}  // namespace host::solid
