#include <algorithm>
#include <cmath>

#include "geline3d.h"
#include "gemat2d.h"
#include "gemat3d.h"
#include "geplane.h"
#include "gescl3d.h"

namespace {

// Whether all entries of two matrices agree within tol.
template <int N>
bool EntriesAgree(const double (&a)[N][N], const double (&b)[N][N], double tol) {
    for (int row = 0; row < N; ++row)
        for (int col = 0; col < N; ++col)
            if (!(std::fabs(a[row][col] - b[row][col]) <= tol)) return false;
    return true;
}

template <int N>
void Multiply(const double (&a)[N][N], const double (&b)[N][N], double (&product)[N][N]) {
    for (int row = 0; row < N; ++row) {
        for (int col = 0; col < N; ++col) {
            double sum = 0.0;
            for (int k = 0; k < N; ++k) sum += a[row][k] * b[k][col];
            product[row][col] = sum;
        }
    }
}

// The map with the given linear part that leaves centre where it is.
AcGeMatrix3d About(AcGeMatrix3d m, const AcGePoint3d& centre) {
    const AcGeVector3d c = centre.asVector();
    const AcGeVector3d shift = c - m * c;
    for (int row = 0; row < 3; ++row) m.entry[row][3] = shift[row];
    return m;
}

AcGeMatrix2d About(AcGeMatrix2d m, const AcGePoint2d& centre) {
    const AcGeVector2d shift = centre.asVector() - m * centre.asVector();
    m.entry[0][2] = shift.x;
    m.entry[1][2] = shift.y;
    return m;
}

AcGeVector3d Column(const AcGeMatrix3d& m, int col) {
    return {m.entry[0][col], m.entry[1][col], m.entry[2][col]};
}

// linear = alongAxis * identity + outer * (axis times its transpose), for a unit axis.
AcGeMatrix3d AxisMap(double identity, double outer, const AcGeVector3d& axis) {
    AcGeMatrix3d m;
    for (int row = 0; row < 3; ++row)
        for (int col = 0; col < 3; ++col)
            m.entry[row][col] = (row == col ? identity : 0.0) + outer * axis[row] * axis[col];
    return m;
}

}  // namespace

AcGeMatrix2d AcGeMatrix2d::translation(const AcGeVector2d& v) {
    AcGeMatrix2d m;
    m.entry[0][2] = v.x;
    m.entry[1][2] = v.y;
    return m;
}

AcGeMatrix2d AcGeMatrix2d::rotation(double angle, const AcGePoint2d& centre) {
    const double c = std::cos(angle), s = std::sin(angle);
    return About(AcGeMatrix2d{{{c, -s, 0}, {s, c, 0}, {0, 0, 1}}}, centre);
}

AcGeMatrix2d AcGeMatrix2d::scaling(double factor, const AcGePoint2d& centre) {
    return About(AcGeMatrix2d{{{factor, 0, 0}, {0, factor, 0}, {0, 0, 1}}}, centre);
}

AcGeMatrix2d& AcGeMatrix2d::setToTranslation(const AcGeVector2d& v) {
    return *this = translation(v);
}

AcGeMatrix2d& AcGeMatrix2d::setToRotation(double angle, const AcGePoint2d& centre) {
    return *this = rotation(angle, centre);
}

AcGeMatrix2d& AcGeMatrix2d::setToScaling(double factor, const AcGePoint2d& centre) {
    return *this = scaling(factor, centre);
}

AcGeMatrix2d AcGeMatrix2d::operator*(const AcGeMatrix2d& m) const {
    AcGeMatrix2d product;
    Multiply(entry, m.entry, product.entry);
    return product;
}

AcGeVector2d AcGeMatrix2d::operator*(const AcGeVector2d& v) const {
    return {entry[0][0] * v.x + entry[0][1] * v.y, entry[1][0] * v.x + entry[1][1] * v.y};
}

AcGePoint2d AcGeMatrix2d::operator*(const AcGePoint2d& p) const {
    return {entry[0][0] * p.x + entry[0][1] * p.y + entry[0][2],
            entry[1][0] * p.x + entry[1][1] * p.y + entry[1][2]};
}

double AcGeMatrix2d::det() const { return entry[0][0] * entry[1][1] - entry[0][1] * entry[1][0]; }

AcGeMatrix2d AcGeMatrix2d::inverse() const {
    const double d = det();
    if (d == 0.0) return kIdentity;
    AcGeMatrix2d m{{{entry[1][1] / d, -entry[0][1] / d, 0},
                    {-entry[1][0] / d, entry[0][0] / d, 0},
                    {0, 0, 1}}};
    const AcGeVector2d shift = m * AcGeVector2d(entry[0][2], entry[1][2]);
    m.entry[0][2] = -shift.x;
    m.entry[1][2] = -shift.y;
    return m;
}

bool AcGeMatrix2d::isEqualTo(const AcGeMatrix2d& m, const AcGeTol& tol) const {
    return EntriesAgree(entry, m.entry, tol.equalVector());
}

AcGeMatrix3d AcGeMatrix3d::translation(const AcGeVector3d& v) {
    AcGeMatrix3d m;
    for (int row = 0; row < 3; ++row) m.entry[row][3] = v[row];
    return m;
}

// Rodrigues' formula: cos I + (1 - cos) a a^T + sin [a]x.
AcGeMatrix3d AcGeMatrix3d::rotation(double angle, const AcGeVector3d& axis,
                                    const AcGePoint3d& centre) {
    const AcGeVector3d a = axis.normal();
    if (a.lengthSqrd() == 0.0) return kIdentity;
    const double c = std::cos(angle), s = std::sin(angle);
    AcGeMatrix3d m = AxisMap(c, 1.0 - c, a);
    m.entry[0][1] -= s * a.z;
    m.entry[0][2] += s * a.y;
    m.entry[1][0] += s * a.z;
    m.entry[1][2] -= s * a.x;
    m.entry[2][0] -= s * a.y;
    m.entry[2][1] += s * a.x;
    return About(m, centre);
}

AcGeMatrix3d AcGeMatrix3d::scaling(double factor, const AcGePoint3d& centre) {
    return About(AxisMap(factor, 0.0, AcGeVector3d::kZAxis), centre);
}

AcGeMatrix3d AcGeMatrix3d::mirroring(const AcGePlane& plane) {
    return About(AxisMap(1.0, -2.0, plane.normal()), plane.pointOnPlane());
}

AcGeMatrix3d AcGeMatrix3d::mirroring(const AcGePoint3d& point) { return scaling(-1.0, point); }

AcGeMatrix3d AcGeMatrix3d::mirroring(const AcGeLine3d& line) {
    return About(AxisMap(-1.0, 2.0, line.direction()), line.pointOnLine());
}

AcGeMatrix3d& AcGeMatrix3d::setToTranslation(const AcGeVector3d& v) {
    return *this = translation(v);
}

AcGeMatrix3d& AcGeMatrix3d::setToRotation(double angle, const AcGeVector3d& axis,
                                          const AcGePoint3d& centre) {
    return *this = rotation(angle, axis, centre);
}

AcGeMatrix3d& AcGeMatrix3d::setToScaling(double factor, const AcGePoint3d& centre) {
    return *this = scaling(factor, centre);
}

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGePlane& plane) {
    return *this = mirroring(plane);
}

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGePoint3d& point) {
    return *this = mirroring(point);
}

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGeLine3d& line) {
    return *this = mirroring(line);
}

AcGeMatrix3d AcGeMatrix3d::operator*(const AcGeMatrix3d& m) const {
    AcGeMatrix3d product;
    Multiply(entry, m.entry, product.entry);
    return product;
}

AcGePoint3d AcGeMatrix3d::operator*(const AcGePoint3d& p) const {
    return {entry[0][0] * p.x + entry[0][1] * p.y + entry[0][2] * p.z + entry[0][3],
            entry[1][0] * p.x + entry[1][1] * p.y + entry[1][2] * p.z + entry[1][3],
            entry[2][0] * p.x + entry[2][1] * p.y + entry[2][2] * p.z + entry[2][3]};
}

AcGeVector3d AcGeMatrix3d::operator*(const AcGeVector3d& v) const {
    return {entry[0][0] * v.x + entry[0][1] * v.y + entry[0][2] * v.z,
            entry[1][0] * v.x + entry[1][1] * v.y + entry[1][2] * v.z,
            entry[2][0] * v.x + entry[2][1] * v.y + entry[2][2] * v.z};
}

double AcGeMatrix3d::det() const {
    return Column(*this, 0).dotProduct(Column(*this, 1).crossProduct(Column(*this, 2)));
}

// Against the volume the lengths of the columns could span, so that tiny maps are not singular.
bool AcGeMatrix3d::isSingular(const AcGeTol& tol) const {
    const double span =
        Column(*this, 0).length() * Column(*this, 1).length() * Column(*this, 2).length();
    return !(std::fabs(det()) > tol.equalVector() * span);
}

AcGeMatrix3d AcGeMatrix3d::inverse() const {
    const double d = det();
    if (d == 0.0) return kIdentity;
    const AcGeVector3d a = Column(*this, 0), b = Column(*this, 1), c = Column(*this, 2);
    const AcGeVector3d rows[3] = {b.crossProduct(c) / d, c.crossProduct(a) / d,
                                  a.crossProduct(b) / d};
    AcGeMatrix3d m;
    for (int row = 0; row < 3; ++row) {
        for (int col = 0; col < 3; ++col) m.entry[row][col] = rows[row][col];
        m.entry[row][3] = -rows[row].dotProduct(translation());
    }
    return m;
}

AcGeMatrix3d AcGeMatrix3d::transpose() const {
    AcGeMatrix3d m;
    for (int row = 0; row < 4; ++row)
        for (int col = 0; col < 4; ++col) m.entry[row][col] = entry[col][row];
    return m;
}

bool AcGeMatrix3d::isScaledOrtho(const AcGeTol& tol) const {
    const AcGeVector3d x = Column(*this, 0), y = Column(*this, 1), z = Column(*this, 2);
    return x.isPerpendicularTo(y, tol) && y.isPerpendicularTo(z, tol) &&
           z.isPerpendicularTo(x, tol);
}

bool AcGeMatrix3d::isUniScaledOrtho(const AcGeTol& tol) const {
    const double s = scale();
    for (int col = 0; col < 3; ++col)
        if (!(s - Column(*this, col).length() <= tol.equalVector() * s)) return false;
    return isScaledOrtho(tol);
}

double AcGeMatrix3d::scale() const {
    return (std::max)(
        {Column(*this, 0).length(), Column(*this, 1).length(), Column(*this, 2).length()});
}

bool AcGeMatrix3d::isEqualTo(const AcGeMatrix3d& m, const AcGeTol& tol) const {
    return EntriesAgree(entry, m.entry, tol.equalVector());
}

AcGeMatrix3d& AcGeMatrix3d::setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& x,
                                           const AcGeVector3d& y, const AcGeVector3d& z) {
    setToIdentity();
    for (int row = 0; row < 3; ++row) {
        entry[row][0] = x[row];
        entry[row][1] = y[row];
        entry[row][2] = z[row];
        entry[row][3] = origin[row];
    }
    return *this;
}

void AcGeMatrix3d::getCoordSystem(AcGePoint3d& origin, AcGeVector3d& x, AcGeVector3d& y,
                                  AcGeVector3d& z) const {
    origin = translation().asPoint();
    x = Column(*this, 0);
    y = Column(*this, 1);
    z = Column(*this, 2);
}

AcGeMatrix3d& AcGeMatrix3d::setToAlignCoordSys(const AcGePoint3d& fromOrigin,
                                               const AcGeVector3d& fromX, const AcGeVector3d& fromY,
                                               const AcGeVector3d& fromZ,
                                               const AcGePoint3d& toOrigin, const AcGeVector3d& toX,
                                               const AcGeVector3d& toY, const AcGeVector3d& toZ) {
    AcGeMatrix3d from, to;
    from.setCoordSystem(fromOrigin, fromX, fromY, fromZ);
    to.setCoordSystem(toOrigin, toX, toY, toZ);
    return *this = to * from.inverse();
}

AcGeMatrix3d AcGeMatrix3d::planeToWorld(const AcGeVector3d& normal) {
    return planeToWorld(AcGePlane(AcGePoint3d::kOrigin, normal));
}

// The transpose: the axes are unit vectors at right angles.
AcGeMatrix3d AcGeMatrix3d::worldToPlane(const AcGeVector3d& normal) {
    return planeToWorld(normal).transpose();
}

AcGeMatrix3d AcGeMatrix3d::planeToWorld(const AcGePlane& plane) {
    AcGePoint3d origin;
    AcGeVector3d u, v;
    plane.getCoordSystem(origin, u, v);
    return AcGeMatrix3d().setCoordSystem(origin, u, v, plane.normal());
}

AcGeMatrix3d AcGeMatrix3d::worldToPlane(const AcGePlane& plane) {
    return planeToWorld(plane).inverse();
}

void AcGeScale3d::getMatrix(AcGeMatrix3d& m) const {
    m.setToIdentity();
    m.entry[0][0] = sx;
    m.entry[1][1] = sy;
    m.entry[2][2] = sz;
}

bool AcGeScale3d::isProportional(const AcGeTol& tol) const {
    const double x = std::fabs(sx);
    return std::fabs(std::fabs(sy) - x) <= tol.equalVector() &&
           std::fabs(std::fabs(sz) - x) <= tol.equalVector();
}

bool AcGeScale3d::isEqualTo(const AcGeScale3d& s, const AcGeTol& tol) const {
    return std::fabs(sx - s.sx) <= tol.equalVector() && std::fabs(sy - s.sy) <= tol.equalVector() &&
           std::fabs(sz - s.sz) <= tol.equalVector();
}
