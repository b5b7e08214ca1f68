// A chain of straight and circular segments in WCS: what every kind of polyline is made of.
#pragma once

#include <vector>

#include "dbcurve.h"
#include "gearc3d.h"

class AcDbPolyline;

namespace host {

// A segment from start to end. bulge = tan(sweep / 4), counter-clockwise about the path's normal
// positive (DXF reference, LWPOLYLINE); 0 is a straight line. Widths in drawing units.
struct PolySegment {
    AcGePoint3d start;
    AcGePoint3d end;
    double bulge = 0.0;
    double startWidth = 0.0;
    double endWidth = 0.0;
};

// Centre, radius and sweep of a bulged segment; sweep has the sign of the bulge.
struct BulgeArc {
    AcGePoint3d center;
    double radius;
    double sweep;
};

// Answers the questions of AcDbCurve. Parameters run from 0 to the number of segments; within an
// arc they are proportional to its angle.
class PolyPath {
public:
    explicit PolyPath(const AcGeVector3d& normal) : m_normal(normal) {}

    void Add(const PolySegment& segment) { m_segments.push_back(segment); }
    // For a path that is a single point.
    void SetPoint(const AcGePoint3d& point) {
        m_point = point;
        m_hasPoint = true;
    }
    const std::vector<PolySegment>& Segments() const { return m_segments; }
    bool IsStraight(size_t index) const { return m_segments[index].bulge == 0.0; }
    BulgeArc ArcOf(size_t index) const;  // of a segment that is not straight

    // As AcDbCurve's functions of those names; the outputs change on success only.
    Acad::ErrorStatus PointAt(double param, AcGePoint3d& point) const;
    Acad::ErrorStatus DerivAt(double param, AcGeVector3d& derivative) const;
    Acad::ErrorStatus DistAt(double param, double& dist) const;
    Acad::ErrorStatus ParamAtDist(double dist, double& param) const;
    Acad::ErrorStatus ParamAt(const AcGePoint3d& point, double& param) const;
    Acad::ErrorStatus Closest(const AcGePoint3d& point, AcGePoint3d& onCurve) const;
    // Area inside the path, closed by its chord; for planar paths.
    double Area() const;
    Acad::ErrorStatus Extents(AcDbExtents& box) const;
    // Lines and arcs with the properties of the entity, appended in order.
    void Explode(const AcDbEntity& entity, double thickness, AcDbVoidPtrArray& pieces) const;
    // The geometry of one segment, the caller's.
    AcGeCurve3d* GeCurve(size_t index) const;

private:
    // Splits a parameter into a segment and a fraction; eInvalidInput outside the range.
    Acad::ErrorStatus Locate(double param, size_t& index, double& fraction) const;
    double Length(size_t index) const;                    // of a segment, drawing units
    AcGePoint3d At(size_t index, double fraction) const;  // arcs by their angle
    // Fraction of the nearest point of a segment.
    double Nearest(size_t index, const AcGePoint3d& point) const;
    double NearestParam(const AcGePoint3d& point, double& distance) const;

    std::vector<PolySegment> m_segments;
    AcGeVector3d m_normal;
    AcGePoint3d m_point;
    bool m_hasPoint = false;
};

// The segments of a light polyline, the closing one included.
PolyPath PathOf(const AcDbPolyline& polyline);

// How far a point may lie from a curve to count as on it, in drawing units, and how far a parameter
// or distance may overshoot its range. Absolute.
constexpr double kOnCurveTol = 1e-6;
constexpr double kParamTol = 1e-9;

}  // namespace host
