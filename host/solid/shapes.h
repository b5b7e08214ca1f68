// The shapes that this modeller makes: regions by their outline, solids by their profile. Both are
// exact; nothing is faceted.
#pragma once

#include <memory>

#include "host/db/shape.h"
#include "host/solid/profile.h"

class AcDb3dSolid;
class AcDbRegion;

namespace host::solid {

class RevolvedShape : public Shape {
public:
    explicit RevolvedShape(Profile profile) : profile_(std::move(profile)) {}
    const Profile& GetProfile() const { return profile_; }

    AcDbExtents Extents() const override;
    std::shared_ptr<const Shape> Transformed(const AcGeMatrix3d& matrix,
                                             Acad::ErrorStatus& status) const override;
    Acad::ErrorStatus Explode(AcDbVoidPtrArray& pieces) const override;
    std::string StoredText() const override;

private:
    Profile profile_;
};

class RegionShape : public Shape {
public:
    RegionShape(Outline outline, double area) : outline_(std::move(outline)), area_(area) {}
    const Outline& GetOutline() const { return outline_; }
    double Area() const { return area_; }

    AcDbExtents Extents() const override;
    std::shared_ptr<const Shape> Transformed(const AcGeMatrix3d& matrix,
                                             Acad::ErrorStatus& status) const override;
    // Lines and arcs along the outline.
    Acad::ErrorStatus Explode(AcDbVoidPtrArray& pieces) const override;
    std::string StoredText() const override;

private:
    Outline outline_;
    double area_;
};

// The profile of a solid that was revolved here; null for one that was read, or is still empty.
const Profile* ProfileOf(const AcDb3dSolid& solid);
const RegionShape* RegionOf(const AcDbRegion& region);

}  // namespace host::solid
