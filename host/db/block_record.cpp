#include <set>

#include "host/db/database_imp.h"
#include "host/db/define_class.h"
#include "host/db/entity_list.h"

using host::Access;
using host::Stub;

HOST_DEFINE_CLASS(AcDbBlockTableRecord, AcDbSymbolTableRecord, ACRX_T("BLOCK_RECORD"))
HOST_DEFINE_COPY(AcDbBlockTableRecord)

AcDbBlockTableRecord::AcDbBlockTableRecord() : m_entities(std::make_unique<host::EntityList>()) {}
AcDbBlockTableRecord::~AcDbBlockTableRecord() = default;

AcDbBlockTableRecord::AcDbBlockTableRecord(const AcDbBlockTableRecord& other)
    : AcDbSymbolTableRecord(other), m_entities(std::make_unique<host::EntityList>()) {
    *this = other;
}

AcDbBlockTableRecord& AcDbBlockTableRecord::operator=(const AcDbBlockTableRecord& other) {
    AcDbSymbolTableRecord::operator=(other);
    m_origin = other.m_origin;
    m_layoutId = other.m_layoutId;
    m_comments = other.m_comments;
    m_pathName = other.m_pathName;
    m_space = other.m_space;
    m_anonymous = other.m_anonymous;
    m_xref = other.m_xref;
    m_overlay = other.m_overlay;
    m_explodable = other.m_explodable;
    return *this;
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* entity) {
    AcDbObjectId id;
    return appendAcDbEntity(id, entity);
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity) {
    if (entity == nullptr) return Acad::eNullEntityPointer;
    Stub* const self = objectId().stub();
    if (self == nullptr) return Acad::eNotInDatabase;
    if (Access::StubOf(*entity) != nullptr) return Acad::eAlreadyInDb;
    Acad::ErrorStatus es = beginWrite(host::kDirtyChildren);
    if (es == Acad::eOk) es = host::FillCommonProperties(*self->database, *entity);
    if (es == Acad::eOk)
        es = host::MakeResident(*self->database, *entity, self, host::kStubEntity, true);
    if (es != Acad::eOk) return es;
    m_entities->Append(*Access::StubOf(*entity));
    id = entity->objectId();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::newIterator(AcDbBlockTableRecordIterator*& iterator,
                                                    bool atBeginning, bool skipDeleted) const {
    iterator = new AcDbBlockTableRecordIterator(*m_entities, atBeginning, skipDeleted);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::setLayoutId(AcDbObjectId layout) {
    HOST_SET(m_layoutId, layout, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbBlockTableRecord::setOrigin(const AcGePoint3d& origin) {
    HOST_SET(m_origin, origin, host::kDirtyGeometry);
}

ACHAR* AcDbBlockTableRecord::comments() const { return host::NewText(m_comments.c_str()); }

Acad::ErrorStatus AcDbBlockTableRecord::setComments(const ACHAR* text) {
    if (text == nullptr) return Acad::eInvalidInput;
    HOST_SET(m_comments, text, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbBlockTableRecord::setExplodable(bool explodable) {
    HOST_SET(m_explodable, explodable, host::kDirtyGeometry);
}

bool AcDbBlockTableRecord::hasAttributeDefinitions() const {
    for (const Stub* const stub : m_entities->Live())
        if (stub->cls->isDerivedFrom(AcDbAttributeDefinition::desc())) return true;
    return false;
}

Acad::ErrorStatus AcDbBlockTableRecord::getBlockReferenceIds(AcDbObjectIdArray& ids,
                                                             bool directOnly, bool) const {
    if (database() == nullptr) return Acad::eNotInDatabase;
    std::vector<std::pair<Stub*, AcDbObjectId>> references;  // and the block each shows
    for (Stub* const stub : host::AllStubs(*database())) {
        if (!stub->cls->isDerivedFrom(AcDbBlockReference::desc()) || stub->Has(host::kStubErased))
            continue;
        const AcDbBlockReference* const reference = AcDbBlockReference::cast(host::ObjectOf(*stub));
        if (reference != nullptr) references.push_back({stub, reference->blockTableRecord()});
    }
    std::set<AcDbObjectId> blocks = {objectId()};
    std::set<AcDbObjectId> pending = blocks;
    while (!pending.empty()) {
        std::set<AcDbObjectId> containers;
        for (const auto& [stub, block] : references) {
            if (pending.count(block) == 0) continue;
            ids.append(AcDbObjectId(stub));
            const AcDbObjectId container(stub->owner);
            if (!directOnly && blocks.insert(container).second) containers.insert(container);
        }
        pending = containers;
    }
    return Acad::eOk;
}

void AcDbBlockTableRecord::ownedIds(AcDbObjectIdArray& ids) const {
    size_t hint = 0;
    for (Stub* stub = m_entities->Next(nullptr, true, false, hint); stub != nullptr;
         stub = m_entities->Next(stub, true, false, hint))
        ids.append(AcDbObjectId(stub));
}

AcDbBlockTableRecordIterator::AcDbBlockTableRecordIterator(const host::EntityList& list,
                                                           bool atBeginning, bool skipDeleted)
    : m_list(&list) {
    start(atBeginning, skipDeleted);
}

void AcDbBlockTableRecordIterator::start(bool atBeginning, bool skipDeleted) {
    m_at = m_list->Next(nullptr, atBeginning, skipDeleted, m_hint);
}

bool AcDbBlockTableRecordIterator::done() const { return m_at == nullptr; }

void AcDbBlockTableRecordIterator::step(bool forward, bool skipDeleted) {
    if (m_at != nullptr) m_at = m_list->Next(m_at, forward, skipDeleted, m_hint);
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntityId(AcDbObjectId& id) const {
    if (m_at == nullptr) return Acad::eInvalidIndex;
    id = AcDbObjectId(m_at);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntity(AcDbEntity*& entity, AcDb::OpenMode mode,
                                                          bool openErased) const {
    return acdbOpenObject(entity, AcDbObjectId(m_at), mode, openErased);
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::seek(AcDbObjectId id) {
    size_t hint = 0;
    for (Stub* stub = m_list->Next(nullptr, true, false, hint); stub != nullptr;
         stub = m_list->Next(stub, true, false, hint)) {
        if (AcDbObjectId(stub) != id) continue;
        m_at = stub;
        return Acad::eOk;
    }
    return Acad::eKeyNotFound;
}
