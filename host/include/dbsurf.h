// Surfaces: kept as they are stored.
#pragma once

#include "dbbody.h"

// SURFACE and its kin: read, kept and written; nothing can be asked but what every entity answers.
class AcDbSurface : public host::ModelledEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbSurface);  // in files: SURFACE and its kin
    AcDbSurface() = default;
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};
