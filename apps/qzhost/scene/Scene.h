// What a drawing shows, kept up to date entity by entity.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "apps/qzhost/scene/SceneChunk.h"
#include "dbmain.h"
#include "host/ed/object_snap.h"

namespace app {

class SceneStyles;

// Watches its database. Entities of model space are kept in chunks of some thousand; a change makes
// the chunks that it touches anew, so that a painter goes on with those it has.
class Scene : public AcDbDatabaseReactor {
public:
    explicit Scene(AcDbDatabase& database);
    ~Scene() override;
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    // Brings the chunks up to the drawing. What is open for write now follows at the next call.
    // O(what changed, in chunks); all of it when a layer or a block changed. True when it did
    // anything.
    bool Update();
    // Since the last call of Update.
    bool IsStale() const { return m_isAllStale || !m_stale.empty(); }

    const SceneChunks& Chunks() const { return m_chunks; }
    std::shared_ptr<const DashPatterns> Patterns() const { return m_patterns; }
    size_t Count() const { return m_places.size(); }
    // Points of all parts: what painting costs.
    size_t Weight() const { return m_weight; }
    // Entities without a shape here, by class, as "3D solid": how many.
    const std::map<std::wstring, int>& Unshown() const { return m_unshown; }
    // Of everything shown; null when that is nothing.
    QRectF Extents() const;

    // The item of an entity with its chunk; null when it is not shown. Until the next Update.
    const SceneItem* Find(AcDbObjectId id, const SceneChunk*& chunk) const;
    // Entities whose boxes meet the rectangle, in the order of the drawing.
    std::vector<AcDbObjectId> IdsNear(const QRectF& area) const;
    // What there is to snap to in them. Until the next Update.
    std::vector<const host::SnapSource*> SourcesNear(const QRectF& area);

    // Something changed: the scene, or anything else in the database.
    std::function<void()> onChange;

    void objectAppended(const AcDbDatabase*, const AcDbObject* object) override { Note(object); }
    void objectModified(const AcDbDatabase*, const AcDbObject* object) override { Note(object); }
    void objectErased(const AcDbDatabase*, const AcDbObject* object, bool) override {
        Note(object);
    }
    void headerSysVarChanged(const AcDbDatabase*, const ACHAR*, bool) override {
        if (onChange) onChange();
    }
    void goodbye(const AcDbDatabase*) override { m_database = nullptr; }

private:
    struct Place {
        unsigned chunk = 0, item = 0;
    };
    void Note(const AcDbObject* object);
    void MakeAll();
    // The entities, in order, as new chunks at the end.
    void AppendChunks(const std::vector<AcDbObjectId>& ids);
    // False when the entity cannot be read now.
    bool AppendItem(AcDbObjectId id, SceneChunk& chunk);
    void SetChunk(size_t index, std::shared_ptr<const SceneChunk> chunk);
    // Adds the items of a chunk to those without a shape, or takes them out.
    void CountUnshown(const SceneChunk& chunk, int step);

    AcDbDatabase* m_database;
    SceneChunks m_chunks;
    std::unordered_map<AcDbObjectId, Place> m_places;
    std::unordered_map<AcDbObjectId, host::SnapSource> m_sources;  // made when first asked for
    std::unordered_set<AcDbObjectId> m_stale;
    std::vector<AcDbObjectId> m_staleInOrder;
    std::unique_ptr<SceneStyles> m_styles;
    std::shared_ptr<const DashPatterns> m_patterns;
    std::map<std::wstring, int> m_unshown;
    size_t m_weight = 0;
    bool m_isAllStale = true;
};

}  // namespace app
