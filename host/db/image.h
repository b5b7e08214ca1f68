// Raster images and wipeouts: pictures in a frame.
#pragma once

#include <vector>

#include "dbmain.h"
#include "gept2dar.h"

// The picture's pixel (u, v) lies at origin + u * uVector + v * vVector (WCS). The boundary is in
// pixels, (-0.5, -0.5) being the lower left corner of the picture and v counted downwards.
class AcDbRasterImage : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbRasterImage);
    AcDbRasterImage() = default;

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
    bool isPlanar() const override { return true; }
    // Corners of the frame as shown, WCS.
    std::vector<AcGePoint3d> frame() const;

protected:
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;

private:
    friend struct host::Access;
    AcGePoint3d m_origin;             // lower left corner of the picture
    AcGeVector3d m_u{1.0, 0.0, 0.0};  // along one pixel to the right
    AcGeVector3d m_v{0.0, 1.0, 0.0};  // up
    double m_width = 1.0;             // pixels
    double m_height = 1.0;
    std::vector<AcGePoint2d> m_boundary;  // two corners of a rectangle, or a polygon; empty: all
};

// A frame that hides what lies behind it. Drawn as a frame.
class AcDbWipeout : public AcDbRasterImage {
public:
    ACRX_DECLARE_MEMBERS(AcDbWipeout);
    AcDbWipeout() = default;
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};
