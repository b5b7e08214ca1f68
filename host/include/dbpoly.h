// Heavy polylines (POLYLINE with VERTEX entities). Part of dbents.h.
#pragma once

#include <vector>

#include "dbcurve.h"
#include "gedblar.h"

// Visits owned entities: vertices of a polyline, attributes of a block reference.
class AcDbObjectIterator {  // see vertexIterator and attributeIterator
public:
    explicit AcDbObjectIterator(const std::vector<AcDbObjectId>& ids) : m_ids(ids) { skip(true); }

    void start(bool atBeginning = true, bool skipDeleted = true);  // at the first, or the last
    bool done() const { return m_at >= m_ids.size(); }  // also at the start of an empty one
    void step(bool backwards = false, bool skipDeleted = true);  // towards the end, or back
    AcDbObjectId objectId() const { return done() ? AcDbObjectId() : m_ids[m_at]; }
    // The owned entity of an owner that no database has yet; null when it has identifiers.
    AcDbEntity* entity() const { return nullptr; }

private:
    // Passes over erased ones.
    void skip(bool skipDeleted);
    std::vector<AcDbObjectId> m_ids;  // a copy: owners may change meanwhile
    size_t m_at = 0;
};

namespace host {
// Entities that another entity owns, in order, and the one that ends their sequence. While the
// owner is not resident they are plain objects; its append makes them resident. Copying copies the
// entities that are not erased; assigning leaves them alone, so that taking back a change of the
// owner does not touch them.
struct OwnedEntities {
    std::vector<AcDbObjectId> ids;                   // once resident
    std::vector<std::unique_ptr<AcDbEntity>> fresh;  // before that
    AcDbObjectId sequenceEnd;                        // null when the file has none

    OwnedEntities() = default;
    OwnedEntities(const OwnedEntities& other);
    OwnedEntities& operator=(const OwnedEntities&) { return *this; }
    // Makes the fresh ones resident below the owner, which is resident; adds a sequence end.
    void Settle(AcDbEntity& owner, bool always);
    void AllIds(AcDbObjectIdArray& out) const;  // erased ones and the sequence end, too
    // The entities that are not erased, loaded without opening them.
    std::vector<const AcDbEntity*> Live() const;
};
}  // namespace host

// What the vertices of both kinds share: they are owned, and never drawn alone.
class AcDbVertex : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbVertex);

protected:
    friend struct host::Access;
    AcDbVertex() = default;
};

// Vertex of a 2D polyline; the position is an OCS point whose z is the elevation.
class AcDb2dVertex : public AcDbVertex {
public:
    ACRX_DECLARE_MEMBERS(AcDb2dVertex);
    AcDb2dVertex() = default;  // at the origin
    explicit AcDb2dVertex(const AcGePoint3d& position, double bulge = 0, double startWidth = 0,
                          double endWidth = 0, double tangent = 0);

    AcDb::Vertex2dType vertexType() const { return m_type; }  // bits of group 70
    AcGePoint3d position() const { return m_position; }       // group 10
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    double bulge() const { return m_bulge; }  // group 42, of the segment that leaves it
    Acad::ErrorStatus setBulge(double bulge);
    double startWidth() const { return m_startWidth; }  // group 40
    Acad::ErrorStatus setStartWidth(double width);
    double endWidth() const { return m_endWidth; }  // group 41
    Acad::ErrorStatus setEndWidth(double width);
    double tangent() const { return m_tangent; }  // group 50, radians, for curve fits
    Acad::ErrorStatus setTangent(double angle);
    bool isTangentUsed() const { return m_tangentUsed; }  // bit 2 of group 70

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

private:
    friend struct host::Access;
    AcGePoint3d m_position;     // OCS
    double m_bulge = 0.0;       // tan(angle / 4), counter-clockwise positive
    double m_startWidth = 0.0;  // drawing units
    double m_endWidth = 0.0;
    double m_tangent = 0.0;  // radians
    AcDb::Vertex2dType m_type = AcDb::k2dVertex;
    bool m_tangentUsed = false;
};

// Vertex of a 3D polyline, WCS.
class AcDb3dPolylineVertex : public AcDbVertex {
public:
    ACRX_DECLARE_MEMBERS(AcDb3dPolylineVertex);  // in files: VERTEX with bit 32 of group 70
    AcDb3dPolylineVertex() = default;
    explicit AcDb3dPolylineVertex(const AcGePoint3d& position) : m_position(position) {}

    AcDb::Vertex3dType vertexType() const { return m_type; }  // bits of group 70
    AcGePoint3d position() const { return m_position; }       // group 10
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

private:
    friend struct host::Access;
    AcGePoint3d m_position;  // WCS
    AcDb::Vertex3dType m_type = AcDb::k3dSimpleVertex;
};

namespace host {
class PolyPath;

// What both heavy polylines share: a list of owned vertices and a closing segment.
// A non-resident polyline owns its vertices as objects; appending it makes them resident.
class HeavyPolyline : public AcDbCurve {
public:
    bool isClosed() const override { return m_closed; }  // bit 1 of group 70
    // One more segment from the last vertex to the first, or none.
    Acad::ErrorStatus makeClosed();
    Acad::ErrorStatus makeOpen();
    // Vertices as stored, control vertices included. The caller deletes the iterator. Only for
    // resident polylines: a non-resident one's iterator is empty.
    AcDbObjectIterator* vertexIterator() const;

    // 0 to the number of drawn segments; of a fitted polyline those of the fit.
    Acad::ErrorStatus getStartParam(double& param) const override;
    Acad::ErrorStatus getEndParam(double& param) const override;
    Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const override;
    Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const override;
    Acad::ErrorStatus getDistAtParam(double param, double& dist) const override;
    Acad::ErrorStatus getParamAtDist(double dist, double& param) const override;
    Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& derivative) const override;
    Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& point, AcGePoint3d& onCurve,
                                        bool extend = false) const override;

protected:
    friend struct Access;
    HeavyPolyline() = default;

    Acad::ErrorStatus appendVertexObject(AcDbObjectId& id, AcDbVertex* vertex);
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    // Lines and arcs as drawn; owned vertices stay where they are.
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& pieces) const override;
    void ownedIds(AcDbObjectIdArray& ids) const override;
    void settleOwned() override;
    // What is drawn: the fitted vertices of fitted polylines, the closing segment included.
    virtual PolyPath path() const = 0;
    // Moves the polyline's own data and the given vertices.
    virtual Acad::ErrorStatus transformData(const AcGeMatrix3d& matrix) = 0;

private:
    OwnedEntities m_owned;
    bool m_closed = false;  // a segment from the last vertex to the first
};
}  // namespace host

// A planar polyline of lines and arcs; curve- or spline-fitted ones store the fitted vertices
// beside the control vertices, and only those are drawn.
class AcDb2dPolyline : public host::HeavyPolyline {
public:
    ACRX_DECLARE_MEMBERS(AcDb2dPolyline);
    AcDb2dPolyline() = default;  // without vertices
    // Vertices are OCS points; bulges: one for each, or null. Fitting is
    // not carried out: fitted types want the fitted vertices with them.
    AcDb2dPolyline(AcDb::Poly2dType type, const AcGePoint3dArray& vertices, double elevation = 0.,
                   bool closed = false, double defaultStartWidth = 0, double defaultEndWidth = 0,
                   const AcGeDoubleArray* bulges = nullptr,
                   const AcGePoint3dArray* splineFitVertices = nullptr);

    AcDb::Poly2dType polyType() const { return m_type; }  // bits of groups 70 and 75
    double elevation() const { return m_elevation; }      // z of group 10
    Acad::ErrorStatus setElevation(double elevation);
    double thickness() const { return m_thickness; }  // group 39
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const { return m_normal; }  // group 210, unit
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    // groups 40 and 41: of vertices that state none
    double defaultStartWidth() const { return m_startWidth; }
    double defaultEndWidth() const { return m_endWidth; }
    bool isPlanar() const override { return true; }

    // Opens a vertex by its identifier, without asking whether it is this polyline's.
    Acad::ErrorStatus openVertex(AcDb2dVertex*& vertex, AcDbObjectId id, AcDb::OpenMode mode,
                                 bool openErased = false) const;
    // On a resident polyline the vertex becomes resident and stays open for write.
    Acad::ErrorStatus appendVertex(AcDb2dVertex* vertex);
    Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDb2dVertex* vertex);
    // WCS point of a vertex.
    AcGePoint3d vertexPosition(const AcDb2dVertex& vertex) const;
    // As for light polylines.
    Acad::ErrorStatus getArea(double& area) const override;

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    host::PolyPath path() const override;
    Acad::ErrorStatus transformData(const AcGeMatrix3d& matrix) override;

private:
    friend struct host::Access;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    double m_elevation = 0.0;  // of all vertices, OCS
    double m_thickness = 0.0;
    double m_startWidth = 0.0;  // of vertices that state none
    double m_endWidth = 0.0;
    AcDb::Poly2dType m_type = AcDb::k2dSimplePoly;
};

// A polyline of straight segments in space; no bulges, no widths.
class AcDb3dPolyline : public host::HeavyPolyline {
public:
    ACRX_DECLARE_MEMBERS(AcDb3dPolyline);
    AcDb3dPolyline() = default;  // without vertices
    AcDb3dPolyline(AcDb::Poly3dType type, const AcGePoint3dArray& vertices, bool closed = false);

    AcDb::Poly3dType polyType() const { return m_type; }  // bits of groups 70 and 75
    // As of a 2D polyline.
    Acad::ErrorStatus openVertex(AcDb3dPolylineVertex*& vertex, AcDbObjectId id,
                                 AcDb::OpenMode mode, bool openErased = false) const;
    // Likewise.
    Acad::ErrorStatus appendVertex(AcDb3dPolylineVertex* vertex);
    Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDb3dPolylineVertex* vertex);

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    host::PolyPath path() const override;
    Acad::ErrorStatus transformData(const AcGeMatrix3d& matrix) override;

private:
    friend struct host::Access;
    AcDb::Poly3dType m_type = AcDb::k3dSimplePoly;
};
