#include "host/dxf/codec.h"

#include <cstdlib>
#include <unordered_map>

#include "host/db/access.h"
#include "host/dxf/field_reader.h"
#include "host/dxf/field_writer.h"

namespace host::dxf {

namespace {

std::unordered_map<const AcRxClass*, const Codec*> MakeIndex() {
    std::unordered_map<const AcRxClass*, const Codec*> index;
    for (const auto* codecs : {&CurveCodecs(), &PolylineCodecs(), &TextCodecs(), &DimensionCodecs(),
                               &ShapeCodecs(), &HatchCodecs(), &TableCodecs(), &ObjectCodecs()})
        for (const Codec& codec : *codecs) index.emplace(codec.type(), &codec);
    return index;
}

void WriteColor(FieldWriter& io, const AcCmEntityColor& color) {
    if (color.isByLayer()) return;
    io.PutInt(62, color.colorIndex());
    if (color.isByColor() && io.version() >= kVersionR2004)
        io.PutInt(420, color.color() & 0xFFFFFF);
}

}  // namespace

AcCmEntityColor ColorOfGroups(std::int64_t index, std::int64_t rgb, Adesk::UInt16 absent) {
    AcCmEntityColor color;
    const bool known = index >= 0 && index <= AcCmEntityColor::kACInone;
    if (color.setColorIndex(known ? static_cast<Adesk::UInt16>(index) : absent) != Acad::eOk)
        return AcCmEntityColor();
    if (rgb >= 0 && rgb <= 0xFFFFFF)
        color =
            AcCmEntityColor(static_cast<Adesk::UInt8>(rgb >> 16),
                            static_cast<Adesk::UInt8>(rgb >> 8), static_cast<Adesk::UInt8>(rgb));
    return color;
}

const Codec* FindCodec(const AcRxClass* type) {
    static const std::unordered_map<const AcRxClass*, const Codec*> kIndex = MakeIndex();
    const auto found = kIndex.find(type);
    return found == kIndex.end() ? nullptr : found->second;
}

void EntityFields(FieldIo& io, AcDbObject& object) {
    auto& entity = static_cast<AcDbEntity&>(object);
    io.Subclass("AcDbEntity");
    AcDbObjectId byLayer;
    if (FieldWriter* writer = io.AsWriter()) {
        byLayer = writer->options().byLayer;
        if (writer->options().paperSpace) writer->PutInt(67, 1);
        if (Access::Layer(entity).isNull()) writer->PutText(8, L"0");
    }
    io.Named(8, Root::kLayerTable, Access::Layer(entity));
    io.OptNamed(6, Root::kLinetypeTable, Access::Linetype(entity), byLayer);
    if (io.AsReader() != nullptr) {
        std::int64_t index = AcCmEntityColor::kACIbyLayer, rgb = -1;
        io.Int(62, index);
        io.Int(420, rgb);
        Access::Color(entity) = ColorOfGroups(std::abs(index), rgb, AcCmEntityColor::kACIbyLayer);
    }
    if (FieldWriter* writer = io.AsWriter()) WriteColor(*writer, Access::Color(entity));
    if (io.version() >= kVersionR13) {
        io.OptReal(48, Access::LinetypeScale(entity), 1.0);
        bool invisible = Access::Visibility(entity) != AcDb::kVisible;
        io.OptBool(60, invisible, false);
        if (io.AsReader() != nullptr)
            Access::Visibility(entity) = invisible ? AcDb::kInvisible : AcDb::kVisible;
    }
    if (io.version() >= kVersionR2000)
        io.OptLineWeight(370, Access::LineWeight(entity), AcDb::kLnWtByLayer);
}

}  // namespace host::dxf
