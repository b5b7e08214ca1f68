// Points in the plane.
#pragma once

#include "gevec2d.h"

// A place; equality is by the global tolerance, unlike that of plain numbers.
class AcGePoint2d {
public:
    double x = 0.0, y = 0.0;

    constexpr AcGePoint2d() = default;  // the origin
    constexpr AcGePoint2d(double xx, double yy) : x(xx), y(yy) {}

    static const AcGePoint2d kOrigin;  // (0, 0)

    AcGePoint2d& set(double xx, double yy) {
        x = xx;
        y = yy;
        return *this;
    }
    double operator[](unsigned int i) const { return i == 0 ? x : y; }  // 0 is x, everything else y
    double& operator[](unsigned int i) { return i == 0 ? x : y; }
    AcGeVector2d asVector() const { return {x, y}; }  // from the origin to it

    // moved by a vector
    AcGePoint2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
    AcGePoint2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
    AcGePoint2d& operator+=(const AcGeVector2d& v) { return *this = *this + v; }
    AcGePoint2d& operator-=(const AcGeVector2d& v) { return *this = *this - v; }
    // from p to this one
    AcGeVector2d operator-(const AcGePoint2d& p) const { return {x - p.x, y - p.y}; }
    AcGePoint2d operator*(double s) const { return {x * s, y * s}; }  // from the origin

    double distanceTo(const AcGePoint2d& p) const { return (*this - p).length(); }  // drawing units
    // Distance not above equalPoint.
    bool isEqualTo(const AcGePoint2d& p, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(p) <= tol.equalPoint();
    }
    bool operator==(const AcGePoint2d& p) const { return isEqualTo(p); }
    bool operator!=(const AcGePoint2d& p) const { return !isEqualTo(p); }

    // counter-clockwise, radians
    AcGePoint2d& rotateBy(double angle, const AcGePoint2d& centre = kOrigin);
    AcGePoint2d& scaleBy(double factor, const AcGePoint2d& centre = kOrigin);  // from the centre
    AcGePoint2d& transformBy(const AcGeMatrix2d& m);
};

inline AcGePoint2d AcGeVector2d::asPoint() const { return {x, y}; }
