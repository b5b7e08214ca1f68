// Points in space.
#pragma once

#include "gepnt2d.h"
#include "gevec3d.h"

// A place; equality is by the global tolerance, unlike that of plain numbers.
class AcGePoint3d {
public:
    double x = 0.0, y = 0.0, z = 0.0;

    constexpr AcGePoint3d() = default;  // the origin
    constexpr AcGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
    // The point with these coordinates in the plane's own axes.
    AcGePoint3d(const AcGePlanarEnt& plane, const AcGePoint2d& p);

    static const AcGePoint3d kOrigin;  // (0, 0, 0)

    AcGePoint3d& set(double xx, double yy, double zz) {
        x = xx;
        y = yy;
        z = zz;
        return *this;
    }
    // 0 is x, 1 is y, everything else z
    double operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : z; }
    double& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : z; }
    AcGeVector3d asVector() const { return {x, y, z}; }  // from the origin to it

    // moved by a vector
    AcGePoint3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    AcGePoint3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    AcGePoint3d& operator+=(const AcGeVector3d& v) { return *this = *this + v; }
    AcGePoint3d& operator-=(const AcGeVector3d& v) { return *this = *this - v; }
    // from p to this one
    AcGeVector3d operator-(const AcGePoint3d& p) const { return {x - p.x, y - p.y, z - p.z}; }
    AcGePoint3d operator*(double s) const { return {x * s, y * s, z * s}; }  // from the origin
    AcGePoint3d operator/(double s) const { return {x / s, y / s, z / s}; }

    double distanceTo(const AcGePoint3d& p) const { return (*this - p).length(); }  // drawing units
    // Distance (not per axis) not above equalPoint.
    bool isEqualTo(const AcGePoint3d& p, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(p) <= tol.equalPoint();
    }
    bool operator==(const AcGePoint3d& p) const { return isEqualTo(p); }
    bool operator!=(const AcGePoint3d& p) const { return !isEqualTo(p); }

    // Coordinates in the plane's own axes; the offset from the plane is dropped.
    AcGePoint2d convert2d(const AcGePlanarEnt& plane) const;
    // Where the line through this point along dir meets the plane; the point itself when dir lies
    // in the plane.
    AcGePoint3d project(const AcGePlanarEnt& plane, const AcGeVector3d& dir) const;
    AcGePoint3d orthoProject(const AcGePlanarEnt& plane) const;  // the foot of the perpendicular

    AcGePoint3d& rotateBy(double angle,
                          const AcGeVector3d& axis,  // by the right-hand rule, radians
                          const AcGePoint3d& centre = kOrigin);
    AcGePoint3d& mirror(const AcGePlanarEnt& plane);                           // at the plane
    AcGePoint3d& scaleBy(double factor, const AcGePoint3d& centre = kOrigin);  // from the centre
    AcGePoint3d& transformBy(const AcGeMatrix3d& m);
};

inline AcGePoint3d AcGeVector3d::asPoint() const { return {x, y, z}; }
