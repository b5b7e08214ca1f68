#include "host/ed/shown_parts.h"

#include <memory>

#include "dbblkref.h"
#include "dbmain.h"
#include "dbobjptr.h"
#include "dbsymtb.h"

namespace host {

bool ShownParts::Enter(AcDbObjectId block, std::size_t parts) {
    if (m_depth == 0) m_parts = 0;
    if (m_depth == kMostNested || m_parts >= kMostParts) return false;
    if (!block.isNull() && !m_open.insert(block).second) return false;
    ++m_depth;
    m_parts += parts;
    return true;
}

void ShownParts::Leave(AcDbObjectId block) {
    --m_depth;
    if (!block.isNull()) m_open.erase(block);
}

bool ShownParts::ForEach(const AcDbEntity& entity,
                         const std::function<void(const AcDbEntity&)>& use) {
    const AcDbBlockReference* const reference = AcDbBlockReference::cast(&entity);
    const AcDbObjectId block =
        reference == nullptr ? AcDbObjectId::kNull : reference->blockTableRecord();
    if (!Enter(block, 0)) return true;
    AcDbVoidPtrArray parts;
    const bool isDone = entity.explode(parts) == Acad::eOk;
    m_parts += static_cast<std::size_t>(parts.length());
    for (int i = 0; i < parts.length(); ++i) {
        const std::unique_ptr<AcDbEntity> part(static_cast<AcDbEntity*>(parts[i]));
        if (part->visibility() != AcDb::kInvisible && IsShown(part->layerId())) use(*part);
    }
    Leave(block);
    return isDone;
}

bool ShownParts::IsShown(AcDbObjectId layerId) {
    const auto [at, isNew] = m_layers.try_emplace(layerId, true);
    if (!isNew) return at->second;
    const AcDbLayerTableRecordPointer layer(layerId, AcDb::kForRead);
    if (layer.openStatus() == Acad::eOk) at->second = !layer->isOff() && !layer->isFrozen();
    return at->second;
}

}  // namespace host
