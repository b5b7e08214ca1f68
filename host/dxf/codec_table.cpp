// Records of the symbol tables. BLOCK, which holds a block record's other half, has its own
// function.
#include <cstdlib>

#include "host/db/access.h"
#include "host/dxf/block_fields.h"
#include "host/dxf/codec.h"
#include "host/dxf/field_reader.h"
#include "host/dxf/field_writer.h"

namespace host::dxf {

namespace {

void RecordName(FieldIo& io, AcDbSymbolTableRecord& record, const char* subclass) {
    io.Subclass("AcDbSymbolTableRecord");
    io.Subclass(subclass);
    io.Text(2, Access::Name(record));
}

// The 70 of records whose flags this host does not use.
void NoFlags(FieldIo& io) {
    std::int64_t none = 0;
    if (io.AsWriter() != nullptr) io.Flags(70, 0x10000, none);
}

void LayerColor(FieldIo& io, AcDbLayerTableRecord& layer) {
    AcCmEntityColor& color = Access::Color(layer);
    std::int64_t index = color.colorIndex(), rgb = -1;
    if (color.isByColor()) rgb = color.color() & 0xFFFFFF;
    // A negative colour turns the layer off.
    if (Access::Off(layer)) index = -index;
    io.Int(62, index);
    if (io.version() >= kVersionR2004) io.OptInt(420, rgb, std::int64_t{-1});
    if (io.AsReader() == nullptr) return;
    Access::Off(layer) = index < 0;
    color = ColorOfGroups(std::abs(index), rgb, AcCmEntityColor::kACIforeground);
}

void LayerFields(FieldIo& io, AcDbLayerTableRecord& layer) {
    RecordName(io, layer, "AcDbLayerTableRecord");
    FlagSet flags(io, 70);
    flags.Bit(1, Access::Frozen(layer));
    flags.Bit(4, Access::Locked(layer));
    flags.Done();
    LayerColor(io, layer);
    io.Named(6, Root::kLinetypeTable, Access::LayerLinetype(layer));
    if (io.AsWriter() != nullptr && Access::LayerLinetype(layer).isNull())
        io.AsWriter()->PutText(6, L"CONTINUOUS");
    if (io.version() < kVersionR2000) return;
    io.OptBool(290, Access::Plottable(layer), true);
    io.LineWeight(370, Access::LineWeight(layer));
    if (FieldWriter* writer = io.AsWriter()) {
        const FieldWriter::Options& options = writer->options();
        if (options.plotStyle != 0) writer->out().PutHandle(390, options.plotStyle);
        if (options.material != 0) writer->out().PutHandle(347, options.material);
    }
}

void LinetypeFields(FieldIo& io, AcDbLinetypeTableRecord& type) {
    RecordName(io, type, "AcDbLinetypeTableRecord");
    NoFlags(io);
    io.Text(3, Access::Comments(type));
    std::vector<double>& dashes = Access::Dashes(type);
    if (FieldReader* reader = io.AsReader()) {
        for (const Tag& tag : reader->ScopeTags())
            if (tag.code == 49) dashes.push_back(reader->RealOf(tag));
        io.Real(40, Access::PatternLength(type));
        return;
    }
    FieldWriter& writer = *io.AsWriter();
    writer.PutInt(72, 65);  // alignment: always 'A'
    writer.PutInt(73, static_cast<std::int64_t>(dashes.size()));
    writer.PutReal(40, Access::PatternLength(type));
    writer.out().BeginList({49, 74, 75, 340, 46, 50, 44, 45, 9});
    for (double dash : dashes) {
        writer.PutReal(49, dash);
        if (io.version() >= kVersionR13) writer.PutInt(74, 0);
    }
    writer.out().EndList();
}

void TextStyleFields(FieldIo& io, AcDbTextStyleTableRecord& style) {
    RecordName(io, style, "AcDbTextStyleTableRecord");
    FlagSet flags(io, 70);
    flags.Bit(1, Access::ShapeFile(style));
    flags.Done();
    io.Real(40, Access::TextSize(style));
    io.Real(41, Access::XScale(style));
    io.Angle(50, Access::Obliquing(style));
    if (FieldWriter* writer = io.AsWriter()) {
        std::int64_t none = 0;
        writer->Flags(71, 0x10000, none);
        double last = Access::TextSize(style) > 0.0 ? Access::TextSize(style) : 2.5;
        if (writer->options().originalNames == nullptr && writer->options().whole)
            writer->PutReal(42, last);
    }
    io.Text(3, Access::FileName(style));
    io.Text(4, Access::BigFontFileName(style));
}

void RegAppFields(FieldIo& io, AcDbRegAppTableRecord& record) {
    RecordName(io, record, "AcDbRegAppTableRecord");
    NoFlags(io);
}

void DimStyleFields(FieldIo& io, AcDbDimStyleTableRecord& record) {
    RecordName(io, record, "AcDbDimStyleTableRecord");
    NoFlags(io);
}

void UcsFields(FieldIo& io, AcDbUCSTableRecord& ucs) {
    RecordName(io, ucs, "AcDbUCSTableRecord");
    NoFlags(io);
    io.Point(10, Access::Origin(ucs));
    io.Vector(11, Access::XAxis(ucs));
    io.Vector(12, Access::YAxis(ucs));
}

void ViewFields(FieldIo& io, AcDbViewTableRecord& view) {
    RecordName(io, view, "AcDbViewTableRecord");
    FlagSet flags(io, 70);
    flags.Bit(1, Access::Paperspace(view));
    flags.Done();
    io.Real(40, Access::ViewHeight(view));
    io.Point(10, Access::ViewCenter(view));
    io.Real(41, Access::ViewWidth(view));
    io.Vector(11, Access::ViewDirection(view));
    io.Point(12, Access::ViewTarget(view));
    double lens = 50.0, front = 0.0, back = 0.0;
    std::int64_t mode = 0;
    if (io.AsWriter() != nullptr && io.AsWriter()->options().whole) {
        io.Real(42, lens);
        io.Real(43, front);
        io.Real(44, back);
    }
    io.Angle(50, Access::ViewTwist(view));
    if (io.AsWriter() != nullptr && io.AsWriter()->options().whole) io.Int(71, mode);
}

void ViewportFields(FieldIo& io, AcDbViewportTableRecord& view) {
    RecordName(io, view, "AcDbViewportTableRecord");
    NoFlags(io);
    io.Point(10, Access::LowerLeft(view));
    io.Point(11, Access::UpperRight(view));
    io.Point(12, Access::ViewCenter(view));
    io.Vector(16, Access::ViewDirection(view));
    io.Point(17, Access::ViewTarget(view));
    double& height = Access::ViewHeight(view);
    double aspect = height > 0.0 ? Access::ViewWidth(view) / height : 1.0;
    io.Real(40, height);
    io.Real(41, aspect);
    io.Angle(51, Access::ViewTwist(view));
    if (io.AsReader() != nullptr) Access::ViewWidth(view) = height * aspect;
}

void BlockRecordFields(FieldIo& io, AcDbBlockTableRecord& block) {
    RecordName(io, block, "AcDbBlockTableRecord");
    if (io.version() >= kVersionR2000) io.Handle(340, Access::LayoutId(block));
}

}  // namespace

void BlockFields(FieldIo& io, AcDbBlockTableRecord& block) {
    io.Subclass("AcDbBlockBegin");
    std::wstring name = Access::Name(block);
    if (io.AsWriter() != nullptr) io.Text(2, name);
    FlagSet flags(io, 70);
    flags.Bit(1, Access::Anonymous(block));
    flags.Bit(4, Access::Xref(block));
    flags.Bit(8, Access::Overlay(block));
    flags.Done();
    io.Point(10, Access::Origin(block));
    if (io.AsWriter() != nullptr) io.Text(3, name);
    if (io.AsReader() != nullptr || Access::Xref(block) ||
        (io.AsWriter()->options().whole && io.version() >= kVersionR13))
        io.Text(1, Access::PathName(block));
    io.OptText(4, Access::Comments(block), L"");
}

const std::vector<Codec>& TableCodecs() {
    static const std::vector<Codec> kCodecs = {
        {"LAYER", AcDbLayerTableRecord::desc, Fields<AcDbLayerTableRecord, LayerFields>},
        {"LTYPE", AcDbLinetypeTableRecord::desc, Fields<AcDbLinetypeTableRecord, LinetypeFields>},
        {"STYLE", AcDbTextStyleTableRecord::desc,
         Fields<AcDbTextStyleTableRecord, TextStyleFields>},
        {"APPID", AcDbRegAppTableRecord::desc, Fields<AcDbRegAppTableRecord, RegAppFields>},
        {"DIMSTYLE", AcDbDimStyleTableRecord::desc,
         Fields<AcDbDimStyleTableRecord, DimStyleFields>},
        {"UCS", AcDbUCSTableRecord::desc, Fields<AcDbUCSTableRecord, UcsFields>},
        {"VIEW", AcDbViewTableRecord::desc, Fields<AcDbViewTableRecord, ViewFields>},
        {"VPORT", AcDbViewportTableRecord::desc, Fields<AcDbViewportTableRecord, ViewportFields>},
        {"BLOCK_RECORD", AcDbBlockTableRecord::desc,
         Fields<AcDbBlockTableRecord, BlockRecordFields>}};
    return kCodecs;
}

}  // namespace host::dxf
