// What a drawing reader and writer need of a database beyond the public interface: registering
// objects with their handles without marking anything as changed, and asking what changed since.
//
// Reading goes like this. The reader registers a stub per object (RegisterStub), makes the tables,
// their records and the dictionaries at once (AttachObject, AddTableRecord, AddDictionaryEntry,
// SetRoot), appends the stubs of entities to their block records (AppendEntity), sets the header
// (Header), installs its source (SetSource) and ends with FinishReading. Entities are made on first
// opening by DrawingSource::Load, which may call AppendOwned for vertices and attributes.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "dbdict.h"
#include "dbsymtb.h"
#include "host/db/drawing_source.h"
#include "host/db/stub.h"

namespace host {

// ---- Reading ------------------------------------------------------------------------------------

// Registers an object that is not loaded yet.
// handle  0: the object has none in the file; it gets the next free one (call after all others, or
//         set the seed first)
// record  number the source knows it by
// result  null when the handle is taken already: a duplicate, nothing is registered
// cost    O(1)
Stub* RegisterStub(AcDbDatabase& db, Adesk::UInt64 handle, AcRxClass* cls, Stub* owner,
                   Adesk::UInt32 record);

// Gives a registered stub its object, which the database then owns. Neither opens it nor marks it.
void AttachObject(Stub& stub, std::unique_ptr<AcDbObject> object);

// The stub of a handle, or null. O(1).
Stub* FindStub(const AcDbDatabase& db, Adesk::UInt64 handle);

// Puts a stub's owner right once it is known. Containers are not touched.
void SetOwner(Stub& stub, Stub* owner);

// Appends a registered, not necessarily loaded, entity to a block record's list. Sets its owner.
// O(1).
void AppendEntity(Stub& blockRecord, Stub& entity);

// Appends a vertex, attribute or sequence end (by its class) to a heavy polyline, a block reference
// or an opaque entity. The owner is the loaded object, resident or not. Sets the sub-entity's owner
// when ownerStub is given.
void AppendOwned(AcDbObject& owner, Stub* ownerStub, Stub& owned);

// Tables that can be made for SetRoot, and the dictionary at the root.
enum class Root {
    kBlockTable,
    kLayerTable,
    kLinetypeTable,
    kRegAppTable,
    kTextStyleTable,
    kDimStyleTable,
    kUcsTable,
    kViewTable,
    kViewportTable,
    kNamedObjects,
    kCount
};
// The empty table or dictionary object for a root.
std::unique_ptr<AcDbObject> NewRootObject(Root root);
AcRxClass* RootClass(Root root);
// Makes a stub with an attached object the database's root of that kind.
void SetRoot(AcDbDatabase& db, Root root, Stub& stub);
Stub* GetRoot(const AcDbDatabase& db, Root root);

// Adds an attached record to an attached table under a name. Equal names are kept (the first is
// found by name). False when the name was there already.
bool AddTableRecord(Stub& table, Stub& record, const std::wstring& name);

// Adds an entry, loaded or not, to an attached dictionary. False when the name was there already:
// the entry is then not added.
bool AddDictionaryEntry(Stub& dictionary, const std::wstring& name, Stub& entry);

// Extended data, extension dictionary and persistent reactors of a loaded object (non-resident
// ones included). The chain is taken over.
void SetXDataChain(AcDbObject& object, resbuf* chain);
void SetExtensionDictionary(AcDbObject& object, AcDbObjectId dictionary);
void AddReactorId(AcDbObject& object, AcDbObjectId reactor);

// Makes what a drawing needs and the file did not bring: missing roots, layer 0, the linetypes
// ByBlock, ByLayer and Continuous, the styles Standard, model and paper space, application ACAD,
// the group and layout dictionaries. Raises the seed above every handle. What it makes is new.
// Clears all dirty marks of loaded objects and of the header.
void FinishReading(AcDbDatabase& db);

void SetSource(AcDbDatabase& db, std::unique_ptr<DrawingSource> source);
DrawingSource* GetSource(const AcDbDatabase& db);

// File the drawing was read from or last written to, and the version of it.
void SetFile(AcDbDatabase& db, const std::wstring& path, AcDb::AcDbDwgVersion version);

// The header variables the database itself knows. Everything else stays in the source.
struct HeaderVars {
    AcDbObjectId clayer, celtype, textstyle, dimstyle;
    AcCmEntityColor cecolor;
    double celtscale = 1.0;
    double ltscale = 1.0;
    Adesk::Int16 celweight = AcDb::kLnWtByLayer;
    Adesk::Int16 insunits = AcDb::kUnitsMillimeters;
    Adesk::Int16 measurement = 1;
    Adesk::Int16 lunits = 2, luprec = 4;
    bool tilemode = true;
    AcGePoint3d insbase;
    AcGePoint3d extmin{1e20, 1e20, 1e20}, extmax{-1e20, -1e20, -1e20};
    AcGePoint2d limmin, limmax{420.0, 297.0};
    Adesk::UInt64 handseed = 1;
    // Bits of HeaderVar that were set since load.
    Adesk::UInt32 changed = 0;
};
enum HeaderVar : Adesk::UInt32 {
    kVarClayer = 0x01,
    kVarCeltype = 0x02,
    kVarCecolor = 0x04,
    kVarCeltscale = 0x08,
    kVarCelweight = 0x10,
    kVarInsunits = 0x20,
    kVarExtents = 0x40
};
// Writing to it directly neither asks for a lock nor tells reactors nor sets changed.
HeaderVars& Header(AcDbDatabase& db);
const HeaderVars& Header(const AcDbDatabase& db);

// ---- Writing ------------------------------------------------------------------------------------

// Dirty bits of a stub: 0 for an unloaded or unchanged object, kDirtyNew among them for one made
// here. Erased objects: ask IsErased first.
Adesk::UInt16 DirtyMask(const Stub& stub);
inline bool IsErased(const Stub& stub) { return stub.Has(kStubErased); }
inline bool IsNew(const Stub& stub) { return stub.Has(kStubNew); }
// True when anything at all changed since load or the last NoteSaved, erased objects included.
bool IsModified(const AcDbDatabase& db);

// The stubs of a container in order. Erased ones are left out.
//   block record: its entities; table: its records; dictionary: its entries;
//   heavy polyline, block reference, opaque entity: vertices or attributes, then the sequence end
std::vector<Stub*> Members(const AcDbObject& container);
// Names of the entries, in the order of Members.
std::vector<std::wstring> EntryNames(const AcDbDictionary& dictionary);

// Every stub of the database by handle, erased ones included.
std::vector<Stub*> AllStubs(const AcDbDatabase& db);

// The object of a stub without opening it: loads it when needed. Null when it cannot be made or is
// purged. For codecs, which read objects whatever their open state.
AcDbObject* ObjectOf(Stub& stub);

// Called after a successful write beside the source that the drawing goes on being read from: it no
// longer counts as changed, but what differs from that source is still known.
void NoteSaved(AcDbDatabase& db);
// Counts as changed, whatever was read.
void NoteChanged(AcDbDatabase& db);

// ---- Housekeeping -------------------------------------------------------------------------------

// Frees the memory of erased objects that are closed. Their identifiers stay and answer
// eWasErased, or ePermanentlyErased when erased objects are asked for; they cannot be un-erased any
// more. Returns how many. O(erased since the last call, and those kept then).
// keeps  what is to stay; null: nothing
size_t PurgeErased(AcDbDatabase& db, const std::function<bool(const Stub&)>& keeps = nullptr);

struct OpenObject {
    Adesk::UInt64 handle;
    std::wstring className;
    AcDb::OpenMode mode;
    int count;  // readers, else 1
};
// What was left open. O(objects) when anything is open, O(1) when nothing is.
std::vector<OpenObject> OpenObjectsReport(const AcDbDatabase& db);

// Decides whether a database may be written to now; installed by the document manager.
class WriteGuard {
public:
    virtual ~WriteGuard() = default;
    // eOk or the refusal, eLockViolation.
    virtual Acad::ErrorStatus MayWrite(const AcDbDatabase& db) const = 0;
};
// Not owned; null: no lock needed.
void SetWriteGuard(AcDbDatabase& db, WriteGuard* guard);

// Hears of databases being made and destroyed; for the editor's reactors.
class DatabaseWatcher {
public:
    virtual ~DatabaseWatcher() = default;
    virtual void Constructed(AcDbDatabase&) {}
    virtual void ToBeDestroyed(AcDbDatabase&) {}
};
void SetDatabaseWatcher(DatabaseWatcher* watcher);

}  // namespace host
