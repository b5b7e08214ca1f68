#include "host/ed/shown_curves.h"

#include <algorithm>
#include <cmath>

#include "dbblkref.h"
#include "dbcurve.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "dbpl.h"
#include "dbsymtb.h"
#include "host/base/angles.h"
#include "host/ed/entity_query.h"
#include "host/ed/shown_parts.h"

namespace host {
namespace {

// A curve is halved so often at least and at most.
constexpr int kLeastHalvings = 4;
constexpr int kMostHalvings = 14;

plane::Point Flat(const AcGePoint3d& p) { return {p.x, p.y}; }

bool IsPlace(const plane::Point& p) {
    return std::fabs(p.x) < kMaxCoordinate && std::fabs(p.y) < kMaxCoordinate;
}

class Collector {
public:
    explicit Collector(std::vector<ShownCurve>& curves) : m_curves(curves) {}

    void Add(const AcDbEntity& entity) {
        if (const AcDbArc* const arc = AcDbArc::cast(&entity)) {
            AddCircular(*arc, arc->center(), arc->radius(), arc->normal(), arc->totalAngle());
        } else if (const AcDbCircle* const circle = AcDbCircle::cast(&entity)) {
            AddCircular(*circle, circle->center(), circle->radius(), circle->normal(), kTwoPi);
        } else if (const AcDbLine* const line = AcDbLine::cast(&entity)) {
            AddLine(Flat(line->startPoint()), Flat(line->endPoint()));
        } else if (IsMadeOfParts(entity)) {
            m_parts.ForEach(entity, [this](const AcDbEntity& part) { Add(part); });
        } else if (const AcDbCurve* const curve = AcDbCurve::cast(&entity)) {
            AddChords(*curve);
        }
    }

private:
    static bool IsMadeOfParts(const AcDbEntity& entity) {
        return entity.isKindOf(AcDbBlockReference::desc()) ||
               entity.isKindOf(AcDbPolyline::desc()) || entity.isKindOf(AcDb2dPolyline::desc()) ||
               entity.isKindOf(AcDb3dPolyline::desc());
    }

    void Push(ShownCurve curve) {
        curve.source = static_cast<int>(m_curves.size());
        m_curves.push_back(curve);
    }

    void AddLine(const plane::Point& start, const plane::Point& end) {
        if (!IsPlace(start) || !IsPlace(end) || !(Distance(start, end) > kNodeTol)) return;
        ShownCurve line;
        line.shape = plane::MakeLine(start, end);
        Push(line);
    }

    // An arc or circle; total is its angle, counter-clockwise about the normal.
    void AddCircular(const AcDbCurve& curve, const AcGePoint3d& center, double radius,
                     const AcGeVector3d& normal, double total) {
        if (!normal.isParallelTo(AcGeVector3d::kZAxis)) return AddChords(curve);
        AcGePoint3d start, end;
        if (curve.getStartPoint(start) != Acad::eOk || curve.getEndPoint(end) != Acad::eOk) return;
        const plane::Point middle = Flat(center);
        if (!IsPlace(middle) || !IsPlace(Flat(start)) || !(radius > kNodeTol)) return;
        const double sweep = normal.z < 0.0 ? -total : total;
        const double from = std::atan2(start.y - middle.y, start.x - middle.x);
        if (start.distanceTo(end) <= kNodeTol) {
            if (std::fabs(sweep) < kPi) return;  // an arc without length
            AddCircle(middle, radius, from, sweep);
            return;
        }
        ShownCurve arc = ArcOf(middle, radius, from, sweep);
        arc.shape.from = Flat(start);
        arc.shape.to = Flat(end);
        Push(arc);
    }

    static ShownCurve ArcOf(const plane::Point& center, double radius, double from, double sweep) {
        ShownCurve arc;
        arc.shape = plane::MakeArc(center, radius, from, sweep);
        arc.startAngle = from;
        arc.sweep = sweep;
        return arc;
    }

    // A curve that ends where it starts has no two ends to be traced between.
    void AddCircle(const plane::Point& center, double radius, double from, double sweep) {
        ShownCurve first = ArcOf(center, radius, from, sweep / 2);
        ShownCurve second = ArcOf(center, radius, from + sweep / 2, sweep / 2);
        second.shape.from = first.shape.to;
        second.shape.to = first.shape.from;
        Push(first);
        second.source = m_curves.back().source;
        m_curves.push_back(second);
    }

    void AddChords(const AcDbCurve& curve) {
        double from = 0.0, to = 0.0;
        AcGePoint3d start, end;
        if (curve.getStartParam(from) != Acad::eOk || curve.getEndParam(to) != Acad::eOk ||
            curve.getPointAtParam(from, start) != Acad::eOk ||
            curve.getPointAtParam(to, end) != Acad::eOk)
            return;
        AcDbExtents box;
        if (curve.getGeomExtents(box) != Acad::eOk) return;
        const double size = box.minPoint().distanceTo(box.maxPoint());
        const size_t before = m_curves.size();
        Halve(curve, {from, Flat(start)}, {to, Flat(end)}, (std::max)(kChordTol * size, kNodeTol),
              0);
        for (size_t i = before; i < m_curves.size(); ++i) m_curves[i].isChord = true;
    }

    struct Sample {
        double param;
        plane::Point point;
    };
    void Halve(const AcDbCurve& curve, const Sample& a, const Sample& b, double tol, int depth) {
        const double param = a.param + (b.param - a.param) / 2;
        AcGePoint3d middle;
        if (depth == kMostHalvings || curve.getPointAtParam(param, middle) != Acad::eOk)
            return AddLine(a.point, b.point);
        const Sample m{param, Flat(middle)};
        const plane::Point chord = a.point + (b.point - a.point) / 2;
        if (depth >= kLeastHalvings && Distance(m.point, chord) <= tol)
            return AddLine(a.point, b.point);
        Halve(curve, a, m, tol, depth + 1);
        Halve(curve, m, b, tol, depth + 1);
    }

    std::vector<ShownCurve>& m_curves;
    ShownParts m_parts;
};

}  // namespace

double ShownCurve::TurnedTo(const plane::Point& p) const {
    const double turn = plane::AngleOf(p - shape.centre) - startAngle;
    const double reach = std::fabs(sweep);
    double from = std::fmod(sweep < 0.0 ? -turn : turn, kTwoPi);
    if (from < 0.0) from += kTwoPi;
    // Of the part that the arc leaves out, the second half comes before the start.
    if (from > (reach + kTwoPi) / 2) from -= kTwoPi;
    return from / reach;
}

std::vector<ShownCurve> FindShownCurves(AcDbDatabase& database) {
    std::vector<ShownCurve> curves;
    Collector collector(curves);
    for (const AcDbObjectId id : QueryEntities(database, QueryRules::Displayed())) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.openStatus() == Acad::eOk) collector.Add(*entity);
    }
    return curves;
}

void AppendShownCurves(const AcDbEntity& entity, std::vector<ShownCurve>& curves) {
    Collector(curves).Add(entity);
}

}  // namespace host
