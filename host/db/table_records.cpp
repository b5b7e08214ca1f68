// The records of the symbol tables but the block records.

#include "host/db/database_imp.h"
#include "host/db/define_class.h"
#include "host/db/line_weights.h"
#include "host/base/host_assert.h"

using host::Access;

HOST_DEFINE_CLASS(AcDbLayerTableRecord, AcDbSymbolTableRecord, ACRX_T("LAYER"))
HOST_DEFINE_CLASS(AcDbLinetypeTableRecord, AcDbSymbolTableRecord, ACRX_T("LTYPE"))
HOST_DEFINE_CLASS(AcDbTextStyleTableRecord, AcDbSymbolTableRecord, ACRX_T("STYLE"))
HOST_DEFINE_CLASS(AcDbRegAppTableRecord, AcDbSymbolTableRecord, ACRX_T("APPID"))
HOST_DEFINE_CLASS(AcDbDimStyleTableRecord, AcDbSymbolTableRecord, ACRX_T("DIMSTYLE"))
HOST_DEFINE_CLASS(AcDbUCSTableRecord, AcDbSymbolTableRecord, ACRX_T("UCS"))
HOST_DEFINE_ABSTRACT(AcDbAbstractViewTableRecord, AcDbSymbolTableRecord, nullptr)
HOST_DEFINE_CLASS(AcDbViewTableRecord, AcDbAbstractViewTableRecord, ACRX_T("VIEW"))
HOST_DEFINE_CLASS(AcDbViewportTableRecord, AcDbAbstractViewTableRecord, ACRX_T("VPORT"))
HOST_DEFINE_COPY(AcDbLayerTableRecord)
HOST_DEFINE_COPY(AcDbLinetypeTableRecord)
HOST_DEFINE_COPY(AcDbTextStyleTableRecord)
HOST_DEFINE_COPY(AcDbRegAppTableRecord)
HOST_DEFINE_COPY(AcDbDimStyleTableRecord)
HOST_DEFINE_COPY(AcDbUCSTableRecord)
HOST_DEFINE_COPY(AcDbViewTableRecord)
HOST_DEFINE_COPY(AcDbViewportTableRecord)

namespace {

// For the interface's void setters, which cannot say that they refuse.
void MustWrite(AcDbObject& object) {
    const Acad::ErrorStatus es = Access::BeginWrite(object, host::kDirtyGeometry);
    HOST_ASSERT(es == Acad::eOk, "a record was changed that is not open for write");
}

bool IsLinetype(AcDbObjectId id) {
    return !id.isNull() && id.objectClass()->isDerivedFrom(AcDbLinetypeTableRecord::desc());
}

}  // namespace

AcDbLayerTableRecord::AcDbLayerTableRecord() {
    const Acad::ErrorStatus es = m_color.setColorIndex(AcCmEntityColor::kACIforeground);
    HOST_ASSERT(es == Acad::eOk, "the foreground colour is an index");
}

void AcDbLayerTableRecord::setIsOff(bool off) {
    MustWrite(*this);
    m_off = off;
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsFrozen(bool frozen) {
    if (frozen && database() != nullptr && database()->clayer() == objectId())
        return Acad::eInvalidInput;
    HOST_SET(m_frozen, frozen, host::kDirtyGeometry);
}

void AcDbLayerTableRecord::setIsLocked(bool locked) {
    MustWrite(*this);
    m_locked = locked;
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsHidden(bool hidden) {
    HOST_SET(m_hidden, hidden, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsPlottable(bool plottable) {
    HOST_SET(m_plottable, plottable, host::kDirtyGeometry);
}

void AcDbLayerTableRecord::setColor(const AcCmColor& color) {
    MustWrite(*this);
    m_color = color;
}

Acad::ErrorStatus AcDbLayerTableRecord::setLinetypeObjectId(AcDbObjectId linetype) {
    if (!IsLinetype(linetype)) return Acad::eWrongObjectType;
    if (database() != nullptr && linetype.database() != database()) return Acad::eWrongDatabase;
    HOST_SET(m_linetypeId, linetype, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbLayerTableRecord::setLineWeight(AcDb::LineWeight weight) {
    if (!host::IsLineWeight(weight)) return Acad::eInvalidInput;
    HOST_SET(m_lineWeight, static_cast<Adesk::Int16>(weight), host::kDirtyGeometry);
}

ACHAR* AcDbLayerTableRecord::description() const { return host::NewText(m_description.c_str()); }

Acad::ErrorStatus AcDbLayerTableRecord::setDescription(const ACHAR* text) {
    if (text == nullptr) return Acad::eInvalidInput;
    HOST_SET(m_description, text, host::kDirtyGeometry);
}

bool AcDbLayerTableRecord::isInUse() const {
    if (database() == nullptr) return false;
    for (host::Stub* const stub : host::AllStubs(*database())) {
        if (!stub->Has(host::kStubEntity) || stub->Has(host::kStubErased)) continue;
        const AcDbObject* const object = host::ObjectOf(*stub);
        if (object != nullptr && static_cast<const AcDbEntity*>(object)->layerId() == objectId())
            return true;
    }
    return false;
}

ACHAR* AcDbLinetypeTableRecord::comments() const { return host::NewText(m_comments.c_str()); }

Acad::ErrorStatus AcDbLinetypeTableRecord::setComments(const ACHAR* text) {
    if (text == nullptr) return Acad::eInvalidInput;
    HOST_SET(m_comments, text, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setPatternLength(double length) {
    HOST_SET(m_patternLength, length, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setNumDashes(int count) {
    if (count < 0) return Acad::eInvalidInput;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es == Acad::eOk) m_dashes.resize(static_cast<size_t>(count));
    return es;
}

double AcDbLinetypeTableRecord::dashLengthAt(int index) const {
    return index >= 0 && index < numDashes() ? m_dashes[static_cast<size_t>(index)] : 0.0;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setDashLengthAt(int index, double length) {
    if (index < 0 || index >= numDashes()) return Acad::eInvalidIndex;
    HOST_SET(m_dashes[static_cast<size_t>(index)], length, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setTextSize(double size) {
    if (size < 0.0) return Acad::eInvalidInput;
    HOST_SET(m_textSize, size, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setXScale(double scale) {
    if (!(scale > 0.0)) return Acad::eInvalidInput;
    HOST_SET(m_xScale, scale, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setObliquingAngle(double angle) {
    HOST_SET(m_obliquing, angle, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::fileName(AcString& name) const {
    name = m_fileName.c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setFileName(const ACHAR* name) {
    if (name == nullptr) return Acad::eInvalidInput;
    HOST_SET(m_fileName, name, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::bigFontFileName(AcString& name) const {
    name = m_bigFontFileName.c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setBigFontFileName(const ACHAR* name) {
    if (name == nullptr) return Acad::eInvalidInput;
    HOST_SET(m_bigFontFileName, name, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbUCSTableRecord::setOrigin(const AcGePoint3d& origin) {
    HOST_SET(m_origin, origin, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbUCSTableRecord::setXAxis(const AcGeVector3d& axis) {
    HOST_SET(m_xAxis, axis, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbUCSTableRecord::setYAxis(const AcGeVector3d& axis) {
    HOST_SET(m_yAxis, axis, host::kDirtyGeometry);
}

void AcDbAbstractViewTableRecord::setCenterPoint(const AcGePoint2d& center) {
    MustWrite(*this);
    m_center = center;
}
void AcDbAbstractViewTableRecord::setHeight(double height) {
    MustWrite(*this);
    m_height = height;
}
void AcDbAbstractViewTableRecord::setWidth(double width) {
    MustWrite(*this);
    m_width = width;
}
void AcDbAbstractViewTableRecord::setTarget(const AcGePoint3d& target) {
    MustWrite(*this);
    m_target = target;
}
void AcDbAbstractViewTableRecord::setViewDirection(const AcGeVector3d& direction) {
    MustWrite(*this);
    m_direction = direction;
}
void AcDbAbstractViewTableRecord::setViewTwist(double angle) {
    MustWrite(*this);
    m_twist = angle;
}
void AcDbViewTableRecord::setIsPaperspaceView(bool paperspace) {
    MustWrite(*this);
    m_paperspace = paperspace;
}
void AcDbViewportTableRecord::setLowerLeftCorner(const AcGePoint2d& corner) {
    MustWrite(*this);
    m_lowerLeft = corner;
}
void AcDbViewportTableRecord::setUpperRightCorner(const AcGePoint2d& corner) {
    MustWrite(*this);
    m_upperRight = corner;
}
