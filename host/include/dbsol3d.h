// Solid bodies.
#pragma once

#include "dbRevolveOptions.h"
#include "dbbody.h"
#include "dbregion.h"

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
    Acad::ErrorStatus revolve(const AcDbRegion* region, const AcGePoint3d& axisPoint,
                              const AcGeVector3d& axisDirection, double angleOfRevolution);
    // Volume in cubic drawing units.
    Acad::ErrorStatus getVolume(double& volume) const;

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};
