#include <cmath>

#include "dbents.h"
#include "host/db/database_imp.h"
#include "host/db/define_class.h"
#include "host/db/entity_tools.h"
#include "host/db/poly_path.h"

using host::Access;

HOST_DEFINE_ABSTRACT(AcDbVertex, AcDbEntity, nullptr)
HOST_DEFINE_CLASS(AcDb2dVertex, AcDbVertex, ACRX_T("VERTEX"))
HOST_DEFINE_CLASS(AcDb3dPolylineVertex, AcDbVertex, ACRX_T("VERTEX"))
HOST_DEFINE_CLASS(AcDb2dPolyline, AcDbCurve, ACRX_T("POLYLINE"))
HOST_DEFINE_CLASS(AcDb3dPolyline, AcDbCurve, ACRX_T("POLYLINE"))
HOST_DEFINE_COPY(AcDb2dVertex)
HOST_DEFINE_COPY(AcDb3dPolylineVertex)
HOST_DEFINE_COPY(AcDb2dPolyline)
HOST_DEFINE_COPY(AcDb3dPolyline)

// ---- Vertices -----------------------------------------------------------------------------------

AcDb2dVertex::AcDb2dVertex(const AcGePoint3d& position, double bulge, double startWidth,
                           double endWidth, double tangent)
    : m_position(position),
      m_bulge(bulge),
      m_startWidth(startWidth),
      m_endWidth(endWidth),
      m_tangent(tangent) {}

Acad::ErrorStatus AcDb2dVertex::setPosition(const AcGePoint3d& position) {
    HOST_SET(m_position, position, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDb2dVertex::setBulge(double bulge) {
    HOST_SET(m_bulge, bulge, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDb2dVertex::setStartWidth(double width) {
    HOST_SET(m_startWidth, width, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDb2dVertex::setEndWidth(double width) {
    HOST_SET(m_endWidth, width, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDb2dVertex::setTangent(double angle) {
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    m_tangent = angle;
    m_tangentUsed = true;
    return Acad::eOk;
}
Acad::ErrorStatus AcDb3dPolylineVertex::setPosition(const AcGePoint3d& position) {
    HOST_SET(m_position, position, host::kDirtyGeometry);
}

// ---- What both kinds share ----------------------------------------------------------------------

namespace host {

Acad::ErrorStatus HeavyPolyline::makeClosed() { HOST_SET(m_closed, true, kDirtyGeometry); }
Acad::ErrorStatus HeavyPolyline::makeOpen() { HOST_SET(m_closed, false, kDirtyGeometry); }

AcDbObjectIterator* HeavyPolyline::vertexIterator() const {
    return new AcDbObjectIterator(m_owned.ids);
}

Acad::ErrorStatus HeavyPolyline::appendVertexObject(AcDbObjectId& id, AcDbVertex* vertex) {
    if (vertex == nullptr) return Acad::eNullObjectPointer;
    if (!vertex->objectId().isNull()) return Acad::eAlreadyInDb;
    Acad::ErrorStatus es = beginWrite(kDirtyChildren);
    if (es != Acad::eOk) return es;
    if (objectId().isNull()) {
        m_owned.fresh.emplace_back(vertex);
        id.setNull();
        return Acad::eOk;
    }
    if (vertex->layerId().isNull()) CopyProperties(*this, *vertex);
    es = MakeResident(*database(), *vertex, objectId().stub(), kStubEntity | kStubSubentity, true);
    if (es != Acad::eOk) return es;
    id = vertex->objectId();
    m_owned.ids.push_back(id);
    return Acad::eOk;
}

void HeavyPolyline::ownedIds(AcDbObjectIdArray& ids) const { m_owned.AllIds(ids); }
void HeavyPolyline::settleOwned() { m_owned.Settle(*this, true); }

Acad::ErrorStatus HeavyPolyline::getStartParam(double& param) const {
    param = 0.0;
    return m_owned.Live().empty() ? Acad::eDegenerateGeometry : Acad::eOk;
}
Acad::ErrorStatus HeavyPolyline::getEndParam(double& param) const {
    if (m_owned.Live().empty()) return Acad::eDegenerateGeometry;
    param = static_cast<double>(path().Segments().size());
    return Acad::eOk;
}
Acad::ErrorStatus HeavyPolyline::getPointAtParam(double param, AcGePoint3d& point) const {
    return path().PointAt(param, point);
}
Acad::ErrorStatus HeavyPolyline::getParamAtPoint(const AcGePoint3d& point, double& param) const {
    return path().ParamAt(point, param);
}
Acad::ErrorStatus HeavyPolyline::getDistAtParam(double param, double& dist) const {
    return path().DistAt(param, dist);
}
Acad::ErrorStatus HeavyPolyline::getParamAtDist(double dist, double& param) const {
    return path().ParamAtDist(dist, param);
}
Acad::ErrorStatus HeavyPolyline::getFirstDeriv(double param, AcGeVector3d& derivative) const {
    return path().DerivAt(param, derivative);
}
Acad::ErrorStatus HeavyPolyline::getClosestPointTo(const AcGePoint3d& point, AcGePoint3d& onCurve,
                                                   bool) const {
    return path().Closest(point, onCurve);
}

Acad::ErrorStatus HeavyPolyline::subTransformBy(const AcGeMatrix3d& matrix) {
    return transformData(matrix);
}

}  // namespace host

using host::PolyPath;

namespace {

// The vertices of a polyline, for changing them along with it. They count as changed.
template <class Vertex>
std::vector<Vertex*> ChangingVertices(const host::HeavyPolyline& polyline) {
    std::vector<Vertex*> vertices;
    for (const AcDbEntity* const entity : Access::Owned(polyline).Live()) {
        Vertex* const vertex = Vertex::cast(entity);
        if (vertex == nullptr) continue;
        Access::DirtyBits(*vertex) |= host::kDirtyGeometry;
        vertices.push_back(vertex);
    }
    return vertices;
}

}  // namespace

// ---- 2D -----------------------------------------------------------------------------------------

AcDb2dPolyline::AcDb2dPolyline(AcDb::Poly2dType type, const AcGePoint3dArray& vertices,
                               double elevation, bool closed, double defaultStartWidth,
                               double defaultEndWidth, const AcGeDoubleArray* bulges,
                               const AcGePoint3dArray* splineFitVertices)
    : m_elevation(elevation),
      m_startWidth(defaultStartWidth),
      m_endWidth(defaultEndWidth),
      m_type(type) {
    Access::Closed(static_cast<host::HeavyPolyline&>(*this)) = closed;
    const bool splined = type == AcDb::k2dQuadSplinePoly || type == AcDb::k2dCubicSplinePoly;
    auto& fresh = Access::Owned(static_cast<host::HeavyPolyline&>(*this)).fresh;
    for (int i = 0; i < vertices.length(); ++i) {
        const double bulge = bulges != nullptr && i < bulges->length() ? (*bulges)[i] : 0.0;
        auto vertex =
            std::make_unique<AcDb2dVertex>(vertices[i], bulge, defaultStartWidth, defaultEndWidth);
        Access::Type(*vertex) = splined ? AcDb::k2dSplineCtlVertex : AcDb::k2dVertex;
        fresh.push_back(std::move(vertex));
    }
    for (int i = 0; splineFitVertices != nullptr && i < splineFitVertices->length(); ++i) {
        auto vertex = std::make_unique<AcDb2dVertex>((*splineFitVertices)[i]);
        Access::Type(*vertex) = AcDb::k2dSplineFitVertex;
        fresh.push_back(std::move(vertex));
    }
}

Acad::ErrorStatus AcDb2dPolyline::setElevation(double elevation) {
    HOST_SET(m_elevation, elevation, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDb2dPolyline::setThickness(double thickness) {
    HOST_SET(m_thickness, thickness, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDb2dPolyline::setNormal(const AcGeVector3d& normal) {
    if (normal.length() <= host::kZeroLength) return Acad::eInvalidInput;
    HOST_SET(m_normal, normal.normal(), host::kDirtyGeometry);
}

Acad::ErrorStatus AcDb2dPolyline::openVertex(AcDb2dVertex*& vertex, AcDbObjectId id,
                                             AcDb::OpenMode mode, bool openErased) const {
    return acdbOpenObject(vertex, id, mode, openErased);
}
Acad::ErrorStatus AcDb2dPolyline::appendVertex(AcDb2dVertex* vertex) {
    AcDbObjectId id;
    return appendVertexObject(id, vertex);
}
Acad::ErrorStatus AcDb2dPolyline::appendVertex(AcDbObjectId& id, AcDb2dVertex* vertex) {
    return appendVertexObject(id, vertex);
}

AcGePoint3d AcDb2dPolyline::vertexPosition(const AcDb2dVertex& vertex) const {
    const AcGePoint3d position(vertex.position().x, vertex.position().y, m_elevation);
    const bool plan = m_normal.x == 0.0 && m_normal.y == 0.0 && m_normal.z > 0.0;
    return plan ? position : AcGeMatrix3d::planeToWorld(m_normal) * position;
}

Acad::ErrorStatus AcDb2dPolyline::getArea(double& area) const {
    area = path().Area();
    return Acad::eOk;
}

PolyPath AcDb2dPolyline::path() const {
    std::vector<const AcDb2dVertex*> drawn;
    for (const AcDbEntity* const entity : Access::Owned(*this).Live()) {
        const AcDb2dVertex* const vertex = AcDb2dVertex::cast(entity);
        // The frame of control vertices is not shown.
        if (vertex != nullptr && vertex->vertexType() != AcDb::k2dSplineCtlVertex)
            drawn.push_back(vertex);
    }
    PolyPath path(m_normal);
    if (drawn.empty()) return path;
    path.SetPoint(vertexPosition(*drawn[0]));
    const size_t segments = isClosed() && drawn.size() > 1 ? drawn.size() : drawn.size() - 1;
    for (size_t i = 0; i < segments; ++i) {
        const AcDb2dVertex& from = *drawn[i];
        path.Add({vertexPosition(from), vertexPosition(*drawn[(i + 1) % drawn.size()]),
                  from.bulge(), from.startWidth(), from.endWidth()});
    }
    return path;
}

namespace host {

Acad::ErrorStatus HeavyPolyline::subGetGeomExtents(AcDbExtents& extents) const {
    AcDbExtents box;
    const Acad::ErrorStatus es = path().Extents(box);
    if (es != Acad::eOk) return es;
    if (const AcDb2dPolyline* const flat = AcDb2dPolyline::cast(this))
        AddThickness(box, flat->normal(), flat->thickness());
    extents = box;
    return Acad::eOk;
}

Acad::ErrorStatus HeavyPolyline::subExplode(AcDbVoidPtrArray& pieces) const {
    const AcDb2dPolyline* const flat = AcDb2dPolyline::cast(this);
    path().Explode(*this, flat == nullptr ? 0.0 : flat->thickness(), pieces);
    return Acad::eOk;
}

}  // namespace host

Acad::ErrorStatus AcDb2dPolyline::transformData(const AcGeMatrix3d& matrix) {
    double scale = 1.0;
    if (!host::KeepsShapeInPlane(matrix, m_normal, scale)) return Acad::eCannotScaleNonUniformly;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    const AcGeVector3d normal = host::MovedNormal(matrix, m_normal);
    const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(normal);
    const AcGeVector3d oldX = host::PlaneOf(m_normal).x;
    const AcGeVector3d newX = toPlane * (matrix * oldX);
    const double turn = std::atan2(newX.y, newX.x);
    double elevation = (toPlane * (matrix * vertexPosition(AcDb2dVertex()))).z;
    for (AcDb2dVertex* const vertex : ChangingVertices<AcDb2dVertex>(*this)) {
        AcGePoint3d moved = toPlane * (matrix * vertexPosition(*vertex));
        elevation = moved.z;
        Access::Position(*vertex) = moved;
        Access::StartWidth(*vertex) *= scale;
        Access::EndWidth(*vertex) *= scale;
        Access::Tangent(*vertex) += turn;
    }
    m_thickness = host::MovedThickness(matrix, m_normal, normal, m_thickness);
    m_startWidth *= scale;
    m_endWidth *= scale;
    m_elevation = elevation;
    m_normal = normal;
    return Acad::eOk;
}

// ---- 3D -----------------------------------------------------------------------------------------

AcDb3dPolyline::AcDb3dPolyline(AcDb::Poly3dType type, const AcGePoint3dArray& vertices, bool closed)
    : m_type(type) {
    Access::Closed(static_cast<host::HeavyPolyline&>(*this)) = closed;
    for (int i = 0; i < vertices.length(); ++i) {
        auto vertex = std::make_unique<AcDb3dPolylineVertex>(vertices[i]);
        if (type != AcDb::k3dSimplePoly) Access::Type(*vertex) = AcDb::k3dControlVertex;
        Access::Owned(static_cast<host::HeavyPolyline&>(*this)).fresh.push_back(std::move(vertex));
    }
}

Acad::ErrorStatus AcDb3dPolyline::openVertex(AcDb3dPolylineVertex*& vertex, AcDbObjectId id,
                                             AcDb::OpenMode mode, bool openErased) const {
    return acdbOpenObject(vertex, id, mode, openErased);
}
Acad::ErrorStatus AcDb3dPolyline::appendVertex(AcDb3dPolylineVertex* vertex) {
    AcDbObjectId id;
    return appendVertexObject(id, vertex);
}
Acad::ErrorStatus AcDb3dPolyline::appendVertex(AcDbObjectId& id, AcDb3dPolylineVertex* vertex) {
    return appendVertexObject(id, vertex);
}

PolyPath AcDb3dPolyline::path() const {
    std::vector<AcGePoint3d> drawn;
    for (const AcDbEntity* const entity : Access::Owned(*this).Live()) {
        const AcDb3dPolylineVertex* const vertex = AcDb3dPolylineVertex::cast(entity);
        if (vertex != nullptr && vertex->vertexType() != AcDb::k3dControlVertex)
            drawn.push_back(vertex->position());
    }
    PolyPath path(AcGeVector3d::kZAxis);
    if (drawn.empty()) return path;
    path.SetPoint(drawn[0]);
    const size_t segments = isClosed() && drawn.size() > 1 ? drawn.size() : drawn.size() - 1;
    for (size_t i = 0; i < segments; ++i)
        path.Add({drawn[i], drawn[(i + 1) % drawn.size()], 0.0, 0.0, 0.0});
    return path;
}

Acad::ErrorStatus AcDb3dPolyline::transformData(const AcGeMatrix3d& matrix) {
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    for (AcDb3dPolylineVertex* const vertex : ChangingVertices<AcDb3dPolylineVertex>(*this))
        Access::Position(*vertex) = matrix * Access::Position(*vertex);
    return Acad::eOk;
}
