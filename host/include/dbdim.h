// Dimensions.
#pragma once

#include <string>

#include "dbmain.h"

// A dimension is drawn by the anonymous block that dimBlockId names. Without one only the
// definition points are known.
class AcDbDimension : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbDimension);

    // Null when there is no block.
    // Group 2. The block's entities lie in the drawing's own coordinates.
    AcDbObjectId dimBlockId() const { return m_blockId; }
    Acad::ErrorStatus setDimBlockId(AcDbObjectId block);
    AcDbObjectId dimensionStyle() const { return m_style; }  // group 3
    Acad::ErrorStatus setDimensionStyle(AcDbObjectId style);
    // middle of the text, group 11
    AcGePoint3d textPosition() const;  // WCS
    ACHAR* dimensionText() const;      // group 1; empty: the measurement; "<>" stands for it
    // group 42, drawing units or radians; as stored
    double measurement() const { return m_measurement; }
    AcGeVector3d normal() const { return m_normal; }
    double elevation() const { return m_textPosition.z; }   // of the plane along the normal
    double textRotation() const { return m_textRotation; }  // group 53, against the dimension line
    double horizontalRotation() const { return m_horizontalRotation; }  // group 51
    bool isPlanar() const override { return true; }

protected:
    friend struct host::Access;
    enum PointSlot { kDimLine, kText, kClone, kFirst, kSecond, kThird, kFourth, kNumSlots };
    AcDbDimension() = default;
    AcDbDimension(const AcDbDimension&) = default;
    AcDbDimension& operator=(const AcDbDimension&) = default;
    // Of the block; without one of the definition points.
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    // Moves the points; the block of a moved dimension is made by the host's own command in AutoCAD
    // and moved along here.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    // Clones of the block's entities; eNotApplicable without a block.
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& pieces) const override;
    void translateIds(const AcDbIdMapping& mapping) override;
    // Definition points (groups 10, 13, 14, 15, 16) WCS; setting marks the slot as used.
    AcGePoint3d definitionPoint(int slot) const { return m_points[slot]; }
    Acad::ErrorStatus setDefinitionPoint(int slot, const AcGePoint3d& point);

private:
    AcDbObjectId m_blockId;
    AcDbObjectId m_style;  // null: Standard
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    AcGePoint3d m_points[kNumSlots];  // WCS
    AcGePoint3d m_textPosition;       // OCS, group 11
    double m_measurement = 0.0;       // as the file has it; not computed again
    double m_textRotation = 0.0;
    double m_horizontalRotation = 0.0;
    double m_rotation = 0.0;       // of the dimension line, group 50
    double m_oblique = 0.0;        // group 52
    std::wstring m_text;           // group 1
    Adesk::UInt8 m_used = 0;       // bit per slot
    Adesk::Int16 m_typeFlags = 0;  // group 70 without the type
};

// A length along a given direction. The block is not made anew when points change: none of the
// dimensions here draws itself.
class AcDbRotatedDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDbRotatedDimension);  // in files: DIMENSION, type 0
    AcDbRotatedDimension() = default;
    double rotation() const;  // of the dimension line, radians
    // first measured point, group 13
    AcGePoint3d xLine1Point() const { return definitionPoint(kFirst); }
    Acad::ErrorStatus setXLine1Point(const AcGePoint3d& p) { return setDefinitionPoint(kFirst, p); }
    // second measured point, group 14
    AcGePoint3d xLine2Point() const { return definitionPoint(kSecond); }
    Acad::ErrorStatus setXLine2Point(const AcGePoint3d& p) {
        return setDefinitionPoint(kSecond, p);
    }
    // a point of the dimension line, group 10
    AcGePoint3d dimLinePoint() const { return definitionPoint(kDimLine); }
    Acad::ErrorStatus setDimLinePoint(const AcGePoint3d& p) {
        return setDefinitionPoint(kDimLine, p);
    }
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};

// A length along its two points.
class AcDbAlignedDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDbAlignedDimension);  // in files: DIMENSION, type 1
    AcDbAlignedDimension() = default;
    // groups 13, 14 and 10, as above
    AcGePoint3d xLine1Point() const { return definitionPoint(kFirst); }
    Acad::ErrorStatus setXLine1Point(const AcGePoint3d& p) { return setDefinitionPoint(kFirst, p); }
    AcGePoint3d xLine2Point() const { return definitionPoint(kSecond); }
    Acad::ErrorStatus setXLine2Point(const AcGePoint3d& p) {
        return setDefinitionPoint(kSecond, p);
    }
    AcGePoint3d dimLinePoint() const { return definitionPoint(kDimLine); }
    Acad::ErrorStatus setDimLinePoint(const AcGePoint3d& p) {
        return setDefinitionPoint(kDimLine, p);
    }
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};

// An angle between two lines; known by its block and its style.
class AcDb2LineAngularDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDb2LineAngularDimension);  // in files: DIMENSION, type 2
    AcDb2LineAngularDimension() = default;
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};

// An angle at a corner; likewise.
class AcDb3PointAngularDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDb3PointAngularDimension);  // in files: DIMENSION, type 5
    AcDb3PointAngularDimension() = default;
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};

// A radius.
class AcDbRadialDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDbRadialDimension);  // in files: DIMENSION, type 4
    AcDbRadialDimension() = default;
    AcGePoint3d center() const { return definitionPoint(kDimLine); }    // of the arc, group 10
    AcGePoint3d chordPoint() const { return definitionPoint(kThird); }  // on the arc, group 15
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};

// A diameter.
class AcDbDiametricDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDbDiametricDimension);  // in files: DIMENSION, type 3
    AcDbDiametricDimension() = default;
    // across the circle, group 10
    AcGePoint3d farChordPoint() const { return definitionPoint(kDimLine); }
    // where the arrow is, group 15
    AcGePoint3d chordPoint() const { return definitionPoint(kThird); }
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};

// A coordinate counted from an origin.
class AcDbOrdinateDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDbOrdinateDimension);  // in files: DIMENSION, type 6
    AcDbOrdinateDimension() = default;
    AcGePoint3d origin() const { return definitionPoint(kDimLine); }  // group 10
    // the measured one, group 13
    AcGePoint3d definingPoint() const { return definitionPoint(kFirst); }
    AcGePoint3d leaderEndPoint() const {
        return definitionPoint(kSecond);
    }  // at the text, group 14
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};

// A length along an arc; known by its block and its style.
class AcDbArcDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDbArcDimension);  // in files: ARC_DIMENSION
    AcDbArcDimension() = default;
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};
