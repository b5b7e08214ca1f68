// Regions: plane faces.
#pragma once

#include "dbbody.h"

// REGION, as far as revolving needs one. Booleans, moments and faces are not carried out.
class AcDbRegion : public host::ModelledEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbRegion);  // in files: REGION
    AcDbRegion() = default;

    // One region for each closed coplanar loop of the curves, which stay the caller's. The regions
    // are new and the caller's. eInvalidInput when nothing is closed, eSelfIntersecting,
    // eNonCoplanarGeometry, eNotImplementedYet without a modeller.
    static Acad::ErrorStatus createFromCurves(const AcDbVoidPtrArray& curves,
                                              AcDbVoidPtrArray& regions);
    // Drawing units squared; eNotApplicable for a region without a shape here.
    Acad::ErrorStatus getArea(double& area) const;
    bool isPlanar() const override { return true; }

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};
