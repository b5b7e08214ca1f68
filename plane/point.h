// Points and vectors of the plane, as plain numbers.
//
// Everything in this folder needs the standard library alone: the plug-in takes it along to
// AutoCAD, the host and the programs stand on it. Lengths are in drawing units, angles in radians,
// counter-clockwise positive. Tolerances are always arguments, in drawing units, and "within a
// tolerance" includes the tolerance itself.
#pragma once

#include <cmath>

namespace plane {

// A direction with a length.
struct Vector {
    double x = 0.0, y = 0.0;

    Vector operator+(const Vector& v) const { return {x + v.x, y + v.y}; }
    Vector operator-(const Vector& v) const { return {x - v.x, y - v.y}; }
    Vector operator-() const { return {-x, -y}; }
    Vector operator*(double s) const { return {x * s, y * s}; }
    Vector operator/(double s) const { return {x / s, y / s}; }
};

// A place. Equality is that of the numbers: what counts as one place is the caller's tolerance.
struct Point {
    double x = 0.0, y = 0.0;

    Point operator+(const Vector& v) const { return {x + v.x, y + v.y}; }
    Point operator-(const Vector& v) const { return {x - v.x, y - v.y}; }
    Vector operator-(const Point& p) const { return {x - p.x, y - p.y}; }
    bool operator==(const Point& p) const { return x == p.x && y == p.y; }
    bool operator!=(const Point& p) const { return !(*this == p); }
};

inline double Dot(const Vector& a, const Vector& b) { return a.x * b.x + a.y * b.y; }
// Positive when b points to the left of a; twice the area of their triangle.
inline double Cross(const Vector& a, const Vector& b) { return a.x * b.y - a.y * b.x; }
// By the square root and not by hypot(): drawings end long before the squares overflow, and the
// root rounds alike on every machine.
inline double Length(const Vector& v) { return std::sqrt(v.x * v.x + v.y * v.y); }
inline double Distance(const Point& a, const Point& b) { return Length(a - b); }

// The vector with length 1; the zero vector stays what it is.
inline Vector Unit(const Vector& v) {
    const double length = Length(v);
    return length > 0.0 ? Vector{v.x / length, v.y / length} : Vector{};
}

// A quarter turn counter-clockwise, same length.
inline Vector Left(const Vector& v) { return {-v.y, v.x}; }

// A turn by an angle, counter-clockwise.
inline Vector Turned(const Vector& v, double angle) {
    const double c = std::cos(angle), s = std::sin(angle);
    return {v.x * c - v.y * s, v.x * s + v.y * c};
}

// The angle from +x, in (-pi, pi]; 0 for the zero vector.
inline double AngleOf(const Vector& v) { return std::atan2(v.y, v.x); }

// True when both numbers are finite.
inline bool IsFinite(const Point& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

// Named so because AutoCAD's geometry headers take the usual names.
inline constexpr double kHalfTurn = 3.14159265358979323846;
inline constexpr double kFullTurn = 6.28318530717958647692;

}  // namespace plane
