// Vectors in space.
#pragma once

#include <cmath>

#include "gevec2d.h"

class AcGePoint3d;
class AcGeMatrix3d;
class AcGePlanarEnt;

// A direction with a length.
class AcGeVector3d {
public:
    double x = 0.0, y = 0.0, z = 0.0;  // drawing units

    constexpr AcGeVector3d() = default;  // no length
    constexpr AcGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

    static const AcGeVector3d kIdentity;  // the zero vector: neutral for addition
    static const AcGeVector3d kXAxis;     // (1, 0, 0)
    static const AcGeVector3d kYAxis;     // (0, 1, 0)
    static const AcGeVector3d kZAxis;     // (0, 0, 1)

    AcGeVector3d& set(double xx, double yy, double zz) {
        x = xx;
        y = yy;
        z = zz;
        return *this;
    }
    // 0 is x, 1 is y, everything else z
    double operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : z; }
    double& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : z; }

    AcGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
    AcGeVector3d operator/(double s) const { return {x / s, y / s, z / s}; }
    AcGeVector3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    AcGeVector3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    AcGeVector3d operator-() const { return {-x, -y, -z}; }
    AcGeVector3d& operator*=(double s) { return *this = *this * s; }
    AcGeVector3d& operator/=(double s) { return *this = *this / s; }
    AcGeVector3d& operator+=(const AcGeVector3d& v) { return *this = *this + v; }
    AcGeVector3d& operator-=(const AcGeVector3d& v) { return *this = *this - v; }
    AcGeVector3d& negate() { return *this = -*this; }  // turns it round

    // 0 for a right angle
    double dotProduct(const AcGeVector3d& v) const { return x * v.x + y * v.y + z * v.z; }
    // At right angles to both, by the right-hand rule; as long as their parallelogram is large.
    AcGeVector3d crossProduct(const AcGeVector3d& v) const {
        return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
    }
    double lengthSqrd() const { return x * x + y * y + z * z; }  // no root: for comparing
    double length() const { return std::sqrt(x * x + y * y + z * z); }
    // Of a zero vector: the zero vector.
    AcGeVector3d normal() const {
        const double len = length();
        return len > 0.0 ? AcGeVector3d(x / len, y / len, z / len) : AcGeVector3d();
    }
    AcGeVector3d& normalize() { return *this = normal(); }  // to length 1
    // a zero vector stays one
    AcGeVector3d& setToLength(double len) { return *this = normal() * len; }
    AcGePoint3d asPoint() const;  // from the origin

    // A unit vector at right angles to this one: the x axis the arbitrary axis rule gives this
    // vector as a normal (DXF reference). Of a zero vector: the x axis.
    AcGeVector3d perpVector() const;

    // Components along the axes of a plane.
    AcGeVector2d convert2d(const AcGePlanarEnt& plane) const;
    // the part at right angles to the normal
    AcGeVector3d orthoProject(const AcGeVector3d& planeNormal) const;

    // The angle between both, radians in [0, pi].
    double angleTo(const AcGeVector3d& v) const;
    // From this one to v counter-clockwise as seen against refAxis, radians in [0, 2 pi).
    double angleTo(const AcGeVector3d& v, const AcGeVector3d& refAxis) const;

    // by the right-hand rule, radians
    AcGeVector3d& rotateBy(double angle, const AcGeVector3d& axis);
    AcGeVector3d& mirror(const AcGeVector3d& planeNormal);  // at the plane with that normal
    // Translation does not act on vectors.
    AcGeVector3d& transformBy(const AcGeMatrix3d& m);

    bool isEqualTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const {
        return (*this - v).length() <= tol.equalVector();
    }
    bool isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const {  // no longer than equalVector
        return length() <= tol.equalVector();
    }
    bool isUnitLength(const AcGeTol& tol = AcGeContext::gTol) const {  // within equalVector of 1
        return std::fabs(length() - 1.0) <= tol.equalVector();
    }
    // With unit vectors u and v: |u - v| < equalVector or |u + v| < equalVector (strict). False
    // when one has no length. Codirectional: the first half of it.
    bool isParallelTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isCodirectionalTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    // |u . v| <= equalVector. False when one has no length.
    bool isPerpendicularTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    bool operator==(const AcGeVector3d& v) const { return isEqualTo(v); }
    bool operator!=(const AcGeVector3d& v) const { return !isEqualTo(v); }
};

inline AcGeVector3d operator*(double s, const AcGeVector3d& v) { return v * s; }
