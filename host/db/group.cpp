#include "dbgroup.h"

#include <algorithm>

#include "dbdict.h"
#include "dblayout.h"
#include "host/db/database_imp.h"
#include "host/db/define_class.h"

HOST_DEFINE_CLASS(AcDbGroup, AcDbObject, ACRX_T("GROUP"))
HOST_DEFINE_COPY(AcDbGroup)
HOST_DEFINE_ABSTRACT(AcDbGroupIterator, AcRxObject, nullptr)
HOST_DEFINE_CLASS(AcDbLayout, AcDbObject, ACRX_T("LAYOUT"))
HOST_DEFINE_COPY(AcDbLayout)

AcDbGroup::AcDbGroup(const ACHAR* description, bool selectable)
    : m_description(description != nullptr ? description : ACRX_T("")), m_selectable(selectable) {}

AcDbGroupIterator* AcDbGroup::newIterator() { return new AcDbGroupIterator(*this); }

Adesk::UInt32 AcDbGroup::allEntityIds(AcDbObjectIdArray& ids) const {
    Adesk::UInt32 count = 0;
    for (const AcDbObjectId id : m_ids) {
        if (id.isErased()) continue;
        ids.append(id);
        ++count;
    }
    return count;
}

Adesk::UInt32 AcDbGroup::numEntities() const {
    AcDbObjectIdArray ids;
    return allEntityIds(ids);
}

bool AcDbGroup::has(const AcDbEntity* entity) const {
    return entity != nullptr && !entity->objectId().isNull() &&
           std::find(m_ids.begin(), m_ids.end(), entity->objectId()) != m_ids.end();
}

Acad::ErrorStatus AcDbGroup::getName(AcString& name) const {
    const AcDbObjectId owner = ownerId();
    name = ACRX_T("");
    if (owner.isNull()) return Acad::eOk;
    const AcDbDictionary* const dictionary = AcDbDictionary::cast(host::ObjectOf(*owner.stub()));
    return dictionary == nullptr ? Acad::eOk : dictionary->nameAt(objectId(), name);
}

Acad::ErrorStatus AcDbGroup::setDescription(const ACHAR* text) {
    if (text == nullptr) return Acad::eInvalidInput;
    HOST_SET(m_description, text, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbGroup::setSelectable(bool selectable) {
    HOST_SET(m_selectable, selectable, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbGroup::append(AcDbObjectId id) {
    if (id.isNull()) return Acad::eNullObjectId;
    if (std::find(m_ids.begin(), m_ids.end(), id) != m_ids.end()) return Acad::eDuplicateKey;
    Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    m_ids.push_back(id);
    if (objectId().isNull()) return Acad::eOk;
    // The member is told even where its layer is locked: membership is no change of the entity.
    AcDbObject* const member = host::ObjectOf(*id.stub());
    if (member == nullptr) return Acad::eUnknownHandle;
    if (!member->hasPersistentReactor(objectId())) {
        host::AddReactorId(*member, objectId());
        host::Access::DirtyBits(*member) |= host::kDirtyReactors;
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::append(const AcDbObjectIdArray& ids) {
    for (int i = 0; i < ids.length(); ++i) {
        const Acad::ErrorStatus es = append(ids[i]);
        if (es != Acad::eOk) return es;
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::remove(AcDbObjectId id) {
    const auto found = std::find(m_ids.begin(), m_ids.end(), id);
    if (found == m_ids.end()) return Acad::eKeyNotFound;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    m_ids.erase(found);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::clear() {
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es == Acad::eOk) m_ids.clear();
    return es;
}

// A clone of the group holds the clones of its members where they were cloned with it.
void AcDbGroup::translateIds(const AcDbIdMapping& mapping) {
    for (AcDbObjectId& id : m_ids) host::Translate(mapping, id);
}

AcDbGroupIterator::AcDbGroupIterator(const AcDbGroup& group) : m_group(group) { skip(); }

void AcDbGroupIterator::skip() {
    while (!done() && objectId().isErased()) ++m_at;
}

AcDbObjectId AcDbGroupIterator::objectId() const {
    return done() ? AcDbObjectId() : m_group.m_ids[m_at];
}

AcDbObject* AcDbGroupIterator::object() const {
    AcDbObject* member = nullptr;
    return acdbOpenAcDbObject(member, objectId(), AcDb::kForRead) == Acad::eOk ? member : nullptr;
}

bool AcDbGroupIterator::done() const { return m_at >= m_group.m_ids.size(); }

bool AcDbGroupIterator::next() {
    if (!done()) ++m_at;
    skip();
    return !done();
}

Acad::ErrorStatus AcDbLayout::getLayoutName(const ACHAR*& name) const {
    name = m_name.c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayout::setLayoutName(const ACHAR* name) {
    if (name == nullptr || *name == 0) return Acad::eInvalidInput;
    HOST_SET(m_name, name, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbLayout::setBlockTableRecordId(AcDbObjectId block) {
    HOST_SET(m_blockId, block, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbLayout::setTabOrder(int order) {
    HOST_SET(m_tabOrder, order, host::kDirtyGeometry);
}
