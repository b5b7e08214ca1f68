#include "host/db/entity_tools.h"

#include <cmath>

#include "host/db/access.h"

namespace host {

Acad::ErrorStatus FinishExtents(const AcDbExtents& found, AcDbExtents& out) {
    if (!(found.minPoint().x <= found.maxPoint().x)) return Acad::eNullExtents;
    out = found;
    return Acad::eOk;
}

void AddThickness(AcDbExtents& box, const AcGeVector3d& normal, double thickness) {
    if (thickness != 0.0) box.expandBy(normal * thickness);
}

Plane PlaneOf(const AcGeVector3d& normal) {
    const AcGeMatrix3d m = AcGeMatrix3d::planeToWorld(normal);
    return {AcGeVector3d(m(0, 0), m(1, 0), m(2, 0)), AcGeVector3d(m(0, 1), m(1, 1), m(2, 1)),
            AcGeVector3d(m(0, 2), m(1, 2), m(2, 2))};
}

bool IsSimilarity(const AcGeMatrix3d& matrix) {
    AcGeTol tol;
    tol.setEqualVector(kShapeTol);
    return matrix.isUniScaledOrtho(tol);
}

bool KeepsShapeInPlane(const AcGeMatrix3d& matrix, const AcGeVector3d& normal, double& scale) {
    const Plane plane = PlaneOf(normal);
    const AcGeVector3d x = matrix * plane.x;
    const AcGeVector3d y = matrix * plane.y;
    const double lx = x.length(), ly = y.length();
    if (std::fabs(lx - ly) > kShapeTol * (lx + ly)) return false;
    if (std::fabs(x.dotProduct(y)) > kShapeTol * lx * ly) return false;
    scale = lx;
    return true;
}

AcGeVector3d MovedNormal(const AcGeMatrix3d& matrix, const AcGeVector3d& normal) {
    const Plane plane = PlaneOf(normal);
    return (matrix * plane.x).crossProduct(matrix * plane.y).normal();
}

double MovedThickness(const AcGeMatrix3d& matrix, const AcGeVector3d& oldNormal,
                      const AcGeVector3d& newNormal, double thickness) {
    return thickness == 0.0 ? 0.0 : (matrix * (oldNormal * thickness)).dotProduct(newNormal);
}

void CopyProperties(const AcDbEntity& from, AcDbEntity& to) {
    Access::Layer(to) = Access::Layer(from);
    Access::Linetype(to) = Access::Linetype(from);
    Access::LinetypeScale(to) = Access::LinetypeScale(from);
    Access::Color(to) = Access::Color(from);
    Access::LineWeight(to) = Access::LineWeight(from);
    Access::Visibility(to) = Access::Visibility(from);
}

}  // namespace host
