// Opening and closing. The open state lives in the stub, so that opening touches little memory.

#include "host/db/database_imp.h"
#include "host/base/host_assert.h"

namespace {

using host::Access;
using host::Stub;

bool IsOnLockedLayer(const Stub& stub) {
    const AcDbEntity& entity = *static_cast<const AcDbEntity*>(stub.object);
    const Stub* const layer = entity.layerId().stub();
    return layer != nullptr && layer->object != nullptr &&
           static_cast<const AcDbLayerTableRecord*>(layer->object)->isLocked();
}

Acad::ErrorStatus MayOpenForWrite(const Stub& stub) {
    const Acad::ErrorStatus es = host::ImpOf(*stub.database).MayWrite();
    if (es != Acad::eOk) return es;
    return stub.Has(host::kStubEntity) && IsOnLockedLayer(stub) ? Acad::eOnLockedLayer : Acad::eOk;
}

// The refusals that come from how the object is open already.
Acad::ErrorStatus StateRefusal(const Stub& stub, AcDb::OpenMode mode) {
    if (mode == AcDb::kForNotify)
        return stub.Has(host::kStubNotify) ? Acad::eWasOpenForNotify : Acad::eOk;
    if (stub.Has(host::kStubNotifying)) return Acad::eWasNotifying;
    if (stub.Has(host::kStubNotify)) return Acad::eWasOpenForNotify;
    if (stub.Has(host::kStubWriter)) return Acad::eWasOpenForWrite;
    if (mode == AcDb::kForWrite) return stub.readers > 0 ? Acad::eWasOpenForRead : Acad::eOk;
    return stub.readers >= host::kMaxReaders ? Acad::eAtMaxReaders : Acad::eOk;
}

// What an identifier whose object is not simply there answers.
Acad::ErrorStatus AbsenceStatus(Stub& stub, bool openErased) {
    if (stub.database == nullptr) return Acad::ePermanentlyErased;
    if (stub.Has(host::kStubErased) && !openErased) return Acad::eWasErased;
    if (stub.Has(host::kStubPurged)) return Acad::ePermanentlyErased;
    return stub.object == nullptr ? host::LoadObject(stub) : Acad::eOk;
}

// Ends the write part of an open: reports what changed, forgets the state before.
void FinishWrite(Stub& stub) {
    Adesk::UInt16& flags = Access::OpenFlags(*stub.object);
    host::DatabaseImp& imp = host::ImpOf(*stub.database);
    const bool changed = (flags & host::kOpenModified) != 0 && (flags & host::kOpenAppended) == 0;
    const bool toggled = (flags & host::kOpenEraseToggled) != 0;
    const auto& extras = Access::Extras(*stub.object);
    const bool watched = !imp.reactors.empty() || (extras && !extras->reactors.empty());
    if (watched && (changed || toggled)) {
        stub.Set(host::kStubNotifying);
        const AcDbObject* const object = stub.object;
        const bool erased = stub.Has(host::kStubErased);
        if (toggled)
            imp.Notify([&](AcDbDatabaseReactor& r) { r.objectErased(imp.db, object, erased); });
        imp.Notify([&](AcDbDatabaseReactor& r) { r.objectModified(imp.db, object); });
        if (extras) {
            const std::vector<AcDbObjectReactor*> reactors = extras->reactors;
            for (AcDbObjectReactor* reactor : reactors) {
                if (toggled) reactor->erased(object, erased);
                reactor->modified(object);
            }
        }
        stub.Clear(host::kStubNotifying);
    }
    if ((flags & host::kOpenSnapshot) != 0) imp.snapshots.Take(stub).reset();
    flags = 0;
    stub.Clear(host::kStubWriter);
}

void TellObjectClosed(const Stub& stub) {
    const auto& extras = Access::Extras(*stub.object);
    if (!extras || extras->reactors.empty()) return;
    const std::vector<AcDbObjectReactor*> reactors = extras->reactors;
    for (AcDbObjectReactor* reactor : reactors) reactor->objectClosed(stub.object->objectId());
}

}  // namespace

namespace host {

Acad::ErrorStatus LoadObject(Stub& stub) {
    if (stub.Has(kStubUnknown | kStubLoading)) return Acad::eUnknownHandle;
    DatabaseImp& imp = ImpOf(*stub.database);
    if (imp.source == nullptr || stub.record == kNoRecord) return Acad::eUnknownHandle;
    stub.Set(kStubLoading);
    std::unique_ptr<AcDbObject> object(imp.source->Load(stub));
    stub.Clear(kStubLoading);
    if (object == nullptr) {
        stub.Set(kStubUnknown);
        return Acad::eUnknownHandle;
    }
    AttachObject(stub, std::move(object));
    return Acad::eOk;
}

}  // namespace host

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased) {
    object = nullptr;
    Stub* const stub = id.stub();
    if (stub == nullptr) return Acad::eNullObjectId;
    if (stub->object == nullptr || stub->Has(host::kStubErased)) {
        const Acad::ErrorStatus es = AbsenceStatus(*stub, openErased);
        if (es != Acad::eOk) return es;
    }
    Acad::ErrorStatus es = StateRefusal(*stub, mode);
    if (es != Acad::eOk) return es;
    if (mode == AcDb::kForWrite) {
        es = MayOpenForWrite(*stub);
        if (es != Acad::eOk) return es;
        stub->Set(host::kStubWriter);
    } else if (mode == AcDb::kForRead) {
        ++stub->readers;
    } else {
        stub->Set(host::kStubNotify);
    }
    ++host::ImpOf(*stub->database).openCount;
    object = stub->object;
    return Acad::eOk;
}

Acad::ErrorStatus acdbOpenObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                 bool openErased) {
    return acdbOpenAcDbObject(object, id, mode, openErased);
}

Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& entity, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased) {
    return acdbOpenObject(entity, id, mode, openErased);
}

Acad::ErrorStatus AcDbObject::close() {
    if (m_stub == nullptr) return Acad::eNotInDatabase;
    Stub& stub = *m_stub;
    if (stub.Has(host::kStubNotify))
        stub.Clear(host::kStubNotify);
    else if (stub.Has(host::kStubNotifying))
        return Acad::eWasNotifying;
    else if (stub.Has(host::kStubWriter))
        FinishWrite(stub);
    else if (stub.readers > 0)
        --stub.readers;
    else
        return Acad::eNotOpenForRead;
    --host::ImpOf(*stub.database).openCount;
    if (m_extras) TellObjectClosed(stub);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::cancel() {
    if (m_stub == nullptr) return Acad::eNotInDatabase;
    Stub& stub = *m_stub;
    if (!stub.Has(host::kStubWriter) || stub.Has(host::kStubNotify | host::kStubNotifying))
        return close();
    host::DatabaseImp& imp = host::ImpOf(*stub.database);
    if ((m_openFlags & host::kOpenAppended) != 0) {
        if (!stub.Has(host::kStubErased)) host::SetErased(stub, true);
    } else {
        if ((m_openFlags & host::kOpenEraseToggled) != 0)
            host::SetErased(stub, !stub.Has(host::kStubErased));
        if (const std::unique_ptr<AcDbObject> before = imp.snapshots.Take(stub)) {
            const Adesk::UInt16 dirty = before->m_dirty;
            const Acad::ErrorStatus es = copyFrom(before.get());
            HOST_ASSERT(es == Acad::eOk, "a snapshot is of the object's own class");
            m_dirty = dirty;
        }
        if (m_extras) {
            const std::vector<AcDbObjectReactor*> reactors = m_extras->reactors;
            for (AcDbObjectReactor* reactor : reactors) reactor->cancelled(this);
        }
        m_openFlags = 0;
    }
    return close();
}

Acad::ErrorStatus AcDbObject::upgradeOpen() {
    if (m_stub == nullptr) return Acad::eNotInDatabase;
    Stub& stub = *m_stub;
    if (stub.Has(host::kStubNotifying)) return Acad::eWasNotifying;
    if (stub.Has(host::kStubWriter)) return Acad::eWasOpenForWrite;
    if (stub.readers == 0) return Acad::eNotOpenForRead;
    if (stub.readers > 1) return Acad::eHadMultipleReaders;
    if (stub.Has(host::kStubErased)) return Acad::eWasErased;
    const Acad::ErrorStatus es = MayOpenForWrite(stub);
    if (es != Acad::eOk) return es;
    stub.readers = 0;
    stub.Set(host::kStubWriter);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::downgradeOpen() {
    if (m_stub == nullptr) return Acad::eNotInDatabase;
    Stub& stub = *m_stub;
    if (!stub.Has(host::kStubWriter)) return Acad::eNotOpenForWrite;
    if (stub.Has(host::kStubNotifying)) return Acad::eWasNotifying;
    FinishWrite(stub);
    stub.readers = 1;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::beginResidentWrite(Adesk::UInt16 dirtyMask) {
    Stub& stub = *m_stub;
    if (!stub.Has(host::kStubWriter) || stub.Has(host::kStubNotifying))
        return Acad::eNotOpenForWrite;
    host::DatabaseImp& imp = host::ImpOf(*stub.database);
    // Membership of containers is not taken back by cancel: copying a list of a million entities
    // for every append would cost more than the append.
    constexpr Adesk::UInt16 kRestorable =
        host::kDirtyCommon | host::kDirtyGeometry | host::kDirtyXData;
    if ((dirtyMask & kRestorable) != 0 &&
        (m_openFlags & (host::kOpenSnapshot | host::kOpenAppended)) == 0) {
        AcDbObject* const copy = AcDbObject::cast(clone());
        if (copy != nullptr) {
            copy->m_dirty = m_dirty;
            imp.snapshots.Put(stub, std::unique_ptr<AcDbObject>(copy));
            m_openFlags |= host::kOpenSnapshot;
        }
    }
    const bool first = (m_openFlags & host::kOpenModified) == 0;
    m_openFlags |= host::kOpenModified;
    m_dirty = static_cast<Adesk::UInt16>(m_dirty | dirtyMask);
    imp.modified = true;
    if (first && (m_openFlags & host::kOpenAppended) == 0) {
        imp.Notify([&](AcDbDatabaseReactor& r) { r.objectOpenedForModify(imp.db, this); });
        if (m_extras) {
            const std::vector<AcDbObjectReactor*> reactors = m_extras->reactors;
            for (AcDbObjectReactor* reactor : reactors) reactor->openedForModify(this);
        }
    }
    return Acad::eOk;
}
