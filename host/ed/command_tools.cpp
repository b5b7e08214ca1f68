#include "host/ed/command_tools.h"

#include <algorithm>
#include <utility>

#include "acedads.h"
#include "aced.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "host/ed/entity_query.h"
#include "host/ed/session.h"

namespace host {
namespace {

constexpr size_t kMostPieces = 4000;  // of an outline that follows the pointer

}  // namespace

void Say(const std::wstring& line) { Session::Get().Print(L"\n" + line); }

SelectionSet SelectForChange(AcApDocument& document) {
    SelectionSet entities = std::exchange(document.imp().pickFirst, {});
    if (entities.empty()) {
        ads_name set;
        if (acedSSGet(ACRX_T(":L"), nullptr, nullptr, nullptr, set) != RTNORM) return {};
        entities = *FindSelectionSet(set);
        acedSSFree(set);
        return entities;
    }
    const size_t all = entities.size();
    QueryRules rules;
    rules.skipLocked = true;
    entities.erase(
        std::remove_if(entities.begin(), entities.end(),
                       [&](AcDbObjectId id) { return id.isErased() || !MeetsRules(id, rules); }),
        entities.end());
    Say(std::to_wstring(entities.size()) + L" found.");
    if (entities.size() < all)
        Say(std::to_wstring(all - entities.size()) + L" left out: locked or gone.");
    return entities;
}

Acad::ErrorStatus AddToDrawing(AcDbDatabase& database, std::unique_ptr<AcDbEntity> entity,
                               AcDbObjectId* id) {
    entity->setDatabaseDefaults(&database);
    return AddCopy(database, std::move(entity), id);
}

Acad::ErrorStatus AddCopy(AcDbDatabase& database, std::unique_ptr<AcDbEntity> entity,
                          AcDbObjectId* id) {
    AcDbBlockTableRecordPointer space(database.currentSpaceId(), AcDb::kForWrite);
    if (space.openStatus() != Acad::eOk) return space.openStatus();
    const Acad::ErrorStatus es = space->appendAcDbEntity(entity.get());
    if (es != Acad::eOk) return es;
    if (id != nullptr) *id = entity->objectId();
    return entity.release()->close();
}

DragOutline::DragOutline(const SelectionSet& entities) {
    for (const AcDbObjectId id : entities) {
        if (m_pieces.size() >= kMostPieces) return;
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.openStatus() == Acad::eOk) AppendOutline(*entity, m_pieces);
    }
}

std::vector<Piece> DragOutline::After(const AcGeMatrix3d& matrix) const {
    std::vector<Piece> pieces = m_pieces;
    for (Piece& piece : pieces) {
        piece.first.transformBy(matrix);
        piece.second.transformBy(matrix);
    }
    return pieces;
}

CommandEnd TransformAll(const SelectionSet& entities, const AcGeMatrix3d& matrix) {
    size_t refused = 0;
    for (const AcDbObjectId id : entities) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        if (entity.openStatus() != Acad::eOk || entity->transformBy(matrix) != Acad::eOk) ++refused;
    }
    if (refused > 0) Say(std::to_wstring(refused) + L" could not be changed.");
    acedUpdateDisplay();
    return refused < entities.size() ? CommandEnd::kEnded : CommandEnd::kFailed;
}

}  // namespace host
