// Hatches: patterns inside loops.
#pragma once

#include <memory>

#include "dbmain.h"

namespace host {
struct HatchData;
}

// The loops lie in the plane of the normal at the elevation.
// HATCH. Drawn and measured by its loops; hatching, associating and evaluating again are not
// carried out, so there are no setters.
class AcDbHatch : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbHatch);
    AcDbHatch();  // without loops
    ~AcDbHatch() override;

    const ACHAR* patternName() const;  // group 2; "SOLID" fills
    bool isSolidFill() const;          // group 70
    double patternScale() const;       // group 41
    double patternAngle() const;       // group 52, radians
    int numLoops() const;              // group 91
    double elevation() const;          // z of group 10
    AcGeVector3d normal() const;
    bool isPlanar() const override { return true; }

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    // Of the loops.
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    // Solid fills give the curves of their loops, patterns the lines of the pattern inside the
    // loops.
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& pieces) const override;
    void translateIds(const AcDbIdMapping& mapping) override;

private:
    AcDbHatch(const AcDbHatch& other);
    AcDbHatch& operator=(const AcDbHatch& other);
    friend struct host::Access;
    std::unique_ptr<host::HatchData> m_data;
};
