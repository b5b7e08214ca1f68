#include "host/dxf/field_reader.h"

#include <algorithm>

#include "gemat3d.h"
#include "host/base/angles.h"
#include "host/base/host_assert.h"

namespace host::dxf {

namespace {

bool IsPlusZ(const AcGeVector3d& normal) {
    return normal.x == 0.0 && normal.y == 0.0 && normal.z > 0.0;
}

AcGePoint3d Mapped(const AcGeMatrix3d& matrix, const AcGePoint3d& point) {
    AcGePoint3d mapped = point;
    mapped.transformBy(matrix);
    return mapped;
}

}  // namespace

AcGePoint3d WcsFromOcs(const AcGePoint3d& point, const AcGeVector3d& normal) {
    return IsPlusZ(normal) ? point : Mapped(AcGeMatrix3d::planeToWorld(normal), point);
}

AcGePoint3d OcsFromWcs(const AcGePoint3d& point, const AcGeVector3d& normal) {
    return IsPlusZ(normal) ? point : Mapped(AcGeMatrix3d::worldToPlane(normal), point);
}

FieldReader::FieldReader(const Lookup& lookup, std::size_t record)
    : FieldIo(lookup.source.info.version),
      lookup_(lookup),
      own_(lookup.source, record),
      tags_(own_),
      marks_(tags_.HasMarks()) {}

FieldReader::FieldReader(const Lookup& lookup, const RecordTags& tags)
    : FieldIo(lookup.source.info.version), lookup_(lookup), tags_(tags), marks_(tags_.HasMarks()) {}

void FieldReader::Subclass(const char* name) {
    if (!marks_) return;
    const std::string_view mark(name);
    const auto end = entered_.begin() + static_cast<std::ptrdiff_t>(enteredCount_);
    scope_ = tags_.FindScope(mark, static_cast<int>(std::count(entered_.begin(), end, mark)));
    HOST_ASSERT(enteredCount_ < entered_.size(), "a class of more subclasses than any has");
    entered_[enteredCount_++] = mark;
}

bool FieldReader::InScope(const PlacedTag& placed) const {
    return placed.area == Area::kBody && (scope_ < 0 || placed.scope == scope_);
}

const Tag* FieldReader::FindIn(int code, bool anywhere) const {
    for (const PlacedTag& placed : tags_.tags)
        if (placed.tag.code == code && (anywhere ? placed.area == Area::kBody : InScope(placed)))
            return &placed.tag;
    return nullptr;
}

const Tag* FieldReader::Find(int code) const {
    const Tag* found = FindIn(code, false);
    // Only a record that lacks the subclass may keep its values elsewhere: equal codes of several
    // subclasses mean different things.
    return found != nullptr || scope_ >= 0 ? found : FindIn(code, true);
}

std::vector<Tag> FieldReader::ScopeTags() const {
    std::vector<Tag> tags;
    for (const PlacedTag& placed : tags_.tags)
        if (InScope(placed) && placed.tag.code != 100) tags.push_back(placed.tag);
    return tags;
}

void FieldReader::Real(int code, double& value) {
    if (const Tag* tag = Find(code)) value = RealOf(*tag);
}

void FieldReader::Int(int code, std::int64_t& value) {
    if (const Tag* tag = Find(code)) value = IntOf(*tag);
}

void FieldReader::Text(int code, std::wstring& value) {
    if (const Tag* tag = Find(code)) value = TextOf(*tag);
}

void FieldReader::Point(int code, AcGePoint3d& point) {
    Real(code, point.x);
    Real(code + 10, point.y);
    if (const Tag* z = Find(code + 20)) {
        point.z = RealOf(*z);
    } else if (const Tag* elevation = FindIn(38, true)) {
        // Before points had three coordinates the elevation stood in a group of its own.
        point.z = RealOf(*elevation);
    }
}

void FieldReader::Point(int code, AcGePoint2d& point) {
    Real(code, point.x);
    Real(code + 10, point.y);
}

void FieldReader::OcsPoint(int code, AcGePoint3d& point, const AcGeVector3d& absent) {
    AcGeVector3d normal = absent;
    Normal(normal);
    AcGePoint3d ocs;
    Point(code, ocs);
    point = WcsFromOcs(ocs, normal);
}

void FieldReader::Normal(AcGeVector3d& normal) {
    const Tag* tag = FindIn(210, true);
    if (tag == nullptr) return;
    AcGeVector3d read(RealOf(*tag), 0.0, 0.0);
    if (const Tag* y = FindIn(220, true)) read.y = RealOf(*y);
    if (const Tag* z = FindIn(230, true)) read.z = RealOf(*z);
    const double length = read.length();
    normal = length > 0.0 && length < 1e300 ? read / length : AcGeVector3d(0.0, 0.0, 1.0);
}

void FieldReader::Angle(int code, double& radians) {
    if (const Tag* tag = Find(code)) radians = RealOf(*tag) * kPi / 180.0;
}

void FieldReader::Named(int code, Root table, AcDbObjectId& id) {
    const Tag* tag = Find(code);
    if (tag == nullptr) return;
    Stub* stub = lookup_.names.Find(table, Trim(tag->value), *lookup_.source.codec);
    id = AcDbObjectId(stub);
}

AcDbObjectId FieldReader::IdOf(const Tag& tag) const {
    return AcDbObjectId(FindStub(lookup_.db, lookup_.source.Handle(tag)));
}

void FieldReader::Handle(int code, AcDbObjectId& id) {
    if (const Tag* tag = Find(code)) id = IdOf(*tag);
}

}  // namespace host::dxf
