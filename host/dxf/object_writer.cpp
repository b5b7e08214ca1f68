#include "host/dxf/object_writer.h"

#include "host/db/access.h"
#include "host/dxf/block_fields.h"
#include "host/dxf/chain.h"
#include "host/dxf/codec.h"

namespace host::dxf {

namespace {

void WriteGroup(FieldWriter& io, const std::string& name, int code,
                const std::vector<AcDbObjectId>& ids) {
    std::vector<AcDbObjectId> there;
    for (AcDbObjectId id : ids)
        if (!id.isNull() && (io.AsInFile() || !id.isErased())) there.push_back(id);
    if (there.empty()) return;
    const std::uint16_t scope = io.out().scope();
    io.out().EnterScope(name, Area::kGroup);
    io.out().PutText(102, name);
    for (AcDbObjectId id : there) io.PutMember(code, id);
    io.out().PutText(102, "}");
    io.out().BackToScope(scope, Area::kBody);
}

void WriteHead(FieldWriter& io, const RecordHead& head, const AcDbObject* object) {
    TagBuffer& out = io.out();
    out.PutText(0, head.name);
    if (head.handle != 0) out.PutHandle(head.name == "DIMSTYLE" ? 105 : 5, head.handle);
    if (object != nullptr && io.version() >= kVersionR13) {
        WriteGroup(io, "{ACAD_REACTORS", 330, ReactorIds(*object));
        WriteGroup(io, "{ACAD_XDICTIONARY", 360, {ExtensionDictionaryId(*object)});
    }
    if (head.owner != 0) out.PutHandle(330, head.owner);
}

void BlockEntityHead(FieldWriter& io, const RecordHead& head) {
    WriteHead(io, head, nullptr);
    io.Subclass("AcDbEntity");
    if (head.options.paperSpace) io.PutInt(67, 1);
    io.PutText(8, L"0");
}

}  // namespace

void WriteObject(const AcDbObject& object, const RecordHead& head, TagBuffer& out,
                 std::vector<Stub*>* references) {
    FieldWriter io(out, head.options);
    WriteHead(io, head, &object);
    // A writer only looks at what it is given.
    auto& fields = const_cast<AcDbObject&>(object);
    if (object.isKindOf(AcDbEntity::desc())) EntityFields(io, fields);
    if (const Codec* codec = FindCodec(object.isA())) codec->fields(io, fields);
    WriteXData(io, XDataChain(object));
    if (references != nullptr)
        references->insert(references->end(), io.references().begin(), io.references().end());
}

void WriteBlockBegin(const AcDbBlockTableRecord& block, const RecordHead& head, TagBuffer& out) {
    FieldWriter io(out, head.options);
    BlockEntityHead(io, head);
    BlockFields(io, const_cast<AcDbBlockTableRecord&>(block));
}

void WriteBlockEnd(const RecordHead& head, TagBuffer& out) {
    FieldWriter io(out, head.options);
    BlockEntityHead(io, head);
    io.Subclass("AcDbBlockEnd");
}

void WriteTableBegin(const std::string& name, const RecordHead& head, std::size_t count,
                     TagBuffer& out) {
    FieldWriter io(out, head.options);
    out.PutText(0, "TABLE");
    out.PutText(2, name);
    if (head.handle != 0) out.PutHandle(5, head.handle);
    if (io.version() >= kVersionR2000) out.PutHandle(330, 0);
    io.Subclass("AcDbSymbolTable");
    out.PutInt(70, static_cast<std::int64_t>(count));
    if (name != "DIMSTYLE" || io.version() < kVersionR2000) return;
    io.Subclass("AcDbDimStyleTable");
    out.PutInt(71, 0);
}

void WriteMark(const std::string& name, TagBuffer& out) { out.PutText(0, name); }

}  // namespace host::dxf
