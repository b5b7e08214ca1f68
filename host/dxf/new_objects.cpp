#include "host/dxf/new_objects.h"

#include <algorithm>

#include "host/db/access.h"
#include "host/db/names.h"
#include "host/db/modeller.h"
#include "host/dxf/codec.h"
#include "host/dxf/older_forms.h"
#include "host/dxf/record_classes.h"

namespace host::dxf {

namespace {

// No drawing nests deeper; a broken one may have owners in a circle.
constexpr int kDeepestNesting = 64;

bool IsRecord(const Stub& stub) { return stub.cls->isDerivedFrom(AcDbSymbolTableRecord::desc()); }
bool IsTable(const Stub& stub) { return stub.cls->isDerivedFrom(AcDbSymbolTable::desc()); }

bool IsSpaceBlock(const Stub& stub) {
    const auto* block = AcDbBlockTableRecord::cast(ObjectOf(const_cast<Stub&>(stub)));
    return block != nullptr && Access::IsSpace(*block);
}

bool HasHandles(const LoadedDrawing* drawing, const WriteStyle& style) {
    if (drawing == nullptr || style.version >= kVersionR13) return true;
    const auto& records = drawing->source().records;
    return std::any_of(records.begin(), records.end(),
                       [](const Source::Record& record) { return record.handle != 0; });
}

std::string NameOf(const AcDbObject& object) {
    if (const Codec* codec = FindCodec(object.isA())) return codec->dxfName;
    const ACHAR* name = object.isA()->dxfName();
    return name == nullptr ? std::string() : Utf8FromWide(name);
}

}  // namespace

NewObjects::NewObjects(const AcDbDatabase& db, const LoadedDrawing* drawing,
                       const WriteStyle& style, Report& report)
    : db_(db),
      drawing_(drawing),
      style_(style),
      report_(report),
      handles_(HasHandles(drawing, style)),
      nextHandle_(Header(db).handseed),
      mergedBefore_(style),
      mergedAfter_(style) {
    if (drawing != nullptr) merger_ = std::make_unique<RecordMerger>(drawing->source());
}

bool NewObjects::IsGone(const Stub& stub) {
    const Stub* at = &stub;
    for (int depth = 0; at != nullptr && depth < kDeepestNesting; ++depth, at = at->owner)
        if (IsErased(*at)) return true;
    return false;
}

// Entities have other forms in older versions, objects have none.
bool NewObjects::IsTooNew(const Stub& stub) const {
    const Codec* codec = FindCodec(stub.cls);
    return codec != nullptr && codec->since > style_.version &&
           !stub.cls->isDerivedFrom(AcDbEntity::desc());
}

bool NewObjects::IsWanted(const Stub& stub) const {
    if (!IsNew(stub) || IsGone(stub)) return false;
    if (IsTooNew(stub)) return false;
    const bool untouched = drawing_ != nullptr && drawing_->synthetic.count(&stub) != 0 &&
                           DirtyMask(stub) == kDirtyNew;
    // Up to R12 the spaces have no block records, and dictionaries only come with what they hold.
    const bool needless =
        style_.version < kVersionR13 && stub.cls->isDerivedFrom(AcDbDictionary::desc());
    return complete ? !needless : !untouched && !(needless && drawing_ == nullptr);
}

void NewObjects::Collect() {
    complete = drawing_ == nullptr;
    std::vector<Stub*> all = AllStubs(db_);
    const auto wanted = [this](const Stub* stub) { return IsWanted(*stub); };
    if (!complete && style_.version >= kVersionR13 && std::any_of(all.begin(), all.end(), wanted)) {
        const auto& tables = drawing_->tables;
        complete = std::none_of(tables.begin(), tables.end(), [](const LoadedDrawing::Span& table) {
            return table.name == "BLOCK_RECORD";
        });
    }
    for (Stub* stub : all) {
        if (!wanted(stub)) continue;
        queue_.push_back(stub);
        const bool plain =
            !stub->cls->isDerivedFrom(AcDbEntity::desc()) && !IsRecord(*stub) && !IsTable(*stub);
        turnsHandlesOn_ = turnsHandlesOn_ || (plain && !handles_);
    }
    handles_ = handles_ || turnsHandlesOn_;
}

void NewObjects::Write() {
    Collect();
    for (std::size_t i = 0; i < queue_.size(); ++i)
        if (written_.insert(queue_[i]).second) WriteStub(*queue_[i]);
}

void NewObjects::Require(const Stub* stub) {
    if (stub == nullptr || !IsNew(*stub) || written_.count(stub) != 0 || IsGone(*stub)) return;
    if (IsTooNew(*stub)) return;
    queue_.push_back(stub);
}

Root NewObjects::TableOf(const Stub& record, const AcDbDatabase& db) {
    for (int i = 0; i < static_cast<int>(Root::kNamedObjects); ++i)
        if (GetRoot(db, static_cast<Root>(i)) == record.owner) return static_cast<Root>(i);
    return Root::kCount;
}

void NewObjects::RequireTable(Root table) {
    if (!tables_.insert(table).second || drawing_ == nullptr) return;
    for (const LoadedDrawing::Span& span : drawing_->tables) {
        const auto known = Tables().find(span.name);
        if (known != Tables().end() && known->second == table) return;
    }
    const AcDbObject* object = ObjectOf(*GetRoot(db_, table));
    for (Stub* member : Members(*object)) {
        if (!IsUnwritable(*member)) Require(member);
    }
}

// Before R13 no table could hold these two.
bool NewObjects::IsUnwritable(const Stub& stub) const {
    return style_.version < kVersionR13 &&
           (&stub == db_.byLayerLinetype().stub() || &stub == db_.byBlockLinetype().stub());
}

// Names that need no declaration up to R12.
bool NewObjects::IsImplied(const Stub& stub) const {
    const HeaderVars& header = Header(db_);
    return style_.version < kVersionR13 &&
           (IsUnwritable(stub) || &stub == db_.continuousLinetype().stub() ||
            &stub == db_.layerZero().stub() || &stub == header.textstyle.stub() ||
            &stub == header.dimstyle.stub());
}

void NewObjects::RequireNamed(const std::vector<Stub*>& references) {
    for (const Stub* reference : references)
        if (!IsImplied(*reference)) Require(reference);
}

void NewObjects::WriteStub(const Stub& stub) {
    if (IsTable(stub)) {
        for (int i = 0; complete && i < static_cast<int>(Root::kNamedObjects); ++i)
            if (GetRoot(db_, static_cast<Root>(i)) == &stub) records[static_cast<Root>(i)];
        any_ = any_ || complete;
        return;
    }
    if (IsRecord(stub)) {
        WriteRecord(stub);
        return;
    }
    if (!stub.cls->isDerivedFrom(AcDbEntity::desc())) {
        std::string text = WholeRecord(stub, "");
        if (text.empty()) return;
        objects[stub.handle] = std::move(text);
        any_ = true;
        Require(stub.owner);
        return;
    }
    const Stub* owner = stub.owner;
    if (owner == nullptr) return;
    const bool sub = owner->cls->isDerivedFrom(AcDbEntity::desc());
    if (sub && IsNew(*owner)) return;  // written with its owner
    if (style_.version >= kVersionR13) Require(owner);
    std::string text;
    WriteEntity(stub, text);
    if (text.empty()) return;
    (sub ? owned : entities)[owner][stub.handle] = std::move(text);
    any_ = true;
}

void NewObjects::WriteRecord(const Stub& stub) {
    const Root table = TableOf(stub, db_);
    if (table == Root::kCount) return;
    const bool block = table == Root::kBlockTable;
    if (block && style_.version < kVersionR13) {
        if (!IsSpaceBlock(stub)) blocks.push_back(&stub);
        any_ = any_ || !IsSpaceBlock(stub);
        return;
    }
    if (IsUnwritable(stub)) return;
    RequireTable(table);
    records[table][stub.handle] = WholeRecord(stub, "");
    if (block) blocks.push_back(&stub);
    any_ = true;
}

RecordHead NewObjects::HeadOf(const Stub& stub, const std::string& name) const {
    RecordHead head;
    head.name = name;
    const bool plain = !stub.cls->isDerivedFrom(AcDbEntity::desc()) && !IsRecord(stub);
    head.handle = handles_ || plain ? stub.handle : 0;
    const bool hasOwner = plain || style_.version >= kVersionR2000;
    if (hasOwner && stub.owner != nullptr && IsInFile(*stub.owner)) head.owner = stub.owner->handle;
    // Objects that R12 did not have are written as later versions do.
    head.options.marks = plain || style_.version >= kVersionR13;
    head.options.byLayer = db_.byLayerLinetype();
    head.options.paperSpace = OnSheet(stub);
    if (drawing_ != nullptr && !complete) head.options.unnamed = &drawing_->synthetic;
    return head;
}

bool NewObjects::IsInFile(const Stub& stub) const {
    if (IsNew(stub)) return !IsGone(stub);
    if (drawing_ == nullptr || stub.record >= drawing_->source().records.size()) return false;
    return stub.cls != AcDbBlockTableRecord::desc() ||
           drawing_->source().Type(stub.record) == "BLOCK_RECORD";
}

bool NewObjects::OnSheet(const Stub& stub) const {
    const Stub* at = stub.owner;
    for (int depth = 0; at != nullptr && depth < kDeepestNesting; ++depth, at = at->owner)
        if (at->cls == AcDbBlockTableRecord::desc()) return IsSpaceBlock(*at) && at != ModelSpace();
    return false;
}

const Stub* NewObjects::ModelSpace() const {
    AcDbObjectId id;
    const auto* table = AcDbBlockTable::cast(ObjectOf(*GetRoot(db_, Root::kBlockTable)));
    if (table == nullptr || table->getAt(ACDB_MODEL_SPACE, id) != Acad::eOk) return nullptr;
    return id.stub();
}

void NewObjects::LayerDefaults(FieldWriter::Options& options) const {
    if (drawing_ == nullptr || style_.version < kVersionR2000) return;
    if (!layerDefaultsKnown_) {
        layerDefaultsKnown_ = true;
        const Stub* zero = db_.layerZero().stub();
        if (zero == nullptr || IsNew(*zero)) return;
        TagWalker walker(drawing_->source(), zero->record);
        for (Tag tag; walker.Next(tag);) {
            if (tag.code == 390) plotStyle_ = drawing_->source().Handle(tag);
            if (tag.code == 347) material_ = drawing_->source().Handle(tag);
        }
    }
    options.plotStyle = plotStyle_;
    options.material = material_;
}

void NewObjects::Check(const TagBuffer& buffer, const Stub& stub) {
    if (buffer.HasBadReal() && badObject_.empty()) badObject_ = TextFromHandle(stub.handle);
}

std::string NewObjects::WholeRecord(const Stub& stub, const std::string& name) {
    const AcDbObject* object = ObjectOf(const_cast<Stub&>(stub));
    if (object == nullptr) return {};
    const std::size_t base = BaseRecord(*object);
    if (base != kNoIndex) {
        std::string merged;
        AppendMerged(stub, base, true, merged);
        return merged;
    }
    const Codec* codec = FindCodec(object->isA());
    if (codec == nullptr) {
        report_.Add("an object of a class this program cannot write is left out", NameOf(*object));
        return {};
    }
    TagBuffer buffer(style_);
    RecordHead head = HeadOf(stub, name.empty() ? codec->dxfName : name);
    head.options.whole = true;
    if (object->isKindOf(AcDbLayerTableRecord::desc())) LayerDefaults(head.options);
    std::vector<Stub*> references;
    WriteObject(*object, head, buffer, &references);
    RequireNamed(references);
    Check(buffer, stub);
    return buffer.Bytes();
}

std::size_t NewObjects::BaseRecord(const AcDbObject& object) const {
    const std::size_t record = Access::Record(object);
    if (drawing_ == nullptr || record >= drawing_->source().records.size()) return kNoIndex;
    // The number of a record of another drawing mostly names something else in this one.
    return drawing_->source().Type(record) == NameOf(object) ? record : kNoIndex;
}

void NewObjects::AppendMerged(const Stub& stub, std::size_t base, bool copy, std::string& out) {
    const Source& source = drawing_->source();
    const AcDbObject& object = *ObjectOf(const_cast<Stub&>(stub));
    mergedTags_.Read(source, base);
    RecordHead head = HeadOf(stub, source.Type(base));
    head.options.marks = mergedTags_.HasMarks();
    RecordHead old = head;
    old.options.originalNames = &drawing_->names;
    if (turnsHandlesOn_) old.handle = source.records[base].handle;
    if (copy) {
        old.handle = source.records[base].handle;
        if (head.owner != 0) old.owner = source.records[base].owner;
        old.options.paperSpace = source.records[base].paperSpace;
    }
    const std::unique_ptr<AcDbObject> original = drawing_->Make(base, mergedTags_, object.isA());
    known_.clear();
    references_.clear();
    mergedBefore_.Clear();
    mergedAfter_.Clear();
    WriteObject(*original, old, mergedBefore_, &known_);
    WriteObject(object, head, mergedAfter_, &references_);
    // What the record names already was good enough for the file.
    const auto isKnown = [&](const Stub* reference) {
        return !IsNew(*reference) ||
               (!copy && std::find(known_.begin(), known_.end(), reference) != known_.end());
    };
    references_.erase(std::remove_if(references_.begin(), references_.end(), isKnown),
                      references_.end());
    RequireNamed(references_);
    Check(mergedAfter_, stub);
    merger_->Merge(base, mergedTags_, mergedBefore_, mergedAfter_, copy, out);
}

void NewObjects::WriteEntity(const Stub& stub, std::string& out) {
    const auto* entity = AcDbEntity::cast(ObjectOf(const_cast<Stub&>(stub)));
    if (entity == nullptr) return;
    const Codec* codec = FindCodec(entity->isA());
    if (codec != nullptr && codec->since > style_.version && BaseRecord(*entity) == kNoIndex) {
        WriteOlder(stub, *entity, out);
        return;
    }
    if (entity->isKindOf(AcDb3dSolid::desc()) || entity->isKindOf(AcDbRegion::desc()) ||
        entity->isKindOf(AcDbBody::desc())) {
        const auto& shape = Access::ShapeOf(static_cast<const ModelledEntity&>(*entity));
        if (shape != nullptr && (style_.version >= kVersionR2013 || shape->StoredText().empty())) {
            report_.Add("solids made here cannot be stored in this version, left out",
                        TextFromHandle(stub.handle));
            return;
        }
    }
    out += WholeRecord(stub, "");
    if (out.empty()) return;
    for (const Stub* member : Members(*entity))
        if (written_.insert(member).second) WriteEntity(*member, out);
}

void NewObjects::WriteOlder(const Stub& stub, const AcDbEntity& entity, std::string& out) {
    const auto forms = OlderForms(entity);
    if (forms.empty())
        report_.Add("an entity has no form in this version, left out",
                    NameOf(entity) + " " + TextFromHandle(stub.handle));
    bool first = true;
    for (const auto& form : forms) {
        const Codec* codec = FindCodec(form->isA());
        if (codec == nullptr || codec->since > style_.version) continue;
        RecordHead head = HeadOf(stub, codec->dxfName);
        if (!first) head.handle = TakeHandle();
        first = false;
        WriteForm(*form, head, stub, out);
    }
}

void NewObjects::WriteForm(const AcDbEntity& form, RecordHead head, const Stub& original,
                           std::string& out) {
    head.options.whole = true;
    TagBuffer buffer(style_);
    std::vector<Stub*> references;
    WriteObject(form, head, buffer, &references);
    if (form.isKindOf(AcDb2dPolyline::desc()) || form.isKindOf(AcDb3dPolyline::desc())) {
        RecordHead part = head;
        if (head.owner != 0) part.owner = head.handle;
        for (const auto& vertex : FreshVertices(form)) {
            part.name = "VERTEX";
            part.handle = TakeHandle();
            WriteObject(*vertex, part, buffer, &references);
        }
        AcDbSequenceEnd end;
        Access::Layer(end) = Access::Layer(form);
        part.name = "SEQEND";
        part.handle = TakeHandle();
        WriteObject(end, part, buffer, &references);
    }
    RequireNamed(references);
    Check(buffer, original);
    out += buffer.Bytes();
}

}  // namespace host::dxf
