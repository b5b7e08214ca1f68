// Bodies, and what all modelled objects share.
#pragma once

#include <memory>

#include "dbmain.h"

namespace host {
class Shape;

// An entity whose geometry the solid modeller knows. Read from a drawing it has no shape here: its
// data stay in the file, its extents are eNullExtents, moving it answers eNotImplementedYet.
// Shapes are immutable and shared between clones.
class ModelledEntity : public AcDbEntity {
public:
    bool isNull() const { return m_shape == nullptr && !m_stored; }  // holds no geometry at all

protected:
    friend struct Access;
    ModelledEntity() = default;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    // Moves the shape; scales must be equal, else eCannotScaleNonUniformly.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    // eNotApplicable: faces are not taken apart here.
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& pieces) const override;
    std::shared_ptr<const Shape> m_shape;
    bool m_stored = false;  // the drawing file holds the data
};
}  // namespace host

// A body of any kind, as SAT files have them. Booleans, faces and edges are not carried out.
class AcDbBody : public host::ModelledEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbBody);  // in files: BODY
    AcDbBody() = default;

    // Writes or reads solids, regions and bodies as SAT text. The entities are open for read; what
    // is read is new and the caller's. eFileAccessErr, eInvalidInput, eNotImplementedYet without a
    // modeller.
    static Acad::ErrorStatus acisOut(const ACHAR* fileName, const AcDbVoidPtrArray& entities);
    static Acad::ErrorStatus acisIn(const ACHAR* fileName, AcDbVoidPtrArray& entities);

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};
