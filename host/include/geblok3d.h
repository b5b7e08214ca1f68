// Boxes along the axes.
#pragma once

#include "geent3d.h"
#include "gepnt3d.h"

// Unlike AutoCAD, only boxes parallel to the axes.
class AcGeBoundBlock3d : public AcGeEntity3d {
public:
    AcGeBoundBlock3d() = default;  // the origin alone
    AcGeBoundBlock3d(const AcGePoint3d& p, const AcGePoint3d& q) { set(p, q); }

    AcGePoint3d minPoint() const { return m_min; }  // lowest corner
    AcGePoint3d maxPoint() const { return m_max; }
    void getMinMaxPoints(AcGePoint3d& lower, AcGePoint3d& upper) const {
        lower = m_min;
        upper = m_max;
    }
    AcGeBoundBlock3d& set(const AcGePoint3d& p, const AcGePoint3d& q);  // corners in any order
    AcGeBoundBlock3d& extend(const AcGePoint3d& p);                     // grows to hold the point
    AcGeBoundBlock3d& swell(double distance);                           // outwards on all sides
    bool contains(const AcGePoint3d& p) const;                          // the border belongs to it
    // no point in common, not even of the borders
    bool isDisjoint(const AcGeBoundBlock3d& other) const;

protected:
    AcGe::EntityId kind() const override { return AcGe::kBoundBlock3d; }
    AcGeEntity3d* clone() const override { return new AcGeBoundBlock3d(*this); }
    // The box around the eight moved corners.
    void apply(const AcGeMatrix3d& m) override;
    bool equals(const AcGeEntity3d& other, const AcGeTol& tol) const override;
    bool hasOn(const AcGePoint3d& p, const AcGeTol& tol) const override;

private:
    AcGePoint3d m_min, m_max;
};
