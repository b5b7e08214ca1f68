// The common entities. Heavy polylines, block references and attributes come with dbpoly.h and
// dbblkref.h, which this header includes.
#pragma once

#include <string>

#include "dbcurve.h"

class AcDbObjectIterator;  // of dbpoly.h

// A straight segment. normal() is the extrusion direction of the thickness.
// LINE.
class AcDbLine : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbLine);
    AcDbLine() = default;  // both ends at the origin
    AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end) : m_start(start), m_end(end) {}

    AcGePoint3d startPoint() const { return m_start; }  // group 10, WCS
    Acad::ErrorStatus setStartPoint(const AcGePoint3d& point);
    AcGePoint3d endPoint() const { return m_end; }  // group 11, WCS
    Acad::ErrorStatus setEndPoint(const AcGePoint3d& point);
    double thickness() const { return m_thickness; }  // group 39; kept, and not drawn
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const { return m_normal; }  // group 210, unit
    // The direction is made unit; eInvalidInput for a zero vector.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

    // Always eOk.
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus reverseCurve() override;
    // An AcGeLineSeg3d.
    Acad::ErrorStatus getAcGeCurve(AcGeCurve3d*& curve,
                                   const AcGeTol& tol = AcGeContext::gTol) const override;

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;

private:
    friend struct host::Access;
    AcGePoint3d m_start;  // WCS
    AcGePoint3d m_end;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    double m_thickness = 0.0;
};

// Part of a circle, counter-clockwise about its normal from startAngle to endAngle, both measured
// in the OCS of the normal and kept in [0, 2 pi). The centre is WCS.
// ARC.
class AcDbArc : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbArc);
    AcDbArc() = default;  // radius 0 at the origin
    // In the XY plane. Angles are radians.
    AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle);
    AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double startAngle,
            double endAngle);

    AcGePoint3d center() const { return m_center; }  // group 10
    Acad::ErrorStatus setCenter(const AcGePoint3d& center);
    double radius() const { return m_radius; }  // group 40
    // eInvalidInput for a negative radius.
    Acad::ErrorStatus setRadius(double radius);
    double startAngle() const { return m_startAngle; }  // group 50, which is in degrees there
    Acad::ErrorStatus setStartAngle(double angle);
    double endAngle() const { return m_endAngle; }  // group 51, likewise
    Acad::ErrorStatus setEndAngle(double angle);
    // In (0, 2 pi]; equal angles mean a full turn.
    double totalAngle() const;
    double length() const { return m_radius * totalAngle(); }  // drawing units
    double thickness() const { return m_thickness; }           // group 39
    Acad::ErrorStatus setThickness(double thickness);
    // group 210, unit; (0, 0, -1) after a mirroring
    AcGeVector3d normal() const { return m_normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    bool isPlanar() const override { return true; }

    // An AcGeCircArc3d.
    Acad::ErrorStatus getAcGeCurve(AcGeCurve3d*& curve,
                                   const AcGeTol& tol = AcGeContext::gTol) const override;
    // Of the segment between arc and chord.
    Acad::ErrorStatus getArea(double& area) const override;

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    // Scales must be equal, else eCannotScaleNonUniformly.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    // Unequal scales give an AcDbEllipse.
    Acad::ErrorStatus subGetTransformedCopy(const AcGeMatrix3d& matrix,
                                            AcDbEntity*& copy) const override;

private:
    friend struct host::Access;
    AcGePoint3d m_center;  // WCS
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    double m_radius = 0.0;
    double m_startAngle = 0.0;  // in [0, 2 pi), radians
    double m_endAngle = 0.0;
    double m_thickness = 0.0;
};

// CIRCLE: starts on the x axis of its OCS, counter-clockwise about the normal.
class AcDbCircle : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbCircle);
    AcDbCircle() = default;  // radius 0 at the origin
    // The normal is made unit.
    AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);

    AcGePoint3d center() const { return m_center; }  // group 10, kept in WCS
    Acad::ErrorStatus setCenter(const AcGePoint3d& center);
    double radius() const { return m_radius; }  // group 40; setting a negative one is eInvalidInput
    Acad::ErrorStatus setRadius(double radius);
    double circumference() const;                     // drawing units
    double thickness() const { return m_thickness; }  // group 39
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const { return m_normal; }  // group 210, unit
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    bool isPlanar() const override { return true; }

    bool isClosed() const override { return true; }
    bool isPeriodic() const override { return true; }
    // A full AcGeCircArc3d.
    Acad::ErrorStatus getAcGeCurve(AcGeCurve3d*& curve,
                                   const AcGeTol& tol = AcGeContext::gTol) const override;
    // Of the disc.
    Acad::ErrorStatus getArea(double& area) const override;

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    // Unequal scales give a closed AcDbEllipse.
    Acad::ErrorStatus subGetTransformedCopy(const AcGeMatrix3d& matrix,
                                            AcDbEntity*& copy) const override;

private:
    friend struct host::Access;
    AcGePoint3d m_center;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    double m_radius = 0.0;
    double m_thickness = 0.0;
};

// POINT. Its mark, chosen by PDMODE, is not modelled.
class AcDbPoint : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbPoint);
    AcDbPoint() = default;  // at the origin
    explicit AcDbPoint(const AcGePoint3d& position) : m_position(position) {}

    AcGePoint3d position() const { return m_position; }  // group 10, WCS
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    double thickness() const { return m_thickness; }  // group 39
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const { return m_normal; }  // group 210, unit
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    // Angle of the point's mark against the OCS x axis.
    double ecsRotation() const { return m_rotation; }
    Acad::ErrorStatus setEcsRotation(double angle);  // radians

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;

private:
    friend struct host::Access;
    AcGePoint3d m_position;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    double m_thickness = 0.0;
    double m_rotation = 0.0;
};

// One line of text. Position and alignment point are WCS points in the plane of the normal; the
// rotation is measured in the OCS.
class AcDbText : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbText);
    AcDbText() = default;  // empty, height 0
    // Height 0: that of the style.
    AcDbText(const AcGePoint3d& position, const ACHAR* text, AcDbObjectId style = AcDbObjectId(),
             double height = 0, double rotation = 0);  // height 0: that of the style

    AcGePoint3d position() const { return m_position; }  // group 10: left end of the base line
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    // group 11: counts unless isDefaultAlignment()
    AcGePoint3d alignmentPoint() const { return m_alignment; }
    Acad::ErrorStatus setAlignmentPoint(const AcGePoint3d& point);
    AcGeVector3d normal() const { return m_normal; }  // group 210, unit
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    double thickness() const { return m_thickness; }  // group 39
    Acad::ErrorStatus setThickness(double thickness);
    double oblique() const { return m_oblique; }  // group 51: slant of the letters, radians
    Acad::ErrorStatus setOblique(double angle);
    double rotation() const { return m_rotation; }  // group 50: of the base line, radians
    Acad::ErrorStatus setRotation(double angle);
    double height() const { return m_height; }            // group 40: of capitals
    Acad::ErrorStatus setHeight(double height);           // eInvalidInput unless positive
    double widthFactor() const { return m_widthFactor; }  // group 41
    Acad::ErrorStatus setWidthFactor(double factor);
    // Copy for acutDelString, or the text itself, owned by the object.
    // Group 1, with its %% codes.
    ACHAR* textString() const;
    const ACHAR* textStringConst() const { return m_text.c_str(); }
    Acad::ErrorStatus setTextString(const ACHAR* text);
    AcDbObjectId textStyle() const { return m_style; }  // group 7; null: Standard
    Acad::ErrorStatus setTextStyle(AcDbObjectId style);
    bool isMirroredInX() const { return m_mirroredX; }  // backwards, bit 2 of group 71
    Acad::ErrorStatus mirrorInX(bool mirrored);
    bool isMirroredInY() const { return m_mirroredY; }  // upside down, bit 4
    Acad::ErrorStatus mirrorInY(bool mirrored);
    AcDb::TextHorzMode horizontalMode() const { return m_horizontal; }  // group 72
    Acad::ErrorStatus setHorizontalMode(AcDb::TextHorzMode mode);
    AcDb::TextVertMode verticalMode() const { return m_vertical; }  // group 73
    Acad::ErrorStatus setVerticalMode(AcDb::TextVertMode mode);
    // True when the position alone places the text: left, on the base line.
    bool isDefaultAlignment() const;
    bool isPlanar() const override { return true; }

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    // Estimated by widths of letters: fonts are not read.
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    void translateIds(const AcDbIdMapping& mapping) override;

private:
    friend struct host::Access;
    AcGePoint3d m_position;
    AcGePoint3d m_alignment;  // WCS
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    double m_thickness = 0.0;
    double m_oblique = 0.0;  // radians
    double m_rotation = 0.0;
    double m_height = 0.0;
    double m_widthFactor = 1.0;  // 1: as the font has it
    std::wstring m_text;         // without an end of line
    AcDbObjectId m_style;
    AcDb::TextHorzMode m_horizontal = AcDb::kTextLeft;
    AcDb::TextVertMode m_vertical = AcDb::kTextBase;
    bool m_mirroredX = false;
    bool m_mirroredY = false;
};

namespace host {
// Four corners in the plane of a normal: SOLID and TRACE have the same data.
class FourCorners : public AcDbEntity {
public:
    // index 0..3, else eInvalidIndex; WCS. The third and fourth corner stand crosswise: the outline
    // runs 0, 1, 3, 2.
    Acad::ErrorStatus getPointAt(Adesk::UInt16 index, AcGePoint3d& point) const;
    Acad::ErrorStatus setPointAt(Adesk::UInt16 index, const AcGePoint3d& point);
    double thickness() const { return m_thickness; }  // group 39
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const { return m_normal; }  // group 210, unit
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    bool isPlanar() const override { return true; }

protected:
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;

private:
    friend struct Access;
    AcGePoint3d m_points[4];  // WCS
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    double m_thickness = 0.0;  // along the normal
};
}  // namespace host

// A filled triangle or quadrangle; no solid body (that is AcDb3dSolid).
class AcDbSolid : public host::FourCorners {
public:
    ACRX_DECLARE_MEMBERS(AcDbSolid);  // in files: SOLID
    AcDbSolid() = default;
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};

// TRACE: the same data, made by a command of older hosts.
class AcDbTrace : public host::FourCorners {
public:
    ACRX_DECLARE_MEMBERS(AcDbTrace);  // in files: TRACE
    AcDbTrace() = default;
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};

// 3DFACE: a triangle or quadrangle in space, corners in order, edges that may be hidden.
class AcDbFace : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbFace);
    AcDbFace() = default;  // all corners at the origin

    // index 0..3, else eInvalidIndex; groups 10 to 13, WCS. Third and fourth are one for a
    // triangle.
    Acad::ErrorStatus getVertexAt(Adesk::UInt16 index, AcGePoint3d& point) const;
    Acad::ErrorStatus setVertexAt(Adesk::UInt16 index, const AcGePoint3d& point);
    // Bits of group 70; the edge that leaves the vertex.
    Acad::ErrorStatus isEdgeVisibleAt(Adesk::UInt16 index, bool& visible) const;
    Acad::ErrorStatus makeEdgeVisibleAt(Adesk::UInt16 index);    // eInvalidIndex beyond 3
    Acad::ErrorStatus makeEdgeInvisibleAt(Adesk::UInt16 index);  // eInvalidIndex beyond 3

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;

private:
    friend struct host::Access;
    AcGePoint3d m_points[4];
    Adesk::UInt8 m_hiddenEdges = 0;  // bit i: edge from corner i
};

// A window of a paper space.
// VIEWPORT. What it looks at is kept in the file; views here are set by acedSetCurrentView.
class AcDbViewport : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbViewport);  // in files: VIEWPORT
    AcDbViewport() = default;

    AcGePoint3d centerPoint() const { return m_center; }  // group 10, in paper space
    Acad::ErrorStatus setCenterPoint(const AcGePoint3d& center);
    double width() const { return m_width; }  // group 40
    Acad::ErrorStatus setWidth(double width);
    double height() const { return m_height; }  // group 41
    Acad::ErrorStatus setHeight(double height);
    Adesk::Int16 number() const { return m_number; }  // group 69; -1: not shown

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;

private:
    friend struct host::Access;
    AcGePoint3d m_center;
    double m_width = 0.0;
    double m_height = 0.0;
    Adesk::Int16 m_number = -1;
};

// Ends the vertices of a heavy polyline and the attributes of a block reference.
// SEQEND. Made by the host; programs have no use for one.
class AcDbSequenceEnd : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbSequenceEnd);  // in files: SEQEND
    AcDbSequenceEnd() = default;
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};

#include "dbblkref.h"
#include "dbpoly.h"
#include "dbray.h"
