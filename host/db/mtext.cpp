#include <algorithm>
#include <cmath>

#include "dbents.h"
#include "dbmtext.h"
#include "host/db/database_imp.h"
#include "host/db/define_class.h"
#include "host/db/entity_tools.h"
#include "host/db/text_size.h"
#include "host/base/angles.h"

HOST_DEFINE_CLASS(AcDbMText, AcDbEntity, ACRX_T("MTEXT"))
HOST_DEFINE_COPY(AcDbMText)

namespace {

// Distance of base lines in text heights at line spacing 1 (DXF reference, MTEXT group 44: 1.66).
constexpr double kLinePitch = 5.0 / 3.0;

std::vector<std::wstring> LinesOf(const std::wstring& contents, double width, double height) {
    return host::PlainLines(contents, height > 0.0 ? width / height : 0.0);
}

}  // namespace

Acad::ErrorStatus AcDbMText::setLocation(const AcGePoint3d& point) {
    HOST_SET(m_location, point, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbMText::setNormal(const AcGeVector3d& normal) {
    if (normal.length() <= host::kZeroLength) return Acad::eInvalidInput;
    HOST_SET(m_normal, normal.normal(), host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbMText::setDirection(const AcGeVector3d& direction) {
    if (direction.length() <= host::kZeroLength) return Acad::eInvalidInput;
    HOST_SET(m_direction, direction.normal(), host::kDirtyGeometry);
}

double AcDbMText::rotation() const {
    const host::Plane plane = host::PlaneOf(m_normal);
    return host::FullAngle(m_direction.dotProduct(plane.y), m_direction.dotProduct(plane.x));
}

Acad::ErrorStatus AcDbMText::setRotation(double angle) {
    const host::Plane plane = host::PlaneOf(m_normal);
    return setDirection(plane.x * std::cos(angle) + plane.y * std::sin(angle));
}

// What changes the layout makes the stored size of the text block wrong.
#define HOST_MTEXT_LAYOUT(field, value)                            \
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry); \
    if (es != Acad::eOk) return es;                                \
    (field) = (value);                                             \
    m_storedWidth = m_storedHeight = 0.0;                          \
    return Acad::eOk

Acad::ErrorStatus AcDbMText::setWidth(double width) {
    if (!(width >= 0.0)) return Acad::eInvalidInput;
    HOST_MTEXT_LAYOUT(m_width, width);
}
Acad::ErrorStatus AcDbMText::setTextHeight(double height) {
    if (!(height > 0.0)) return Acad::eInvalidInput;
    HOST_MTEXT_LAYOUT(m_textHeight, height);
}
Acad::ErrorStatus AcDbMText::setContents(const ACHAR* text) {
    if (text == nullptr) return Acad::eInvalidInput;
    HOST_MTEXT_LAYOUT(m_contents, text);
}
#undef HOST_MTEXT_LAYOUT

Acad::ErrorStatus AcDbMText::setAttachment(AttachmentPoint attachment) {
    HOST_SET(m_attachment, attachment, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbMText::setTextStyle(AcDbObjectId style) {
    HOST_SET(m_style, style, host::kDirtyGeometry);
}

ACHAR* AcDbMText::contents() const { return host::NewText(m_contents.c_str()); }

Acad::ErrorStatus AcDbMText::text(AcString& plain) const {
    plain = ACRX_T("");
    const std::vector<std::wstring> lines = host::PlainLines(m_contents, 0.0);
    for (size_t i = 0; i < lines.size(); ++i) {
        if (i > 0) plain += ACRX_T("\n");
        plain += lines[i].c_str();
    }
    return Acad::eOk;
}

double AcDbMText::actualWidth() const {
    if (m_storedWidth > 0.0) return m_storedWidth;
    double widest = 0.0;
    for (const std::wstring& line : LinesOf(m_contents, m_width, m_textHeight))
        widest = (std::max)(widest, host::TextWidth(line));
    return widest * m_textHeight;
}

double AcDbMText::actualHeight() const {
    if (m_storedHeight > 0.0) return m_storedHeight;
    const size_t lines = LinesOf(m_contents, m_width, m_textHeight).size();
    return m_textHeight * (1.0 + kLinePitch * m_lineSpacing * static_cast<double>(lines - 1));
}

namespace {

// Lower left corner of the text block against its attachment point, along and across.
AcGePoint2d CornerOf(const AcDbMText& text) {
    const int column = (text.attachment() - 1) % 3;  // left, centre, right
    const int row = (text.attachment() - 1) / 3;     // top, middle, bottom
    return AcGePoint2d(-text.actualWidth() * column / 2.0, -text.actualHeight() * (2 - row) / 2.0);
}

}  // namespace

Acad::ErrorStatus AcDbMText::subGetGeomExtents(AcDbExtents& extents) const {
    if (m_contents.empty()) return Acad::eNullExtents;
    const AcGeVector3d up = m_normal.crossProduct(m_direction);
    const AcGePoint2d corner = CornerOf(*this);
    AcDbExtents box;
    for (const double x : {corner.x, corner.x + actualWidth()})
        for (const double y : {corner.y, corner.y + actualHeight()})
            box.addPoint(m_location + m_direction * x + up * y);
    extents = box;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!host::IsSimilarity(matrix)) return Acad::eCannotScaleNonUniformly;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    const AcGeVector3d along = matrix * m_direction;
    const double scale = along.length();
    m_normal = host::MovedNormal(matrix, m_normal);
    m_location = matrix * m_location;
    m_direction = along.normal();
    m_width *= scale;
    m_textHeight *= scale;
    m_storedWidth *= scale;
    m_storedHeight *= scale;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subExplode(AcDbVoidPtrArray& pieces) const {
    const AcGeVector3d up = m_normal.crossProduct(m_direction);
    const AcGePoint2d corner = CornerOf(*this);
    const double pitch = m_textHeight * kLinePitch * m_lineSpacing;
    double base = corner.y + actualHeight() - m_textHeight;
    for (const std::wstring& line : LinesOf(m_contents, m_width, m_textHeight)) {
        const int column = (m_attachment - 1) % 3;
        const double rest = actualWidth() - host::TextWidth(line) * m_textHeight;
        const AcGePoint3d at =
            m_location + m_direction * (corner.x + rest * column / 2.0) + up * base;
        base -= pitch;
        if (line.empty()) continue;
        AcDbText* const text = new AcDbText(at, line.c_str(), m_style, m_textHeight, rotation());
        host::Access::Normal(*text) = m_normal;
        host::CopyProperties(*this, *text);
        pieces.append(text);
    }
    return Acad::eOk;
}

void AcDbMText::translateIds(const AcDbIdMapping& mapping) {
    AcDbEntity::translateIds(mapping);
    host::Translate(mapping, m_style);
}
