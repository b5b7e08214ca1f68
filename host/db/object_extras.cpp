// Extended data, extension dictionaries and reactors: what few objects have.

#include <algorithm>
#include <cwchar>

#include "acutads.h"
#include "acutmem.h"
#include "host/db/database_imp.h"
#include "host/db/names.h"
#include "host/db/rb_chain.h"

using host::Access;

namespace {

// Size limit of an object's extended data in bytes, as stored.
constexpr size_t kMaxXDataBytes = 16384;

size_t StoredSize(const resbuf& node) {
    switch (host::KindOfCode(node.restype)) {
        case host::RbKind::kString:
            return 3 + (node.resval.rstring == nullptr ? 0 : std::wcslen(node.resval.rstring));
        case host::RbKind::kPoint:
            return 25;
        case host::RbKind::kReal:
            return 9;
        case host::RbKind::kBinary:
            return 2 + static_cast<size_t>(node.resval.rbinary.clen);
        case host::RbKind::kInt16:
            return 3;
        default:
            return 5;
    }
}

constexpr int kAppCode = 1001;

// First node behind an application's run of nodes.
template <class Node>
Node* EndOfRun(Node* app) {
    Node* node = app->rbnext;
    while (node != nullptr && node->restype != kAppCode) node = node->rbnext;
    return node;
}

Acad::ErrorStatus CheckXData(const AcDbObject& object, const resbuf* chain) {
    if (chain == nullptr || chain->restype != kAppCode) return Acad::eInvalidResBuf;
    const AcDbDatabase* const db = host::DatabaseFor(object);
    size_t size = 0;
    for (const resbuf* node = chain; node != nullptr; node = node->rbnext) {
        if (!host::IsXDataCode(node->restype)) return Acad::eInvalidResBuf;
        size += StoredSize(*node);
        if (node->restype != kAppCode) continue;
        if (node->resval.rstring == nullptr) return Acad::eInvalidResBuf;
        AcDbObjectId app;
        if (db != nullptr &&
            host::FindRecord(*db, host::Root::kRegAppTable, node->resval.rstring, app) != Acad::eOk)
            return Acad::eKeyNotFound;
    }
    return size > kMaxXDataBytes ? Acad::eInvalidInput : Acad::eOk;
}

// Takes the run of an application out of a chain and frees it.
void RemoveRun(resbuf*& chain, const ACHAR* app) {
    for (resbuf** link = &chain; *link != nullptr;) {
        resbuf* const node = *link;
        if (node->restype != kAppCode || !host::SameName(node->resval.rstring, app)) {
            link = &node->rbnext;
            continue;
        }
        resbuf* const behind = EndOfRun(node);
        resbuf* last = node;
        while (last->rbnext != behind) last = last->rbnext;
        last->rbnext = nullptr;
        acutRelRb(node);
        *link = behind;
    }
}

// A copy of one application's run, 1001 included.
resbuf* CopyRun(const resbuf* app) {
    resbuf* head = nullptr;
    resbuf** tail = &head;
    const resbuf* const behind = EndOfRun(app);
    for (; app != behind; app = app->rbnext) {
        *tail = host::CopyNode(*app);
        tail = &(*tail)->rbnext;
    }
    return head;
}

const std::vector<AcDbObjectId> kNoReactors;

}  // namespace

namespace host {

ObjectExtras::~ObjectExtras() { acutRelRb(xdata); }

void ExtrasDeleter::operator()(ObjectExtras* extras) const { delete extras; }

ObjectExtras& ExtrasOf(const AcDbObject& object) {
    // Transient reactors are added to objects that are open for read.
    auto& extras = Access::Extras(const_cast<AcDbObject&>(object));
    if (!extras) extras.reset(new ObjectExtras);
    return *extras;
}

const resbuf* XDataChain(const AcDbObject& object) {
    const auto& extras = Access::Extras(object);
    return extras ? extras->xdata : nullptr;
}

void SetXDataChain(AcDbObject& object, resbuf* chain) {
    if (chain == nullptr && !Access::Extras(object)) return;
    ObjectExtras& extras = ExtrasOf(object);
    acutRelRb(extras.xdata);
    extras.xdata = chain;
}

const std::vector<AcDbObjectId>& ReactorIds(const AcDbObject& object) {
    const auto& extras = Access::Extras(object);
    return extras ? extras->reactorIds : kNoReactors;
}

void AddReactorId(AcDbObject& object, AcDbObjectId reactor) {
    ExtrasOf(object).reactorIds.push_back(reactor);
}

AcDbObjectId ExtensionDictionaryId(const AcDbObject& object) {
    const auto& extras = Access::Extras(object);
    return extras ? extras->extensionDictionary : AcDbObjectId();
}

void SetExtensionDictionary(AcDbObject& object, AcDbObjectId dictionary) {
    ExtrasOf(object).extensionDictionary = dictionary;
}

}  // namespace host

resbuf* AcDbObject::xData(const ACHAR* regApp) const {
    const resbuf* node = host::XDataChain(*this);
    if (regApp == nullptr) return host::CopyChain(node);
    for (; node != nullptr; node = EndOfRun(node))
        if (node->restype == kAppCode && host::SameName(node->resval.rstring, regApp))
            return CopyRun(node);
    return nullptr;
}

Acad::ErrorStatus AcDbObject::setXData(const resbuf* xdata) {
    Acad::ErrorStatus es = CheckXData(*this, xdata);
    if (es != Acad::eOk) return es;
    es = beginWrite(host::kDirtyXData);
    if (es != Acad::eOk) return es;
    resbuf*& own = host::ExtrasOf(*this).xdata;
    for (const resbuf* app = xdata; app != nullptr; app = EndOfRun(app)) {
        RemoveRun(own, app->resval.rstring);
        resbuf* const run = CopyRun(app);
        if (run->rbnext == nullptr) {
            acutRelRb(run);
            continue;
        }
        if (own == nullptr)
            own = run;
        else
            host::LastNode(own)->rbnext = run;
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::createExtensionDictionary() {
    if (m_stub == nullptr) return Acad::eNotInDatabase;
    const AcDbObjectId existing = host::ExtensionDictionaryId(*this);
    if (!existing.isNull() && !existing.isErased()) return Acad::eAlreadyInDb;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyExtDict);
    if (es != Acad::eOk) return es;
    std::unique_ptr<AcDbDictionary> dictionary = std::make_unique<AcDbDictionary>();
    Access::Hard(*dictionary) = true;
    const Acad::ErrorStatus made =
        host::MakeResident(*m_stub->database, *dictionary, m_stub, 0, false);
    if (made != Acad::eOk) return made;
    host::SetExtensionDictionary(*this, dictionary.release()->objectId());
    return Acad::eOk;
}

AcDbObjectId AcDbObject::extensionDictionary() const {
    const AcDbObjectId id = host::ExtensionDictionaryId(*this);
    return id.isErased() && !isErased() ? AcDbObjectId() : id;
}

Acad::ErrorStatus AcDbObject::releaseExtensionDictionary() {
    const AcDbObjectId id = extensionDictionary();
    if (id.isNull()) return Acad::eKeyNotFound;
    AcDbDictionary* dictionary = nullptr;
    Acad::ErrorStatus es = acdbOpenObject(dictionary, id, AcDb::kForWrite);
    if (es != Acad::eOk) return es;
    if (dictionary->numEntries() != 0)
        es = Acad::eContainerNotEmpty;
    else
        es = beginWrite(host::kDirtyExtDict);
    if (es == Acad::eOk) {
        es = dictionary->erase();
        host::SetExtensionDictionary(*this, AcDbObjectId());
    }
    const Acad::ErrorStatus closed = dictionary->close();
    return es != Acad::eOk ? es : closed;
}

Acad::ErrorStatus AcDbObject::addReactor(AcDbObjectReactor* reactor) const {
    if (reactor == nullptr) return Acad::eInvalidInput;
    auto& reactors = host::ExtrasOf(*this).reactors;
    if (std::find(reactors.begin(), reactors.end(), reactor) != reactors.end())
        return Acad::eDuplicateKey;
    reactors.push_back(reactor);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::removeReactor(AcDbObjectReactor* reactor) const {
    auto& reactors = host::ExtrasOf(*this).reactors;
    const auto found = std::find(reactors.begin(), reactors.end(), reactor);
    if (found == reactors.end()) return Acad::eKeyNotFound;
    reactors.erase(found);
    return Acad::eOk;
}

bool AcDbObject::hasPersistentReactor(AcDbObjectId reactor) const {
    const auto& ids = host::ReactorIds(*this);
    return std::find(ids.begin(), ids.end(), reactor) != ids.end();
}

Acad::ErrorStatus AcDbObject::addPersistentReactor(AcDbObjectId reactor) {
    if (reactor.isNull()) return Acad::eNullObjectId;
    if (hasPersistentReactor(reactor)) return Acad::eDuplicateKey;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyReactors);
    if (es == Acad::eOk) host::AddReactorId(*this, reactor);
    return es;
}

Acad::ErrorStatus AcDbObject::removePersistentReactor(AcDbObjectId reactor) {
    if (!hasPersistentReactor(reactor)) return Acad::eKeyNotFound;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyReactors);
    if (es != Acad::eOk) return es;
    auto& ids = host::ExtrasOf(*this).reactorIds;
    ids.erase(std::find(ids.begin(), ids.end(), reactor));
    return Acad::eOk;
}
