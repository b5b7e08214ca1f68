// Light polylines (LWPOLYLINE).
#pragma once

#include <vector>

#include "dbcurve.h"
#include "gearc3d.h"
#include "gelnsg3d.h"

// Lines and arcs in one plane. Vertices are OCS points at one elevation; a vertex carries the bulge
// of the segment that starts there: tan(included angle / 4), counter-clockwise positive.
class AcDbPolyline : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbPolyline);
    // What a segment is. kCoincident: its ends are one point.
    enum SegType { kLine, kArc, kCoincident, kPoint, kEmpty };

    AcDbPolyline() = default;
    explicit AcDbPolyline(unsigned int numVerts);  // room for so many; none is there yet

    // group 90
    unsigned int numVerts() const { return static_cast<unsigned int>(m_vertices.size()); }
    // index up to numVerts, else eInvalidIndex. A width of -1 means the default width.
    Acad::ErrorStatus addVertexAt(unsigned int index, const AcGePoint2d& point, double bulge = 0.,
                                  double startWidth = -1., double endWidth = -1.,
                                  Adesk::Int32 vertexIdentifier = 0);
    // eInvalidIndex; eDegenerateGeometry for the last but one vertex.
    Acad::ErrorStatus removeVertexAt(unsigned int index);
    // Frees the vertices; with reuse keeps numVerts of them.
    void reset(bool reuse, unsigned int numVerts);

    // All indexed functions: eInvalidIndex.
    Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint3d& point) const;  // WCS
    Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint2d& point) const;  // OCS
    // OCS, group 10; z is the elevation.
    Acad::ErrorStatus setPointAt(unsigned int index, const AcGePoint2d& point);
    // Group 42; 0 is a straight segment.
    Acad::ErrorStatus getBulgeAt(unsigned int index, double& bulge) const;
    Acad::ErrorStatus setBulgeAt(unsigned int index, double bulge);
    // Groups 40 and 41 in drawing units; the constant width where a vertex has none.
    Acad::ErrorStatus getWidthsAt(unsigned int index, double& start, double& end) const;
    Acad::ErrorStatus setWidthsAt(unsigned int index, double start, double end);
    // Group 91; a number of the caller's.
    Acad::ErrorStatus getVertexIdentifierAt(unsigned int index, Adesk::Int32& identifier) const;
    Acad::ErrorStatus setVertexIdentifierAt(unsigned int index, Adesk::Int32 identifier);
    // Group 43; eInvalidInput when vertices differ.
    Acad::ErrorStatus getConstantWidth(double& width) const;
    // Drops the widths of the vertices.
    Acad::ErrorStatus setConstantWidth(double width);

    // kPoint for a single vertex, kCoincident for ends within 1e-10, kEmpty past the last segment.
    SegType segType(unsigned int index) const;
    // WCS or OCS. eInvalidIndex when the segment is of another type.
    Acad::ErrorStatus getLineSegAt(unsigned int index, AcGeLineSeg3d& line) const;
    Acad::ErrorStatus getArcSegAt(unsigned int index, AcGeCircArc3d& arc) const;  // by the bulge

    bool isClosed() const override { return m_closed; }  // bit 1 of group 70: one more segment
    void setClosed(bool closed);                         // open for write, else the program stops
    bool isOnlyLines() const { return !hasBulges(); }    // no bulges
    bool hasBulges() const;                              // O(vertices)
    bool hasWidth() const;                               // any width but 0
    bool hasVertexIdentifiers() const;
    bool hasPlinegen() const { return m_plinegen; }  // bit 128: dashes run across vertices
    void setPlinegen(bool plinegen);
    double elevation() const { return m_elevation; }  // group 38, along the normal
    Acad::ErrorStatus setElevation(double elevation);
    double thickness() const { return m_thickness; }  // group 39
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const { return m_normal; }  // group 210, unit
    // The direction is made unit; eInvalidInput for a zero vector.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    bool isPlanar() const override { return true; }

    // 0 to the number of segments, whole numbers at the vertices. Without vertices:
    // eDegenerateGeometry.
    Acad::ErrorStatus getStartParam(double& param) const override;
    Acad::ErrorStatus getEndParam(double& param) const override;
    Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const override;
    // O(vertices), as the rest below.
    Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const override;
    Acad::ErrorStatus getDistAtParam(double param, double& dist) const override;
    Acad::ErrorStatus getParamAtDist(double dist, double& param) const override;
    Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& derivative) const override;
    Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& point, AcGePoint3d& onCurve,
                                        bool extend = false) const override;
    // By the closing chord when open; arcs exactly.
    Acad::ErrorStatus getArea(double& area) const override;
    // Last vertex first; bulges change sign.
    Acad::ErrorStatus reverseCurve() override;
    // Of a single segment; eNotImplementedYet for more.
    Acad::ErrorStatus getAcGeCurve(AcGeCurve3d*& curve,
                                   const AcGeTol& tol = AcGeContext::gTol) const override;

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    // A mirroring changes bulges or turns the normal; unequal scales are refused when there are
    // bulges: eCannotScaleNonUniformly.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    // One AcDbLine or AcDbArc for each segment that has a length.
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& pieces) const override;

private:
    friend struct host::Access;
    struct Vertex {
        AcGePoint2d point;
        double bulge = 0.0;
        double startWidth = -1.0;
        double endWidth = -1.0;
        Adesk::Int32 identifier = 0;
    };
    std::vector<Vertex> m_vertices;  // in order
    double m_elevation = 0.0;
    double m_thickness = 0.0;
    double m_constantWidth = 0.0;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    bool m_closed = false;
    bool m_plinegen = false;
};
