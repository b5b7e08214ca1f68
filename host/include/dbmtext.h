// Paragraphs of text.
#pragma once

#include <string>

#include "dbmain.h"

// MTEXT: several lines, with formatting codes. Columns, backgrounds and fields are kept in the file
// and not shown.
class AcDbMText : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbMText);  // in files: MTEXT
    enum AttachmentPoint {
        kTopLeft = 1,  // the numbers of group 71
        kTopCenter = 2,
        kTopRight = 3,
        kMiddleLeft = 4,
        kMiddleCenter = 5,
        kMiddleRight = 6,
        kBottomLeft = 7,
        kBottomCenter = 8,
        kBottomRight = 9
    };
    AcDbMText() = default;

    AcGePoint3d location() const { return m_location; }  // group 10: the attachment point
    Acad::ErrorStatus setLocation(const AcGePoint3d& point);
    AcGeVector3d normal() const { return m_normal; }  // group 210, unit
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    AcGeVector3d direction() const { return m_direction; }  // group 11: of the lines, WCS
    Acad::ErrorStatus setDirection(const AcGeVector3d& direction);
    // Of the direction against the OCS x axis.
    double rotation() const;
    Acad::ErrorStatus setRotation(double angle);
    // Width at which lines break; 0: never.
    double width() const { return m_width; }  // group 41, drawing units
    Acad::ErrorStatus setWidth(double width);
    double textHeight() const { return m_textHeight; }  // group 40: of capitals
    Acad::ErrorStatus setTextHeight(double height);
    // which point of the text lies there
    AttachmentPoint attachment() const { return m_attachment; }
    Acad::ErrorStatus setAttachment(AttachmentPoint attachment);
    // group 44; 1: five thirds of the height
    double lineSpacingFactor() const { return m_lineSpacing; }
    // With its formatting codes; copy for acutDelString.
    // Groups 3 and 1.
    ACHAR* contents() const;
    Acad::ErrorStatus setContents(const ACHAR* text);
    Acad::ErrorStatus text(AcString& plain) const;      // without formatting, lines parted by \n
    AcDbObjectId textStyle() const { return m_style; }  // group 7
    Acad::ErrorStatus setTextStyle(AcDbObjectId style);
    // Size of the text block: as stored in the drawing, else estimated.
    double actualWidth() const;
    double actualHeight() const;
    bool isPlanar() const override { return true; }

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    // One text a line, without formatting.
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& pieces) const override;
    void translateIds(const AcDbIdMapping& mapping) override;

private:
    friend struct host::Access;
    AcGePoint3d m_location;  // WCS
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    AcGeVector3d m_direction{1.0, 0.0, 0.0};  // unit
    double m_width = 0.0;                     // 0: lines never break
    double m_textHeight = 0.0;
    double m_lineSpacing = 1.0;  // of lines, 1 is usual
    double m_storedWidth = 0.0;  // groups 42 and 43; 0: unknown
    double m_storedHeight = 0.0;
    std::wstring m_contents;  // with formatting codes
    AcDbObjectId m_style;
    AttachmentPoint m_attachment = kTopLeft;
};
