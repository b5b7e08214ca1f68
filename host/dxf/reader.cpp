#include "host/dxf/reader.h"

#include <algorithm>
#include <map>

#include "host/db/access.h"
#include "host/db/names.h"
#include "host/dxf/block_cycles.h"
#include "host/dxf/header_io.h"
#include "host/dxf/record_classes.h"
#include "host/dxf/structure.h"

namespace host::dxf {

namespace {

// Seeds and handles stay clear of the end of the range, where the next one would be none.
constexpr std::uint64_t kHighestHandle = 0x0FFFFFFFFFFFFFFF;

class DatabaseBuilder {
public:
    DatabaseBuilder(AcDbDatabase& db, LoadedDrawing& drawing, Report& report)
        : db_(db),
          drawing_(drawing),
          source_(drawing.source()),
          report_(report),
          classes_(source_.records.size(), nullptr),
          kinds_(source_) {}

    void Build() {
        PlanTables();
        PlanBlocks();
        PlanEntities();
        PlanObjects();
        Register();
        MakeRoots();
        NameRecords();
        MakeUndeclared();
        LinkEntities();
        LinkObjects();
    }

private:
    struct TableEntry {
        std::size_t record;
        Root table;
    };

    // ---- What each record is

    void PlanTables() {
        for (const LoadedDrawing::Span& table : drawing_.tables) {
            const auto found = Tables().find(table.name);
            if (found == Tables().end()) {
                Note("unknown table, kept as it is", table.begin);
                continue;
            }
            // A second table of a kind only adds records to the first.
            if (rootRecord_.emplace(found->second, table.begin).second)
                classes_[table.begin] = RootClass(found->second);
            for (std::size_t i = table.begin + 1; i < table.end; ++i) {
                if (source_.Type(i) != table.name) continue;
                classes_[i] = TableRecordClass(found->second);
                records_.push_back({i, found->second});
            }
        }
    }

    void PlanBlocks() {
        std::map<std::wstring, std::size_t> named;
        for (const TableEntry& entry : records_)
            if (entry.table == Root::kBlockTable)
                named.emplace(FoldName(NameOf(entry.record).c_str()), entry.record);
        for (std::size_t i = 0; i < drawing_.blocks.size(); ++i) {
            const LoadedDrawing::Span& span = drawing_.blocks[i].span;
            const std::wstring name = FoldName(NameOf(span.begin).c_str());
            const auto [found, added] = named.emplace(name, span.begin);
            if (added) {
                // Up to R12, and in files without the table, BLOCK is all there is.
                classes_[span.begin] = AcDbBlockTableRecord::desc();
                records_.push_back({span.begin, Root::kBlockTable});
            }
            if (!drawing_.blockOfRecord.emplace(found->second, i).second)
                Note("a block is defined twice", span.begin);
            blockRecord_.push_back(found->second);
            for (std::size_t k = span.begin + 1; k < span.end; ++k) PlanEntity(k);
        }
    }

    void PlanEntities() {
        for (const LoadedDrawing::Span& section : drawing_.sections)
            if (section.name == "ENTITIES")
                for (std::size_t i = section.begin + 1; i < section.end; ++i) PlanEntity(i);
    }

    void PlanEntity(std::size_t record) {
        classes_[record] = kinds_.OfEntity(record);
        if (kinds_.IsHugeArray(record))
            Note("an array of inserts is too large to be meant, read as a single one", record);
    }

    void PlanObjects() {
        for (const LoadedDrawing::Span& section : drawing_.sections)
            if (section.name == "OBJECTS")
                for (std::size_t i = section.begin + 1; i < section.end; ++i) {
                    classes_[i] = kinds_.OfObject(i);
                    objects_.push_back(i);
                }
    }

    // ---- Identifiers

    void Register() {
        std::uint64_t highest = 0;
        for (const Source::Record& record : source_.records)
            if (record.handle <= kHighestHandle) highest = (std::max)(highest, record.handle);
        std::vector<std::size_t> without;
        for (std::size_t i = 0; i < classes_.size(); ++i) {
            if (classes_[i] == nullptr) continue;
            const std::uint64_t handle = source_.records[i].handle;
            if (handle != 0 && handle <= kHighestHandle)
                drawing_.stubs[i] =
                    RegisterStub(db_, handle, classes_[i], nullptr, static_cast<Adesk::UInt32>(i));
            if (drawing_.stubs[i] != nullptr) continue;
            if (handle != 0) Note("a handle is used twice or out of range, replaced in memory", i);
            without.push_back(i);
        }
        HeaderVars& header = Header(db_);
        header.handseed = (std::max)(header.handseed, Adesk::UInt64{highest + 1});
        for (std::size_t i : without)
            drawing_.stubs[i] =
                RegisterStub(db_, 0, classes_[i], nullptr, static_cast<Adesk::UInt32>(i));
    }

    Stub& NewStub(AcRxClass* type, Stub* owner, std::unique_ptr<AcDbObject> object) {
        Stub* stub = RegisterStub(db_, 0, type, owner, kNoRecord);
        stub->Set(kStubNew);
        AttachObject(*stub, std::move(object));
        drawing_.synthetic.insert(stub);
        return *stub;
    }

    void MakeRoots() {
        for (const auto& [root, record] : rootRecord_) {
            AttachObject(*drawing_.stubs[record], NewRootObject(root));
            SetRoot(db_, root, *drawing_.stubs[record]);
        }
        for (int i = 0; i < static_cast<int>(Root::kNamedObjects); ++i) {
            const Root root = static_cast<Root>(i);
            if (GetRoot(db_, root) == nullptr)
                SetRoot(db_, root, NewStub(RootClass(root), nullptr, NewRootObject(root)));
        }
        const std::size_t first = FindRootDictionary();
        if (first != kNoIndex) {
            AttachObject(*drawing_.stubs[first], drawing_.Make(first, classes_[first]));
            SetRoot(db_, Root::kNamedObjects, *drawing_.stubs[first]);
        }
    }

    // The first dictionary of the section is that of the named objects.
    std::size_t FindRootDictionary() const {
        for (std::size_t record : objects_)
            if (classes_[record] == AcDbDictionary::desc() && source_.records[record].owner == 0)
                return record;
        for (std::size_t record : objects_)
            if (classes_[record] == AcDbDictionary::desc()) return record;
        return kNoIndex;
    }

    std::wstring NameOf(std::size_t record) const {
        return source_.codec->Decode(source_.Name(record));
    }

    void NameRecords() {
        for (const TableEntry& entry : records_)
            drawing_.names.Add(entry.table, NameOf(entry.record), *drawing_.stubs[entry.record]);
        for (std::size_t i = 0; i < drawing_.blocks.size(); ++i)
            drawing_.blocks[i].record = drawing_.stubs[blockRecord_[i]];
        for (std::size_t record : ReferencesThatCloseCycles(drawing_)) {
            drawing_.cyclic.insert(record);
            Note("a block contains itself, this reference shows nothing", record);
        }
    }

    // ---- What entities name and no table declares

    void MakeUndeclared() {
        for (std::size_t i = 0; i < classes_.size(); ++i) {
            if (classes_[i] == nullptr) continue;
            if (classes_[i] == AcDbLayerTableRecord::desc())
                Declare(Root::kLinetypeTable, source_.Linetype(i), "Continuous", "linetype", i);
            if (!classes_[i]->isDerivedFrom(AcDbEntity::desc())) continue;
            Declare(Root::kLayerTable, source_.Layer(i), "0", "layer", i);
            Declare(Root::kLinetypeTable, source_.Linetype(i), "ByLayer", "linetype", i);
        }
    }

    void Declare(Root table, std::string_view bytes, std::string_view absent, const char* what,
                 std::size_t record) {
        if (bytes.empty()) bytes = absent;
        std::string& last = lastDeclared_[table == Root::kLayerTable ? 0 : 1];
        if (bytes == last) return;
        last = bytes;
        if (drawing_.names.Find(table, bytes, *source_.codec) != nullptr) return;
        const std::wstring name = source_.codec->Decode(bytes);
        std::unique_ptr<AcDbObject> object(
            static_cast<AcDbObject*>(TableRecordClass(table)->create()));
        Stub* owner = GetRoot(db_, table);
        Stub& stub = NewStub(TableRecordClass(table), owner, std::move(object));
        AddTableRecord(*owner, stub, name);
        drawing_.names.Add(table, name, stub);
        static const wchar_t* const kAlwaysThere[] = {L"0", L"BYLAYER", L"BYBLOCK", L"CONTINUOUS"};
        for (const wchar_t* known : kAlwaysThere)
            if (SameName(name.c_str(), known)) return;
        report_.Add(std::string("an object names a ") + what + " that no table declares, made",
                    source_.Place(source_.records[record].begin) + ": " + Utf8FromWide(name));
    }

    // ---- Containers

    void LinkEntities() {
        // Block records must be objects before entities can be appended to them.
        for (const TableEntry& entry : records_) MakeRecord(entry);
        for (std::size_t i = 0; i < drawing_.blocks.size(); ++i) {
            const LoadedDrawing::Span& span = drawing_.blocks[i].span;
            LinkSpan(span, drawing_.blocks[i].record);
        }
        // The spaces come before their entities even when a file has no block for them.
        modelSpace_ = Space(ACDB_MODEL_SPACE);
        paperSpace_ = Space(ACDB_PAPER_SPACE);
        for (const LoadedDrawing::Span& section : drawing_.sections)
            if (section.name == "ENTITIES") LinkSpan(section, nullptr);
    }

    void MakeRecord(const TableEntry& entry) {
        Stub& stub = *drawing_.stubs[entry.record];
        Stub& table = *GetRoot(db_, entry.table);
        AttachObject(stub, drawing_.Make(entry.record, classes_[entry.record]));
        const std::wstring name = NameOf(entry.record);
        // Several viewports share the name *Active.
        if (!AddTableRecord(table, stub, name) && entry.table != Root::kViewportTable)
            Note("a table record has a name that is taken", entry.record);
    }

    // Entities, each followed by what it owns. block is null for the section of model and paper
    // space.
    void LinkSpan(const LoadedDrawing::Span& span, Stub* block) {
        Stub* owner = nullptr;  // of vertices or attributes
        bool vertices = false;  // they are vertices
        for (std::size_t i = span.begin + 1; i < span.end; ++i) {
            Stub& stub = *drawing_.stubs[i];
            const std::uint16_t type = source_.records[i].type;
            const bool belongs =
                owner != nullptr && (type == kSeqend || type == (vertices ? kVertex : kAttrib));
            if (belongs) {
                SetOwner(stub, owner);
                stub.Set(kStubSubentity);
                if (type == kSeqend) owner = nullptr;
                continue;
            }
            if (owner != nullptr && vertices) Note("a polyline has no SEQEND", owner->record);
            owner = type == kPolyline || type == kInsert ? &stub : nullptr;
            vertices = type == kPolyline;
            if (owner == nullptr && (type == kVertex || type == kSeqend))
                Note("a vertex without polyline, kept as it is", i);
            AppendEntity(block != nullptr ? *block : *SpaceOf(i), stub);
        }
        if (owner != nullptr && vertices) Note("a polyline has no SEQEND", owner->record);
    }

    // Model or paper space, by the owner if it is one of them, else by group 67.
    Stub* SpaceOf(std::size_t record) {
        const Source::Record& r = source_.records[record];
        if (Stub* owner = FindStub(db_, r.owner);
            owner != nullptr && owner->cls == AcDbBlockTableRecord::desc() &&
            Access::IsSpace(static_cast<AcDbBlockTableRecord&>(*owner->object)))
            return owner;
        return r.paperSpace ? paperSpace_ : modelSpace_;
    }

    Stub* Space(const wchar_t* name) {
        if (Stub* stub = drawing_.names.Find(Root::kBlockTable, name)) return stub;
        Stub* table = GetRoot(db_, Root::kBlockTable);
        Stub& stub =
            NewStub(AcDbBlockTableRecord::desc(), table, std::make_unique<AcDbBlockTableRecord>());
        AddTableRecord(*table, stub, name);
        drawing_.names.Add(Root::kBlockTable, name, stub);
        return &stub;
    }

    void LinkObjects() {
        for (std::size_t record : objects_)
            SetOwner(*drawing_.stubs[record], FindStub(db_, source_.records[record].owner));
        for (std::size_t record : objects_) {
            if (classes_[record] != AcDbDictionary::desc()) continue;
            Stub& stub = *drawing_.stubs[record];
            if (stub.object == nullptr) AttachObject(stub, drawing_.Make(record, classes_[record]));
        }
        for (std::size_t record : objects_)
            if (classes_[record] == AcDbDictionary::desc()) LinkEntries(record);
    }

    // The objects that a dictionary names and that state no other owner are its own.
    void LinkEntries(std::size_t record) {
        Stub& stub = *drawing_.stubs[record];
        const auto& dictionary = static_cast<const AcDbDictionary&>(*stub.object);
        FieldReader io(drawing_.lookup(), record);
        io.Subclass("AcDbDictionary");
        std::size_t kept = 0;
        const auto& entries = Access::Entries(dictionary);
        for (const NamedHandle& named : EntriesOf(io)) {
            Stub* entry = FindStub(db_, named.handle);
            if (entry == nullptr || entry == &stub) {
                Note("a dictionary names an object that is not there", record);
            } else if (kept == entries.size() || entries[kept].id.stub() != entry ||
                       entries[kept].name != source_.codec->Decode(named.name)) {
                Note("a dictionary has a name twice", record);
            } else {
                ++kept;
                if (entry->owner == nullptr) SetOwner(*entry, &stub);
            }
        }
    }

    void Note(const char* kind, std::size_t record) {
        std::string place;
        if (report_.WantsPlace(kind)) {
            place = source_.Place(source_.records[record].begin) + ": " + source_.Type(record);
            if (source_.records[record].handle != 0)
                place += " " + TextFromHandle(source_.records[record].handle);
            const std::string name = Utf8FromWide(NameOf(record));
            if (!name.empty() && source_.records[record].nameLength < 80)
                place += " \"" + name + "\"";
        }
        report_.Add(kind, place);
    }

    AcDbDatabase& db_;
    LoadedDrawing& drawing_;
    const Source& source_;
    Report& report_;
    std::vector<AcRxClass*> classes_;  // by record; null: a mark or unknown
    std::map<Root, std::size_t> rootRecord_;
    std::vector<TableEntry> records_;
    std::vector<std::size_t> blockRecord_;  // by block: record number of its block table record
    std::vector<std::size_t> objects_;
    RecordClasses kinds_;
    std::string lastDeclared_[2];  // layer and linetype that the last entity named
    Stub* modelSpace_ = nullptr;
    Stub* paperSpace_ = nullptr;
};

}  // namespace

void BuildDatabase(AcDbDatabase& db, std::unique_ptr<Source> source, Report& report) {
    auto owned = std::make_unique<LoadedDrawing>(db, std::move(source));
    LoadedDrawing& drawing = *owned;
    FindStructure(drawing, report);
    DatabaseBuilder(db, drawing, report).Build();
    ReadHeader(db, drawing);
    SetSource(db, std::move(owned));
    FinishReading(db);
    // What the last step made is there for the program, not from the file.
    for (Stub* stub : AllStubs(db))
        if (IsNew(*stub)) {
            drawing.synthetic.insert(stub);
            if (stub->object != nullptr) Access::DirtyBits(*stub->object) = 0;
        } else if (stub->object != nullptr) {
            Access::DirtyBits(*stub->object) = 0;
        }
}

}  // namespace host::dxf
