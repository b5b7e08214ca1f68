#include "dbdict.h"

#include "acutmem.h"
#include "host/db/database_imp.h"
#include "host/db/define_class.h"
#include "host/db/names.h"
#include "host/base/host_assert.h"

using host::Access;

HOST_DEFINE_CLASS(AcDbDictionary, AcDbObject, ACRX_T("DICTIONARY"))
HOST_DEFINE_COPY(AcDbDictionary)

AcDbDictionary::AcDbDictionary() = default;
AcDbDictionary::~AcDbDictionary() = default;

const AcDbDictionary::Entry* AcDbDictionary::find(const ACHAR* name) const {
    if (name == nullptr) return nullptr;
    const auto found = m_byName.find(host::FoldName(name));
    if (found == m_byName.end()) return nullptr;
    const Entry& entry = m_entries[found->second];
    return entry.id.isErased() ? nullptr : &entry;
}

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* name, AcDbObjectId& id) const {
    const Entry* const entry = find(name);
    if (entry == nullptr) return Acad::eKeyNotFound;
    id = entry->id;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* name, AcDbObject*& entry,
                                        AcDb::OpenMode mode) const {
    entry = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus es = getAt(name, id);
    return es == Acad::eOk ? acdbOpenAcDbObject(entry, id, mode) : es;
}

Acad::ErrorStatus AcDbDictionary::nameAt(AcDbObjectId id, AcString& name) const {
    for (const Entry& entry : m_entries) {
        if (entry.id != id || id.isNull()) continue;
        name = entry.name.c_str();
        return Acad::eOk;
    }
    return Acad::eKeyNotFound;
}

Acad::ErrorStatus AcDbDictionary::nameAt(AcDbObjectId id, ACHAR*& name) const {
    AcString text;
    const Acad::ErrorStatus es = nameAt(id, text);
    return es == Acad::eOk ? acutNewString(text.kACharPtr(), name) : es;
}

bool AcDbDictionary::has(const ACHAR* name) const { return find(name) != nullptr; }

bool AcDbDictionary::has(AcDbObjectId id) const {
    AcString name;
    return !id.isErased() && nameAt(id, name) == Acad::eOk;
}

Adesk::UInt32 AcDbDictionary::numEntries() const {
    Adesk::UInt32 count = 0;
    for (const Entry& entry : m_entries)
        if (!entry.id.isNull() && !entry.id.isErased()) ++count;
    return count;
}

Acad::ErrorStatus AcDbDictionary::setAt(const ACHAR* name, AcDbObject* object, AcDbObjectId& id) {
    if (name == nullptr || *name == 0 || object == nullptr) return Acad::eInvalidInput;
    if (objectId().isNull()) return Acad::eNotInDatabase;
    if (!object->objectId().isNull()) return Acad::eAlreadyInDb;
    const Entry* const previous = find(name);
    if (previous != nullptr) {
        AcDbObject* old = nullptr;
        Acad::ErrorStatus es = acdbOpenAcDbObject(old, previous->id, AcDb::kForWrite);
        if (es != Acad::eOk) return es;
        es = isWriteEnabled() ? old->erase() : Acad::eNotOpenForWrite;
        const Acad::ErrorStatus closed = old->close();
        if (es != Acad::eOk || closed != Acad::eOk) return es != Acad::eOk ? es : closed;
    }
    Acad::ErrorStatus es = beginWrite(host::kDirtyChildren);
    if (es != Acad::eOk) return es;
    es = host::MakeResident(*database(), *object, objectId().stub(), 0, true);
    if (es != Acad::eOk) return es;
    id = object->objectId();
    // A replaced entry keeps its place; erased ones behind it are found by their identifier only.
    const std::wstring folded = host::FoldName(name);
    const auto found = m_byName.find(folded);
    if (found != m_byName.end() && previous != nullptr) {
        m_entries[found->second] = {name, id};
    } else {
        m_byName[folded] = m_entries.size();
        m_entries.push_back({name, id});
    }
    return Acad::eOk;
}

void AcDbDictionary::eraseEntry(size_t index) {
    m_byName.erase(host::FoldName(m_entries[index].name.c_str()));
    m_entries[index].id.setNull();
    while (!m_entries.empty() && m_entries.back().id.isNull()) m_entries.pop_back();
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* name) {
    AcDbObjectId id;
    return remove(name, id);
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* name, AcDbObjectId& id) {
    const Entry* const entry = find(name);
    if (entry == nullptr) return Acad::eKeyNotFound;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyChildren);
    if (es != Acad::eOk) return es;
    id = entry->id;
    eraseEntry(static_cast<size_t>(entry - m_entries.data()));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::remove(AcDbObjectId id) {
    AcString name;
    const Acad::ErrorStatus es = nameAt(id, name);
    return es == Acad::eOk ? remove(name.kACharPtr()) : es;
}

bool AcDbDictionary::setName(const ACHAR* oldName, const ACHAR* newName) {
    const Entry* const entry = find(oldName);
    if (entry == nullptr || newName == nullptr || *newName == 0) return false;
    const Entry* const other = find(newName);
    if (other != nullptr && other != entry) return false;
    if (beginWrite(host::kDirtyChildren) != Acad::eOk) return false;
    const size_t index = static_cast<size_t>(entry - m_entries.data());
    m_byName.erase(host::FoldName(oldName));
    m_entries[index].name = newName;
    m_byName[host::FoldName(newName)] = index;
    return true;
}

void AcDbDictionary::setTreatElementsAsHard(bool hard) {
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    HOST_ASSERT(es == Acad::eOk, "a dictionary was changed that is not open for write");
    m_hard = hard;
}

void AcDbDictionary::setMergeStyle(AcDb::DuplicateRecordCloning style) {
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    HOST_ASSERT(es == Acad::eOk, "a dictionary was changed that is not open for write");
    m_mergeStyle = style;
}

void AcDbDictionary::ownedIds(AcDbObjectIdArray& ids) const {
    for (const Entry& entry : m_entries)
        if (!entry.id.isNull() && entry.id.stub()->owner == objectId().stub()) ids.append(entry.id);
}

AcDbDictionaryIterator* AcDbDictionary::newIterator() const {
    return new AcDbDictionaryIterator(*this);
}

AcDbDictionaryIterator::AcDbDictionaryIterator(const AcDbDictionary& dictionary)
    : m_dictionary(dictionary) {
    skip();
}

void AcDbDictionaryIterator::skip() {
    while (!done() && (objectId().isNull() || objectId().isErased())) ++m_at;
}

const ACHAR* AcDbDictionaryIterator::name() const {
    return done() ? nullptr : m_dictionary.m_entries[m_at].name.c_str();
}

AcDbObjectId AcDbDictionaryIterator::objectId() const {
    return done() ? AcDbObjectId() : m_dictionary.m_entries[m_at].id;
}

Acad::ErrorStatus AcDbDictionaryIterator::getObject(AcDbObject*& object, AcDb::OpenMode mode) {
    return acdbOpenAcDbObject(object, objectId(), mode);
}

bool AcDbDictionaryIterator::done() const { return m_at >= m_dictionary.m_entries.size(); }

bool AcDbDictionaryIterator::next() {
    if (!done()) ++m_at;
    skip();
    return !done();
}
