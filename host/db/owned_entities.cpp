#include "dbents.h"
#include "host/db/database_imp.h"
#include "host/db/entity_tools.h"
#include "host/base/host_assert.h"

namespace host {

OwnedEntities::OwnedEntities(const OwnedEntities& other) {
    for (const AcDbEntity* const entity : other.Live())
        fresh.emplace_back(static_cast<AcDbEntity*>(entity->clone()));
}

std::vector<const AcDbEntity*> OwnedEntities::Live() const {
    std::vector<const AcDbEntity*> live;
    live.reserve(ids.size() + fresh.size());
    for (const AcDbObjectId id : ids) {
        if (id.isErased()) continue;
        if (const AcDbObject* const object = ObjectOf(*id.stub()))
            live.push_back(static_cast<const AcDbEntity*>(object));
    }
    for (const auto& entity : fresh) live.push_back(entity.get());
    return live;
}

void OwnedEntities::AllIds(AcDbObjectIdArray& out) const {
    for (const AcDbObjectId id : ids) out.append(id);
    if (!sequenceEnd.isNull()) out.append(sequenceEnd);
}

void OwnedEntities::Settle(AcDbEntity& owner, bool always) {
    AcDbDatabase& db = *owner.database();
    const auto place = [&](std::unique_ptr<AcDbEntity> entity) {
        if (Access::Layer(*entity).isNull()) CopyProperties(owner, *entity);
        const Acad::ErrorStatus es =
            MakeResident(db, *entity, owner.objectId().stub(), kStubEntity | kStubSubentity, false);
        HOST_ASSERT(es == Acad::eOk, "an owned entity is in no database before its owner");
        return entity.release()->objectId();
    };
    for (auto& entity : fresh) ids.push_back(place(std::move(entity)));
    fresh.clear();
    if (sequenceEnd.isNull() && (always || !ids.empty()))
        sequenceEnd = place(std::make_unique<AcDbSequenceEnd>());
}

}  // namespace host

void AcDbObjectIterator::start(bool atBeginning, bool skipDeleted) {
    m_at = atBeginning || m_ids.empty() ? 0 : m_ids.size() - 1;
    if (atBeginning)
        skip(skipDeleted);
    else
        while (skipDeleted && !done() && m_ids[m_at].isErased()) step(true, false);
}

void AcDbObjectIterator::skip(bool skipDeleted) {
    while (skipDeleted && !done() && m_ids[m_at].isErased()) ++m_at;
}

void AcDbObjectIterator::step(bool backwards, bool skipDeleted) {
    do {
        if (done()) return;
        // Before the first one is the end too.
        m_at = backwards && m_at == 0 ? m_ids.size() : backwards ? m_at - 1 : m_at + 1;
    } while (skipDeleted && !done() && m_ids[m_at].isErased());
}
