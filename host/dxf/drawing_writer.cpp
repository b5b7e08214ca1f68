#include "host/dxf/drawing_writer.h"

#include <algorithm>
#include <map>

#include "host/db/access.h"
#include "host/db/names.h"
#include "host/dxf/header_io.h"
#include "host/dxf/merge.h"
#include "host/dxf/new_objects.h"
#include "host/dxf/record_classes.h"

namespace host::dxf {

namespace {

// The order in which files have their sections and tables.
constexpr const char* kSectionOrder[] = {"HEADER",   "CLASSES", "TABLES",   "BLOCKS",
                                         "ENTITIES", "OBJECTS", "ACDSDATA", "THUMBNAILIMAGE"};
constexpr const char* kTableOrder[] = {"VPORT", "LTYPE", "LAYER",    "STYLE",       "VIEW",
                                       "UCS",   "APPID", "DIMSTYLE", "BLOCK_RECORD"};

int SectionRank(std::string_view name) {
    const auto* found = std::find(std::begin(kSectionOrder), std::end(kSectionOrder), name);
    return static_cast<int>(found - std::begin(kSectionOrder));
}

std::string JoinTexts(const NewObjects::Texts& texts) {
    std::string joined;
    for (const auto& [handle, text] : texts) joined += text;
    return joined;
}

// New texts of the file's records, one behind the other; an empty one leaves the record out.
class Replacements {
public:
    explicit Replacements(std::size_t records) : textOf_(records, kNone) {}
    bool Has(std::size_t record) const { return textOf_[record] != kNone; }
    bool IsLeftOut(std::size_t record) const {
        return Has(record) && Of(record).begin == Of(record).end;
    }
    void LeaveOut(std::size_t record) {
        Set(record, [](std::string&) {});
    }
    // append(out) writes the record behind what out holds.
    template <class Append>
    void Set(std::size_t record, Append append) {
        const std::size_t begin = bytes_.size();
        append(bytes_);
        textOf_[record] = static_cast<std::int32_t>(texts_.size());
        texts_.push_back({begin, bytes_.size()});
    }
    // Moves the bytes out, to where they stay; Text() is then of use.
    void Finish(DrawingBytes& out) { final_ = out.Keep(std::move(bytes_)); }
    std::string_view Text(std::size_t record) const {
        return final_.substr(Of(record).begin, Of(record).end - Of(record).begin);
    }

private:
    static constexpr std::int32_t kNone = -1;
    struct Place {
        std::size_t begin, end;
    };
    const Place& Of(std::size_t record) const {
        return texts_[static_cast<std::size_t>(textOf_[record])];
    }

    std::string bytes_;
    std::string_view final_;
    std::vector<Place> texts_;
    std::vector<std::int32_t> textOf_;
};

class DrawingWriter {
public:
    DrawingWriter(const AcDbDatabase& db, const LoadedDrawing* drawing, const WriteStyle& style,
                  DrawingBytes& out, Report& report)
        : db_(db),
          drawing_(drawing),
          style_(style),
          out_(out),
          new_(db, drawing, style, report),
          replaced_(drawing != nullptr ? drawing->source().records.size() : 0) {}

    bool Run(std::string& reason) {
        new_.Write();
        MergeChanged();
        PlaceTables();
        PlaceBlocks();
        PlaceEntities();
        PlaceOwned();
        PlaceObjects();
        PlaceHeader();
        if (!new_.badObject().empty()) {
            reason = "object " + new_.badObject() + " holds a value that is not a number";
            return false;
        }
        Assemble();
        return true;
    }

private:
    // ---- Changed and erased objects of the file

    void MergeChanged() {
        if (drawing_ == nullptr) return;
        const bool renamed = AnyRenamed();
        const auto& stubs = drawing_->stubs;
        for (std::size_t i = 0; i < stubs.size(); ++i) {
            Stub* stub = stubs[i];
            if (stub == nullptr) continue;
            if (NewObjects::IsGone(*stub)) {
                gone_ = true;
                replaced_.LeaveOut(i);
                MarkOwner(*stub);
            } else if (DirtyMask(*stub) != 0 || renamed ||
                       (new_.TurnsHandlesOn() && stub->Has(kStubEntity))) {
                MergeOne(*stub);
            }
        }
        for (const Stub* stub : ownersOfGone_)
            if (!replaced_.Has(stub->record)) MergeOne(*stub);
        for (const LoadedDrawing::Block& block : drawing_->blocks)
            if (block.record != nullptr && NewObjects::IsGone(*block.record))
                for (std::size_t i = block.span.begin;
                     i < block.span.end + (block.span.closed ? 1 : 0); ++i)
                    replaced_.LeaveOut(i);
        // Writing the changed ones may have called for what the file lacks.
        new_.Write();
    }

    bool AnyRenamed() const {
        for (const auto& [name, root] : Tables()) {
            const Stub* table = GetRoot(db_, root);
            if (table == nullptr || table->object == nullptr) continue;
            for (const Stub* member : Members(*table->object)) {
                const std::wstring* original = drawing_->names.Original(*member);
                if (DirtyMask(*member) == 0 || original == nullptr || member->object == nullptr)
                    continue;
                if (Access::Name(static_cast<AcDbSymbolTableRecord&>(*member->object)) != *original)
                    return true;
            }
        }
        return false;
    }

    // A dictionary must not name what is no longer there.
    void MarkOwner(const Stub& stub) {
        const Stub* owner = stub.owner;
        if (owner != nullptr && !IsNew(*owner) &&
            owner->cls->isDerivedFrom(AcDbDictionary::desc()) && !NewObjects::IsGone(*owner))
            ownersOfGone_.insert(owner);
    }

    void MergeOne(const Stub& stub) {
        if (stub.cls->isDerivedFrom(AcDbSymbolTable::desc())) return;
        if (ObjectOf(const_cast<Stub&>(stub)) == nullptr) return;
        const std::size_t record = stub.record;
        if (stub.cls == AcDbBlockTableRecord::desc()) {
            const auto found = drawing_->blockOfRecord.find(record);
            if (found != drawing_->blockOfRecord.end()) MergeBlock(stub, found->second);
            if (drawing_->source().Type(record) != "BLOCK_RECORD") return;
        }
        replaced_.Set(record,
                      [&](std::string& out) { new_.AppendMerged(stub, record, false, out); });
    }

    void MergeBlock(const Stub& stub, std::size_t block) {
        const std::size_t record = drawing_->blocks[block].span.begin;
        const Source& source = drawing_->source();
        RecordHead head;
        head.name = "BLOCK";
        head.handle = source.records[record].handle;
        const RecordTags tags(source, record);
        head.options.marks = tags.HasMarks();
        RecordHead old = head;
        old.options.originalNames = &drawing_->names;
        TagBuffer before(style_), after(style_);
        const std::unique_ptr<AcDbObject> original = drawing_->Make(stub.record, stub.cls);
        WriteBlockBegin(static_cast<AcDbBlockTableRecord&>(*original), old, before);
        WriteBlockBegin(static_cast<AcDbBlockTableRecord&>(*stub.object), head, after);
        replaced_.Set(record, [&](std::string& out) {
            RecordMerger(source).Merge(record, tags, before, after, false, out);
        });
    }

    // ---- New objects

    const LoadedDrawing::Span* FindTable(const std::string& name) const {
        if (drawing_ == nullptr) return nullptr;
        for (const LoadedDrawing::Span& table : drawing_->tables)
            if (table.name == name) return &table;
        return nullptr;
    }

    void PlaceTables() {
        std::string tables;
        for (const char* name : kTableOrder) {
            const auto found = new_.records.find(Tables().find(name)->second);
            if (found == new_.records.end()) continue;
            const std::string text = JoinTexts(found->second);
            if (const LoadedDrawing::Span* table = FindTable(name)) {
                inserted_[table->end] += text;
                RaiseCount(*table, found->second.size());
                continue;
            }
            if (style_.version < kVersionR13 && std::string_view(name) == "BLOCK_RECORD") continue;
            TagBuffer begin(style_), end(style_);
            RecordHead head;
            const Stub* root = GetRoot(db_, found->first);
            head.handle = style_.version >= kVersionR13 ? root->handle : 0;
            head.options.marks = style_.version >= kVersionR13;
            WriteTableBegin(name, head, found->second.size(), begin);
            WriteMark("ENDTAB", end);
            tables += begin.Bytes() + text + end.Bytes();
        }
        AddToSection("TABLES", tables);
    }

    // Group 70 of TABLE bounds the number of records; some programs stop reading there.
    void RaiseCount(const LoadedDrawing::Span& table, std::size_t added) {
        const Source& source = drawing_->source();
        std::size_t count = added;
        for (std::size_t i = table.begin + 1; i < table.end; ++i)
            if (!replaced_.IsLeftOut(i)) ++count;
        TagWalker walker(source, table.begin);
        for (Tag tag; walker.Next(tag);) {
            if (tag.code != 70) continue;
            if (source.Int(tag) >= static_cast<std::int64_t>(count)) return;
            TagBuffer value(style_);
            value.PutInt(70, static_cast<std::int64_t>(count));
            replaced_.Set(table.begin, [&](std::string& out) {
                out += source.View(source.records[table.begin].begin, tag.begin);
                value.AppendTo(out);
                out += source.View(tag.end, source.RecordEnd(table.begin));
            });
            return;
        }
    }

    void PlaceBlocks() {
        if (drawing_ != nullptr)
            for (const LoadedDrawing::Block& block : drawing_->blocks) {
                const auto found = new_.entities.find(block.record);
                if (found == new_.entities.end() || GoesToEntities(*block.record)) continue;
                inserted_[block.span.end] += JoinTexts(found->second);
            }
        std::string text;
        for (const Stub* stub : new_.blocks) text += WholeBlock(*stub);
        if (!text.empty() || new_.complete) AddToSection("BLOCKS", text);
    }

    std::string WholeBlock(const Stub& stub) {
        const auto& block =
            static_cast<const AcDbBlockTableRecord&>(*ObjectOf(const_cast<Stub&>(stub)));
        RecordHead head;
        head.handle = new_.TakeHandle();
        head.owner = style_.version >= kVersionR2000 ? stub.handle : 0;
        head.options.marks = style_.version >= kVersionR13;
        head.options.whole = true;
        head.options.paperSpace = Access::IsSpace(block) && !IsModelSpace(block);
        TagBuffer begin(style_), end(style_);
        head.name = "BLOCK";
        WriteBlockBegin(block, head, begin);
        head.name = "ENDBLK";
        head.handle = new_.TakeHandle();
        WriteBlockEnd(head, end);
        const auto found = new_.entities.find(&stub);
        const bool here = found != new_.entities.end() && !GoesToEntities(stub);
        return begin.Bytes() + (here ? JoinTexts(found->second) : std::string()) + end.Bytes();
    }

    static bool IsModelSpace(const AcDbBlockTableRecord& block) {
        return SameName(Access::Name(block).c_str(), ACDB_MODEL_SPACE);
    }

    // Model space and the sheet in use stand in the section ENTITIES, other sheets in their blocks.
    static bool GoesToEntities(const Stub& stub) {
        const auto* block = AcDbBlockTableRecord::cast(ObjectOf(const_cast<Stub&>(stub)));
        return block != nullptr &&
               (IsModelSpace(*block) || SameName(Access::Name(*block).c_str(), ACDB_PAPER_SPACE));
    }

    void PlaceEntities() {
        std::string text;
        for (const auto& [block, texts] : new_.entities)
            if (GoesToEntities(*block)) text += JoinTexts(texts);
        if (!text.empty() || new_.complete) AddToSection("ENTITIES", text);
    }

    // New vertices and attributes of old owners go before the end of the sequence.
    void PlaceOwned() {
        for (const auto& [owner, texts] : new_.owned) {
            std::size_t at = owner->record + std::size_t{1};
            const auto& stubs = drawing_->stubs;
            while (at < stubs.size() && stubs[at] != nullptr && stubs[at]->owner == owner &&
                   drawing_->source().Type(at) != "SEQEND")
                ++at;
            inserted_[at] += JoinTexts(texts);
        }
    }

    void PlaceObjects() {
        std::string first, rest;
        const Stub* root = GetRoot(db_, Root::kNamedObjects);
        for (const auto& [handle, text] : new_.objects)
            (root != nullptr && handle == root->handle ? first : rest) += text;
        const LoadedDrawing::Span* section = FindSection("OBJECTS");
        if (section == nullptr) {
            if (!first.empty() || !rest.empty()) AddToSection("OBJECTS", first + rest);
            return;
        }
        // The dictionary of named objects leads the section.
        if (!first.empty()) inserted_[section->begin + 1] += first;
        inserted_[section->end] += rest;
    }

    void PlaceHeader() {
        const bool added = new_.Any() && new_.handles();
        const std::uint64_t seed = added ? new_.nextHandle() : 0;
        const LoadedDrawing::Span* section = FindSection("HEADER");
        if (section != nullptr) {
            if (added || Header(db_).changed != 0)
                replaced_.Set(section->begin, [&](std::string& out) {
                    out += HeaderRecord(db_, drawing_, section->begin,
                                        {seed, new_.TurnsHandlesOn()}, style_);
                });
        } else if (drawing_ == nullptr || Header(db_).changed != 0 || new_.TurnsHandlesOn()) {
            TagBuffer end(style_);
            WriteMark("ENDSEC", end);
            newSections_["HEADER"] =
                HeaderRecord(db_, drawing_, kNoIndex, {new_.nextHandle(), true}, style_) +
                end.Bytes();
        }
        if (drawing_ == nullptr && style_.version >= kVersionR13) AddToSection("CLASSES", "");
    }

    // ---- Putting it together

    const LoadedDrawing::Span* FindSection(const std::string& name) const {
        if (drawing_ == nullptr) return nullptr;
        for (const LoadedDrawing::Span& section : drawing_->sections)
            if (section.name == name) return &section;
        return nullptr;
    }

    void AddToSection(const std::string& name, const std::string& text) {
        if (const LoadedDrawing::Span* section = FindSection(name)) {
            if (!text.empty()) inserted_[section->end] += text;
            return;
        }
        if (text.empty() && !new_.complete) return;
        TagBuffer begin(style_), end(style_);
        begin.PutText(0, "SECTION");
        begin.PutText(2, name);
        WriteMark("ENDSEC", end);
        newSections_[name] = begin.Bytes() + text + end.Bytes();
    }

    // New sections stand before the first that comes later in the usual order.
    void PlaceSections() {
        const Source& source = drawing_->source();
        for (const char* name : kSectionOrder) {
            const auto found = newSections_.find(name);
            if (found == newSections_.end()) continue;
            std::size_t at = source.records.size();
            if (source.Type(at - 1) == "EOF") --at;
            for (const LoadedDrawing::Span& section : drawing_->sections)
                if (SectionRank(section.name) > SectionRank(name)) {
                    at = section.begin;
                    break;
                }
            // Behind what is inserted at the end of the section before.
            inserted_[at] += found->second;
        }
    }

    void Assemble() {
        if (drawing_ == nullptr) {
            for (const char* name : kSectionOrder)
                if (const auto found = newSections_.find(name); found != newSections_.end())
                    out_.AddText(found->second);
            TagBuffer end(style_);
            WriteMark("EOF", end);
            out_.AddText(end.Bytes());
            return;
        }
        PlaceSections();
        replaced_.Finish(out_);
        const Source& source = drawing_->source();
        std::size_t from = 0;
        const auto copyTo = [&](std::size_t to) {
            if (to > from) out_.AddView(source.View(from, to));
            from = to;
        };
        auto next = inserted_.begin();
        const auto insertAt = [&](std::size_t record, std::size_t place) {
            if (next == inserted_.end() || next->first != record) return;
            copyTo(place);
            EndLine(source);
            out_.AddText(std::move(next->second));
            ++next;
        };
        for (std::size_t i = 0; i < source.records.size(); ++i) {
            insertAt(i, source.records[i].begin);
            if (!replaced_.Has(i)) continue;
            copyTo(source.records[i].begin);
            out_.AddView(replaced_.Text(i));
            from = source.RecordEnd(i);
        }
        insertAt(source.records.size(), source.end);
        copyTo(source.bytes.size);
    }

    // A file may end without a line end; what is added then needs one first.
    void EndLine(const Source& source) {
        if (source.info.form != Form::kText || out_.pieces.empty()) return;
        const char last = out_.pieces.back().back();
        if (last != '\n' && last != '\r') out_.AddText(style_.layout.lineEnd);
    }

    const AcDbDatabase& db_;
    const LoadedDrawing* drawing_;
    const WriteStyle& style_;
    DrawingBytes& out_;
    NewObjects new_;
    Replacements replaced_;
    std::map<std::size_t, std::string> inserted_;  // before that record
    std::map<std::string, std::string, std::less<>> newSections_;
    std::set<const Stub*> ownersOfGone_;
    bool gone_ = false;
};

}  // namespace

void DrawingBytes::AddView(std::string_view view) {
    if (view.empty()) return;
    if (!pieces.empty() && pieces.back().data() + pieces.back().size() == view.data())
        pieces.back() = {pieces.back().data(), pieces.back().size() + view.size()};
    else
        pieces.push_back(view);
}

void DrawingBytes::AddText(std::string added) { AddView(Keep(std::move(added))); }

std::string_view DrawingBytes::Keep(std::string kept) {
    text.push_back(std::move(kept));
    return text.back();
}

std::string DrawingBytes::Join() const {
    std::size_t size = 0;
    for (std::string_view piece : pieces) size += piece.size();
    std::string joined;
    joined.reserve(size);
    for (std::string_view piece : pieces) joined += piece;
    return joined;
}

bool WriteDrawing(const AcDbDatabase& db, const LoadedDrawing* drawing, const WriteStyle& style,
                  DrawingBytes& out, Report& report, std::string& reason) {
    return DrawingWriter(db, drawing, style, out, report).Run(reason);
}

}  // namespace host::dxf
