#include "dbents.h"
#include "dblead.h"
#include "genurb3d.h"
#include "host/db/database_imp.h"
#include "host/db/define_class.h"
#include "host/db/entity_tools.h"

HOST_DEFINE_CLASS(AcDbLeader, AcDbCurve, ACRX_T("LEADER"))
HOST_DEFINE_COPY(AcDbLeader)

namespace {

// Points on the drawn path of a splined leader, ends included, for its box and its pieces.
constexpr int kSamplesPerSpan = 16;

std::vector<AcGePoint3d> DrawnPath(const std::vector<AcGePoint3d>& vertices, bool splined) {
    if (!splined || vertices.size() < 3) return vertices;
    AcGePoint3dArray fit;
    for (const AcGePoint3d& vertex : vertices) fit.append(vertex);
    const AcGeNurbCurve3d curve(fit, AcGeVector3d(), AcGeVector3d(), false, false);
    AcGePoint3dArray samples;
    curve.getSamplePoints(kSamplesPerSpan * static_cast<int>(vertices.size() - 1) + 1, samples);
    std::vector<AcGePoint3d> path;
    path.reserve(static_cast<size_t>(samples.length()));
    for (int i = 0; i < samples.length(); ++i) path.push_back(samples[i]);
    return path;
}

}  // namespace

AcGePoint3d AcDbLeader::vertexAt(int index) const {
    return index >= 0 && index < numVertices() ? m_vertices[static_cast<size_t>(index)]
                                               : AcGePoint3d();
}

bool AcDbLeader::appendVertex(const AcGePoint3d& point) {
    if (!m_vertices.empty() && m_vertices.back().isEqualTo(point)) return false;
    if (beginWrite(host::kDirtyGeometry) != Acad::eOk) return false;
    m_vertices.push_back(point);
    return true;
}

bool AcDbLeader::setVertexAt(int index, const AcGePoint3d& point) {
    if (index < 0 || index >= numVertices() || beginWrite(host::kDirtyGeometry) != Acad::eOk)
        return false;
    m_vertices[static_cast<size_t>(index)] = point;
    return true;
}

Acad::ErrorStatus AcDbLeader::getStartParam(double& param) const {
    param = 0.0;
    return m_vertices.empty() ? Acad::eDegenerateGeometry : Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::getEndParam(double& param) const {
    if (m_vertices.empty()) return Acad::eDegenerateGeometry;
    param = static_cast<double>(numVertices() - 1);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::getStartPoint(AcGePoint3d& point) const {
    if (m_vertices.empty()) return Acad::eDegenerateGeometry;
    point = m_vertices.front();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::getEndPoint(AcGePoint3d& point) const {
    if (m_vertices.empty()) return Acad::eDegenerateGeometry;
    point = m_vertices.back();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::getPointAtParam(double param, AcGePoint3d& point) const {
    if (m_splined) return Acad::eNotImplementedYet;
    if (m_vertices.empty()) return Acad::eDegenerateGeometry;
    if (!(param >= 0.0 && param <= static_cast<double>(numVertices() - 1)))
        return Acad::eInvalidInput;
    const size_t index = static_cast<size_t>(param);
    const double fraction = param - static_cast<double>(index);
    point = m_vertices[index];
    if (fraction > 0.0) point = point + (m_vertices[index + 1] - point) * fraction;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::subGetGeomExtents(AcDbExtents& extents) const {
    AcDbExtents box;
    for (const AcGePoint3d& point : DrawnPath(m_vertices, m_splined)) box.addPoint(point);
    return host::FinishExtents(box, extents);
}

Acad::ErrorStatus AcDbLeader::subTransformBy(const AcGeMatrix3d& matrix) {
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    for (AcGePoint3d& vertex : m_vertices) vertex = matrix * vertex;
    m_normal = host::MovedNormal(matrix, m_normal);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::subExplode(AcDbVoidPtrArray& pieces) const {
    const std::vector<AcGePoint3d> path = DrawnPath(m_vertices, m_splined);
    for (size_t i = 1; i < path.size(); ++i) {
        AcDbLine* const line = new AcDbLine(path[i - 1], path[i]);
        host::CopyProperties(*this, *line);
        pieces.append(line);
    }
    return Acad::eOk;
}

void AcDbLeader::translateIds(const AcDbIdMapping& mapping) {
    AcDbEntity::translateIds(mapping);
    host::Translate(mapping, m_annotation);
}
