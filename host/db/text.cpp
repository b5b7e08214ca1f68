#include <cmath>
#include <cwchar>

#include "dbents.h"
#include "host/db/database_imp.h"
#include "host/db/define_class.h"
#include "host/db/entity_tools.h"
#include "host/db/text_size.h"
#include "host/base/angles.h"

HOST_DEFINE_CLASS(AcDbText, AcDbEntity, ACRX_T("TEXT"))
HOST_DEFINE_CLASS(AcDbAttribute, AcDbText, ACRX_T("ATTRIB"))
HOST_DEFINE_CLASS(AcDbAttributeDefinition, AcDbText, ACRX_T("ATTDEF"))
HOST_DEFINE_COPY(AcDbText)
HOST_DEFINE_COPY(AcDbAttribute)
HOST_DEFINE_COPY(AcDbAttributeDefinition)

namespace {

// How far letters such as g reach below the base line, in text heights.
constexpr double kDescent = 1.0 / 3.0;

// The corner box of one line of text. A placed text whose insertion point is not known to be right
// (aligned otherwise than left on the base line) is placed by its alignment point.
AcDbExtents BoxOfText(const AcDbText& text, const std::wstring& shown) {
    const double width = host::TextWidth(shown) * text.height() * text.widthFactor();
    const double height = text.height();
    const host::Plane plane = host::PlaneOf(text.normal());
    const double c = std::cos(text.rotation()), s = std::sin(text.rotation());
    const AcGeVector3d along = plane.x * c + plane.y * s;
    const AcGeVector3d up = plane.y * c - plane.x * s;
    double left = 0.0, base = 0.0;
    AcGePoint3d at = text.position();
    double length = width;
    if (!text.isDefaultAlignment()) {
        const AcDb::TextHorzMode mode = text.horizontalMode();
        if (mode == AcDb::kTextAlign || mode == AcDb::kTextFit) {
            length = text.position().distanceTo(text.alignmentPoint());
        } else {
            at = text.alignmentPoint();
            if (mode == AcDb::kTextCenter || mode == AcDb::kTextMid) left = -width / 2.0;
            if (mode == AcDb::kTextRight) left = -width;
            if (text.verticalMode() == AcDb::kTextTop) base = -height;
            if (text.verticalMode() == AcDb::kTextVertMid || mode == AcDb::kTextMid)
                base = -height / 2.0;
            if (text.verticalMode() == AcDb::kTextBottom) base = height * kDescent;
        }
    }
    AcDbExtents box;
    for (const double x : {left, left + length})
        for (const double y : {base, base + height}) box.addPoint(at + along * x + up * y);
    host::AddThickness(box, text.normal(), text.thickness());
    return box;
}

}  // namespace

AcDbText::AcDbText(const AcGePoint3d& position, const ACHAR* text, AcDbObjectId style,
                   double height, double rotation)
    : m_position(position),
      m_alignment(position),
      m_rotation(rotation),
      m_height(height),
      m_text(text != nullptr ? text : ACRX_T("")),
      m_style(style) {}

#define HOST_TEXT_SETTER(Setter, Type, field) \
    Acad::ErrorStatus AcDbText::Setter(Type value) { HOST_SET(field, value, host::kDirtyGeometry); }
HOST_TEXT_SETTER(setPosition, const AcGePoint3d&, m_position)
HOST_TEXT_SETTER(setAlignmentPoint, const AcGePoint3d&, m_alignment)
HOST_TEXT_SETTER(setThickness, double, m_thickness)
HOST_TEXT_SETTER(setOblique, double, m_oblique)
HOST_TEXT_SETTER(setRotation, double, m_rotation)
HOST_TEXT_SETTER(setTextStyle, AcDbObjectId, m_style)
HOST_TEXT_SETTER(mirrorInX, bool, m_mirroredX)
HOST_TEXT_SETTER(mirrorInY, bool, m_mirroredY)
HOST_TEXT_SETTER(setHorizontalMode, AcDb::TextHorzMode, m_horizontal)
HOST_TEXT_SETTER(setVerticalMode, AcDb::TextVertMode, m_vertical)
#undef HOST_TEXT_SETTER

Acad::ErrorStatus AcDbText::setNormal(const AcGeVector3d& normal) {
    if (normal.length() <= host::kZeroLength) return Acad::eInvalidInput;
    HOST_SET(m_normal, normal.normal(), host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbText::setHeight(double height) {
    if (!(height > 0.0)) return Acad::eInvalidInput;
    HOST_SET(m_height, height, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbText::setWidthFactor(double factor) {
    if (!(factor > 0.0)) return Acad::eInvalidInput;
    HOST_SET(m_widthFactor, factor, host::kDirtyGeometry);
}

ACHAR* AcDbText::textString() const { return host::NewText(m_text.c_str()); }
Acad::ErrorStatus AcDbText::setTextString(const ACHAR* text) {
    if (text == nullptr) return Acad::eInvalidInput;
    HOST_SET(m_text, text, host::kDirtyGeometry);
}

bool AcDbText::isDefaultAlignment() const {
    return m_horizontal == AcDb::kTextLeft && m_vertical == AcDb::kTextBase;
}

Acad::ErrorStatus AcDbText::subGetGeomExtents(AcDbExtents& extents) const {
    if (m_text.empty()) return Acad::eNullExtents;
    extents = BoxOfText(*this, m_text);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!host::IsSimilarity(matrix)) return Acad::eCannotScaleNonUniformly;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    const host::Plane before = host::PlaneOf(m_normal);
    const AcGeVector3d along =
        matrix * (before.x * std::cos(m_rotation) + before.y * std::sin(m_rotation));
    const AcGeVector3d normal = host::MovedNormal(matrix, m_normal);
    const host::Plane after = host::PlaneOf(normal);
    m_rotation = host::FullAngle(along.dotProduct(after.y), along.dotProduct(after.x));
    m_thickness = host::MovedThickness(matrix, m_normal, normal, m_thickness);
    m_height *= along.length();
    m_position = matrix * m_position;
    m_alignment = matrix * m_alignment;
    m_normal = normal;
    return Acad::eOk;
}

void AcDbText::translateIds(const AcDbIdMapping& mapping) {
    AcDbEntity::translateIds(mapping);
    host::Translate(mapping, m_style);
}

// ---- Attributes ---------------------------------------------------------------------------------

namespace {

constexpr Adesk::UInt8 kInvisibleFlag = 1;

Adesk::UInt8 WithFlag(Adesk::UInt8 flags, bool set) {
    return static_cast<Adesk::UInt8>(set ? flags | kInvisibleFlag : flags & ~kInvisibleFlag);
}

// Tags have no blanks.
bool IsTag(const ACHAR* tag) {
    return tag != nullptr && *tag != 0 && std::wcschr(tag, L' ') == nullptr;
}

}  // namespace

AcDbAttribute::AcDbAttribute(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag,
                             AcDbObjectId style)
    : AcDbText(position, text, style), m_tag(tag != nullptr ? tag : ACRX_T("")) {}

ACHAR* AcDbAttribute::tag() const { return host::NewText(m_tag.c_str()); }
Acad::ErrorStatus AcDbAttribute::setTag(const ACHAR* tag) {
    if (!IsTag(tag)) return Acad::eInvalidInput;
    HOST_SET(m_tag, tag, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbAttribute::setInvisible(bool invisible) {
    HOST_SET(m_flags, WithFlag(m_flags, invisible), host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbAttribute::subGetGeomExtents(AcDbExtents& extents) const {
    return isInvisible() ? Acad::eNullExtents : AcDbText::subGetGeomExtents(extents);
}

AcDbAttributeDefinition::AcDbAttributeDefinition(const AcGePoint3d& position, const ACHAR* text,
                                                 const ACHAR* tag, const ACHAR* prompt,
                                                 AcDbObjectId style)
    : AcDbText(position, text, style),
      m_tag(tag != nullptr ? tag : ACRX_T("")),
      m_prompt(prompt != nullptr ? prompt : ACRX_T("")) {}

ACHAR* AcDbAttributeDefinition::tag() const { return host::NewText(m_tag.c_str()); }
Acad::ErrorStatus AcDbAttributeDefinition::setTag(const ACHAR* tag) {
    if (!IsTag(tag)) return Acad::eInvalidInput;
    HOST_SET(m_tag, tag, host::kDirtyGeometry);
}
ACHAR* AcDbAttributeDefinition::prompt() const { return host::NewText(m_prompt.c_str()); }
Acad::ErrorStatus AcDbAttributeDefinition::setPrompt(const ACHAR* prompt) {
    if (prompt == nullptr) return Acad::eInvalidInput;
    HOST_SET(m_prompt, prompt, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbAttributeDefinition::setInvisible(bool invisible) {
    HOST_SET(m_flags, WithFlag(m_flags, invisible), host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbAttributeDefinition::subGetGeomExtents(AcDbExtents& extents) const {
    if (m_tag.empty()) return Acad::eNullExtents;
    extents = BoxOfText(*this, m_tag);
    return Acad::eOk;
}
