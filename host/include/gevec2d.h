// Vectors in the plane.
#pragma once

#include <cmath>

#include "gegbl.h"

class AcGePoint2d;
class AcGeMatrix2d;

// A direction with a length.
class AcGeVector2d {
public:
    double x = 0.0, y = 0.0;  // drawing units

    constexpr AcGeVector2d() = default;  // no length
    constexpr AcGeVector2d(double xx, double yy) : x(xx), y(yy) {}

    static const AcGeVector2d kIdentity;  // the zero vector: neutral for addition
    static const AcGeVector2d kXAxis;     // (1, 0)
    static const AcGeVector2d kYAxis;     // (0, 1)

    AcGeVector2d& set(double xx, double yy) {
        x = xx;
        y = yy;
        return *this;
    }
    double operator[](unsigned int i) const { return i == 0 ? x : y; }  // 0 is x, everything else y
    double& operator[](unsigned int i) { return i == 0 ? x : y; }

    AcGeVector2d operator*(double s) const { return {x * s, y * s}; }
    AcGeVector2d operator/(double s) const { return {x / s, y / s}; }
    AcGeVector2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
    AcGeVector2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
    AcGeVector2d operator-() const { return {-x, -y}; }
    AcGeVector2d& operator*=(double s) { return *this = *this * s; }
    AcGeVector2d& operator/=(double s) { return *this = *this / s; }
    AcGeVector2d& operator+=(const AcGeVector2d& v) { return *this = *this + v; }
    AcGeVector2d& operator-=(const AcGeVector2d& v) { return *this = *this - v; }
    AcGeVector2d& negate() { return *this = -*this; }  // turns it round

    // 0 for a right angle
    double dotProduct(const AcGeVector2d& v) const { return x * v.x + y * v.y; }
    double lengthSqrd() const { return x * x + y * y; }  // no root: for comparing
    double length() const { return std::sqrt(x * x + y * y); }
    // Of a zero vector: the zero vector.
    AcGeVector2d normal() const {
        const double len = length();
        return len > 0.0 ? AcGeVector2d(x / len, y / len) : AcGeVector2d();
    }
    AcGeVector2d& normalize() { return *this = normal(); }  // to length 1
    // A quarter turn counter-clockwise, same length.
    AcGeVector2d perpVector() const { return {-y, x}; }
    AcGePoint2d asPoint() const;  // from the origin

    // Counter-clockwise from +x, radians in [0, 2 pi); 0 for the zero vector.
    double angle() const;
    // The angle between both, radians in [0, pi].
    double angleTo(const AcGeVector2d& v) const;

    AcGeVector2d& rotateBy(double angle);              // counter-clockwise, radians
    AcGeVector2d& transformBy(const AcGeMatrix2d& m);  // translation does not act

    bool isEqualTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const {
        return (*this - v).length() <= tol.equalVector();
    }
    bool isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const {  // no longer than equalVector
        return length() <= tol.equalVector();
    }
    bool isUnitLength(const AcGeTol& tol = AcGeContext::gTol) const {  // within equalVector of 1
        return std::fabs(length() - 1.0) <= tol.equalVector();
    }
    // By the unit vectors, as in the plane-less case; false when one has no length.
    bool isParallelTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isCodirectionalTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isPerpendicularTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    bool operator==(const AcGeVector2d& v) const { return isEqualTo(v); }
    bool operator!=(const AcGeVector2d& v) const { return !isEqualTo(v); }
};

inline AcGeVector2d operator*(double s, const AcGeVector2d& v) { return v * s; }
