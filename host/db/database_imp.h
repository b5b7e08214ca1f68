// What a database keeps inside.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/db/access.h"
#include "host/db/build.h"
#include "host/db/stub.h"

namespace host {

// Hands out stubs in chunks. The chunks outlive the arena: they pass to the process.
class StubArena {
public:
    StubArena() = default;
    ~StubArena();
    StubArena(const StubArena&) = delete;
    StubArena& operator=(const StubArena&) = delete;

    // A stub that nothing refers to yet; stays where it is for the life of the process.
    Stub* New();

    template <class Visit>
    void ForEach(Visit visit) {
        for (size_t i = 0; i < m_chunks.size(); ++i) {
            const size_t count = i + 1 < m_chunks.size() ? kChunk : m_used;
            for (size_t k = 0; k < count; ++k) visit(m_chunks[i][k]);
        }
    }

private:
    static constexpr size_t kChunk = 1024;  // stubs at a time
    std::vector<std::unique_ptr<Stub[]>> m_chunks;
    size_t m_used = kChunk;  // of the last chunk
};

// Stubs by handle. Handles are mostly dense, so they live in pages found by a hash; neighbours cost
// an index.
class HandleTable {
public:
    Stub* Find(Adesk::UInt64 handle) const;         // null when there is none; O(1)
    void Insert(Adesk::UInt64 handle, Stub* stub);  // replaces; 0 is no handle
    size_t Size() const { return m_size; }
    // Rising by handle.
    std::vector<Stub*> All() const;

private:
    static constexpr int kPageBits = 9;  // 512 handles a page
    static constexpr size_t kPageSize = size_t(1) << kPageBits;
    using Page = std::unique_ptr<Stub*[]>;
    Stub** PageOf(Adesk::UInt64 handle) const;

    std::unordered_map<Adesk::UInt64, Page> m_pages;
    mutable Adesk::UInt64 m_lastKey = ~Adesk::UInt64(0);  // the page that was asked last
    mutable Stub** m_lastPage = nullptr;
    size_t m_size = 0;
};

// The state of objects before their first change while they are open for write, for cancel. Few are
// open at a time, so the newest few are kept in a list; the rest goes to a hash.
class SnapshotStore {
public:
    // The first state of an open counts: a second Put changes nothing.
    void Put(Stub& stub, std::unique_ptr<AcDbObject> before);
    // Takes the state out; null when there is none.
    std::unique_ptr<AcDbObject> Take(Stub& stub);

private:
    static constexpr size_t kListed = 16;  // in the list at most
    std::vector<std::pair<Stub*, std::unique_ptr<AcDbObject>>> m_list;
    std::unordered_map<Stub*, std::unique_ptr<AcDbObject>> m_more;
};

struct DatabaseImp {
    explicit DatabaseImp(AcDbDatabase& owner) : db(&owner) {}

    AcDbDatabase* db;                                  // whose inside this is
    StubArena arena;                                   // owns all stubs
    HandleTable handles;                               // of everything resident
    HeaderVars header;                                 // what section HEADER holds
    Stub* roots[static_cast<int>(Root::kCount)] = {};  // tables and the first dictionary
    AcDbObjectId layerZero, byLayer, byBlock, continuous, modelSpace, paperSpace;
    AcDbObjectId groupDictionary, layoutDictionary;
    std::vector<AcDbDatabaseReactor*> reactors;  // not owned, in order
    std::unique_ptr<DrawingSource> source;       // unread objects; null for a new drawing
    WriteGuard* guard = nullptr;                 // asks for locks; null: none needed
    std::wstring file;                           // of the last read or save
    AcDb::AcDbDwgVersion version = AcDb::kDHL_CURRENT;
    size_t openCount = 0;       // objects open now, for reports
    bool modified = false;      // since the last save
    std::vector<Stub*> erased;  // since the last purge; may hold stubs un-erased meanwhile
    SnapshotStore snapshots;

    // with the next handle, not resident yet
    Stub* NewStub(AcRxClass* cls, Stub* owner, Adesk::UInt16 flags);
    Adesk::UInt64 TakeHandle();  // the next free one
    Acad::ErrorStatus MayWrite() const {
        return guard == nullptr ? Acad::eOk : guard->MayWrite(*db);
    }
    // Calls every reactor that is registered now and still is when its turn comes.
    template <class Call>
    void Notify(Call call) {
        if (reactors.empty()) return;
        const std::vector<AcDbDatabaseReactor*> now = reactors;
        for (AcDbDatabaseReactor* reactor : now)
            if (HasReactor(reactor)) call(*reactor);
    }
    bool HasReactor(const AcDbDatabaseReactor* reactor) const;
};

// Rarely used parts of an object.
struct ObjectExtras {
    resbuf* xdata = nullptr;  // one chain of all applications; owned
    AcDbObjectId extensionDictionary;
    AcDbObjectId owner;                        // setOwnerId of a non-resident object
    std::vector<AcDbObjectId> reactorIds;      // persistent ones
    std::vector<AcDbObjectReactor*> reactors;  // transient ones; not owned

    ObjectExtras() = default;
    ObjectExtras(const ObjectExtras&) = delete;
    ObjectExtras& operator=(const ObjectExtras&) = delete;
    ~ObjectExtras();
};
ObjectExtras& ExtrasOf(const AcDbObject& object);

// AcDbObject::m_openFlags: what happened during this open.
enum OpenFlag : Adesk::UInt16 {
    kOpenModified = 1,
    kOpenEraseToggled = 2,
    kOpenAppended = 4,
    kOpenSnapshot = 8
};

inline DatabaseImp& ImpOf(const AcDbDatabase& db) { return Access::Imp(db); }

// Makes a non-resident object resident below an owner, with the next handle, open for write when
// asked, and tells reactors. The container itself is not touched. eAlreadyInDb.
Acad::ErrorStatus MakeResident(AcDbDatabase& db, AcDbObject& object, Stub* owner,
                               Adesk::UInt16 flags, bool leaveOpen);

// Loads the object of a stub that has none. eOk, or why not.
Acad::ErrorStatus LoadObject(Stub& stub);

// Marks the object as erased or not, with everything it owns; the open mode is the caller's affair.
void SetErased(Stub& stub, bool erasing);

// Gives layer and linetype to an entity that has none; eWrongDatabase when those it has are of
// another database.
Acad::ErrorStatus FillCommonProperties(AcDbDatabase& db, AcDbEntity& entity);

// The working database, or the object's when it is resident.
AcDbDatabase* DatabaseFor(const AcDbObject& object);

// Identifier of a record by name in one of the roots' tables; eKeyNotFound, eDeletedEntry for one
// that is erased.
Acad::ErrorStatus FindRecord(const AcDbDatabase& db, Root root, const ACHAR* name,
                             AcDbObjectId& id);

// Replaces an identifier whose object was cloned by its clone's.
void Translate(const AcDbIdMapping& mapping, AcDbObjectId& id);

// A copy for acutDelString.
ACHAR* NewText(const ACHAR* text);

}  // namespace host
