// The seam to the solid modeller.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "dbsol3d.h"

class AcDbCurve;

namespace host {

// Geometry of a region, solid or body. Immutable; copies of an entity share it.
class Shape {
public:
    virtual ~Shape() = default;
    // True to rounding; eNullExtents for a shape of nothing.
    virtual Acad::ErrorStatus Extents(AcDbExtents& extents) const = 0;
    // The shape stays; eCannotScaleNonUniformly unless all directions are scaled alike.
    virtual Acad::ErrorStatus Moved(const AcGeMatrix3d& matrix,
                                    std::shared_ptr<const Shape>& moved) const = 0;
    // New entities without properties; the caller's.
    virtual Acad::ErrorStatus Explode(AcDbVoidPtrArray& pieces) const = 0;
    virtual Acad::ErrorStatus Area(double& area) const = 0;  // of faces; eNotApplicable for solids
    // of solids; eNotApplicable for faces
    virtual Acad::ErrorStatus Volume(double& volume) const = 0;
    // The shape as drawings up to R2010 hold it: lines of plain SAT text, version 4.0, each ending
    // with \n. Empty for a shape that has no such form.
    virtual std::string StoredText() const { return {}; }
};

// Makes shapes and exchanges them. The statuses are those of the entities' functions.
class Modeller {
public:
    virtual ~Modeller() = default;
    // One shape for each closed loop of the curves.
    virtual Acad::ErrorStatus Regions(const std::vector<const AcDbCurve*>& curves,
                                      std::vector<std::shared_ptr<const Shape>>& shapes) = 0;
    // profile is a closed planar curve, or a region with a shape.
    virtual Acad::ErrorStatus Revolve(const AcDbEntity& profile, const AcGePoint3d& axisPoint,
                                      const AcGeVector3d& axisDirection, double angle,
                                      double startAngle, std::shared_ptr<const Shape>& shape) = 0;
    // Version 7.0; a file that is there is replaced as a whole.
    virtual Acad::ErrorStatus WriteSat(const std::wstring& path,
                                       const std::vector<const ModelledEntity*>& entities) = 0;
    virtual Acad::ErrorStatus ReadSat(const std::wstring& path, AcDbVoidPtrArray& entities) = 0;
};

// Not owned; null takes it away. Without one modelling answers eNotImplementedYet.
void SetModeller(Modeller* modeller);

// The shape of an entity, null when it has none here; and giving it one.
std::shared_ptr<const Shape> ShapeOfEntity(const ModelledEntity& entity);
void SetShape(ModelledEntity& entity, std::shared_ptr<const Shape> shape);

}  // namespace host
