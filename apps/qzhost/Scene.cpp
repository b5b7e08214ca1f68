#include "apps/qzhost/Scene.h"

#include <algorithm>
#include <memory>

#include "apps/qzhost/SceneEntity.h"
#include "arxHeaders.h"
#include "host/ed/entity_query.h"

namespace app {

Scene::Scene(AcDbDatabase& database) : m_database(&database) {
    static_cast<void>(database.addReactor(this));
}

Scene::~Scene() {
    if (m_database != nullptr) static_cast<void>(m_database->removeReactor(this));
}

void Scene::Note(const AcDbObject* object) {
    if (object->isKindOf(AcDbEntity::desc()))
        m_stale.insert(object->objectId());
    else if (object->isKindOf(AcDbLayerTableRecord::desc()))
        m_isAllStale = true;
}

void Scene::Update() {
    if (m_database == nullptr) return;
    if (m_isAllStale) {
        m_items.clear();
        m_sources.clear();
        m_stale.clear();
        for (const AcDbObjectId id :
             host::QueryEntities(*m_database, host::QueryRules::Displayed()))
            m_stale.insert(id);
        m_isAllStale = false;
    }
    std::unordered_set<AcDbObjectId> open;
    for (const AcDbObjectId id : m_stale)
        if (!UpdateItem(id)) open.insert(id);
    m_stale.swap(open);
}

bool Scene::UpdateItem(AcDbObjectId id) {
    m_items.erase(id);
    m_sources.erase(id);
    if (id.isErased() || !host::MeetsRules(id, host::QueryRules::Displayed())) return true;
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    if (entity.openStatus() == Acad::eWasOpenForWrite) return false;
    if (entity.openStatus() != Acad::eOk ||
        entity->blockId() != acdbSymUtil()->blockModelSpaceId(m_database))
        return true;
    SceneItem& item = m_items[id] = MakeSceneItem(*entity.object());
    item.box = item.path.boundingRect();
    for (const SceneLabel& label : item.labels)
        item.box |= QRectF(label.place.map(QPointF()), QSizeF(0, 0));
    return true;
}

std::vector<const host::SnapSource*> Scene::SourcesNear(const QRectF& area) {
    std::vector<const host::SnapSource*> sources;
    for (const auto& [id, item] : m_items) {
        if (item.box.left() > area.right() || item.box.right() < area.left() ||
            item.box.top() > area.bottom() || item.box.bottom() < area.top())
            continue;
        const auto found = m_sources.find(id);
        sources.push_back(found != m_sources.end()
                              ? &found->second
                              : &m_sources.emplace(id, host::MakeSnapSource(id)).first->second);
    }
    return sources;
}

QRectF Scene::Extents() const {
    QRectF all;
    for (const auto& [id, item] : m_items) all |= item.box;
    return all;
}

}  // namespace app
