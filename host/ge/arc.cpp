#include <algorithm>

#include "gearc3d.h"
#include "geell3d.h"
#include "gemat3d.h"
#include "geplane.h"
#include "host/base/angles.h"
#include "host/ge/curve_numeric.h"
#include "host/base/host_assert.h"

namespace {

// The part of v at right angles to a unit normal, as a unit vector; any such vector when v is along
// it.
AcGeVector3d Upright(const AcGeVector3d& v, const AcGeVector3d& normal) {
    const AcGeVector3d part = v.orthoProject(normal).normal();
    return part.lengthSqrd() > 0.0 ? part : normal.perpVector();
}

// The box of centre + cos t * a + sin t * b over [from, to]: ends, and where a coordinate turns.
AcGeBoundBlock3d SweepBox(const AcGeCurve3d& curve, const AcGeVector3d& a, const AcGeVector3d& b,
                          double from, double to) {
    AcGeBoundBlock3d box(curve.evalPoint(from), curve.evalPoint(to));
    for (unsigned int axis = 0; axis < 3; ++axis) {
        const double turn = std::atan2(b[axis], a[axis]);
        for (const double t : {turn, turn + host::kPi}) {
            const double inside = host::TurnedInto(t, from);
            if (inside <= to) box.extend(curve.evalPoint(inside));
        }
    }
    return box;
}

// A map within this part of its scale of a similarity is one with rounding errors of its own, such
// as a product of a dozen rotations or one read from a file with ten digits.
constexpr double kSimilarity = 1e-6;

// Products of two vectors that differ by less than this part of their squares differ by rounding.
constexpr double kAxisRounding = 2e-14;

// Samples for the closest point on a full ellipse: it has at most two near places a quarter.
constexpr int kEllipseSamples = 48;

}  // namespace

AcGeCircArc3d::AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
    : AcGeCircArc3d(center, normal, normal.perpVector(), radius, 0.0, host::kTwoPi) {}

AcGeCircArc3d::AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal,
                             const AcGeVector3d& refVec, double radius, double startAng,
                             double endAng)
    : m_center(center),
      m_normal(normal.normal()),
      m_refVec(Upright(refVec, m_normal)),
      m_radius(radius),
      m_startAng(startAng),
      m_endAng(endAng) {}

AcGeCircArc3d::AcGeCircArc3d(const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& p3)
    : AcGeCircArc3d(p1, AcGeVector3d::kZAxis, 0.0) {
    const AcGeVector3d a = p2 - p1, b = p3 - p1;
    const AcGeVector3d n = a.crossProduct(b);
    if (n.isZeroLength()) return;
    // Centre of the circle through three points: where the planes half-way to p2 and p3 meet.
    const AcGeVector3d toCenter =
        (b * a.lengthSqrd() - a * b.lengthSqrd()).crossProduct(n) / (2.0 * n.lengthSqrd());
    m_center = p1 + toCenter;
    m_normal = n.normal();
    m_refVec = -toCenter.normal();
    m_radius = toCenter.length();
    m_endAng = m_refVec.angleTo(p3 - m_center, m_normal);
}

AcGeCircArc3d& AcGeCircArc3d::setCenter(const AcGePoint3d& center) {
    m_center = center;
    return *this;
}

AcGeCircArc3d& AcGeCircArc3d::setRadius(double radius) {
    m_radius = radius;
    return *this;
}

AcGeCircArc3d& AcGeCircArc3d::setAngles(double startAng, double endAng) {
    m_startAng = startAng;
    m_endAng = endAng;
    return *this;
}

void AcGeCircArc3d::apply(const AcGeMatrix3d& m) {
    AcGeTol similarity;
    similarity.setEqualVector(kSimilarity);
    HOST_ASSERT(m.isUniScaledOrtho(similarity), "a circular arc would become an ellipse");
    const AcGeVector3d across = m * m_normal.crossProduct(m_refVec);
    m_center.transformBy(m);
    m_radius *= m.scale();
    m_refVec = (m * m_refVec).normal();
    // From the images of the axes in the plane, so that a mirrored arc keeps start, end and sense.
    m_normal = m_refVec.crossProduct(across).normal();
}

bool AcGeCircArc3d::equals(const AcGeEntity3d& other, const AcGeTol& tol) const {
    const AcGeCircArc3d& arc = static_cast<const AcGeCircArc3d&>(other);
    return m_center.isEqualTo(arc.m_center, tol) && m_normal.isCodirectionalTo(arc.m_normal, tol) &&
           std::fabs(m_radius - arc.m_radius) <= tol.equalPoint() &&
           startPoint().isEqualTo(arc.startPoint(), tol) &&
           std::fabs((m_endAng - m_startAng) - (arc.m_endAng - arc.m_startAng)) * m_radius <=
               tol.equalPoint();
}

AcGePoint3d AcGeCircArc3d::eval(double param, int count, AcGeVector3d* derivatives) const {
    const AcGeVector3d across = m_normal.crossProduct(m_refVec);
    const double c = m_radius * std::cos(param), s = m_radius * std::sin(param);
    const AcGeVector3d out = m_refVec * c + across * s;
    if (count > 0) derivatives[0] = across * c - m_refVec * s;
    if (count > 1) derivatives[1] = -out;
    return m_center + out;
}

double AcGeCircArc3d::arcLength(double from, double to) const { return m_radius * (to - from); }

double AcGeCircArc3d::nearestParam(const AcGePoint3d& p) const {
    const AcGeVector3d out = p - m_center;
    const double angle =
        std::atan2(out.dotProduct(m_normal.crossProduct(m_refVec)), out.dotProduct(m_refVec));
    const double inside = host::TurnedInto(angle, m_startAng);
    if (inside <= m_endAng) return inside;
    return startPoint().distanceTo(p) <= endPoint().distanceTo(p) ? m_startAng : m_endAng;
}

AcGeBoundBlock3d AcGeCircArc3d::box() const {
    return SweepBox(*this, m_refVec, m_normal.crossProduct(m_refVec), m_startAng, m_endAng);
}

bool AcGeCircArc3d::liesInPlane(AcGePlane& plane, const AcGeTol&) const {
    plane.set(m_center, m_normal);
    return true;
}

AcGeEllipArc3d::AcGeEllipArc3d() : AcGeEllipArc3d(AcGeCircArc3d()) {}

AcGeEllipArc3d::AcGeEllipArc3d(const AcGeCircArc3d& arc)
    : AcGeEllipArc3d(arc.center(), arc.refVec(), arc.normal().crossProduct(arc.refVec()),
                     arc.radius(), arc.radius(), arc.startAng(), arc.endAng()) {}

AcGeEllipArc3d::AcGeEllipArc3d(const AcGePoint3d& center, const AcGeVector3d& majorAxis,
                               const AcGeVector3d& minorAxis, double majorRadius,
                               double minorRadius)
    : AcGeEllipArc3d(center, majorAxis, minorAxis, majorRadius, minorRadius, 0.0, host::kTwoPi) {}

AcGeEllipArc3d::AcGeEllipArc3d(const AcGePoint3d& center, const AcGeVector3d& majorAxis,
                               const AcGeVector3d& minorAxis, double majorRadius,
                               double minorRadius, double startAng, double endAng)
    : m_center(center),
      m_majorAxis(majorAxis.normal()),
      m_minorAxis(Upright(minorAxis, m_majorAxis)),
      m_majorRadius(majorRadius),
      m_minorRadius(minorRadius),
      m_startAng(startAng),
      m_endAng(endAng) {}

bool AcGeEllipArc3d::isCircular(const AcGeTol& tol) const {
    return std::fabs(m_majorRadius - m_minorRadius) <= tol.equalPoint();
}

AcGeEllipArc3d& AcGeEllipArc3d::setAngles(double startAng, double endAng) {
    m_startAng = startAng;
    m_endAng = endAng;
    return *this;
}

// The images a and b of the half axes are conjugate; turned by theta with
// tan 2 theta = 2 a.b / (a.a - b.b) they are at right angles again, and the parameters fall by
// theta.
void AcGeEllipArc3d::apply(const AcGeMatrix3d& m) {
    const AcGeVector3d a = m * (m_majorAxis * m_majorRadius);
    const AcGeVector3d b = m * (m_minorAxis * m_minorRadius);
    const double skew = 2.0 * a.dotProduct(b), stretch = a.lengthSqrd() - b.lengthSqrd();
    // Half axes that stay at right angles are kept, or exchanged, without a trace of rounding.
    const double rounding = kAxisRounding * (a.lengthSqrd() + b.lengthSqrd());
    const bool square = std::fabs(skew) <= rounding, exchanged = square && stretch < -rounding;
    const double theta = exchanged ? host::kPi / 2 : square ? 0.0 : 0.5 * std::atan2(skew, stretch);
    const double c = exchanged ? 0.0 : std::cos(theta), s = std::sin(theta);
    const AcGeVector3d newMajor = a * c + b * s;
    const AcGeVector3d newMinor = b * c - a * s;
    m_center.transformBy(m);
    m_majorRadius = newMajor.length();
    m_minorRadius = newMinor.length();
    m_majorAxis = newMajor.normal();
    m_minorAxis = Upright(newMinor, m_majorAxis);
    m_startAng -= theta;
    m_endAng -= theta;
}

bool AcGeEllipArc3d::equals(const AcGeEntity3d& other, const AcGeTol& tol) const {
    const AcGeEllipArc3d& arc = static_cast<const AcGeEllipArc3d&>(other);
    return m_center.isEqualTo(arc.m_center, tol) &&
           m_majorAxis.isCodirectionalTo(arc.m_majorAxis, tol) &&
           m_minorAxis.isCodirectionalTo(arc.m_minorAxis, tol) &&
           std::fabs(m_majorRadius - arc.m_majorRadius) <= tol.equalPoint() &&
           std::fabs(m_minorRadius - arc.m_minorRadius) <= tol.equalPoint() &&
           startPoint().isEqualTo(arc.startPoint(), tol) &&
           std::fabs((m_endAng - m_startAng) - (arc.m_endAng - arc.m_startAng)) * m_majorRadius <=
               tol.equalPoint();
}

AcGePoint3d AcGeEllipArc3d::eval(double param, int count, AcGeVector3d* derivatives) const {
    const AcGeVector3d a = m_majorAxis * m_majorRadius, b = m_minorAxis * m_minorRadius;
    const double c = std::cos(param), s = std::sin(param);
    const AcGeVector3d out = a * c + b * s;
    if (count > 0) derivatives[0] = b * c - a * s;
    if (count > 1) derivatives[1] = -out;
    return m_center + out;
}

double AcGeEllipArc3d::nearestParam(const AcGePoint3d& p) const {
    AcGeDoubleArray breaks;
    breaks.append(m_startAng);
    breaks.append(m_endAng);
    return host::NearestParam([this](double t, int n, AcGeVector3d* d) { return eval(t, n, d); },
                              breaks, kEllipseSamples, p);
}

AcGeBoundBlock3d AcGeEllipArc3d::box() const {
    return SweepBox(*this, m_majorAxis * m_majorRadius, m_minorAxis * m_minorRadius, m_startAng,
                    m_endAng);
}

bool AcGeEllipArc3d::liesInPlane(AcGePlane& plane, const AcGeTol&) const {
    plane.set(m_center, normal());
    return true;
}
