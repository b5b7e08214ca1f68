// Leaders: an arrow with a path.
#pragma once

#include <vector>

#include "dbcurve.h"

// Vertices are WCS. A path drawn as a spline runs through its vertices.
class AcDbLeader : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbLeader);  // in files: LEADER
    AcDbLeader() = default;

    int numVertices() const { return static_cast<int>(m_vertices.size()); }  // group 76
    AcGePoint3d vertexAt(int index) const;  // group 10; the origin for a wrong index
    // Always appended; false for a point equal to the last one.
    bool appendVertex(const AcGePoint3d& point);
    bool setVertexAt(int index, const AcGePoint3d& point);   // false for a wrong index
    bool hasArrowHead() const { return m_arrow; }            // group 71
    bool isSplined() const { return m_splined; }             // group 72
    AcGeVector3d normal() const { return m_normal; }         // group 210, unit
    AcDbObjectId dimensionStyle() const { return m_style; }  // group 3: size of the arrow
    bool isPlanar() const override { return true; }

    // 0 to the number of segments, as of a polyline.
    Acad::ErrorStatus getStartParam(double& param) const override;
    Acad::ErrorStatus getEndParam(double& param) const override;
    // Paths of straight segments only; a splined one answers eNotImplementedYet.
    Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const override;
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    // Lines along the path; a splined one as chords. The arrow head is left out.
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& pieces) const override;
    void translateIds(const AcDbIdMapping& mapping) override;

private:
    friend struct host::Access;
    std::vector<AcGePoint3d> m_vertices;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    AcDbObjectId m_style;
    AcDbObjectId m_annotation;
    bool m_arrow = true;
    bool m_splined = false;
};
