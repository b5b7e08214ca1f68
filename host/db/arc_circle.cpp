#include <cmath>

#include "dbelipse.h"
#include "dbents.h"
#include "gearc3d.h"
#include "geell3d.h"
#include "host/db/access.h"
#include "host/db/define_class.h"
#include "host/db/entity_tools.h"
#include "host/db/stub.h"
#include "host/base/angles.h"

using host::Access;
using host::kTwoPi;

HOST_DEFINE_CLASS(AcDbArc, AcDbCurve, ACRX_T("ARC"))
HOST_DEFINE_CLASS(AcDbCircle, AcDbCurve, ACRX_T("CIRCLE"))
HOST_DEFINE_COPY(AcDbArc)
HOST_DEFINE_COPY(AcDbCircle)

namespace {

double Wrapped(double angle) { return host::TurnedInto(angle, 0.0); }

// An ellipse from the image of a circular arc, with the entity's properties; null when the image
// has no area.
AcDbEllipse* EllipseOf(const AcGeCircArc3d& arc, const AcGeMatrix3d& matrix,
                       const AcDbEntity& entity) {
    AcGeEllipArc3d image(arc);
    image.transformBy(matrix);
    if (!(image.minorRadius() > host::kZeroLength)) return nullptr;
    AcDbEllipse* const ellipse = new AcDbEllipse(
        image.center(), image.normal(), image.majorAxis() * image.majorRadius(),
        image.minorRadius() / image.majorRadius(), image.startAng(), image.endAng());
    host::CopyProperties(entity, *ellipse);
    return ellipse;
}

// What arc and circle do alike under a map that keeps circles: false when it does not.
template <class Round>
bool MoveRound(Round& round, const AcGeMatrix3d& matrix) {
    double scale = 1.0;
    if (!host::KeepsShapeInPlane(matrix, Access::Normal(round), scale)) return false;
    const AcGeVector3d normal = host::MovedNormal(matrix, Access::Normal(round));
    Access::Thickness(round) =
        host::MovedThickness(matrix, Access::Normal(round), normal, Access::Thickness(round));
    Access::Center(round) = matrix * Access::Center(round);
    Access::Radius(round) *= scale;
    Access::Normal(round) = normal;
    return true;
}

template <class Round>
Acad::ErrorStatus BoxOf(const Round& round, AcDbExtents& extents) {
    AcGeCurve3d* curve = nullptr;
    const Acad::ErrorStatus es = round.getAcGeCurve(curve);
    if (es != Acad::eOk) return es;
    const AcGeBoundBlock3d block = curve->boundBlock();
    delete curve;
    AcDbExtents box(block.minPoint(), block.maxPoint());
    host::AddThickness(box, round.normal(), round.thickness());
    extents = box;
    return Acad::eOk;
}

}  // namespace

AcDbArc::AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle)
    : AcDbArc(center, AcGeVector3d::kZAxis, radius, startAngle, endAngle) {}

AcDbArc::AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius,
                 double startAngle, double endAngle)
    : m_center(center),
      m_normal(normal.normal()),
      m_radius(radius),
      m_startAngle(Wrapped(startAngle)),
      m_endAngle(Wrapped(endAngle)) {}

Acad::ErrorStatus AcDbArc::setCenter(const AcGePoint3d& center) {
    HOST_SET(m_center, center, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbArc::setRadius(double radius) {
    if (!(radius >= 0.0)) return Acad::eInvalidInput;
    HOST_SET(m_radius, radius, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbArc::setStartAngle(double angle) {
    HOST_SET(m_startAngle, Wrapped(angle), host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbArc::setEndAngle(double angle) {
    HOST_SET(m_endAngle, Wrapped(angle), host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbArc::setThickness(double thickness) {
    HOST_SET(m_thickness, thickness, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbArc::setNormal(const AcGeVector3d& normal) {
    if (normal.length() <= host::kZeroLength) return Acad::eInvalidInput;
    HOST_SET(m_normal, normal.normal(), host::kDirtyGeometry);
}

double AcDbArc::totalAngle() const {
    return m_endAngle > m_startAngle ? m_endAngle - m_startAngle
                                     : m_endAngle + kTwoPi - m_startAngle;
}

Acad::ErrorStatus AcDbArc::getAcGeCurve(AcGeCurve3d*& curve, const AcGeTol&) const {
    const double end = m_endAngle > m_startAngle ? m_endAngle : m_endAngle + kTwoPi;
    curve = new AcGeCircArc3d(m_center, m_normal, host::PlaneOf(m_normal).x, m_radius, m_startAngle,
                              end);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::getArea(double& area) const {
    area = 0.5 * m_radius * m_radius * std::fabs(totalAngle() - std::sin(totalAngle()));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::subGetGeomExtents(AcDbExtents& extents) const {
    return BoxOf(*this, extents);
}

Acad::ErrorStatus AcDbArc::subTransformBy(const AcGeMatrix3d& matrix) {
    double scale = 1.0;
    if (!host::KeepsShapeInPlane(matrix, m_normal, scale)) return Acad::eCannotScaleNonUniformly;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    const host::Plane before = host::PlaneOf(m_normal);
    const AcGeVector3d xImage = matrix * before.x;
    MoveRound(*this, matrix);
    const host::Plane after = host::PlaneOf(m_normal);
    // The OCS axes turn with the plane; the angles take that up. A move without turning leaves them
    // as they are.
    const double turn = std::atan2(xImage.dotProduct(after.y), xImage.dotProduct(after.x));
    if (turn == 0.0) return Acad::eOk;
    m_startAngle = Wrapped(m_startAngle + turn);
    m_endAngle = Wrapped(m_endAngle + turn);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::subGetTransformedCopy(const AcGeMatrix3d& matrix,
                                                 AcDbEntity*& copy) const {
    double scale = 1.0;
    if (host::KeepsShapeInPlane(matrix, m_normal, scale))
        return AcDbEntity::subGetTransformedCopy(matrix, copy);
    AcGeCurve3d* curve = nullptr;
    const Acad::ErrorStatus es = getAcGeCurve(curve);
    if (es != Acad::eOk) return es;
    copy = EllipseOf(static_cast<const AcGeCircArc3d&>(*curve), matrix, *this);
    delete curve;
    return copy == nullptr ? Acad::eDegenerateGeometry : Acad::eOk;
}

AcDbCircle::AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
    : m_center(center), m_normal(normal.normal()), m_radius(radius) {}

Acad::ErrorStatus AcDbCircle::setCenter(const AcGePoint3d& center) {
    HOST_SET(m_center, center, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbCircle::setRadius(double radius) {
    if (!(radius >= 0.0)) return Acad::eInvalidInput;
    HOST_SET(m_radius, radius, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbCircle::setThickness(double thickness) {
    HOST_SET(m_thickness, thickness, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbCircle::setNormal(const AcGeVector3d& normal) {
    if (normal.length() <= host::kZeroLength) return Acad::eInvalidInput;
    HOST_SET(m_normal, normal.normal(), host::kDirtyGeometry);
}

double AcDbCircle::circumference() const { return kTwoPi * m_radius; }

Acad::ErrorStatus AcDbCircle::getAcGeCurve(AcGeCurve3d*& curve, const AcGeTol&) const {
    curve = new AcGeCircArc3d(m_center, m_normal, host::PlaneOf(m_normal).x, m_radius, 0.0, kTwoPi);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::getArea(double& area) const {
    area = host::kPi * m_radius * m_radius;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::subGetGeomExtents(AcDbExtents& extents) const {
    return BoxOf(*this, extents);
}

Acad::ErrorStatus AcDbCircle::subTransformBy(const AcGeMatrix3d& matrix) {
    double scale = 1.0;
    if (!host::KeepsShapeInPlane(matrix, m_normal, scale)) return Acad::eCannotScaleNonUniformly;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es == Acad::eOk) MoveRound(*this, matrix);
    return es;
}

Acad::ErrorStatus AcDbCircle::subGetTransformedCopy(const AcGeMatrix3d& matrix,
                                                    AcDbEntity*& copy) const {
    double scale = 1.0;
    if (host::KeepsShapeInPlane(matrix, m_normal, scale))
        return AcDbEntity::subGetTransformedCopy(matrix, copy);
    copy = EllipseOf(
        AcGeCircArc3d(m_center, m_normal, host::PlaneOf(m_normal).x, m_radius, 0.0, kTwoPi), matrix,
        *this);
    return copy == nullptr ? Acad::eDegenerateGeometry : Acad::eOk;
}
