// DIMENSION, ARC_DIMENSION.
#include "host/db/access.h"
#include "host/dxf/codec.h"
#include "host/dxf/field_reader.h"
#include "host/dxf/field_writer.h"

namespace host::dxf {

namespace {

// Type of a dimension in the low bits of group 70; the others are flags.
enum DimType {
    kRotated = 0,
    kAligned = 1,
    kAngular2 = 2,
    kDiameter = 3,
    kRadius = 4,
    kAngular3 = 5,
    kOrdinate = 6
};
constexpr std::int64_t kTypeBits = 7;

void DefinitionPoint(FieldIo& io, AcDbDimension& dim, int group) {
    const int slot = Access::SlotOfGroup(group);
    const auto bit = static_cast<Adesk::UInt8>(1 << slot);
    if (io.AsWriter() != nullptr && (Access::UsedPoints(dim) & bit) == 0) return;
    if (!io.Has(group)) return;
    AcGePoint3d& point = Access::Points(dim)[slot];
    if (group == 12)
        io.OcsPoint(group, point, Access::Normal(dim));
    else
        io.Point(group, point);
    Access::UsedPoints(dim) = static_cast<Adesk::UInt8>(Access::UsedPoints(dim) | bit);
}

void DimensionBody(FieldIo& io, AcDbDimension& dim, DimType type) {
    io.Subclass("AcDbDimension");
    io.OptNamed(2, Root::kBlockTable, Access::Block(dim), AcDbObjectId());
    io.Normal(Access::Normal(dim));
    DefinitionPoint(io, dim, 10);
    if (io.Has(11)) io.Point(11, Access::TextPosition(dim));
    DefinitionPoint(io, dim, 12);
    std::int64_t flags = type | Access::TypeFlags(dim);
    io.Int(70, flags);
    TakeInt(flags & ~kTypeBits, Access::TypeFlags(dim));
    io.OptText(1, Access::Text(dim), L"");
    io.OptReal(42, Access::Measurement(dim), 0.0);
    io.OptAngle(53, Access::TextRotation(dim), 0.0);
    io.OptAngle(51, Access::HorizontalRotation(dim), 0.0);
    io.OptNamed(3, Root::kDimStyleTable, Access::DimStyle(dim), AcDbObjectId());
}

void RotatedFields(FieldIo& io, AcDbRotatedDimension& dim) {
    DimensionBody(io, dim, kRotated);
    io.Subclass("AcDbAlignedDimension");
    DefinitionPoint(io, dim, 13);
    DefinitionPoint(io, dim, 14);
    io.OptAngle(50, Access::Rotation(dim), 0.0);
    io.OptAngle(52, Access::Oblique(dim), 0.0);
    io.Subclass("AcDbRotatedDimension");
    // Some programs state the angle here.
    if (io.AsReader() != nullptr) io.Angle(50, Access::Rotation(dim));
}

void AlignedFields(FieldIo& io, AcDbAlignedDimension& dim) {
    DimensionBody(io, dim, kAligned);
    io.Subclass("AcDbAlignedDimension");
    DefinitionPoint(io, dim, 13);
    DefinitionPoint(io, dim, 14);
    io.OptAngle(52, Access::Oblique(dim), 0.0);
}

void PointsFields(FieldIo& io, AcDbDimension& dim, DimType type, const char* subclass,
                  std::initializer_list<int> groups) {
    DimensionBody(io, dim, type);
    io.Subclass(subclass);
    for (int group : groups) DefinitionPoint(io, dim, group);
}

void Angular2Fields(FieldIo& io, AcDb2LineAngularDimension& dim) {
    PointsFields(io, dim, kAngular2, "AcDb2LineAngularDimension", {13, 14, 15, 16});
}

void Angular3Fields(FieldIo& io, AcDb3PointAngularDimension& dim) {
    PointsFields(io, dim, kAngular3, "AcDb3PointAngularDimension", {13, 14, 15});
}

void RadialFields(FieldIo& io, AcDbRadialDimension& dim) {
    PointsFields(io, dim, kRadius, "AcDbRadialDimension", {15});
}

void DiametricFields(FieldIo& io, AcDbDiametricDimension& dim) {
    PointsFields(io, dim, kDiameter, "AcDbDiametricDimension", {15});
}

void OrdinateFields(FieldIo& io, AcDbOrdinateDimension& dim) {
    PointsFields(io, dim, kOrdinate, "AcDbOrdinateDimension", {13, 14});
}

void ArcLengthFields(FieldIo& io, AcDbArcDimension& dim) {
    PointsFields(io, dim, kAngular3, "AcDbArcDimension", {13, 14, 15});
}

}  // namespace

const std::vector<Codec>& DimensionCodecs() {
    static const std::vector<Codec> kCodecs = {
        {"DIMENSION", AcDbRotatedDimension::desc, Fields<AcDbRotatedDimension, RotatedFields>},
        {"DIMENSION", AcDbAlignedDimension::desc, Fields<AcDbAlignedDimension, AlignedFields>},
        {"DIMENSION", AcDb2LineAngularDimension::desc,
         Fields<AcDb2LineAngularDimension, Angular2Fields>},
        {"DIMENSION", AcDb3PointAngularDimension::desc,
         Fields<AcDb3PointAngularDimension, Angular3Fields>},
        {"DIMENSION", AcDbRadialDimension::desc, Fields<AcDbRadialDimension, RadialFields>},
        {"DIMENSION", AcDbDiametricDimension::desc,
         Fields<AcDbDiametricDimension, DiametricFields>},
        {"DIMENSION", AcDbOrdinateDimension::desc, Fields<AcDbOrdinateDimension, OrdinateFields>},
        {"ARC_DIMENSION", AcDbArcDimension::desc, Fields<AcDbArcDimension, ArcLengthFields>,
         kVersionR2004}};
    return kCodecs;
}

}  // namespace host::dxf
