// Root of the geometric entities.
#pragma once

#include "gegbl.h"

class AcGeMatrix3d;
class AcGePlane;
class AcGePoint3d;
class AcGeVector3d;

// Value objects; copies are deep. May be deleted through this base.
class AcGeEntity3d {
public:
    virtual ~AcGeEntity3d() = default;

    AcGe::EntityId type() const { return kind(); }  // the class, as a number
    // Also true for the bases: a segment is a kLinearEnt3d, a kCurve3d and a kEntity3d.
    bool isKindOf(AcGe::EntityId entType) const;
    // A new object the caller deletes.
    AcGeEntity3d* copy() const { return clone(); }

    // Circular arcs want a uniformly scaled orthogonal map (see AcGeCircArc3d).
    AcGeEntity3d& transformBy(const AcGeMatrix3d& m) {
        apply(m);
        return *this;
    }
    // The moves below are transformBy with the matrix of that name.
    AcGeEntity3d& translateBy(const AcGeVector3d& v);
    AcGeEntity3d& rotateBy(double angle, const AcGeVector3d& axis);  // about the origin, radians
    AcGeEntity3d& rotateBy(double angle, const AcGeVector3d& axis, const AcGePoint3d& centre);
    AcGeEntity3d& mirror(const AcGePlane& plane);  // at a plane
    AcGeEntity3d& scaleBy(double factor);          // from the origin
    AcGeEntity3d& scaleBy(double factor, const AcGePoint3d& centre);

    // The same kind, and the same defining data within tol.
    bool isEqualTo(const AcGeEntity3d& other, const AcGeTol& tol = AcGeContext::gTol) const {
        return kind() == other.kind() && equals(other, tol);
    }
    bool operator==(const AcGeEntity3d& other) const { return isEqualTo(other); }
    bool operator!=(const AcGeEntity3d& other) const { return !isEqualTo(other); }

    // No farther than equalPoint from the entity; segments see AcGeLinearEnt3d.
    bool isOn(const AcGePoint3d& p, const AcGeTol& tol = AcGeContext::gTol) const {
        return hasOn(p, tol);
    }

protected:
    AcGeEntity3d() = default;
    AcGeEntity3d(const AcGeEntity3d&) = default;
    AcGeEntity3d& operator=(const AcGeEntity3d&) = default;

    virtual AcGe::EntityId kind() const = 0;
    virtual AcGeEntity3d* clone() const = 0;
    virtual void apply(const AcGeMatrix3d& m) = 0;
    // Called with an entity of the same kind only.
    virtual bool equals(const AcGeEntity3d& other, const AcGeTol& tol) const = 0;
    virtual bool hasOn(const AcGePoint3d& p, const AcGeTol& tol) const = 0;
};
