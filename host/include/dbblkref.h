// Block references, their attributes and attribute definitions. Part of dbents.h.
#pragma once

#include <vector>

#include "dbents.h"
#include "dbpoly.h"
#include "gescl3d.h"

// Text that a block reference carries under a tag.
class AcDbAttribute : public AcDbText {
public:
    ACRX_DECLARE_MEMBERS(AcDbAttribute);  // in files: ATTRIB
    AcDbAttribute() = default;
    // Height and the rest as a text's; see AcDbText.
    AcDbAttribute(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag,
                  AcDbObjectId style = AcDbObjectId());

    // Group 2. A copy for acutDelString, or the record's own.
    ACHAR* tag() const;
    const ACHAR* tagConst() const { return m_tag.c_str(); }
    // Capitals are the user's business. eInvalidInput for an empty tag.
    Acad::ErrorStatus setTag(const ACHAR* tag);
    bool isInvisible() const { return (m_flags & 1) != 0; }  // does not show with its reference
    Acad::ErrorStatus setInvisible(bool invisible);
    bool isConstant() const { return (m_flags & 2) != 0; }  // the same in every reference
    // asked for twice by the host's command
    bool isVerifiable() const { return (m_flags & 4) != 0; }
    bool isPreset() const { return (m_flags & 8) != 0; }  // not asked for at all

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;

private:
    friend struct host::Access;
    std::wstring m_tag;        // as given, capitals or not
    Adesk::UInt8 m_flags = 0;  // group 70 of ATTRIB
};

// The pattern of an attribute inside a block definition; shows its tag there.
class AcDbAttributeDefinition : public AcDbText {
public:
    ACRX_DECLARE_MEMBERS(AcDbAttributeDefinition);  // in files: ATTDEF
    AcDbAttributeDefinition() = default;
    // text is the value that new references begin with.
    AcDbAttributeDefinition(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag,
                            const ACHAR* prompt, AcDbObjectId style = AcDbObjectId());

    // As of an attribute.
    ACHAR* tag() const;
    const ACHAR* tagConst() const { return m_tag.c_str(); }
    Acad::ErrorStatus setTag(const ACHAR* tag);
    ACHAR* prompt() const;  // group 3: what the user is asked
    const ACHAR* promptConst() const { return m_prompt.c_str(); }
    Acad::ErrorStatus setPrompt(const ACHAR* prompt);        // null empties it
    bool isInvisible() const { return (m_flags & 1) != 0; }  // so will be the attributes
    Acad::ErrorStatus setInvisible(bool invisible);
    // shows in references itself: there are no attributes of it
    bool isConstant() const { return (m_flags & 2) != 0; }

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;

private:
    friend struct host::Access;
    std::wstring m_tag;
    std::wstring m_prompt;     // empty: the tag is shown
    Adesk::UInt8 m_flags = 0;  // group 70 of ATTDEF
};

// A block definition shown once: scaled along the definition's axes, turned by the rotation about
// the normal, placed at the position (WCS).
class AcDbBlockReference : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockReference);  // in files: INSERT
    AcDbBlockReference() = default;
    // Scale 1, no turn. The definition is not asked for its kind.
    AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId blockTableRecord);

    AcDbObjectId blockTableRecord() const { return m_blockId; }  // group 2 of INSERT
    // eWrongObjectType.
    Acad::ErrorStatus setBlockTableRecord(AcDbObjectId block);
    AcGePoint3d position() const { return m_position; }  // group 10, kept in WCS
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    AcGeScale3d scaleFactors() const { return m_scale; }  // groups 41 to 43; negative ones mirror
    // eInvalidInput for a zero factor.
    Acad::ErrorStatus setScaleFactors(const AcGeScale3d& scale);
    double rotation() const { return m_rotation; }  // group 50, radians, about the normal
    Acad::ErrorStatus setRotation(double angle);
    AcGeVector3d normal() const { return m_normal; }  // group 210, unit
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

    // Maps the definition's coordinates to WCS, its origin to the position.
    AcGeMatrix3d blockTransform() const;
    // Takes position, scales, rotation and normal from a matrix whose axes are perpendicular;
    // eCannotScaleNonUniformly for others.
    Acad::ErrorStatus setBlockTransform(const AcGeMatrix3d& matrix);

    // The caller deletes it. Empty for a non-resident reference.
    AcDbObjectIterator* attributeIterator() const;
    Acad::ErrorStatus openAttribute(AcDbAttribute*& attribute, AcDbObjectId id, AcDb::OpenMode mode,
                                    bool openErased = false) const;
    // Needs a resident reference open for write; the attribute is then open for write.
    Acad::ErrorStatus appendAttribute(AcDbAttribute* attribute);
    Acad::ErrorStatus appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute);

    // Explodes and appends the pieces to the block that owns the reference; the reference stays.
    Acad::ErrorStatus explodeToOwnerSpace() const;
    // Box of the definition's entities without attributes.
    Acad::ErrorStatus geomExtentsBestFit(
        AcDbExtents& extents, const AcGeMatrix3d& parent = AcGeMatrix3d::kIdentity) const;
    // What it shows may lie anywhere.
    bool isPlanar() const override { return false; }

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    friend struct host::Access;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& pieces) const override;
    void ownedIds(AcDbObjectIdArray& ids) const override;
    void settleOwned() override;
    void translateIds(const AcDbIdMapping& mapping) override;
    // Transforms of all the cells: one, or those of the array.
    virtual std::vector<AcGeMatrix3d> cellTransforms() const;

private:
    AcDbObjectId m_blockId;  // null until it is set
    AcGePoint3d m_position;
    AcGeScale3d m_scale;  // along the definition's axes
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    double m_rotation = 0.0;
    host::OwnedEntities m_attributes;  // with their sequence end
};

// A rectangular array of one block: the cells step along the reference's turned axes, unscaled.
class AcDbMInsertBlock : public AcDbBlockReference {
public:
    ACRX_DECLARE_MEMBERS(AcDbMInsertBlock);  // in files: INSERT with groups 70 and 71
    AcDbMInsertBlock() = default;
    // Spacings in drawing units. 0 columns or rows, which some writers leave, count as 1.
    AcDbMInsertBlock(const AcGePoint3d& position, AcDbObjectId blockTableRecord,
                     Adesk::UInt16 columns, Adesk::UInt16 rows, double columnSpacing,
                     double rowSpacing);  // 0 columns or rows count as 1

    Adesk::UInt16 columns() const { return m_columns; }  // group 70
    Acad::ErrorStatus setColumns(Adesk::UInt16 columns);
    Adesk::UInt16 rows() const { return m_rows; }  // group 71
    Acad::ErrorStatus setRows(Adesk::UInt16 rows);
    // group 44, drawing units; may be negative
    double columnSpacing() const { return m_columnSpacing; }
    Acad::ErrorStatus setColumnSpacing(double spacing);
    double rowSpacing() const { return m_rowSpacing; }  // group 45
    Acad::ErrorStatus setRowSpacing(double spacing);

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    friend struct host::Access;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    std::vector<AcGeMatrix3d> cellTransforms() const override;

private:
    double m_columnSpacing = 0.0;
    double m_rowSpacing = 0.0;
    Adesk::UInt16 m_columns = 1;
    Adesk::UInt16 m_rows = 1;
};
