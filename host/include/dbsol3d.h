// Solid bodies.
#pragma once

#include "dbRevolveOptions.h"
#include "dbbody.h"
#include "dbregion.h"

// 3DSOLID. Solids are made by revolving alone; primitives, extruding, booleans, sections and mass
// properties but the volume are not carried out.
class AcDb3dSolid : public host::ModelledEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDb3dSolid);  // in files: 3DSOLID
    AcDb3dSolid() = default;

    // Turns a closed planar curve or a region about an axis in its plane that it touches or leaves
    // outside. The solid must be new or open for write, the profile open for read. Angles in
    // radians, right-hand rule. On failure the solid stays as it was: eInvalidInput (open profile,
    // zero angle), eInvalidAxis, eSelfIntersecting, eDegenerateGeometry, eGeneralModelingFailure,
    // eNotImplementedYet without a modeller.
    Acad::ErrorStatus createRevolvedSolid(AcDbEntity* profile, const AcGePoint3d& axisPoint,
                                          const AcGeVector3d& axisDirection, double revolveAngle,
                                          double startAngle, AcDbRevolveOptions& options);
    // The same of a region, from angle 0 on.
    Acad::ErrorStatus revolve(const AcDbRegion* region, const AcGePoint3d& axisPoint,
                              const AcGeVector3d& axisDirection, double angleOfRevolution);
    // Volume in cubic drawing units.
    // O(curves of the profile); eNotImplementedYet for a solid that was read.
    Acad::ErrorStatus getVolume(double& volume) const;

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};
