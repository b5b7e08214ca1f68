// DICTIONARY, XRECORD, GROUP, LAYOUT.
#include <algorithm>

#include "acutads.h"
#include "host/db/access.h"
#include "host/dxf/chain.h"
#include "host/dxf/codec.h"
#include "host/dxf/field_reader.h"
#include "host/dxf/field_writer.h"

namespace host::dxf {

namespace {

void MergeStyle(FieldIo& io, int code, AcDb::DuplicateRecordCloning& style) {
    io.KindAs(code, style, AcDb::kDrcNotApplicable, AcDb::kDrcUnmangleName);
}

// Entries themselves are read by LoadedDrawing, which knows the objects.
void DictionaryFields(FieldIo& io, AcDbDictionary& dictionary) {
    io.Subclass("AcDbDictionary");
    io.OptBool(280, Access::Hard(dictionary), false);
    if (io.version() >= kVersionR2000) MergeStyle(io, 281, Access::MergeStyle(dictionary));
    FieldWriter* writer = io.AsWriter();
    if (writer == nullptr) return;
    const int owner = Access::Hard(dictionary) ? 360 : 350;
    writer->out().BeginEntries({3, 350, 360});
    for (const auto& entry : Access::Entries(dictionary)) {
        if (!writer->IsNamed(entry.id)) continue;
        writer->PutText(3, entry.name);
        writer->PutMember(owner, entry.id);
    }
    writer->out().EndList();
}

// Everything behind the merge style belongs to the record, groups of extended data before the first
// application name included. Programs that leave out the subclass mark begin behind the owner.
std::vector<Tag> XrecordTags(const FieldReader& io) {
    const RecordTags& record = io.tags();
    const bool marked = record.FindScope(kXrecordMark) >= 0;
    std::vector<Tag> tags;
    bool inside = false, mergeStyle = false;
    for (const PlacedTag& placed : record.tags) {
        const int code = placed.tag.code;
        if (placed.area != Area::kBody) continue;
        if (marked && !inside) {
            inside = record.ScopeName(placed) == kXrecordMark;
            continue;
        }
        if (!marked && (code == 0 || code == 5 || code == 330) && !inside) continue;
        inside = true;
        if (code == 280 && !mergeStyle && tags.empty()) {
            mergeStyle = true;
            continue;
        }
        tags.push_back(placed.tag);
    }
    return tags;
}

void XrecordFields(FieldIo& io, AcDbXrecord& record) {
    io.Subclass("AcDbXrecord");
    if (FieldReader* reader = io.AsReader()) {
        const std::vector<Tag> tags = XrecordTags(*reader);
        acutRelRb(Access::Chain(record));
        Access::Chain(record) = ChainFromTags(*reader, tags);
        if (io.version() >= kVersionR2000) MergeStyle(io, 280, Access::MergeStyle(record));
        return;
    }
    FieldWriter& writer = *io.AsWriter();
    if (io.version() >= kVersionR2000) MergeStyle(io, 280, Access::MergeStyle(record));
    writer.out().BeginList({}, true);
    WriteChain(writer, Access::Chain(record));
    writer.out().EndList();
}

void GroupFields(FieldIo& io, AcDbGroup& group) {
    io.Subclass("AcDbGroup");
    io.Text(300, Access::Description(group));
    io.Bool(70, Access::Anonymous(group));
    io.Bool(71, Access::Selectable(group));
    std::vector<AcDbObjectId>& ids = Access::GroupIds(group);
    if (FieldReader* reader = io.AsReader()) {
        for (const Tag& tag : reader->ScopeTags()) {
            if (tag.code != 340) continue;
            const AcDbObjectId id = reader->IdOf(tag);
            if (!id.isNull()) ids.push_back(id);
        }
        return;
    }
    FieldWriter& writer = *io.AsWriter();
    writer.out().BeginEntries({340});
    for (AcDbObjectId id : ids)
        if (writer.AsInFile() || (!id.isNull() && !id.isErased())) writer.PutMember(340, id);
    writer.out().EndList();
}

// What a sheet without a plotter needs. Source: DXF reference, PLOTSETTINGS.
void DefaultPlotSettings(FieldWriter& io, bool model) {
    io.Subclass("AcDbPlotSettings");
    io.PutText(1, L"");
    io.PutText(2, L"none_device");
    io.PutText(4, L"");
    io.PutText(6, L"");
    for (int code = 40; code <= 49; ++code) io.PutReal(code, 0.0);
    for (int code = 140; code <= 141; ++code) io.PutReal(code, 0.0);
    for (int code = 142; code <= 143; ++code) io.PutReal(code, 1.0);
    io.PutInt(70, model ? 1024 : 0);
    io.PutInt(72, 0);
    io.PutInt(73, 0);
    io.PutInt(74, 5);
    io.PutText(7, L"");
    io.PutInt(75, 16);
    io.PutReal(147, 1.0);
    io.PutReal(148, 0.0);
    io.PutReal(149, 0.0);
}

void DefaultPaper(FieldWriter& io) {
    io.PutPoint(10, AcGePoint2d(0.0, 0.0));
    io.PutPoint(11, AcGePoint2d(420.0, 297.0));
    io.PutPoint(12, AcGePoint3d(0.0, 0.0, 0.0));
    io.PutPoint(14, AcGePoint3d(0.0, 0.0, 0.0));
    io.PutPoint(15, AcGePoint3d(420.0, 297.0, 0.0));
    io.PutReal(146, 0.0);
    io.PutPoint(13, AcGePoint3d(0.0, 0.0, 0.0));
    io.PutPoint(16, AcGePoint3d(1.0, 0.0, 0.0));
    io.PutPoint(17, AcGePoint3d(0.0, 1.0, 0.0));
    io.PutInt(76, 0);
}

void LayoutFields(FieldIo& io, AcDbLayout& layout) {
    FieldWriter* writer = io.AsWriter();
    const bool whole = writer != nullptr && writer->options().whole;
    if (whole) DefaultPlotSettings(*writer, Access::TabOrder(layout) == 0);
    io.Subclass("AcDbLayout");
    io.Text(1, Access::LayoutName(layout));
    std::int64_t flags = 1;
    if (whole) io.Int(70, flags);
    io.IntAs(71, Access::TabOrder(layout));
    if (whole) DefaultPaper(*writer);
    io.Handle(330, Access::LayoutBlock(layout));
}

}  // namespace

const std::vector<Codec>& ObjectCodecs() {
    static const std::vector<Codec> kCodecs = {
        {"DICTIONARY", AcDbDictionary::desc, Fields<AcDbDictionary, DictionaryFields>},
        {"XRECORD", AcDbXrecord::desc, Fields<AcDbXrecord, XrecordFields>},
        {"GROUP", AcDbGroup::desc, Fields<AcDbGroup, GroupFields>},
        {"LAYOUT", AcDbLayout::desc, Fields<AcDbLayout, LayoutFields>, kVersionR2000}};
    return kCodecs;
}

}  // namespace host::dxf
