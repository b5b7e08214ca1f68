#include "host/ed/entity_grips.h"

#include <cmath>

#include "dbents.h"
#include "dbpl.h"
#include "host/ed/object_snap.h"

namespace host {
namespace {

AcGePoint3d Middle(const AcGePoint3d& a, const AcGePoint3d& b) { return a + (b - a) / 2.0; }

AcGePoint3d On(const AcGePoint3d& centre, double radius, double angle) {
    return centre + AcGeVector3d(std::cos(angle), std::sin(angle), 0.0) * radius;
}

void AddPolyline(const AcDbPolyline& line, std::vector<Grip>& grips) {
    const unsigned count = line.numVerts();
    for (unsigned i = 0; i < count; ++i) {
        AcGePoint3d at, next;
        double bulge = 0.0;
        if (line.getPointAt(i, at) != Acad::eOk) continue;
        grips.push_back({Grip::kVertex, at, i});
        const bool hasNext = i + 1 < count || line.isClosed();
        if (hasNext && line.getPointAt((i + 1) % count, next) == Acad::eOk &&
            line.getBulgeAt(i, bulge) == Acad::eOk && bulge == 0.0)
            grips.push_back({Grip::kSegment, Middle(at, next), i});
    }
}

// Where other entities stand.
void AddOthers(const AcDbEntity& entity, std::vector<Grip>& grips) {
    const SnapSource source = MakeSnapSource(entity.objectId());
    for (const plane::Point& node : source.nodes)
        grips.push_back({Grip::kMove, AcGePoint3d(node.x, node.y, 0.0), 0});
    for (const plane::Point& centre : source.centres)
        grips.push_back({Grip::kMove, AcGePoint3d(centre.x, centre.y, 0.0), 0});
    AcDbExtents box;
    if (grips.empty() && entity.getGeomExtents(box) == Acad::eOk)
        grips.push_back({Grip::kMove, Middle(box.minPoint(), box.maxPoint()), 0});
}

// The arc through three points becomes the entity's; it keeps its sense.
Acad::ErrorStatus SetThrough(AcDbArc& arc, const AcGePoint3d& start, const AcGePoint3d& through,
                             const AcGePoint3d& end) {
    const AcGeVector3d b = through - start, c = end - start;
    const double cross = 2.0 * (b.x * c.y - b.y * c.x);
    if (std::fabs(cross) <= 1e-12 * (b.lengthSqrd() + c.lengthSqrd()))
        return Acad::eDegenerateGeometry;
    const double b2 = b.x * b.x + b.y * b.y, c2 = c.x * c.x + c.y * c.y;
    const AcGePoint3d centre =
        start + AcGeVector3d((c.y * b2 - b.y * c2) / cross, (b.x * c2 - c.x * b2) / cross, 0.0);
    const auto angle = [&](const AcGePoint3d& p) {
        return std::atan2(p.y - centre.y, p.x - centre.x);
    };
    // Counter-clockwise from the end where the through point lies right of the chord.
    const bool turnsLeft = cross > 0.0;
    Acad::ErrorStatus es = arc.setCenter(centre);
    if (es == Acad::eOk) es = arc.setRadius(centre.distanceTo(start));
    if (es == Acad::eOk) es = arc.setStartAngle(angle(turnsLeft ? start : end));
    if (es == Acad::eOk) es = arc.setEndAngle(angle(turnsLeft ? end : start));
    return es;
}

Acad::ErrorStatus MoveArcGrip(AcDbArc& arc, const Grip& grip, const AcGePoint3d& to) {
    const double middle = arc.startAngle() + arc.totalAngle() / 2.0;
    AcGePoint3d start = On(arc.center(), arc.radius(), arc.startAngle());
    AcGePoint3d end = On(arc.center(), arc.radius(), arc.endAngle());
    AcGePoint3d through = On(arc.center(), arc.radius(), middle);
    (grip.kind == Grip::kStart ? start : grip.kind == Grip::kEnd ? end : through) = to;
    return SetThrough(arc, start, through, end);
}

Acad::ErrorStatus MovePolylineGrip(AcDbPolyline& line, const Grip& grip, const AcGePoint3d& to) {
    const AcGeVector3d step = to - grip.at;
    const unsigned count = line.numVerts();
    const unsigned moved = grip.kind == Grip::kSegment ? 2 : 1;
    for (unsigned i = 0; i < moved; ++i) {
        const unsigned index = (grip.index + i) % count;
        AcGePoint2d at;
        Acad::ErrorStatus es = line.getPointAt(index, at);
        const bool isFlipped = line.normal().z < 0.0;
        if (es == Acad::eOk)
            es = line.setPointAt(index,
                                 AcGePoint2d(at.x + (isFlipped ? -step.x : step.x), at.y + step.y));
        if (es != Acad::eOk) return es;
    }
    return Acad::eOk;
}

}  // namespace

std::vector<Grip> GripsOf(const AcDbEntity& entity) {
    std::vector<Grip> grips;
    if (const auto* const line = AcDbLine::cast(&entity)) {
        grips = {{Grip::kStart, line->startPoint(), 0},
                 {Grip::kMove, Middle(line->startPoint(), line->endPoint()), 0},
                 {Grip::kEnd, line->endPoint(), 0}};
    } else if (const auto* const circle = AcDbCircle::cast(&entity)) {
        grips = {{Grip::kMove, circle->center(), 0}};
        for (unsigned i = 0; i < 4; ++i)
            grips.push_back({Grip::kRadius,
                             On(circle->center(), circle->radius(), i * 1.57079632679489661923),
                             i});
    } else if (const auto* const arc = AcDbArc::cast(&entity); arc && arc->normal().z > 0.0) {
        const auto at = [arc](double angle) { return On(arc->center(), arc->radius(), angle); };
        grips = {{Grip::kMove, arc->center(), 0},
                 {Grip::kStart, at(arc->startAngle()), 0},
                 {Grip::kThrough, at(arc->startAngle() + arc->totalAngle() / 2.0), 0},
                 {Grip::kEnd, at(arc->endAngle()), 0}};
    } else if (const auto* const polyline = AcDbPolyline::cast(&entity)) {
        AddPolyline(*polyline, grips);
    } else {
        AddOthers(entity, grips);
    }
    return grips;
}

Acad::ErrorStatus MoveGrip(AcDbEntity& entity, const Grip& grip, const AcGePoint3d& to) {
    if (grip.kind == Grip::kMove)
        return entity.transformBy(AcGeMatrix3d::translation(to - grip.at));
    if (auto* const line = AcDbLine::cast(&entity))
        return grip.kind == Grip::kStart ? line->setStartPoint(to) : line->setEndPoint(to);
    if (auto* const circle = AcDbCircle::cast(&entity)) {
        const double radius = circle->center().distanceTo(to);
        return radius > 0.0 ? circle->setRadius(radius) : Acad::eDegenerateGeometry;
    }
    if (auto* const arc = AcDbArc::cast(&entity)) return MoveArcGrip(*arc, grip, to);
    if (auto* const polyline = AcDbPolyline::cast(&entity))
        return MovePolylineGrip(*polyline, grip, to);
    return Acad::eNotApplicable;
}

}  // namespace host
