// What a drawing shows, kept up to date entity by entity.
#pragma once

#include <QColor>
#include <QPainterPath>
#include <QString>
#include <QTransform>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "dbmain.h"
#include "host/ed/object_snap.h"

namespace app {

struct SceneLabel {
    QString text;
    double height = 0.0;  // of capitals, drawing units
    int anchor = 0;       // 0 begins, 1 is centred at, 2 ends at its place
    QTransform place;     // base line's origin, x along the text, y up
};

// One entity of model space, in world coordinates.
struct SceneItem {
    AcDbObjectId id;
    QPainterPath path;
    std::vector<SceneLabel> labels;
    QRectF box;  // of the path
    QRgb colour = 0;
    Qt::PenStyle style = Qt::SolidLine;
};

// Watches its database. Curves are shown as 64 chords each.
class Scene : public AcDbDatabaseReactor {
public:
    explicit Scene(AcDbDatabase& database);
    ~Scene() override;
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    // Brings the items up to the drawing. What is open for write now follows at the next call.
    // O(what changed); all of it when a layer or a block changed.
    void Update();
    // Since the last call of Update.
    bool IsStale() const { return m_isAllStale || !m_stale.empty(); }

    const std::unordered_map<AcDbObjectId, SceneItem>& Items() const { return m_items; }
    // Of everything shown; null when that is nothing.
    QRectF Extents() const;
    // What there is to snap to in entities whose boxes meet the rectangle. Until the next Update.
    std::vector<const host::SnapSource*> SourcesNear(const QRectF& area);

    void objectAppended(const AcDbDatabase*, const AcDbObject* object) override { Note(object); }
    void objectModified(const AcDbDatabase*, const AcDbObject* object) override { Note(object); }
    void objectErased(const AcDbDatabase*, const AcDbObject* object, bool) override {
        Note(object);
    }
    void goodbye(const AcDbDatabase*) override { m_database = nullptr; }

private:
    void Note(const AcDbObject* object);
    // False when the entity cannot be read now.
    bool UpdateItem(AcDbObjectId id);

    AcDbDatabase* m_database;
    std::unordered_map<AcDbObjectId, SceneItem> m_items;
    std::unordered_map<AcDbObjectId, host::SnapSource> m_sources;  // made when first asked for
    std::unordered_set<AcDbObjectId> m_stale;
    bool m_isAllStale = true;
};

}  // namespace app
