#include "host/dxf/record_classes.h"

#include <algorithm>

#include "host/db/access.h"
#include "host/db/opaque.h"
#include "host/dxf/codec.h"

namespace host::dxf {

const std::map<std::string, Root, std::less<>>& Tables() {
    static const std::map<std::string, Root, std::less<>> kRoots = {
        {"BLOCK_RECORD", Root::kBlockTable},
        {"LAYER", Root::kLayerTable},
        {"LTYPE", Root::kLinetypeTable},
        {"APPID", Root::kRegAppTable},
        {"STYLE", Root::kTextStyleTable},
        {"DIMSTYLE", Root::kDimStyleTable},
        {"UCS", Root::kUcsTable},
        {"VIEW", Root::kViewTable},
        {"VPORT", Root::kViewportTable}};
    return kRoots;
}

AcRxClass* TableRecordClass(Root root) {
    static AcRxClass* (*const kClasses[])() = {
        AcDbBlockTableRecord::desc,  AcDbLayerTableRecord::desc,     AcDbLinetypeTableRecord::desc,
        AcDbRegAppTableRecord::desc, AcDbTextStyleTableRecord::desc, AcDbDimStyleTableRecord::desc,
        AcDbUCSTableRecord::desc,    AcDbViewTableRecord::desc,      AcDbViewportTableRecord::desc};
    return kClasses[static_cast<int>(root)]();
}

// First value of a whole-number group.
std::int64_t RecordClasses::Peek(std::size_t record, int code, std::int64_t absent) const {
    TagWalker walker(source_, record);
    for (Tag tag; walker.Next(tag);)
        if (tag.code == code) return source_.Int(tag);
    return absent;
}

AcRxClass* RecordClasses::OfEntity(std::size_t record) {
    const std::uint16_t type = source_.records[record].type;
    if (type == kPolyline) return polyline_ = PolylineClass(record);
    if (type == kVertex) return VertexClass();
    if (type == kInsert) return InsertClass(record);
    if (type == kDimension) return DimensionClass(record);
    return KnownClass(type, true);
}

AcRxClass* RecordClasses::PolylineClass(std::size_t record) const {
    constexpr std::int64_t k3d = 8, kMesh = 16, kFaces = 64;
    const std::int64_t flags = Peek(record, 70, 0);
    if ((flags & (kMesh | kFaces)) != 0) return OpaqueEntityClass(L"POLYLINE");
    return (flags & k3d) != 0 ? AcDb3dPolyline::desc() : AcDb2dPolyline::desc();
}

AcRxClass* RecordClasses::VertexClass() const {
    if (polyline_ == AcDb2dPolyline::desc()) return AcDb2dVertex::desc();
    if (polyline_ == AcDb3dPolyline::desc()) return AcDb3dPolylineVertex::desc();
    return OpaqueEntityClass(L"VERTEX");
}

bool RecordClasses::IsHugeArray(std::size_t record) const {
    // A drawing that shows so many cells could not be worked with; one that says so is broken.
    constexpr std::int64_t kMostCells = 100000;
    if (!source_.Is(record, kInsert)) return false;
    const std::int64_t columns = Peek(record, 70, 1), rows = Peek(record, 71, 1);
    return columns > kMostCells || rows > kMostCells ||
           (std::max)(columns, std::int64_t{1}) * (std::max)(rows, std::int64_t{1}) > kMostCells;
}

AcRxClass* RecordClasses::InsertClass(std::size_t record) const {
    const bool array = Peek(record, 70, 1) > 1 || Peek(record, 71, 1) > 1;
    return array && !IsHugeArray(record) ? AcDbMInsertBlock::desc() : AcDbBlockReference::desc();
}

AcRxClass* RecordClasses::DimensionClass(std::size_t record) const {
    static AcRxClass* (*const kTypes[])() = {
        AcDbRotatedDimension::desc,   AcDbAlignedDimension::desc, AcDb2LineAngularDimension::desc,
        AcDbDiametricDimension::desc, AcDbRadialDimension::desc,  AcDb3PointAngularDimension::desc,
        AcDbOrdinateDimension::desc};
    const std::int64_t type = Peek(record, 70, 0) & 7;
    return type < 7 ? kTypes[type]() : OpaqueEntityClass(L"DIMENSION");
}

AcRxClass* RecordClasses::OfObject(std::size_t record) {
    const std::uint16_t type = source_.records[record].type;
    // The only difference is an entry for names that are not there.
    if (source_.types[type] == "ACDBDICTIONARYWDFLT") return AcDbDictionary::desc();
    return KnownClass(type, false);
}

AcRxClass* RecordClasses::KnownClass(std::uint16_t type, bool entity) {
    std::vector<AcRxClass*>& known = entity ? entities_ : objects_;
    if (known.empty()) known.resize(source_.types.size(), nullptr);
    if (known[type] != nullptr) return known[type];
    const std::wstring name = WideFromUtf8(source_.types[type]);
    AcRxClass* found = ClassByDxfName(name);
    const bool fits = found != nullptr && found->isDerivedFrom(AcDbEntity::desc()) == entity &&
                      FindCodec(found) != nullptr &&
                      !found->isDerivedFrom(AcDbSymbolTableRecord::desc());
    if (!fits) found = entity ? OpaqueEntityClass(name) : OpaqueObjectClass(name);
    return known[type] = found;
}

}  // namespace host::dxf
