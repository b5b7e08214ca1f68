#include "host/ed/entity_query.h"

#include <algorithm>
#include <limits>
#include <memory>

#include "dbapserv.h"
#include "dbmain.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "host/ed/outline.h"
#include "host/ed/session.h"
#include "host/ed/text_compare.h"

namespace host {
namespace {

void AppendSpace(AcDbObjectId spaceId, const QueryRules& rules, std::vector<AcDbObjectId>& found) {
    AcDbBlockTableRecordPointer space(spaceId, AcDb::kForRead);
    if (space.openStatus() != Acad::eOk) return;
    AcDbBlockTableRecordIterator* raw = nullptr;
    if (space->newIterator(raw) != Acad::eOk) return;
    const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(raw);
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        if (iterator->getEntityId(id) == Acad::eOk && MeetsRules(id, rules)) found.push_back(id);
    }
}

// Model space and every layout's paper space.
std::vector<AcDbObjectId> AllSpaces(AcDbDatabase& database) {
    std::vector<AcDbObjectId> spaces;
    const AcDbObjectPointer<AcDbBlockTable> table(database.blockTableId(), AcDb::kForRead);
    if (table.openStatus() != Acad::eOk) return spaces;
    AcDbBlockTableIterator* raw = nullptr;
    if (table->newIterator(raw) != Acad::eOk) return spaces;
    const std::unique_ptr<AcDbBlockTableIterator> iterator(raw);
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        if (iterator->getRecordId(id) != Acad::eOk) continue;
        const AcDbBlockTableRecordPointer record(id, AcDb::kForRead);
        if (record.openStatus() == Acad::eOk && record->isLayout()) spaces.push_back(id);
    }
    return spaces;
}

bool LayerMeets(AcDbObjectId layerId, const QueryRules& rules) {
    const AcDbLayerTableRecordPointer layer(layerId, AcDb::kForRead);
    if (layer.openStatus() != Acad::eOk) return true;
    return !(rules.skipFrozen && layer->isFrozen()) && !(rules.skipLocked && layer->isLocked()) &&
           !(rules.skipOff && layer->isOff());
}

bool InsideRectangle(const AcDbEntity& entity, const AcGePoint3d& min, const AcGePoint3d& max) {
    AcDbExtents box;
    if (entity.getGeomExtents(box) != Acad::eOk) return false;
    return box.minPoint().x >= min.x && box.minPoint().y >= min.y && box.maxPoint().x <= max.x &&
           box.maxPoint().y <= max.y;
}

bool TouchesRectangle(const AcDbEntity& entity, const AcGePoint3d& min, const AcGePoint3d& max) {
    std::vector<Piece> pieces;
    AppendOutline(entity, pieces);
    return std::any_of(pieces.begin(), pieces.end(),
                       [&](const Piece& piece) { return MeetsRectangle(piece, min, max); });
}

}  // namespace

bool MeetsRules(AcDbObjectId id, const QueryRules& rules) {
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    if (entity.openStatus() != Acad::eOk) return false;
    if (rules.skipInvisible && entity->visibility() == AcDb::kInvisible) return false;
    return LayerMeets(entity->layerId(), rules);
}

std::vector<AcDbObjectId> QueryEntities(AcDbDatabase& database, const QueryRules& rules) {
    std::vector<AcDbObjectId> found;
    if (!rules.allSpaces) {
        AppendSpace(database.currentSpaceId(), rules, found);
        return found;
    }
    for (const AcDbObjectId space : AllSpaces(database)) AppendSpace(space, rules, found);
    return found;
}

std::vector<AcDbObjectId> LastDisplayed(const AcApDocument& document) {
    std::vector<AcDbObjectId> shown = QueryEntities(*document.database(), QueryRules::Displayed());
    if (shown.size() > 1) shown.erase(shown.begin(), shown.end() - 1);
    return shown;
}

std::vector<AcDbObjectId> QueryRectangle(AcDbDatabase& database, const AcGePoint3d& corner1,
                                         const AcGePoint3d& corner2, bool isCrossing) {
    return QueryRectangleAmong(QueryEntities(database, QueryRules::Displayed()), corner1, corner2,
                               isCrossing);
}

AcDbObjectId PickAt(AcDbDatabase& database, const AcGePoint3d& point, double aperture) {
    return PickAmong(QueryEntities(database, QueryRules::Displayed()), point, aperture);
}

std::vector<AcDbObjectId> QueryRectangleAmong(const std::vector<AcDbObjectId>& entities,
                                              const AcGePoint3d& corner1,
                                              const AcGePoint3d& corner2, bool isCrossing) {
    const AcGePoint3d min((std::min)(corner1.x, corner2.x), (std::min)(corner1.y, corner2.y), 0.0);
    const AcGePoint3d max((std::max)(corner1.x, corner2.x), (std::max)(corner1.y, corner2.y), 0.0);
    std::vector<AcDbObjectId> found;
    for (const AcDbObjectId id : entities) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk) continue;
        if (InsideRectangle(*entity, min, max) ||
            (isCrossing && TouchesRectangle(*entity, min, max)))
            found.push_back(id);
    }
    return found;
}

AcDbObjectId PickAmong(const std::vector<AcDbObjectId>& entities, const AcGePoint3d& point,
                       double aperture) {
    AcDbObjectId nearest;
    double best = aperture;
    for (const AcDbObjectId id : entities) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk) continue;
        std::vector<Piece> pieces;
        AppendOutline(*entity, pieces);
        for (const Piece& piece : pieces) {
            const double distance = DistanceToPiece(point, piece);
            if (distance > best) continue;
            best = distance;
            nearest = id;
        }
    }
    return nearest;
}

std::optional<EntityFilter> EntityFilter::FromChain(const resbuf* chain) {
    EntityFilter filter;
    for (const resbuf* node = chain; node != nullptr; node = node->rbnext) {
        const int code = node->restype;
        if (code == 62) {
            filter.m_conditions.push_back({code, L"", node->resval.rint});
        } else if ((code == 0 || code == 6 || code == 8) && node->resval.rstring != nullptr) {
            filter.m_conditions.push_back({code, node->resval.rstring, 0});
        } else {
            return std::nullopt;
        }
    }
    return filter;
}

bool EntityFilter::Passes(AcDbObjectId id) const {
    if (m_conditions.empty()) return true;
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    if (entity.openStatus() != Acad::eOk) return false;
    for (const Condition& condition : m_conditions) {
        AcString text;
        Acad::ErrorStatus es = Acad::eOk;
        if (condition.code == 62) {
            if (entity->colorIndex() != condition.number) return false;
            continue;
        }
        if (condition.code == 0) {
            const ACHAR* const name = entity->isA()->dxfName();
            if (name != nullptr) text = name;
        } else {
            es = condition.code == 8 ? entity->layer(text) : entity->linetype(text);
        }
        if (es != Acad::eOk || !MatchesWildcards(text.kACharPtr(), condition.text)) return false;
    }
    return true;
}

}  // namespace host
