// Scale factors along the three axes.
#pragma once

#include "gegbl.h"

class AcGeMatrix3d;

// What block references are scaled by; a negative factor mirrors.
class AcGeScale3d {
public:
    double sx = 1.0, sy = 1.0, sz = 1.0;

    constexpr AcGeScale3d() = default;
    // the same along all three
    explicit constexpr AcGeScale3d(double factor) : sx(factor), sy(factor), sz(factor) {}
    constexpr AcGeScale3d(double x, double y, double z) : sx(x), sy(y), sz(z) {}

    static const AcGeScale3d kIdentity;  // (1, 1, 1)

    AcGeScale3d& set(double x, double y, double z) {
        sx = x;
        sy = y;
        sz = z;
        return *this;
    }
    // 0 is sx, 1 is sy, everything else sz
    double operator[](unsigned int i) const { return i == 0 ? sx : i == 1 ? sy : sz; }
    double& operator[](unsigned int i) { return i == 0 ? sx : i == 1 ? sy : sz; }
    // one after the other
    AcGeScale3d operator*(const AcGeScale3d& s) const { return {sx * s.sx, sy * s.sy, sz * s.sz}; }
    AcGeScale3d operator*(double s) const { return {sx * s, sy * s, sz * s}; }
    // No factor may be 0.
    AcGeScale3d inverse() const { return {1.0 / sx, 1.0 / sy, 1.0 / sz}; }
    void getMatrix(AcGeMatrix3d& m) const;  // about the origin

    // All three of the same size within equalVector, whatever the signs.
    bool isProportional(const AcGeTol& tol = AcGeContext::gTol) const;
    // each within equalVector
    bool isEqualTo(const AcGeScale3d& s, const AcGeTol& tol = AcGeContext::gTol) const;
    bool operator==(const AcGeScale3d& s) const { return isEqualTo(s); }
    bool operator!=(const AcGeScale3d& s) const { return !isEqualTo(s); }
};
