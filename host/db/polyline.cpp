#include "dbpl.h"

#include <algorithm>
#include <cmath>

#include "gept3dar.h"
#include "host/db/access.h"
#include "host/db/define_class.h"
#include "host/db/entity_tools.h"
#include "host/db/poly_path.h"
#include "host/base/host_assert.h"

HOST_DEFINE_CLASS(AcDbPolyline, AcDbCurve, ACRX_T("LWPOLYLINE"))
HOST_DEFINE_COPY(AcDbPolyline)

namespace {

// For the interface's void setters, which cannot say that they refuse.
void MustWrite(AcDbPolyline& polyline) {
    const Acad::ErrorStatus es = host::Access::BeginWrite(polyline, host::kDirtyGeometry);
    HOST_ASSERT(es == Acad::eOk, "a polyline was changed that is not open for write");
}

// WCS point of an OCS point. For the plan direction nothing is multiplied, so that coordinates stay
// what they are to the last bit.
class ToWorld {
public:
    ToWorld(const AcGeVector3d& normal, double elevation)
        : m_plan(normal.x == 0.0 && normal.y == 0.0 && normal.z > 0.0),
          m_elevation(elevation),
          m_matrix(AcGeMatrix3d::planeToWorld(normal)) {}
    AcGePoint3d operator()(const AcGePoint2d& p) const {
        const AcGePoint3d point(p.x, p.y, m_elevation);
        return m_plan ? point : m_matrix * point;
    }

private:
    bool m_plan;
    double m_elevation;
    AcGeMatrix3d m_matrix;
};

// Vertices closer than this, in drawing units, make no segment of their own.
constexpr double kCoincidentTol = 1e-10;

}  // namespace

namespace host {

PolyPath PathOf(const AcDbPolyline& polyline) {
    const auto& vertices = Access::Vertices(polyline);
    PolyPath path(polyline.normal());
    const ToWorld world(polyline.normal(), polyline.elevation());
    const size_t count = vertices.size();
    if (count == 0) return path;
    path.SetPoint(world(vertices[0].point));
    const size_t segments = polyline.isClosed() && count > 1 ? count : count - 1;
    const double width = Access::ConstantWidth(polyline);
    const auto widthOr = [&](double own) { return own < 0.0 ? width : own; };
    for (size_t i = 0; i < segments; ++i) {
        const auto& from = vertices[i];
        path.Add({world(from.point), world(vertices[(i + 1) % count].point), from.bulge,
                  widthOr(from.startWidth), widthOr(from.endWidth)});
    }
    return path;
}

}  // namespace host

using host::PathOf;

AcDbPolyline::AcDbPolyline(unsigned int numVerts) { m_vertices.reserve(numVerts); }

Acad::ErrorStatus AcDbPolyline::addVertexAt(unsigned int index, const AcGePoint2d& point,
                                            double bulge, double startWidth, double endWidth,
                                            Adesk::Int32 vertexIdentifier) {
    if (index > numVerts()) return Acad::eInvalidIndex;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    m_vertices.insert(m_vertices.begin() + index,
                      {point, bulge, startWidth, endWidth, vertexIdentifier});
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::removeVertexAt(unsigned int index) {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    if (numVerts() <= 2) return Acad::eDegenerateGeometry;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es == Acad::eOk) m_vertices.erase(m_vertices.begin() + index);
    return es;
}

void AcDbPolyline::reset(bool reuse, unsigned int numVerts) {
    MustWrite(*this);
    m_vertices.resize(reuse ? numVerts : 0);
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint3d& point) const {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    point = ToWorld(m_normal, m_elevation)(m_vertices[index].point);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint2d& point) const {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    point = m_vertices[index].point;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setPointAt(unsigned int index, const AcGePoint2d& point) {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    HOST_SET(m_vertices[index].point, point, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbPolyline::getBulgeAt(unsigned int index, double& bulge) const {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    bulge = m_vertices[index].bulge;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setBulgeAt(unsigned int index, double bulge) {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    HOST_SET(m_vertices[index].bulge, bulge, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbPolyline::getWidthsAt(unsigned int index, double& start, double& end) const {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    const Vertex& vertex = m_vertices[index];
    start = vertex.startWidth < 0.0 ? m_constantWidth : vertex.startWidth;
    end = vertex.endWidth < 0.0 ? m_constantWidth : vertex.endWidth;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setWidthsAt(unsigned int index, double start, double end) {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    m_vertices[index].startWidth = start;
    m_vertices[index].endWidth = end;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getVertexIdentifierAt(unsigned int index,
                                                      Adesk::Int32& identifier) const {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    identifier = m_vertices[index].identifier;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setVertexIdentifierAt(unsigned int index, Adesk::Int32 identifier) {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    HOST_SET(m_vertices[index].identifier, identifier, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbPolyline::getConstantWidth(double& width) const {
    for (const Vertex& vertex : m_vertices)
        for (const double own : {vertex.startWidth, vertex.endWidth})
            if (own >= 0.0 && own != m_constantWidth) return Acad::eInvalidInput;
    width = m_constantWidth;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setConstantWidth(double width) {
    if (!(width >= 0.0)) return Acad::eInvalidInput;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    m_constantWidth = width;
    for (Vertex& vertex : m_vertices) vertex.startWidth = vertex.endWidth = -1.0;
    return Acad::eOk;
}

AcDbPolyline::SegType AcDbPolyline::segType(unsigned int index) const {
    const unsigned int count = numVerts();
    if (index >= count) return kEmpty;
    if (count == 1) return kPoint;
    if (index + 1 == count && !m_closed) return kEmpty;
    const AcGePoint2d& from = m_vertices[index].point;
    const AcGePoint2d& to = m_vertices[(index + 1) % count].point;
    if (std::hypot(to.x - from.x, to.y - from.y) <= kCoincidentTol) return kCoincident;
    return m_vertices[index].bulge == 0.0 ? kLine : kArc;
}

Acad::ErrorStatus AcDbPolyline::getLineSegAt(unsigned int index, AcGeLineSeg3d& line) const {
    if (segType(index) != kLine) return Acad::eInvalidIndex;
    const host::PolyPath path = PathOf(*this);
    line.set(path.Segments()[index].start, path.Segments()[index].end);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getArcSegAt(unsigned int index, AcGeCircArc3d& arc) const {
    if (segType(index) != kArc) return Acad::eInvalidIndex;
    const std::unique_ptr<AcGeCurve3d> curve(PathOf(*this).GeCurve(index));
    arc = static_cast<const AcGeCircArc3d&>(*curve);
    return Acad::eOk;
}

void AcDbPolyline::setClosed(bool closed) {
    MustWrite(*this);
    m_closed = closed;
}

bool AcDbPolyline::hasBulges() const {
    return std::any_of(m_vertices.begin(), m_vertices.end(),
                       [](const Vertex& v) { return v.bulge != 0.0; });
}

bool AcDbPolyline::hasWidth() const {
    return m_constantWidth > 0.0 ||
           std::any_of(m_vertices.begin(), m_vertices.end(),
                       [](const Vertex& v) { return v.startWidth > 0.0 || v.endWidth > 0.0; });
}

bool AcDbPolyline::hasVertexIdentifiers() const {
    return std::any_of(m_vertices.begin(), m_vertices.end(),
                       [](const Vertex& v) { return v.identifier != 0; });
}

void AcDbPolyline::setPlinegen(bool plinegen) {
    MustWrite(*this);
    m_plinegen = plinegen;
}

Acad::ErrorStatus AcDbPolyline::setElevation(double elevation) {
    HOST_SET(m_elevation, elevation, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbPolyline::setThickness(double thickness) {
    HOST_SET(m_thickness, thickness, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbPolyline::setNormal(const AcGeVector3d& normal) {
    if (normal.length() <= host::kZeroLength) return Acad::eInvalidInput;
    HOST_SET(m_normal, normal.normal(), host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbPolyline::getStartParam(double& param) const {
    param = 0.0;
    return m_vertices.empty() ? Acad::eDegenerateGeometry : Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getEndParam(double& param) const {
    if (m_vertices.empty()) return Acad::eDegenerateGeometry;
    param = static_cast<double>(m_closed && numVerts() > 1 ? numVerts() : numVerts() - 1);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAtParam(double param, AcGePoint3d& point) const {
    return PathOf(*this).PointAt(param, point);
}
Acad::ErrorStatus AcDbPolyline::getParamAtPoint(const AcGePoint3d& point, double& param) const {
    return PathOf(*this).ParamAt(point, param);
}
Acad::ErrorStatus AcDbPolyline::getDistAtParam(double param, double& dist) const {
    return PathOf(*this).DistAt(param, dist);
}
Acad::ErrorStatus AcDbPolyline::getParamAtDist(double dist, double& param) const {
    return PathOf(*this).ParamAtDist(dist, param);
}
Acad::ErrorStatus AcDbPolyline::getFirstDeriv(double param, AcGeVector3d& derivative) const {
    return PathOf(*this).DerivAt(param, derivative);
}
Acad::ErrorStatus AcDbPolyline::getClosestPointTo(const AcGePoint3d& point, AcGePoint3d& onCurve,
                                                  bool) const {
    return PathOf(*this).Closest(point, onCurve);
}

Acad::ErrorStatus AcDbPolyline::getArea(double& area) const {
    area = PathOf(*this).Area();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::reverseCurve() {
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk || m_vertices.empty()) return es;
    // Bulge and widths belong to the segment behind a vertex, which begins at its other end now. A
    // closed polyline keeps its first vertex.
    const size_t count = m_vertices.size();
    const size_t first = m_closed ? count : count - 1;
    std::vector<Vertex> turned(count);
    for (size_t i = 0; i < count; ++i) {
        const Vertex& segment = m_vertices[(first + count - 1 - i) % count];
        turned[i] = m_vertices[(first + count - i) % count];
        turned[i].bulge = -segment.bulge;
        turned[i].startWidth = segment.endWidth;
        turned[i].endWidth = segment.startWidth;
    }
    m_vertices = std::move(turned);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getAcGeCurve(AcGeCurve3d*& curve, const AcGeTol&) const {
    curve = nullptr;
    const host::PolyPath path = PathOf(*this);
    if (path.Segments().size() > 1) return Acad::eNotImplementedYet;
    if (path.Segments().empty()) return Acad::eDegenerateGeometry;
    curve = path.GeCurve(0);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subGetGeomExtents(AcDbExtents& extents) const {
    AcDbExtents box;
    const Acad::ErrorStatus es = PathOf(*this).Extents(box);
    if (es != Acad::eOk) return es;
    host::AddThickness(box, m_normal, m_thickness);
    extents = box;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subTransformBy(const AcGeMatrix3d& matrix) {
    double scale = 1.0;
    // Straight polylines stay polylines under any map; arcs only where circles stay circles.
    const bool keepsShape = host::KeepsShapeInPlane(matrix, m_normal, scale);
    if (!keepsShape && (hasBulges() || hasWidth())) return Acad::eCannotScaleNonUniformly;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    const AcGeVector3d normal = host::MovedNormal(matrix, m_normal);
    const ToWorld world(m_normal, m_elevation);
    const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(normal);
    double elevation = (toPlane * (matrix * world(AcGePoint2d()))).z;
    for (Vertex& vertex : m_vertices) {
        const AcGePoint3d moved = toPlane * (matrix * world(vertex.point));
        vertex.point.set(moved.x, moved.y);
        if (vertex.startWidth > 0.0) vertex.startWidth *= scale;
        if (vertex.endWidth > 0.0) vertex.endWidth *= scale;
        elevation = moved.z;
    }
    m_thickness = host::MovedThickness(matrix, m_normal, normal, m_thickness);
    m_constantWidth *= scale;
    m_elevation = elevation;
    m_normal = normal;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subExplode(AcDbVoidPtrArray& pieces) const {
    PathOf(*this).Explode(*this, m_thickness, pieces);
    return Acad::eOk;
}
