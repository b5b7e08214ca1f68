// Regions: plane faces.
#pragma once

#include "dbbody.h"

class AcDbRegion : public host::ModelledEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbRegion);  // in files: REGION
    AcDbRegion() = default;

    // One region for each closed coplanar loop of the curves, which stay the caller's. The regions
    // are new and the caller's. eInvalidInput when nothing is closed, eSelfIntersecting,
    // eNonCoplanarGeometry, eNotImplementedYet without a modeller.
    static Acad::ErrorStatus createFromCurves(const AcDbVoidPtrArray& curves,
                                              AcDbVoidPtrArray& regions);
    Acad::ErrorStatus getArea(double& area) const;
    bool isPlanar() const override { return true; }

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};
