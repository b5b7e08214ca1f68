#include "StdAfx.h"

#include "DrawnShape.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

using plane::Curve;
using plane::Point;
using plane::Vector;

// Of the radius squared: axes of a mapped circle that differ by less leave it a circle.
constexpr double kSameAxes = 1e-12;
// Radians; an arc that lacks less of the full turn is a circle.
constexpr double kTurnTol = 1e-9;
// Wider arcs are halved, so that every arc is safely told by its ends and its bulge.
constexpr double kWidestArc = 1.5 * plane::kHalfTurn;

// A corner of a polyline in space, and the bulge of what leaves it.
struct SVertex {
    AcGePoint3d m_point;
    double m_dBulge = 0.0;
};

class CShapeMaker {
public:
    CShapeMaker(const AcGeMatrix3d& place, double dCurveTol, SDrawnShape& shape)
        : m_place(place), m_dCurveTol(dCurveTol), m_shape(shape) {}

    bool Make(const AcDbEntity& entity) {
        if (const AcDbLine* const pLine = AcDbLine::cast(&entity))
            AddLine(Flat(pLine->startPoint()), Flat(pLine->endPoint()));
        else if (const AcDbArc* const pArc = AcDbArc::cast(&entity))
            AddArc(*pArc);
        else if (const AcDbCircle* const pCircle = AcDbCircle::cast(&entity))
            AddCircle(*pCircle);
        else if (const AcDbEllipse* const pEllipse = AcDbEllipse::cast(&entity))
            AddEllipse(*pEllipse);
        else if (const AcDbSpline* const pSpline = AcDbSpline::cast(&entity))
            AddSpline(*pSpline);
        else if (const AcDbPolyline* const pPolyline = AcDbPolyline::cast(&entity))
            AddLight(*pPolyline);
        else if (const AcDb2dPolyline* const pHeavy = AcDb2dPolyline::cast(&entity))
            AddHeavy(*pHeavy);
        else if (const AcDb3dPolyline* const pSpatial = AcDb3dPolyline::cast(&entity))
            AddSpatial(*pSpatial);
        return !m_shape.m_curves.empty();
    }

private:
    Point Flat(const AcGePoint3d& p) const {
        const AcGePoint3d at = m_place * p;
        return {at.x, at.y};
    }
    Vector Flat(const AcGeVector3d& v) const {
        const AcGeVector3d at = m_place * v;
        return {at.x, at.y};
    }

    void Add(const Curve& curve, int nSmooth = SDrawnShape::kExact) {
        if (!plane::IsFinite(curve.from) || !plane::IsFinite(curve.to)) return Spoil();
        m_shape.m_curves.push_back(curve);
        m_shape.m_smoothOf.push_back(nSmooth);
    }

    void Spoil() { m_shape.m_bSound = false; }

    void AddLine(const Point& from, const Point& to) {
        if (from != to) Add(plane::MakeLine(from, to));
    }

    // A smooth curve; its last point is the given one, where it closes.
    void AddSmooth(plane::SmoothCurve smooth, const Point* pEnd = nullptr) {
        const plane::TangentArcs arcs = plane::TangentArcsOf(smooth, m_dCurveTol);
        if (!arcs.isWithin) m_shape.m_bWithin = false;
        if (arcs.curves.empty()) return;
        const int nSmooth = static_cast<int>(m_shape.m_smooth.size());
        m_shape.m_smooth.push_back(std::move(smooth));
        for (const Curve& curve : arcs.curves) Add(curve, nSmooth);
        if (pEnd != nullptr && !m_shape.m_curves.empty()) m_shape.m_curves.back().to = *pEnd;
    }

    // An arc about a centre in space: u leads to its start, v is u turned by a quarter in the
    // direction of travel. Radius, where it is known better than by u; ends likewise.
    struct SArc {
        AcGePoint3d m_centre;
        AcGeVector3d m_u, m_v;
        double m_dSweep = 0.0;
        double m_dRadius = 0.0;
        AcGePoint3d m_start, m_end;
    };

    void AddArc(const SArc& arc) {
        const Point centre = Flat(arc.m_centre), from = Flat(arc.m_start), to = Flat(arc.m_end);
        const Vector u = Flat(arc.m_u), v = Flat(arc.m_v);
        if (!plane::IsFinite(centre) || !(arc.m_dSweep > 0.0)) return Spoil();
        const bool bFull = arc.m_dSweep >= plane::kFullTurn - kTurnTol;
        const double dUU = Dot(u, u), dVV = Dot(v, v);
        const double dSlack = kSameAxes * (std::max)(dUU, dVV);
        if (std::fabs(dUU - dVV) > dSlack || std::fabs(Dot(u, v)) > dSlack) {
            const double dSweep = bFull ? plane::kFullTurn : arc.m_dSweep;
            AddSmooth(plane::EllipsePiece{centre, u, v, 0.0, dSweep}, bFull ? &from : &to);
            return;
        }
        const double dSide = Cross(u, v) < 0.0 ? -1.0 : 1.0;
        const double dRadius = IsPlaced() ? std::sqrt(dUU) : arc.m_dRadius;
        const auto piece = [&](const Point& a, const Point& b, double dSweep) {
            Curve curve = plane::MakeLine(a, b);
            curve.bulge = dSide * std::tan(dSweep / 4.0);
            curve.centre = centre;
            curve.radius = dRadius;
            if (!(dRadius > 0.0)) return Spoil();
            Add(curve);
        };
        if (!bFull && arc.m_dSweep <= kWidestArc) return piece(from, to, arc.m_dSweep);
        const double dHalf = bFull ? plane::kHalfTurn : arc.m_dSweep / 2.0;
        const Point middle =
            bFull ? centre + -u : centre + u * std::cos(dHalf) + v * std::sin(dHalf);
        piece(from, middle, dHalf);
        piece(middle, bFull ? from : to, dHalf);
        if (!bFull) return;
        // tan(pi / 4) falls one bit short of it.
        for (std::size_t i = m_shape.m_curves.size() - 2; i < m_shape.m_curves.size(); ++i)
            m_shape.m_curves[i].bulge = dSide;
    }

    bool IsPlaced() const { return m_place != AcGeMatrix3d::kIdentity; }

    void AddArc(const AcDbArc& entity) {
        SArc arc;
        if (entity.getStartPoint(arc.m_start) != Acad::eOk ||
            entity.getEndPoint(arc.m_end) != Acad::eOk)
            return Spoil();
        arc.m_centre = entity.center();
        arc.m_u = arc.m_start - arc.m_centre;
        arc.m_v = entity.normal().crossProduct(arc.m_u);
        arc.m_dSweep = entity.endAngle() - entity.startAngle();
        if (arc.m_dSweep <= 0.0) arc.m_dSweep += plane::kFullTurn;
        arc.m_dRadius = entity.radius();
        AddArc(arc);
    }

    void AddCircle(const AcDbCircle& entity) {
        SArc arc;
        if (entity.getStartPoint(arc.m_start) != Acad::eOk) return Spoil();
        arc.m_end = arc.m_start;
        arc.m_centre = entity.center();
        arc.m_u = arc.m_start - arc.m_centre;
        arc.m_v = entity.normal().crossProduct(arc.m_u);
        arc.m_dSweep = plane::kFullTurn;
        arc.m_dRadius = entity.radius();
        AddArc(arc);
        m_shape.m_bClosed = m_shape.m_bRound = true;
    }

    void AddEllipse(const AcDbEllipse& entity) {
        AcGePoint3d start, end;
        double dFrom = 0.0, dTo = 0.0;
        if (entity.getStartPoint(start) != Acad::eOk || entity.getEndPoint(end) != Acad::eOk ||
            entity.getStartParam(dFrom) != Acad::eOk || entity.getEndParam(dTo) != Acad::eOk)
            return Spoil();
        if (dTo <= dFrom) dTo += plane::kFullTurn;
        const bool bFull = dTo - dFrom >= plane::kFullTurn - kTurnTol;
        const AcGeVector3d major = entity.majorAxis();
        const AcGeVector3d minor = entity.normal().crossProduct(major) * entity.radiusRatio();
        const Point last = Flat(bFull ? start : end);
        AddSmooth(plane::EllipsePiece{Flat(entity.center()), Flat(major), Flat(minor), dFrom,
                                      bFull ? dFrom + plane::kFullTurn : dTo},
                  &last);
        if (!m_shape.m_curves.empty()) m_shape.m_curves.front().from = Flat(start);
        m_shape.m_bClosed = m_shape.m_bRound = bFull;
    }

    void AddSpline(const AcDbSpline& entity) {
        int nDegree = 0;
        bool bRational = false, bClosed = false, bPeriodic = false;
        AcGePoint3dArray controls;
        AcGeDoubleArray knots, weights;
        double dControlTol = 0.0, dKnotTol = 0.0;
        if (entity.getNurbsData(nDegree, bRational, bClosed, bPeriodic, controls, knots, weights,
                                dControlTol, dKnotTol) != Acad::eOk)
            return Spoil();
        plane::Nurbs spline;
        spline.degree = nDegree;
        for (int i = 0; i < controls.length(); ++i) spline.points.push_back(Flat(controls[i]));
        for (int i = 0; i < knots.length(); ++i) spline.knots.push_back(knots[i]);
        if (bRational)
            for (int i = 0; i < weights.length(); ++i) spline.weights.push_back(weights[i]);
        if (!plane::IsSound(spline)) return Spoil();
        const Point first = plane::PointAt(spline, plane::StartOf(spline));
        AddSmooth(spline, entity.isClosed() ? &first : nullptr);
        m_shape.m_bClosed = entity.isClosed();
    }

    void AddLight(const AcDbPolyline& entity) {
        std::vector<SVertex> vertices(entity.numVerts());
        for (unsigned int i = 0; i < entity.numVerts(); ++i)
            if (entity.getPointAt(i, vertices[i].m_point) != Acad::eOk ||
                entity.getBulgeAt(i, vertices[i].m_dBulge) != Acad::eOk)
                return Spoil();
        AddVertices(vertices, entity.isClosed(), entity.normal());
    }

    // Of fitted ones the vertices that were fitted, not those that shaped them.
    void AddHeavy(const AcDb2dPolyline& entity) {
        std::vector<SVertex> vertices;
        const std::unique_ptr<AcDbObjectIterator> ids(entity.vertexIterator());
        for (; ids != nullptr && !ids->done(); ids->step()) {
            AcDbObjectPointer<AcDb2dVertex> vertex(ids->objectId(), AcDb::kForRead);
            if (vertex.openStatus() == Acad::eOk &&
                vertex->vertexType() != AcDb::k2dSplineCtlVertex)
                vertices.push_back({entity.vertexPosition(*vertex.object()), vertex->bulge()});
        }
        AddVertices(vertices, entity.isClosed(), entity.normal());
    }

    void AddSpatial(const AcDb3dPolyline& entity) {
        std::vector<SVertex> vertices;
        const std::unique_ptr<AcDbObjectIterator> ids(entity.vertexIterator());
        for (; ids != nullptr && !ids->done(); ids->step()) {
            AcDbObjectPointer<AcDb3dPolylineVertex> vertex(ids->objectId(), AcDb::kForRead);
            if (vertex.openStatus() == Acad::eOk && vertex->vertexType() != AcDb::k3dControlVertex)
                vertices.push_back({vertex->position(), 0.0});
        }
        AddVertices(vertices, entity.isClosed(), AcGeVector3d::kZAxis);
    }

    void AddVertices(const std::vector<SVertex>& vertices, bool bClosed,
                     const AcGeVector3d& normal) {
        const std::size_t nCount = vertices.size();
        if (nCount < 2) return;
        for (std::size_t i = 0; i + (bClosed ? 0 : 1) < nCount; ++i)
            AddSide(vertices[i], vertices[(i + 1) % nCount].m_point, normal);
        m_shape.m_bClosed = bClosed;
    }

    void AddSide(const SVertex& from, const AcGePoint3d& to, const AcGeVector3d& normal) {
        const Point a = Flat(from.m_point), b = Flat(to);
        const double dBulge = from.m_dBulge;
        if (dBulge == 0.0 || !std::isfinite(dBulge)) return AddLine(a, b);
        const AcGeVector3d chord = to - from.m_point, across = normal.crossProduct(chord);
        const Vector u = Flat(chord), v = Flat(across);
        const double dUU = Dot(u, u), dVV = Dot(v, v);
        const double dSlack = kSameAxes * (std::max)(dUU, dVV);
        if (dUU == 0.0 && dVV == 0.0) return;
        if (std::fabs(dUU - dVV) <= dSlack && std::fabs(Dot(u, v)) <= dSlack)
            return AddBulge(plane::MakeCurve(a, b, Cross(u, v) < 0.0 ? -dBulge : dBulge));
        // bulge = tan(sweep / 4); the centre lies on the chord's perpendicular (DXF reference).
        SArc arc;
        arc.m_start = from.m_point;
        arc.m_end = to;
        arc.m_centre =
            from.m_point + chord * 0.5 + across * ((1.0 - dBulge * dBulge) / (4 * dBulge));
        arc.m_u = arc.m_start - arc.m_centre;
        arc.m_v = normal.crossProduct(arc.m_u) * (dBulge < 0.0 ? -1.0 : 1.0);
        arc.m_dSweep = 4.0 * std::atan(std::fabs(dBulge));
        AddArc(arc);
    }

    void AddBulge(const Curve& arc) {
        if (std::fabs(arc.Sweep()) <= kWidestArc) return Add(arc);
        const Point middle = arc.Middle();
        for (Curve half :
             {plane::PartOf(arc, arc.from, middle), plane::PartOf(arc, middle, arc.to)}) {
            half.bulge = std::tan(0.5 * std::atan(arc.bulge));
            Add(half);
        }
    }

    const AcGeMatrix3d& m_place;
    double m_dCurveTol;
    SDrawnShape& m_shape;
};

}  // namespace

bool GetDrawnShape(const AcDbEntity& entity, const AcGeMatrix3d& place, double dCurveTol,
                   SDrawnShape& shape) {
    shape = SDrawnShape();
    return CShapeMaker(place, dCurveTol, shape).Make(entity);
}
