// The record behind an object identifier.
//
// Stubs live in chunks that are never freed, so an identifier may be asked at any time, also after
// its object was erased and after its database is gone. A stub tells what can be known without
// loading the object: class, owner, handle, state.
#pragma once

#include "adesk.h"
#include "dbObject.h"

namespace host {

// Stub::flags
enum StubFlag : Adesk::UInt16 {
    kStubErased = 0x0001,
    kStubWriter = 0x0002,       // open for write
    kStubNotify = 0x0004,       // open for notify
    kStubNotifying = 0x0008,    // its own change is being reported
    kStubNew = 0x0010,          // made here, in no drawing source
    kStubPurged = 0x0020,       // erased, its memory freed for good
    kStubUnknown = 0x0040,      // its record could not be made into an object
    kStubHighlighted = 0x0080,  // screen state
    kStubEntity = 0x0100,       // an entity: the layer lock holds for it
    kStubDormant = 0x0200,      // left out of its container's list of live entities
    kStubSubentity = 0x0400,    // vertex, attribute or sequence end
    kStubLoading = 0x0800,      // its record is being made into an object
    kStubFollowed = 0x1000      // erased along with its owner, to come back with it
};

// Most objects open for read at once, per object.
constexpr Adesk::UInt16 kMaxReaders = 256;

struct Stub {
    AcDbObject* object;      // null while not loaded, and when purged
    AcDbDatabase* database;  // null when the database is gone
    Stub* owner;             // container; null for the roots
    AcRxClass* cls;
    Adesk::UInt64 handle;
    Adesk::UInt32 record;  // number in the drawing source; kNoRecord for new objects
    Adesk::UInt32 order;   // place in the container's list, rising
    Adesk::UInt16 readers;
    Adesk::UInt16 flags;

    bool Has(Adesk::UInt16 flag) const { return (flags & flag) != 0; }
    void Set(Adesk::UInt16 flag) { flags = static_cast<Adesk::UInt16>(flags | flag); }
    void Clear(Adesk::UInt16 flag) { flags = static_cast<Adesk::UInt16>(flags & ~flag); }
    bool IsOpen() const { return readers != 0 || Has(kStubWriter | kStubNotify); }
    AcDbObjectId Id() { return AcDbObjectId(this); }
};

constexpr Adesk::UInt32 kNoRecord = 0xFFFFFFFF;

// What changed on an object since it was loaded; 0 means that its record can be written as it came.
enum Dirty : Adesk::UInt16 {
    kDirtyCommon = 0x0001,    // layer, colour, linetype, scale, weight, visibility
    kDirtyGeometry = 0x0002,  // everything the class itself stores
    kDirtyXData = 0x0004,
    kDirtyExtDict = 0x0008,
    kDirtyReactors = 0x0010,
    kDirtyChildren = 0x0020,  // members of a container: entities, entries, vertices, attributes
    kDirtyOwner = 0x0040,
    kDirtyNew = 0x8000  // made here: the whole object is to be written
};

}  // namespace host
