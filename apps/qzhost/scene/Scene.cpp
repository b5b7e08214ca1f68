#include "apps/qzhost/scene/Scene.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "apps/qzhost/scene/SceneEntity.h"
#include "arxHeaders.h"
#include "host/ed/entity_query.h"

namespace app {
namespace {

constexpr size_t kChunk = 2048;  // entities

}  // namespace

Scene::Scene(AcDbDatabase& database)
    : m_database(&database), m_patterns(std::make_shared<DashPatterns>()) {
    static_cast<void>(database.addReactor(this));
}

Scene::~Scene() {
    if (m_database != nullptr) static_cast<void>(m_database->removeReactor(this));
}

void Scene::Note(const AcDbObject* object) {
    if (object->isKindOf(AcDbEntity::desc())) {
        if (m_stale.insert(object->objectId()).second) m_staleInOrder.push_back(object->objectId());
    } else if (object->isKindOf(AcDbLayerTableRecord::desc()) ||
               object->isKindOf(AcDbLinetypeTableRecord::desc())) {
        m_isAllStale = true;
    }
    if (onChange) onChange();
}

bool Scene::Update() {
    if (m_database == nullptr || !IsStale()) return false;
    if (m_isAllStale) {
        MakeAll();
        return true;
    }
    std::unordered_set<AcDbObjectId> stale;
    std::vector<AcDbObjectId> order;
    stale.swap(m_stale);
    order.swap(m_staleInOrder);
    std::unordered_set<unsigned> touched;
    std::vector<AcDbObjectId> fresh;
    for (const AcDbObjectId id : order) {
        const auto place = m_places.find(id);
        m_sources.erase(id);
        if (place != m_places.end())
            touched.insert(place->second.chunk);
        else
            fresh.push_back(id);
    }
    for (const unsigned index : touched) {
        const SceneChunk& before = *m_chunks[index];
        auto chunk = std::make_shared<SceneChunk>();
        for (const SceneItem& item : before.items) {
            if (stale.count(item.id) == 0) {
                chunk->Append(before, item);
                continue;
            }
            m_places.erase(item.id);
            fresh.push_back(item.id);
        }
        SetChunk(index, std::move(chunk));
    }
    AppendChunks(fresh);
    return true;
}

void Scene::MakeAll() {
    m_chunks.clear();
    m_places.clear();
    m_sources.clear();
    m_stale.clear();
    m_staleInOrder.clear();
    m_unshown.clear();
    m_weight = 0;
    m_isAllStale = false;
    m_styles = std::make_unique<SceneStyles>(*m_database);
    AppendChunks(host::QueryEntities(*m_database, host::QueryRules::Displayed()));
}

void Scene::SetChunk(size_t index, std::shared_ptr<const SceneChunk> chunk) {
    if (index == m_chunks.size()) m_chunks.emplace_back();
    if (m_chunks[index] != nullptr) {
        m_weight -= m_chunks[index]->points.size();
        CountUnshown(*m_chunks[index], -1);
    }
    m_weight += chunk->points.size();
    CountUnshown(*chunk, 1);
    for (size_t i = 0; i < chunk->items.size(); ++i)
        m_places[chunk->items[i].id] = {static_cast<unsigned>(index), static_cast<unsigned>(i)};
    m_chunks[index] = std::move(chunk);
}

void Scene::AppendChunks(const std::vector<AcDbObjectId>& ids) {
    std::shared_ptr<SceneChunk> chunk;
    size_t index = m_chunks.size();
    // A last chunk that has room is filled first.
    if (index > 0 && m_chunks.back()->items.size() < kChunk) {
        chunk = std::make_shared<SceneChunk>(*m_chunks.back());
        --index;
    }
    for (const AcDbObjectId id : ids) {
        if (chunk == nullptr) chunk = std::make_shared<SceneChunk>();
        if (!AppendItem(id, *chunk) && m_stale.insert(id).second) m_staleInOrder.push_back(id);
        if (chunk->items.size() < kChunk) continue;
        SetChunk(index++, std::move(chunk));
        chunk = nullptr;
    }
    if (chunk != nullptr) SetChunk(index, std::move(chunk));
    if (m_patterns->size() != m_styles->Patterns().size())
        m_patterns = std::make_shared<DashPatterns>(m_styles->Patterns());
}

bool Scene::AppendItem(AcDbObjectId id, SceneChunk& chunk) {
    if (id.isErased() || !host::MeetsRules(id, host::QueryRules::Displayed())) return true;
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    if (entity.openStatus() == Acad::eWasOpenForWrite) return false;
    if (entity.openStatus() == Acad::eOk &&
        entity->blockId() == acdbSymUtil()->blockModelSpaceId(m_database))
        AppendSceneItem(*entity.object(), *m_styles, chunk);
    return true;
}

void Scene::CountUnshown(const SceneChunk& chunk, int step) {
    for (const SceneItem& item : chunk.items) {
        if (item.parts > 0 || item.labels > 0) continue;
        const auto count = m_unshown.try_emplace(item.id.objectClass()->name(), 0).first;
        count->second += step;
        if (count->second == 0) m_unshown.erase(count);
    }
}

const SceneItem* Scene::Find(AcDbObjectId id, const SceneChunk*& chunk) const {
    const auto place = m_places.find(id);
    if (place == m_places.end()) return nullptr;
    chunk = m_chunks[place->second.chunk].get();
    return &chunk->items[place->second.item];
}

std::vector<AcDbObjectId> Scene::IdsNear(const QRectF& area) const {
    std::vector<AcDbObjectId> ids;
    for (const auto& chunk : m_chunks) {
        if (!Touches(chunk->box, area)) continue;
        for (const SceneItem& item : chunk->items)
            if (item.parts + item.labels > 0 && Touches(item.box, area)) ids.push_back(item.id);
    }
    return ids;
}

std::vector<const host::SnapSource*> Scene::SourcesNear(const QRectF& area) {
    std::vector<const host::SnapSource*> sources;
    for (const AcDbObjectId id : IdsNear(area)) {
        const auto found = m_sources.find(id);
        sources.push_back(found != m_sources.end()
                              ? &found->second
                              : &m_sources.emplace(id, host::MakeSnapSource(id)).first->second);
    }
    return sources;
}

QRectF Scene::Extents() const {
    QRectF all = NoBox();
    for (const auto& chunk : m_chunks) all = United(all, chunk->box);
    return IsNoBox(all) ? QRectF() : all;
}

}  // namespace app
