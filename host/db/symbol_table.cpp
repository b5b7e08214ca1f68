#include <algorithm>

#include "acutmem.h"
#include "dbapserv.h"
#include "host/db/database_imp.h"
#include "host/db/define_class.h"
#include "host/db/names.h"

using host::Access;
using host::Stub;

HOST_DEFINE_ABSTRACT(AcDbSymbolTableRecord, AcDbObject, nullptr)
HOST_DEFINE_ABSTRACT(AcDbSymbolTable, AcDbObject, nullptr)
HOST_DEFINE_CLASS(AcDbLayerTable, AcDbSymbolTable, ACRX_T("TABLE"))
HOST_DEFINE_CLASS(AcDbLinetypeTable, AcDbSymbolTable, ACRX_T("TABLE"))
HOST_DEFINE_CLASS(AcDbTextStyleTable, AcDbSymbolTable, ACRX_T("TABLE"))
HOST_DEFINE_CLASS(AcDbRegAppTable, AcDbSymbolTable, ACRX_T("TABLE"))
HOST_DEFINE_CLASS(AcDbDimStyleTable, AcDbSymbolTable, ACRX_T("TABLE"))
HOST_DEFINE_CLASS(AcDbUCSTable, AcDbSymbolTable, ACRX_T("TABLE"))
HOST_DEFINE_CLASS(AcDbViewTable, AcDbSymbolTable, ACRX_T("TABLE"))
HOST_DEFINE_CLASS(AcDbViewportTable, AcDbSymbolTable, ACRX_T("TABLE"))
HOST_DEFINE_CLASS(AcDbBlockTable, AcDbSymbolTable, ACRX_T("TABLE"))

namespace {

// The table of a resident record, or null.
AcDbSymbolTable* TableOf(const AcDbSymbolTableRecord& record) {
    const AcDbObjectId owner = record.ownerId();
    return owner.isNull() ? nullptr : AcDbSymbolTable::cast(host::ObjectOf(*owner.stub()));
}

const std::wstring& RecordName(AcDbObjectId id) {
    return Access::Name(static_cast<const AcDbSymbolTableRecord&>(*id.stub()->object));
}

}  // namespace

Acad::ErrorStatus AcDbSymbolTableRecord::getName(const ACHAR*& name) const {
    name = m_name.c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::getName(ACHAR*& name) const {
    return acutNewString(m_name.c_str(), name);
}

Acad::ErrorStatus AcDbSymbolTableRecord::getName(AcString& name) const {
    name = m_name.c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const ACHAR* name) {
    if (!host::IsValidName(name, isKindOf(AcDbBlockTableRecord::desc()), false))
        return Acad::eInvalidInput;
    AcDbSymbolTable* const table = TableOf(*this);
    const std::wstring folded = host::FoldName(name);
    if (table != nullptr) {
        const auto found = table->m_byName.find(folded);
        if (found != table->m_byName.end() && found->second != objectId())
            return Acad::eDuplicateRecordName;
    }
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    if (table != nullptr && !isErased()) {
        table->m_byName.erase(host::FoldName(m_name.c_str()));
        table->m_byName[folded] = objectId();
    }
    m_name = name;
    return Acad::eOk;
}

bool AcDbSymbolTableRecord::isDependent() const { return m_name.find(L'|') != std::wstring::npos; }

// The name of an erased record is free for another one; un-erasing needs it back.
Acad::ErrorStatus AcDbSymbolTableRecord::subErase(bool erasing) {
    AcDbSymbolTable* const table = TableOf(*this);
    if (table == nullptr) return Acad::eOk;
    const std::wstring folded = host::FoldName(m_name.c_str());
    const auto found = table->m_byName.find(folded);
    if (erasing) {
        if (found != table->m_byName.end() && found->second == objectId())
            table->m_byName.erase(found);
        return Acad::eOk;
    }
    if (found != table->m_byName.end()) return Acad::eDuplicateRecordName;
    table->m_byName[folded] = objectId();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const ACHAR* name, AcDbObjectId& id,
                                         bool getErasedRecord) const {
    if (name == nullptr) return Acad::eInvalidInput;
    const auto found = m_byName.find(host::FoldName(name));
    if (found != m_byName.end()) {
        id = found->second;
        return Acad::eOk;
    }
    if (!getErasedRecord) return Acad::eKeyNotFound;
    for (auto record = m_records.rbegin(); record != m_records.rend(); ++record) {
        if (record->stub()->object == nullptr || !host::SameName(RecordName(*record).c_str(), name))
            continue;
        id = *record;
        return Acad::eOk;
    }
    return Acad::eKeyNotFound;
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const ACHAR* name, AcDbSymbolTableRecord*& record,
                                         AcDb::OpenMode mode, bool openErasedRecord) const {
    record = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus es = getAt(name, id, openErasedRecord);
    return es == Acad::eOk ? acdbOpenObject(record, id, mode, openErasedRecord) : es;
}

bool AcDbSymbolTable::has(const ACHAR* name) const {
    return name != nullptr && m_byName.count(host::FoldName(name)) != 0;
}

bool AcDbSymbolTable::has(AcDbObjectId id) const {
    return !id.isNull() && !id.isErased() && id.stub()->owner == objectId().stub();
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbSymbolTableRecord* record) {
    AcDbObjectId id;
    return add(id, record);
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbObjectId& id, AcDbSymbolTableRecord* record) {
    if (record == nullptr) return Acad::eNullObjectPointer;
    if (objectId().isNull()) return Acad::eNotInDatabase;
    if (!record->isKindOf(recordClass())) return Acad::eWrongObjectType;
    if (!record->objectId().isNull()) return Acad::eAlreadyInDb;
    const std::wstring& name = Access::Name(*record);
    if (name.empty()) return Acad::eInvalidInput;
    if (has(name.c_str())) return Acad::eDuplicateRecordName;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyChildren);
    if (es != Acad::eOk) return es;
    if (AcDbLayerTableRecord* const layer = AcDbLayerTableRecord::cast(record))
        if (Access::LayerLinetype(*layer).isNull())
            Access::LayerLinetype(*layer) = database()->continuousLinetype();
    const Acad::ErrorStatus made =
        host::MakeResident(*database(), *record, objectId().stub(), 0, true);
    if (made != Acad::eOk) return made;
    id = record->objectId();
    m_records.push_back(id);
    m_byName[host::FoldName(name.c_str())] = id;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning,
                                               bool skipDeleted) const {
    iterator = new AcDbSymbolTableIterator(*this, atBeginning, skipDeleted);
    return Acad::eOk;
}

void AcDbSymbolTable::ownedIds(AcDbObjectIdArray& ids) const {
    for (const AcDbObjectId id : m_records) ids.append(id);
}

AcDbSymbolTableIterator::AcDbSymbolTableIterator(const AcDbSymbolTable& table, bool atBeginning,
                                                 bool skipDeleted)
    : m_table(table) {
    start(atBeginning, skipDeleted);
}

void AcDbSymbolTableIterator::start(bool atBeginning, bool skipDeleted) {
    m_at = atBeginning ? 0 : static_cast<std::ptrdiff_t>(m_table.m_records.size()) - 1;
    skip(atBeginning, skipDeleted);
}

void AcDbSymbolTableIterator::skip(bool forward, bool skipDeleted) {
    while (skipDeleted && !done() && current().isErased()) m_at += forward ? 1 : -1;
}

bool AcDbSymbolTableIterator::done() const {
    return m_at < 0 || m_at >= static_cast<std::ptrdiff_t>(m_table.m_records.size());
}

void AcDbSymbolTableIterator::step(bool forward, bool skipDeleted) {
    if (done()) return;
    m_at += forward ? 1 : -1;
    skip(forward, skipDeleted);
}

AcDbObjectId AcDbSymbolTableIterator::current() const {
    return done() ? AcDbObjectId() : m_table.m_records[static_cast<size_t>(m_at)];
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecordId(AcDbObjectId& id) const {
    if (done()) return Acad::eInvalidIndex;
    id = current();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecord(AcDbSymbolTableRecord*& record,
                                                     AcDb::OpenMode mode, bool openErased) const {
    return acdbOpenObject(record, current(), mode, openErased);
}

Acad::ErrorStatus AcDbSymbolTableIterator::seek(AcDbObjectId id) {
    const auto& records = m_table.m_records;
    const auto found = std::find(records.begin(), records.end(), id);
    if (found == records.end()) return Acad::eKeyNotFound;
    m_at = found - records.begin();
    return Acad::eOk;
}

namespace host {

Acad::ErrorStatus FindRecord(const AcDbDatabase& db, Root root, const ACHAR* name,
                             AcDbObjectId& id) {
    const Stub* const stub = GetRoot(db, root);
    if (stub == nullptr) return Acad::eKeyNotFound;
    const auto& table = static_cast<const AcDbSymbolTable&>(*stub->object);
    AcDbObjectId found;
    const Acad::ErrorStatus es = table.getAt(name, found, true);
    if (es != Acad::eOk) return es;
    if (found.isErased()) return Acad::eDeletedEntry;
    id = found;
    return Acad::eOk;
}

}  // namespace host

bool acdbRegApp(const ACHAR* name) {
    AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
    if (db == nullptr || !host::IsValidName(name, false, false)) return false;
    AcDbRegAppTable* table = nullptr;
    if (db->getRegAppTable(table, AcDb::kForRead) != Acad::eOk) return false;
    bool known = table->has(name);
    if (!known && table->upgradeOpen() == Acad::eOk) {
        auto record = std::make_unique<AcDbRegAppTableRecord>();
        if (record->setName(name) == Acad::eOk && table->add(record.get()) == Acad::eOk)
            known = record.release()->close() == Acad::eOk;
    }
    return table->close() == Acad::eOk && known;
}
