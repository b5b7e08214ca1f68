#include <cmath>

#include "dbelipse.h"
#include "geell3d.h"
#include "host/db/define_class.h"
#include "host/db/entity_tools.h"
#include "host/db/stub.h"
#include "host/base/angles.h"

using host::kTwoPi;

HOST_DEFINE_CLASS(AcDbEllipse, AcDbCurve, ACRX_T("ELLIPSE"))
HOST_DEFINE_COPY(AcDbEllipse)

namespace {

// Parameters closer than this, in radians, to a full turn make a whole ellipse.
constexpr double kFullTurnTol = 1e-10;

AcGeEllipArc3d GeometryOf(const AcDbEllipse& ellipse) {
    const double radius = ellipse.majorAxis().length();
    double end = ellipse.endAngle();
    while (end <= ellipse.startAngle()) end += kTwoPi;
    return AcGeEllipArc3d(ellipse.center(), ellipse.majorAxis().normal(),
                          ellipse.minorAxis().normal(), radius, radius * ellipse.radiusRatio(),
                          ellipse.startAngle(), end);
}

}  // namespace

AcDbEllipse::AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& unitNormal,
                         const AcGeVector3d& majorAxis, double radiusRatio, double startAngle,
                         double endAngle)
    : m_center(center),
      m_normal(unitNormal.normal()),
      m_major(majorAxis),
      m_ratio(radiusRatio),
      m_start(startAngle),
      m_end(endAngle) {}

AcGeVector3d AcDbEllipse::minorAxis() const { return m_normal.crossProduct(m_major) * m_ratio; }

Acad::ErrorStatus AcDbEllipse::setCenter(const AcGePoint3d& center) {
    HOST_SET(m_center, center, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbEllipse::setRadiusRatio(double ratio) {
    if (!(ratio > 0.0 && ratio <= 1.0)) return Acad::eInvalidInput;
    HOST_SET(m_ratio, ratio, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbEllipse::setStartAngle(double angle) {
    HOST_SET(m_start, angle, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbEllipse::setEndAngle(double angle) {
    HOST_SET(m_end, angle, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbEllipse::set(const AcGePoint3d& center, const AcGeVector3d& unitNormal,
                                   const AcGeVector3d& majorAxis, double radiusRatio,
                                   double startAngle, double endAngle) {
    const double length = majorAxis.length();
    if (!(length > host::kZeroLength && radiusRatio > 0.0 && radiusRatio <= 1.0))
        return Acad::eInvalidInput;
    if (std::fabs(unitNormal.normal().dotProduct(majorAxis)) > host::kShapeTol * length)
        return Acad::eInvalidInput;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    m_center = center;
    m_normal = unitNormal.normal();
    m_major = majorAxis;
    m_ratio = radiusRatio;
    m_start = startAngle;
    m_end = endAngle;
    return Acad::eOk;
}

bool AcDbEllipse::isClosed() const {
    return std::fabs(std::fabs(m_end - m_start) - kTwoPi) <= kFullTurnTol;
}

Acad::ErrorStatus AcDbEllipse::getAcGeCurve(AcGeCurve3d*& curve, const AcGeTol&) const {
    curve = nullptr;
    if (!(m_major.length() > host::kZeroLength && m_ratio > 0.0)) return Acad::eDegenerateGeometry;
    curve = new AcGeEllipArc3d(GeometryOf(*this));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::getArea(double& area) const {
    const double sweep = isClosed() ? kTwoPi : host::TurnedInto(m_end - m_start, 0.0);
    area = 0.5 * m_major.lengthSqrd() * m_ratio * std::fabs(sweep - std::sin(sweep));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::reverseCurve() {
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    // Seen from the other side the parameters run backwards.
    const double start = m_start;
    m_normal = -m_normal;
    m_start = kTwoPi - m_end;
    m_end = kTwoPi - start;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::subGetGeomExtents(AcDbExtents& extents) const {
    if (!(m_major.length() > host::kZeroLength)) return Acad::eNullExtents;
    const AcGeBoundBlock3d block = GeometryOf(*this).boundBlock();
    return extents.set(block.minPoint(), block.maxPoint());
}

Acad::ErrorStatus AcDbEllipse::subTransformBy(const AcGeMatrix3d& matrix) {
    AcGeEllipArc3d image = GeometryOf(*this);
    image.transformBy(matrix);
    if (!(image.minorRadius() > host::kZeroLength)) return Acad::eDegenerateGeometry;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    m_center = image.center();
    m_normal = image.normal();
    m_major = image.majorAxis() * image.majorRadius();
    m_ratio = image.minorRadius() / image.majorRadius();
    m_start = image.startAng();
    m_end = image.endAng();
    return Acad::eOk;
}
