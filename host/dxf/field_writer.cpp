#include "host/dxf/field_writer.h"

#include <cmath>

#include "host/db/access.h"
#include "host/dxf/codec.h"
#include "host/dxf/field_reader.h"
#include "host/base/angles.h"

namespace host::dxf {

namespace {

// The degrees that read back as the same angle, a round number where one does: 30 rather than
// 29.999999999999996.
double DegreesOf(double radians) {
    const double degrees = radians * 180.0 / kPi;
    constexpr double kScale = 1e10;
    if (std::fabs(degrees) > 1e5) return degrees;
    const double rounded = std::round(degrees * kScale) / kScale;
    return rounded * kPi / 180.0 == radians ? rounded : degrees;
}

}  // namespace

void FieldWriter::Subclass(const char* name) {
    if (!options_.marks) return;
    out_.EnterScope(name, Area::kBody);
    out_.PutText(100, name);
}

void FieldWriter::OcsPoint(int code, AcGePoint3d& point, const AcGeVector3d& normal) {
    PutPoint(code, OcsFromWcs(point, normal));
}

void FieldWriter::Normal(AcGeVector3d& normal) {
    if (normal.x == 0.0 && normal.y == 0.0 && normal.z > 0.0) return;
    PutPoint(210, AcGePoint3d(normal.x, normal.y, normal.z));
}

void FieldWriter::Named(int code, Root, AcDbObjectId& id) {
    if (id.isNull()) return;
    PutText(code, NameOf(id));
    references_.push_back(id.stub());
}

void FieldWriter::PutText(int code, std::wstring_view text) {
    out_.PutText(code, out_.style().codec->Encode(text));
}

void FieldWriter::PutPoint(int code, const AcGePoint3d& point) {
    out_.PutReal(code, point.x);
    out_.PutReal(code + 10, point.y);
    out_.PutReal(code + 20, point.z);
}

void FieldWriter::PutPoint(int code, const AcGePoint2d& point) {
    out_.PutReal(code, point.x);
    out_.PutReal(code + 10, point.y);
}

void FieldWriter::PutAngle(int code, double radians) { out_.PutReal(code, DegreesOf(radians)); }

void FieldWriter::PutId(int code, AcDbObjectId id) {
    const bool there = !id.isNull() && !id.isErased();
    out_.PutHandle(code, there ? id.stub()->handle : 0);
    if (there) references_.push_back(id.stub());
}

void FieldWriter::PutMember(int code, AcDbObjectId id) {
    out_.PutHandle(code, id.stub()->handle);
    references_.push_back(id.stub());
}

bool FieldWriter::IsNamed(AcDbObjectId id) const {
    if (AsInFile()) return !id.isNull();
    if (id.isNull() || id.isErased()) return false;
    const Codec* codec = FindCodec(id.stub()->cls);
    if (IsNew(*id.stub()) && codec != nullptr && codec->since > version()) return false;
    return options_.unnamed == nullptr || options_.unnamed->count(id.stub()) == 0 ||
           DirtyMask(*id.stub()) != kDirtyNew;
}

std::wstring FieldWriter::NameOf(AcDbObjectId record) const {
    if (record.isNull()) return {};
    if (options_.originalNames != nullptr)
        if (const std::wstring* name = options_.originalNames->Original(*record.stub()))
            return *name;
    const auto* object = AcDbSymbolTableRecord::cast(ObjectOf(*record.stub()));
    return object == nullptr ? std::wstring() : Access::Name(*object);
}

}  // namespace host::dxf
