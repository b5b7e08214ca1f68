#include "host/db/build.h"

#include <set>

#include "host/db/database_imp.h"
#include "host/db/entity_list.h"
#include "host/db/names.h"
#include "host/base/host_assert.h"

namespace host {

namespace {

struct RootEntry {
    AcRxClass* (*desc)();
};
// In the order of Root.
constexpr RootEntry kRoots[] = {{AcDbBlockTable::desc},     {AcDbLayerTable::desc},
                                {AcDbLinetypeTable::desc},  {AcDbRegAppTable::desc},
                                {AcDbTextStyleTable::desc}, {AcDbDimStyleTable::desc},
                                {AcDbUCSTable::desc},       {AcDbViewTable::desc},
                                {AcDbViewportTable::desc},  {AcDbDictionary::desc}};

Adesk::UInt16 ClassFlags(const AcRxClass* cls) {
    if (!cls->isDerivedFrom(AcDbEntity::desc())) return 0;
    const bool sub = cls->isDerivedFrom(AcDbVertex::desc()) ||
                     cls->isDerivedFrom(AcDbAttribute::desc()) ||
                     cls->isDerivedFrom(AcDbSequenceEnd::desc());
    return static_cast<Adesk::UInt16>(kStubEntity | (sub ? kStubSubentity : 0));
}

OwnedEntities* OwnedOf(AcDbObject& object) {
    if (object.isKindOf(AcDb2dPolyline::desc()) || object.isKindOf(AcDb3dPolyline::desc()))
        return &Access::Owned(static_cast<HeavyPolyline&>(object));
    if (AcDbBlockReference* const reference = AcDbBlockReference::cast(&object))
        return &Access::Owned(*reference);
    if (AcDbZombieEntity* const unknown = AcDbZombieEntity::cast(&object))
        return &Access::Owned(*unknown);
    return nullptr;
}

}  // namespace

Stub* RegisterStub(AcDbDatabase& db, Adesk::UInt64 handle, AcRxClass* cls, Stub* owner,
                   Adesk::UInt32 record) {
    DatabaseImp& imp = ImpOf(db);
    if (handle == 0)
        handle = imp.TakeHandle();
    else if (imp.handles.Find(handle) != nullptr)
        return nullptr;
    Stub* const stub = imp.NewStub(cls, owner, ClassFlags(cls));
    stub->handle = handle;
    stub->record = record;
    imp.handles.Insert(handle, stub);
    if (handle >= imp.header.handseed) imp.header.handseed = handle + 1;
    return stub;
}

void AttachObject(Stub& stub, std::unique_ptr<AcDbObject> object) {
    HOST_ASSERT(stub.object == nullptr, "an identifier names one object");
    Access::StubOf(*object) = &stub;
    Access::Record(*object) = stub.record;
    Access::DirtyBits(*object) = 0;
    stub.cls = object->isA();
    stub.Set(ClassFlags(stub.cls));
    stub.object = object.release();
}

Stub* FindStub(const AcDbDatabase& db, Adesk::UInt64 handle) {
    return ImpOf(db).handles.Find(handle);
}

void SetOwner(Stub& stub, Stub* owner) { stub.owner = owner; }

void AppendEntity(Stub& blockRecord, Stub& entity) {
    entity.owner = &blockRecord;
    Access::Entities(static_cast<AcDbBlockTableRecord&>(*blockRecord.object))->Append(entity);
}

void AppendOwned(AcDbObject& owner, Stub* ownerStub, Stub& owned) {
    OwnedEntities* const list = OwnedOf(owner);
    HOST_ASSERT(list != nullptr, "only polylines and block references own entities");
    owned.owner = ownerStub != nullptr ? ownerStub : owned.owner;
    owned.Set(kStubEntity | kStubSubentity);
    if (owned.cls->isDerivedFrom(AcDbSequenceEnd::desc()))
        list->sequenceEnd = owned.Id();
    else
        list->ids.push_back(owned.Id());
}

AcRxClass* RootClass(Root root) { return kRoots[static_cast<int>(root)].desc(); }

std::unique_ptr<AcDbObject> NewRootObject(Root root) {
    return std::unique_ptr<AcDbObject>(static_cast<AcDbObject*>(RootClass(root)->create()));
}

void SetRoot(AcDbDatabase& db, Root root, Stub& stub) {
    ImpOf(db).roots[static_cast<int>(root)] = &stub;
}

Stub* GetRoot(const AcDbDatabase& db, Root root) { return ImpOf(db).roots[static_cast<int>(root)]; }

bool AddTableRecord(Stub& table, Stub& record, const std::wstring& name) {
    auto& symbolTable = static_cast<AcDbSymbolTable&>(*table.object);
    auto& symbol = static_cast<AcDbSymbolTableRecord&>(*record.object);
    record.owner = &table;
    Access::Name(symbol) = name;
    if (AcDbBlockTableRecord* const block = AcDbBlockTableRecord::cast(&symbol)) {
        const std::wstring folded = FoldName(name.c_str());
        Access::IsSpace(*block) =
            folded == L"*model_space" || folded.compare(0, 12, L"*paper_space") == 0;
        Access::Anonymous(*block) = Access::Anonymous(*block) ||
                                    (!Access::IsSpace(*block) && !name.empty() && name[0] == L'*');
    }
    Access::Records(symbolTable).push_back(record.Id());
    return Access::RecordsByName(symbolTable).emplace(FoldName(name.c_str()), record.Id()).second;
}

bool AddDictionaryEntry(Stub& dictionary, const std::wstring& name, Stub& entry) {
    auto& object = static_cast<AcDbDictionary&>(*dictionary.object);
    auto& entries = Access::Entries(object);
    const auto [place, fresh] =
        Access::EntriesByName(object).emplace(FoldName(name.c_str()), entries.size());
    // The name of an erased entry is free.
    if (!fresh && !entries[place->second].id.isErased()) return false;
    place->second = entries.size();
    entries.push_back({name, entry.Id()});
    return true;
}

void SetSource(AcDbDatabase& db, std::unique_ptr<DrawingSource> source) {
    ImpOf(db).source = std::move(source);
}
DrawingSource* GetSource(const AcDbDatabase& db) { return ImpOf(db).source.get(); }

void SetFile(AcDbDatabase& db, const std::wstring& path, AcDb::AcDbDwgVersion version) {
    ImpOf(db).file = path;
    ImpOf(db).version = version;
}

HeaderVars& Header(AcDbDatabase& db) { return ImpOf(db).header; }
const HeaderVars& Header(const AcDbDatabase& db) { return ImpOf(db).header; }

Adesk::UInt16 DirtyMask(const Stub& stub) {
    const Adesk::UInt16 fresh = static_cast<Adesk::UInt16>(stub.Has(kStubNew) ? kDirtyNew : 0);
    return stub.object == nullptr
               ? fresh
               : static_cast<Adesk::UInt16>(Access::DirtyBits(*stub.object) | fresh);
}

bool IsModified(const AcDbDatabase& db) { return ImpOf(db).modified; }

std::vector<Stub*> Members(const AcDbObject& container) {
    if (const AcDbBlockTableRecord* const block = AcDbBlockTableRecord::cast(&container))
        return Access::Entities(*block)->Live();
    AcDbObjectIdArray ids;
    if (const AcDbDictionary* const dictionary = AcDbDictionary::cast(&container)) {
        for (const auto& entry : Access::Entries(*dictionary))
            if (!entry.id.isNull()) ids.append(entry.id);
    } else {
        Access::OwnedIds(container, ids);
    }
    std::vector<Stub*> members;
    members.reserve(static_cast<size_t>(ids.length()));
    for (int i = 0; i < ids.length(); ++i)
        if (!ids[i].isErased()) members.push_back(ids[i].stub());
    return members;
}

std::vector<std::wstring> EntryNames(const AcDbDictionary& dictionary) {
    std::vector<std::wstring> names;
    for (const auto& entry : Access::Entries(dictionary))
        if (!entry.id.isNull() && !entry.id.isErased()) names.push_back(entry.name);
    return names;
}

std::vector<Stub*> AllStubs(const AcDbDatabase& db) { return ImpOf(db).handles.All(); }

AcDbObject* ObjectOf(Stub& stub) {
    if (stub.object == nullptr && stub.database != nullptr && !stub.Has(kStubPurged) &&
        LoadObject(stub) != Acad::eOk)
        return nullptr;
    return stub.object;
}

void NoteSaved(AcDbDatabase& db) { ImpOf(db).modified = false; }
void NoteChanged(AcDbDatabase& db) { ImpOf(db).modified = true; }

size_t PurgeErased(AcDbDatabase& db, const std::function<bool(const Stub&)>& keeps) {
    DatabaseImp& imp = ImpOf(db);
    std::vector<Stub*> kept;
    std::set<Stub*> blocks;
    size_t freed = 0;
    for (Stub* const stub : imp.erased) {
        if (!stub->Has(kStubErased) || stub->Has(kStubPurged)) continue;
        // Tables keep their erased records: iterators over them look at names.
        const bool record = stub->cls->isDerivedFrom(AcDbSymbolTableRecord::desc());
        if (stub->IsOpen() || record || (keeps && keeps(*stub))) {
            if (!record) kept.push_back(stub);
            continue;
        }
        if (stub->Has(kStubEntity) && stub->owner != nullptr &&
            stub->owner->cls == AcDbBlockTableRecord::desc() && stub->owner->object != nullptr)
            blocks.insert(stub->owner);
        stub->Set(kStubPurged);
        if (stub->object != nullptr) {
            Access::StubOf(*stub->object) = nullptr;
            delete stub->object;
            stub->object = nullptr;
        }
        ++freed;
    }
    imp.erased = std::move(kept);
    for (Stub* const block : blocks)
        Access::Entities(static_cast<AcDbBlockTableRecord&>(*block->object))->DropPurged();
    return freed;
}

std::vector<OpenObject> OpenObjectsReport(const AcDbDatabase& db) {
    std::vector<OpenObject> report;
    if (ImpOf(db).openCount == 0) return report;
    for (const Stub* const stub : ImpOf(db).handles.All()) {
        const auto add = [&](AcDb::OpenMode mode, int count) {
            report.push_back({stub->handle, stub->cls->name(), mode, count});
        };
        if (stub->Has(kStubWriter)) add(AcDb::kForWrite, 1);
        if (stub->readers > 0) add(AcDb::kForRead, stub->readers);
        if (stub->Has(kStubNotify)) add(AcDb::kForNotify, 1);
    }
    return report;
}

void SetWriteGuard(AcDbDatabase& db, WriteGuard* guard) { ImpOf(db).guard = guard; }

}  // namespace host
