// The shapes that this modeller makes: regions by their outline, solids by their profile. Both are
// exact; nothing is faceted.
#pragma once

#include <memory>

#include "host/db/modeller.h"
#include "host/solid/profile.h"

namespace host::solid {

// A solid of revolution. What the members answer is said in host/db/modeller.h.
class RevolvedShape : public Shape {
public:
    explicit RevolvedShape(Profile profile) : profile_(std::move(profile)) {}
    const Profile& GetProfile() const { return profile_; }

    Acad::ErrorStatus Extents(AcDbExtents& extents) const override;
    // any uniform map; the profile's frame moves along
    Acad::ErrorStatus Moved(const AcGeMatrix3d& matrix,
                            std::shared_ptr<const Shape>& moved) const override;
    Acad::ErrorStatus Explode(AcDbVoidPtrArray& pieces) const override;  // eNotApplicable
    Acad::ErrorStatus Area(double& area) const override;                 // eNotApplicable
    Acad::ErrorStatus Volume(double& volume) const override;  // by Pappus, exact for lines and arcs
    std::string StoredText() const override;                  // for drawings up to R2010

private:
    Profile profile_;
};

// A face inside one outline, without holes.
class RegionShape : public Shape {
public:
    RegionShape(Outline outline, double area) : outline_(std::move(outline)), area_(area) {}
    const Outline& GetOutline() const { return outline_; }

    Acad::ErrorStatus Extents(AcDbExtents& extents) const override;
    Acad::ErrorStatus Moved(const AcGeMatrix3d& matrix,  // any uniform map
                            std::shared_ptr<const Shape>& moved) const override;
    // Lines and arcs along the outline.
    Acad::ErrorStatus Explode(AcDbVoidPtrArray& pieces) const override;
    Acad::ErrorStatus Area(double& area) const override;  // as computed when it was made
    Acad::ErrorStatus Volume(double&) const override { return Acad::eNotApplicable; }

private:
    Outline outline_;
    double area_;
};

// The profile of an entity that was revolved here; null for one that was read, or is still empty.
const Profile* ProfileOf(const ModelledEntity& entity);

}  // namespace host::solid
