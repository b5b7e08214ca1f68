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
    ACRX_DECLARE_MEMBERS(AcDbPolyline);  // in files: LWPOLYLINE
    enum SegType { kLine, kArc, kCoincident, kPoint, kEmpty };

    AcDbPolyline() = default;                      // without vertices
    explicit AcDbPolyline(unsigned int numVerts);  // room for so many; none is there yet

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
    Acad::ErrorStatus setPointAt(unsigned int index, const AcGePoint2d& point);
    Acad::ErrorStatus getBulgeAt(unsigned int index, double& bulge) const;
    Acad::ErrorStatus setBulgeAt(unsigned int index, double bulge);  // the radius follows
    Acad::ErrorStatus getWidthsAt(unsigned int index, double& start, double& end) const;
    Acad::ErrorStatus setWidthsAt(unsigned int index, double start, double end);  // drawing units
    Acad::ErrorStatus getVertexIdentifierAt(unsigned int index, Adesk::Int32& identifier) const;
    Acad::ErrorStatus setVertexIdentifierAt(unsigned int index, Adesk::Int32 identifier);
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
    bool hasVertexIdentifiers() const;                   // any but 0
    bool hasPlinegen() const { return m_plinegen; }      // bit 128: dashes run across vertices
    void setPlinegen(bool plinegen);                     // open for write, else the program stops
    double elevation() const { return m_elevation; }     // group 38, along the normal
    Acad::ErrorStatus setElevation(double elevation);    // along the normal
    double thickness() const { return m_thickness; }     // group 39
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const { return m_normal; }  // group 210, unit
    // The direction is made unit; eInvalidInput for a zero vector.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    bool isPlanar() const override { return true; }

    Acad::ErrorStatus getStartParam(double& param) const override;
    Acad::ErrorStatus getEndParam(double& param) const override;
    Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const override;
    Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const override;
    Acad::ErrorStatus getDistAtParam(double param, double& dist) const override;
    Acad::ErrorStatus getParamAtDist(double dist, double& param) const override;
    Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& derivative) const override;
    Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& point, AcGePoint3d& onCurve,
                                        bool extend = false) const override;
    Acad::ErrorStatus getArea(double& area) const override;
    Acad::ErrorStatus reverseCurve() override;  // last vertex first; bulges change sign
    Acad::ErrorStatus getAcGeCurve(AcGeCurve3d*& curve,
                                   const AcGeTol& tol = AcGeContext::gTol) const override;

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
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
