// What all geometry classes share: the global tolerance, kinds of entities.
#pragma once

#include "adesk.h"
#include "getol.h"

namespace AcGe {
// Classes and their bases; not all of AutoCAD's: those that curves of drawings need.
enum EntityId {
    kEntity3d,
    kPlanarEnt,
    kPlane,
    kBoundBlock3d,
    kCurve3d,
    kLinearEnt3d,
    kLine3d,
    kRay3d,
    kLineSeg3d,
    kCircArc3d,
    kEllipArc3d,
    kSplineEnt3d,
    kNurbCurve3d
};
}  // namespace AcGe

// The tolerance that stands where none is given.
struct AcGeContext {
    // The default argument of all tests. Mutable; set it only while no other thread computes.
    static AcGeTol gTol;  // 1e-10 and 1e-10 at first
};
