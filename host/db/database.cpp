#include <algorithm>

#include "dbapserv.h"
#include "host/db/database_imp.h"
#include "host/db/define_class.h"

using host::Access;
using host::Root;
using host::Stub;

HOST_DEFINE_ABSTRACT(AcDbDatabase, AcRxObject, nullptr)

namespace {

host::DatabaseWatcher* g_watcher = nullptr;

template <class Table>
Acad::ErrorStatus OpenRoot(const AcDbDatabase& db, Root root, Table*& table, AcDb::OpenMode mode) {
    table = nullptr;
    Stub* const stub = host::GetRoot(db, root);
    return stub == nullptr ? Acad::eKeyNotFound : acdbOpenObject(table, stub->Id(), mode);
}

AcDbObjectId RootId(const AcDbDatabase& db, Root root) {
    return AcDbObjectId(host::GetRoot(db, root));
}

}  // namespace

namespace host {
void SetDatabaseWatcher(DatabaseWatcher* watcher) { g_watcher = watcher; }
}  // namespace host

AcDbDatabase::AcDbDatabase(bool buildDefaultDrawing, bool)
    : m_imp(std::make_unique<host::DatabaseImp>(*this)) {
    if (buildDefaultDrawing) host::FinishReading(*this);
    m_imp->modified = false;
    if (g_watcher != nullptr) g_watcher->Constructed(*this);
}

AcDbDatabase::~AcDbDatabase() {
    if (g_watcher != nullptr) g_watcher->ToBeDestroyed(*this);
    m_imp->Notify([this](AcDbDatabaseReactor& r) { r.goodbye(this); });
    m_imp->reactors.clear();
    if (acdbHostApplicationServices()->workingDatabase() == this)
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    // Objects may look at one another's stubs while they go, so the stubs are settled first.
    std::vector<AcDbObject*> objects;
    m_imp->arena.ForEach([&](Stub& stub) {
        if (stub.object != nullptr) objects.push_back(stub.object);
        stub.object = nullptr;
        stub.database = nullptr;
        stub.readers = 0;
        stub.flags = host::kStubErased | host::kStubPurged;
    });
    for (AcDbObject* const object : objects) {
        Access::StubOf(*object) = nullptr;
        delete object;
    }
}

// Type and member names cannot stand in brackets.
// NOLINTBEGIN(bugprone-macro-parentheses)
#define HOST_TABLE(Table, getter, root)                                                  \
    Acad::ErrorStatus AcDbDatabase::getter(Table*& table, AcDb::OpenMode mode) {         \
        return OpenRoot(*this, root, table, mode);                                       \
    }                                                                                    \
    Acad::ErrorStatus AcDbDatabase::getSymbolTable(Table*& table, AcDb::OpenMode mode) { \
        return OpenRoot(*this, root, table, mode);                                       \
    }
// NOLINTEND(bugprone-macro-parentheses)
HOST_TABLE(AcDbBlockTable, getBlockTable, Root::kBlockTable)
HOST_TABLE(AcDbLayerTable, getLayerTable, Root::kLayerTable)
HOST_TABLE(AcDbLinetypeTable, getLinetypeTable, Root::kLinetypeTable)
HOST_TABLE(AcDbRegAppTable, getRegAppTable, Root::kRegAppTable)
HOST_TABLE(AcDbTextStyleTable, getTextStyleTable, Root::kTextStyleTable)
HOST_TABLE(AcDbDimStyleTable, getDimStyleTable, Root::kDimStyleTable)
HOST_TABLE(AcDbUCSTable, getUCSTable, Root::kUcsTable)
HOST_TABLE(AcDbViewTable, getViewTable, Root::kViewTable)
HOST_TABLE(AcDbViewportTable, getViewportTable, Root::kViewportTable)
#undef HOST_TABLE

Acad::ErrorStatus AcDbDatabase::getNamedObjectsDictionary(AcDbDictionary*& dictionary,
                                                          AcDb::OpenMode mode) {
    return OpenRoot(*this, Root::kNamedObjects, dictionary, mode);
}

Acad::ErrorStatus AcDbDatabase::getGroupDictionary(AcDbDictionary*& dictionary,
                                                   AcDb::OpenMode mode) {
    return acdbOpenObject(dictionary, groupDictionaryId(), mode);
}

AcDbObjectId AcDbDatabase::blockTableId() const { return RootId(*this, Root::kBlockTable); }
AcDbObjectId AcDbDatabase::layerTableId() const { return RootId(*this, Root::kLayerTable); }
AcDbObjectId AcDbDatabase::linetypeTableId() const { return RootId(*this, Root::kLinetypeTable); }
AcDbObjectId AcDbDatabase::regAppTableId() const { return RootId(*this, Root::kRegAppTable); }
AcDbObjectId AcDbDatabase::textStyleTableId() const { return RootId(*this, Root::kTextStyleTable); }
AcDbObjectId AcDbDatabase::dimStyleTableId() const { return RootId(*this, Root::kDimStyleTable); }
AcDbObjectId AcDbDatabase::UCSTableId() const { return RootId(*this, Root::kUcsTable); }
AcDbObjectId AcDbDatabase::viewTableId() const { return RootId(*this, Root::kViewTable); }
AcDbObjectId AcDbDatabase::viewportTableId() const { return RootId(*this, Root::kViewportTable); }
AcDbObjectId AcDbDatabase::namedObjectsDictionaryId() const {
    return RootId(*this, Root::kNamedObjects);
}
AcDbObjectId AcDbDatabase::groupDictionaryId() const { return m_imp->groupDictionary; }
AcDbObjectId AcDbDatabase::layoutDictionaryId() const { return m_imp->layoutDictionary; }
AcDbObjectId AcDbDatabase::currentSpaceId() const {
    return m_imp->header.tilemode ? m_imp->modelSpace : m_imp->paperSpace;
}
AcDbObjectId AcDbDatabase::layerZero() const { return m_imp->layerZero; }
AcDbObjectId AcDbDatabase::byLayerLinetype() const { return m_imp->byLayer; }
AcDbObjectId AcDbDatabase::byBlockLinetype() const { return m_imp->byBlock; }
AcDbObjectId AcDbDatabase::continuousLinetype() const { return m_imp->continuous; }

AcDbHandle AcDbDatabase::handseed() const { return AcDbHandle(m_imp->header.handseed); }

Adesk::Int32 AcDbDatabase::approxNumObjects() const {
    return static_cast<Adesk::Int32>(m_imp->handles.Size());
}

Acad::ErrorStatus AcDbDatabase::addReactor(AcDbDatabaseReactor* reactor) const {
    if (reactor == nullptr) return Acad::eInvalidInput;
    if (!m_imp->HasReactor(reactor)) m_imp->reactors.push_back(reactor);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::removeReactor(AcDbDatabaseReactor* reactor) const {
    auto& reactors = m_imp->reactors;
    const auto found = std::find(reactors.begin(), reactors.end(), reactor);
    if (found == reactors.end()) return Acad::eKeyNotFound;
    reactors.erase(found);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::getAcDbObjectId(AcDbObjectId& id, bool createIfNotFound,
                                                const AcDbHandle& handle, Adesk::UInt32) {
    if (handle.isNull()) return Acad::eNullHandle;
    Stub* const stub = m_imp->handles.Find(handle);
    if (stub == nullptr) return createIfNotFound ? Acad::eNotImplementedYet : Acad::eUnknownHandle;
    id = stub->Id();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::wblock(AcDbDatabase*& output, const AcDbObjectIdArray&,
                                       const AcGePoint3d&) {
    output = nullptr;
    return Acad::eNotImplementedYet;
}

Acad::ErrorStatus AcDbDatabase::updateExt(bool) {
    const Acad::ErrorStatus es = m_imp->MayWrite();
    if (es != Acad::eOk) return es;
    AcDbExtents all;
    const AcDbObject* const space = host::ObjectOf(*m_imp->modelSpace.stub());
    for (Stub* const stub : host::Members(*space)) {
        const AcDbObject* const object = host::ObjectOf(*stub);
        if (object == nullptr) continue;
        const auto& entity = static_cast<const AcDbEntity&>(*object);
        AcDbExtents box;
        if (entity.visibility() == AcDb::kVisible && entity.getGeomExtents(box) == Acad::eOk)
            all.addExt(box);
    }
    m_imp->header.extmin = all.minPoint();
    m_imp->header.extmax = all.maxPoint();
    m_imp->header.changed |= host::kVarExtents;
    m_imp->modified = true;
    return Acad::eOk;
}

AcDbHostApplicationServices* acdbHostApplicationServices() {
    static AcDbHostApplicationServices services;
    return &services;
}
