// What the database needs to know of a modelled shape. The modeller (host/solid) derives from it.
#pragma once

#include <memory>
#include <string>

#include "dbmain.h"

namespace host {

// Immutable: entities share shapes, clones too.
class Shape {
public:
    virtual ~Shape() = default;

    // The smallest box in WCS.
    virtual AcDbExtents Extents() const = 0;

    // The shape moved, turned, mirrored or scaled alike in all directions. Null with
    // eCannotScaleNonUniformly or eInvalidInput in status otherwise.
    virtual std::shared_ptr<const Shape> Transformed(const AcGeMatrix3d& matrix,
                                                     Acad::ErrorStatus& status) const = 0;

    // New non-resident pieces for the caller: the outline of a region. eNotApplicable for what has
    // no such pieces; nothing is appended then.
    virtual Acad::ErrorStatus Explode(AcDbVoidPtrArray& pieces) const = 0;

    // The shape as drawings up to R2010 hold it: lines of plain SAT text, version 4.0, each ending
    // with \n. Empty for a shape that has no such form.
    virtual std::string StoredText() const = 0;
};

}  // namespace host
