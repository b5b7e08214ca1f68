#include <algorithm>

#include "host/db/database_imp.h"
#include "host/db/define_class.h"
#include "host/db/entity_list.h"
#include "host/db/rb_chain.h"
#include "host/base/host_assert.h"

using host::Access;
using host::Stub;

HOST_DEFINE_ABSTRACT(AcDbObject, AcRxObject, nullptr)

const AcDbObjectId AcDbObjectId::kNull;

bool AcDbObjectId::isValid() const {
    return m_stub != nullptr && m_stub->database != nullptr && !m_stub->Has(host::kStubUnknown);
}
bool AcDbObjectId::isErased() const {
    return m_stub != nullptr && (m_stub->database == nullptr || m_stub->Has(host::kStubErased));
}
bool AcDbObjectId::isEffectivelyErased() const {
    for (const Stub* stub = m_stub; stub != nullptr; stub = stub->owner)
        if (stub->database == nullptr || stub->Has(host::kStubErased)) return true;
    return false;
}
bool AcDbObjectId::isResident() const { return m_stub != nullptr && m_stub->object != nullptr; }
AcDbHandle AcDbObjectId::handle() const {
    HOST_ASSERT(m_stub != nullptr, "the handle of a null identifier was asked for");
    return AcDbHandle(m_stub->handle);
}
AcDbDatabase* AcDbObjectId::database() const {
    return m_stub == nullptr ? nullptr : m_stub->database;
}
AcRxClass* AcDbObjectId::objectClass() const { return m_stub == nullptr ? nullptr : m_stub->cls; }

AcDbHandle::AcDbHandle(const ACHAR* hex) {
    Adesk::UInt64 value = 0;
    int digits = 0;
    for (; hex != nullptr && *hex != 0; ++hex) {
        int digit = -1;
        if (*hex >= L'0' && *hex <= L'9') digit = *hex - L'0';
        if (*hex >= L'a' && *hex <= L'f') digit = *hex - L'a' + 10;
        if (*hex >= L'A' && *hex <= L'F') digit = *hex - L'A' + 10;
        if (digit < 0) break;
        if (++digits > 16) return;
        value = value << 4 | static_cast<Adesk::UInt64>(digit);
    }
    m_value = value;
}

bool AcDbHandle::getIntoAsciiBuffer(ACHAR* buffer, size_t size) const {
    ACHAR text[kStrSiz];
    size_t at = kStrSiz - 1;
    text[at] = 0;
    Adesk::UInt64 rest = m_value;
    do {
        text[--at] = ACRX_T("0123456789ABCDEF")[rest & 15];
        rest >>= 4;
    } while (rest != 0);
    const size_t count = kStrSiz - at;
    if (buffer == nullptr || count > size) return false;
    std::copy(text + at, text + kStrSiz, buffer);
    return true;
}

AcDbObject::AcDbObject(const AcDbObject& other)
    : AcRxObject(other), m_record(other.m_record), m_dirty(other.m_dirty) {
    if (const resbuf* const chain = host::XDataChain(other))
        host::SetXDataChain(*this, host::CopyChain(chain));
}

AcDbObject& AcDbObject::operator=(const AcDbObject& other) {
    if (this == &other) return *this;
    host::SetXDataChain(*this, host::CopyChain(host::XDataChain(other)));
    return *this;
}

AcDbObject::~AcDbObject() {
    HOST_ASSERT(m_stub == nullptr, "an object that a database owns must be closed, not deleted");
}

AcDbObjectId AcDbObject::ownerId() const {
    if (m_stub != nullptr) return AcDbObjectId(m_stub->owner);
    return m_extras ? m_extras->owner : AcDbObjectId();
}

Acad::ErrorStatus AcDbObject::setOwnerId(AcDbObjectId owner) {
    const Acad::ErrorStatus es = beginWrite(host::kDirtyOwner);
    if (es != Acad::eOk) return es;
    if (m_stub != nullptr)
        m_stub->owner = owner.stub();
    else
        host::ExtrasOf(*this).owner = owner;
    return Acad::eOk;
}

void AcDbObject::getAcDbHandle(AcDbHandle& handle) const {
    handle = m_stub == nullptr ? AcDbHandle() : objectId().handle();
}

AcDbDatabase* AcDbObject::database() const {
    return m_stub == nullptr ? nullptr : m_stub->database;
}

bool AcDbObject::isErased() const { return m_stub != nullptr && m_stub->Has(host::kStubErased); }
bool AcDbObject::isEraseStatusToggled() const {
    return (m_openFlags & host::kOpenEraseToggled) != 0;
}
bool AcDbObject::isReadEnabled() const { return m_stub == nullptr || m_stub->IsOpen(); }
bool AcDbObject::isWriteEnabled() const {
    return m_stub == nullptr || m_stub->Has(host::kStubWriter);
}
bool AcDbObject::isNotifyEnabled() const {
    return m_stub != nullptr && m_stub->Has(host::kStubNotify);
}
bool AcDbObject::isModified() const { return (m_openFlags & host::kOpenModified) != 0; }
bool AcDbObject::isNewObject() const { return (m_openFlags & host::kOpenAppended) != 0; }
bool AcDbObject::isNotifying() const {
    return m_stub != nullptr && m_stub->Has(host::kStubNotifying);
}
bool AcDbObject::isAProxy() const {
    return isKindOf(AcDbProxyEntity::desc()) || isKindOf(AcDbProxyObject::desc());
}

void AcDbObject::assertReadEnabled() const {
    HOST_ASSERT(isReadEnabled() || isNotifying(), "a closed object was read");
}

void AcDbObject::assertWriteEnabled(bool, bool recordModified) {
    const Acad::ErrorStatus es = beginWrite(recordModified ? host::kDirtyGeometry : 0);
    HOST_ASSERT(es == Acad::eOk, "an object was changed that is not open for write");
}

Acad::ErrorStatus AcDbObject::subErase(bool) { return Acad::eOk; }
void AcDbObject::ownedIds(AcDbObjectIdArray&) const {}
void AcDbObject::settleOwned() {}
void AcDbObject::translateIds(const AcDbIdMapping&) {}

Acad::ErrorStatus AcDbObject::erase(bool erasing) {
    if (m_stub == nullptr) return Acad::eNotInDatabase;
    if (!m_stub->Has(host::kStubWriter) || m_stub->Has(host::kStubNotifying))
        return Acad::eNotOpenForWrite;
    if (m_stub->Has(host::kStubErased) == erasing)
        return erasing ? Acad::eWasErased : Acad::eWasNotErased;
    Acad::ErrorStatus es = subErase(erasing);
    if (es != Acad::eOk) return es;
    es = beginWrite(0);
    if (es != Acad::eOk) return es;
    host::SetErased(*m_stub, erasing);
    m_openFlags ^= host::kOpenEraseToggled;
    return Acad::eOk;
}

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name) {
    if (ads_name_nil(name)) return Acad::eInvalidInput;
    id.setFromOldId(name[0]);
    return Acad::eOk;
}

Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id) {
    if (id.isNull()) return Acad::eNullObjectId;
    name[0] = id.asOldId();
    name[1] = 0;
    return Acad::eOk;
}

namespace host {

void SetErased(Stub& stub, bool erasing) {
    DatabaseImp& imp = ImpOf(*stub.database);
    if (erasing) {
        stub.Set(kStubErased);
        imp.erased.push_back(&stub);
    } else {
        stub.Clear(kStubErased);
    }
    imp.modified = true;
    if (Stub* const owner = stub.owner; owner != nullptr && owner->object != nullptr) {
        if (owner->cls == AcDbBlockTableRecord::desc()) {
            EntityList& list =
                *Access::Entities(static_cast<AcDbBlockTableRecord&>(*owner->object));
            if (erasing)
                list.NoteErased(stub);
            else
                list.NoteUnerased(stub);
        }
        Access::DirtyBits(*owner->object) |= kDirtyChildren;
    }
    if (stub.object == nullptr) return;
    AcDbObjectIdArray owned;
    Access::OwnedIds(*stub.object, owned);
    if (const AcDbObjectId dictionary = ExtensionDictionaryId(*stub.object); !dictionary.isNull())
        owned.append(dictionary);
    // What was erased before its owner stays erased when the owner comes back.
    for (int i = 0; i < owned.length(); ++i) {
        Stub& child = *owned[i].stub();
        if (child.Has(kStubErased) == erasing || child.Has(kStubPurged)) continue;
        if (!erasing && !child.Has(kStubFollowed)) continue;
        SetErased(child, erasing);
        if (erasing)
            child.Set(kStubFollowed);
        else
            child.Clear(kStubFollowed);
    }
}

Acad::ErrorStatus MakeResident(AcDbDatabase& db, AcDbObject& object, Stub* owner,
                               Adesk::UInt16 flags, bool leaveOpen) {
    if (Access::StubOf(object) != nullptr) return Acad::eAlreadyInDb;
    DatabaseImp& imp = ImpOf(db);
    Stub* const stub =
        imp.NewStub(object.isA(), owner, static_cast<Adesk::UInt16>(flags | kStubNew));
    stub->handle = imp.TakeHandle();
    stub->object = &object;
    stub->record = Access::Record(object);
    imp.handles.Insert(stub->handle, stub);
    imp.modified = true;
    Access::StubOf(object) = stub;
    Access::DirtyBits(object) |= kDirtyNew;
    Access::OpenFlags(object) = kOpenAppended;
    stub->Set(kStubWriter);
    ++imp.openCount;
    Access::SettleOwned(object);
    if (!imp.reactors.empty())
        imp.Notify([&](AcDbDatabaseReactor& r) { r.objectAppended(&db, &object); });
    if (leaveOpen) return Acad::eOk;
    Access::OpenFlags(object) = 0;
    stub->Clear(kStubWriter);
    --imp.openCount;
    return Acad::eOk;
}

}  // namespace host
