#include "dbhatch.h"

#include <cmath>

#include "host/db/database_imp.h"
#include "host/db/define_class.h"
#include "host/db/entity_tools.h"
#include "host/db/hatch_curves.h"

using host::HatchEdge;
using host::HatchEdgeKind;
using host::HatchLoop;

HOST_DEFINE_CLASS(AcDbHatch, AcDbEntity, ACRX_T("HATCH"))
HOST_DEFINE_COPY(AcDbHatch)

AcDbHatch::AcDbHatch() : m_data(std::make_unique<host::HatchData>()) {}
AcDbHatch::~AcDbHatch() = default;
AcDbHatch::AcDbHatch(const AcDbHatch& other)
    : AcDbEntity(other), m_data(std::make_unique<host::HatchData>(*other.m_data)) {}
AcDbHatch& AcDbHatch::operator=(const AcDbHatch& other) {
    AcDbEntity::operator=(other);
    *m_data = *other.m_data;
    return *this;
}

const ACHAR* AcDbHatch::patternName() const { return m_data->patternName.c_str(); }
bool AcDbHatch::isSolidFill() const { return m_data->solid; }
double AcDbHatch::patternScale() const { return m_data->patternScale; }
double AcDbHatch::patternAngle() const { return m_data->patternAngle; }
int AcDbHatch::numLoops() const { return static_cast<int>(m_data->loops.size()); }
double AcDbHatch::elevation() const { return m_data->elevation; }
AcGeVector3d AcDbHatch::normal() const { return m_data->normal; }

Acad::ErrorStatus AcDbHatch::subGetGeomExtents(AcDbExtents& extents) const {
    AcDbExtents box;
    for (const auto& curve : host::CurvesOf(*m_data)) {
        AcDbExtents own;
        if (curve->getGeomExtents(own) == Acad::eOk) box.addExt(own);
    }
    return host::FinishExtents(box, extents);
}

namespace {

// A map of the hatch's plane onto that of the moved hatch.
class PlaneMap {
public:
    PlaneMap(const AcGeMatrix3d& matrix, const host::HatchData& data, const AcGeVector3d& normal)
        : m_elevation(data.elevation),
          m_matrix(AcGeMatrix3d::worldToPlane(normal) * matrix *
                   AcGeMatrix3d::planeToWorld(data.normal)) {}

    void Point(AcGePoint2d& point) const {
        const AcGePoint3d moved = m_matrix * AcGePoint3d(point.x, point.y, m_elevation);
        point.set(moved.x, moved.y);
    }
    void Vector(AcGeVector2d& vector) const {
        const AcGeVector3d moved = m_matrix * AcGeVector3d(vector.x, vector.y, 0.0);
        vector.set(moved.x, moved.y);
    }
    double Elevation() const { return (m_matrix * AcGePoint3d(0.0, 0.0, m_elevation)).z; }
    double Turn() const {
        const AcGeVector3d x = m_matrix * AcGeVector3d::kXAxis;
        return std::atan2(x.y, x.x);
    }

private:
    double m_elevation;
    AcGeMatrix3d m_matrix;
};

void MoveEdge(HatchEdge& edge, const PlaneMap& map, double scale) {
    map.Point(edge.start);
    map.Point(edge.end);
    map.Point(edge.center);
    map.Vector(edge.major);
    for (AcGePoint2d& point : edge.points) map.Point(point);
    for (AcGePoint2d& point : edge.fitPoints) map.Point(point);
    if (edge.kind != HatchEdgeKind::kArc) return;
    edge.radius *= scale;
    // The moved plane is oriented so that arcs keep their sense; clockwise ones count their angles
    // the other way round.
    const double turn = edge.counterClockwise ? map.Turn() : -map.Turn();
    edge.startAngle += turn;
    edge.endAngle += turn;
}

}  // namespace

Acad::ErrorStatus AcDbHatch::subTransformBy(const AcGeMatrix3d& matrix) {
    double scale = 1.0;
    if (!host::KeepsShapeInPlane(matrix, m_data->normal, scale))
        return Acad::eCannotScaleNonUniformly;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    const AcGeVector3d normal = host::MovedNormal(matrix, m_data->normal);
    const PlaneMap map(matrix, *m_data, normal);
    for (HatchLoop& loop : m_data->loops) {
        for (auto& vertex : loop.vertices) map.Point(vertex.point);
        for (HatchEdge& edge : loop.edges) MoveEdge(edge, map, scale);
    }
    for (AcGePoint2d& seed : m_data->seeds) map.Point(seed);
    for (auto& line : m_data->patternLines) {
        line.angle += map.Turn();
        map.Point(line.base);
        map.Vector(line.offset);
        for (double& dash : line.dashes) dash *= scale;
    }
    m_data->patternAngle += map.Turn();
    m_data->patternScale *= scale;
    m_data->elevation = map.Elevation();
    m_data->normal = normal;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::subExplode(AcDbVoidPtrArray& pieces) const {
    std::vector<std::unique_ptr<AcDbCurve>> made =
        m_data->solid ? host::CurvesOf(*m_data) : host::PatternOf(*m_data);
    for (auto& curve : made) {
        host::CopyProperties(*this, *curve);
        pieces.append(static_cast<AcDbEntity*>(curve.release()));
    }
    return Acad::eOk;
}

// Clones stand by themselves unless their boundary was cloned with them.
void AcDbHatch::translateIds(const AcDbIdMapping& mapping) {
    AcDbEntity::translateIds(mapping);
    for (HatchLoop& loop : m_data->loops)
        for (AcDbObjectId& source : loop.sources) host::Translate(mapping, source);
}
