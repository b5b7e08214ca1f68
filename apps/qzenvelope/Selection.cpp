#include "apps/qzenvelope/Selection.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <unordered_map>
#include <vector>

#include "apps/qzenvelope/Options.h"
#include "engine/EncircleLayers.h"
#include "util/EraseEntity.h"

namespace app {
namespace {

struct LayerState {
    bool displayed = true;
    bool isEnvelope = false;
};

class Picker {
public:
    explicit Picker(const std::optional<Box>& window) : m_window(window) {}

    Selection Run(AcDbDatabase& database) {
        const AcDbObjectId modelSpace = acdbSymUtil()->blockModelSpaceId(&database);
        AcDbObjectPointer<AcDbBlockTableRecord> space(modelSpace, AcDb::kForRead);
        AcDbBlockTableRecordIterator* made = nullptr;
        if (space.openStatus() != Acad::eOk || space->newIterator(made) != Acad::eOk)
            throw Failure(kNoResult, "the drawing has no model space that can be read");
        const std::unique_ptr<AcDbBlockTableRecordIterator> entities(made);
        for (; !entities->done(); entities->step()) {
            AcDbObjectId id;
            if (entities->getEntityId(id) == Acad::eOk) Look(id);
        }
        if (space.close() != Acad::eOk)
            throw Failure(kNoResult, "the drawing's model space cannot be closed");
        for (const AcDbObjectId& id : m_envelopes)
            if (EraseById(id)) ++m_selection.earlierEnvelopes;
        return m_selection;
    }

private:
    LayerState StateOf(const AcDbObjectId& layerId) {
        const auto known = m_layers.find(layerId);
        if (known != m_layers.end()) return known->second;
        LayerState state;
        AcDbLayerTableRecordPointer layer(layerId, AcDb::kForRead);
        if (layer.openStatus() == Acad::eOk) {
            AcString name;
            state.displayed = !layer->isOff() && !layer->isFrozen();
            state.isEnvelope =
                layer->getName(name) == Acad::eOk && name.compareNoCase(kEnvelopeLayer) == 0;
        }
        return m_layers[layerId] = state;
    }

    void Look(const AcDbObjectId& id) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk) return;
        const std::optional<Box> box = ExtentsOf(*entity.object());
        const LayerState layer = StateOf(entity->layerId());
        if (m_window) {
            if (!box || !m_window->Contains(*box)) return;
            if (!layer.displayed || entity->visibility() == AcDb::kInvisible) {
                ++m_selection.notDisplayed;
                return;
            }
        }
        if (layer.isEnvelope) {
            m_envelopes.push_back(id);
            return;
        }
        m_selection.ids.append(id);
        if (box) m_selection.box.Add(*box);
    }

    const std::optional<Box>& m_window;
    Selection m_selection;
    std::vector<AcDbObjectId> m_envelopes;
    std::unordered_map<AcDbObjectId, LayerState> m_layers;
};

// Adds up the chords of curves; each block is looked at once.
class Estimator {
public:
    explicit Estimator(double precision) : m_precision(precision) {}

    double Of(const AcDbObjectId& id) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk) return 0;
        if (const auto* reference = AcDbBlockReference::cast(entity.object())) {
            const AcGeScale3d scale = reference->scaleFactors();
            double copies = std::max(std::abs(scale.sx), std::abs(scale.sy));
            if (const auto* array = AcDbMInsertBlock::cast(reference))
                copies *= static_cast<double>(array->rows()) * array->columns();
            return copies * OfBlock(reference->blockTableRecord());
        }
        const auto* curve = AcDbCurve::cast(entity.object());
        double end = 0, length = 0;
        if (curve == nullptr || AcDbLine::cast(curve) != nullptr) return 0;
        if (const auto* polyline = AcDbPolyline::cast(curve); polyline && !polyline->hasBulges())
            return polyline->numVerts();
        if (curve->getEndParam(end) != Acad::eOk || curve->getDistAtParam(end, length) != Acad::eOk)
            return 0;
        return length / m_precision;
    }

private:
    double OfBlock(const AcDbObjectId& blockId) {
        const auto [known, isNew] = m_blocks.try_emplace(blockId, 0.0);
        if (!isNew) return known->second;  // a block inside itself counts as nothing
        AcDbObjectPointer<AcDbBlockTableRecord> block(blockId, AcDb::kForRead);
        AcDbBlockTableRecordIterator* made = nullptr;
        if (block.openStatus() != Acad::eOk || block->newIterator(made) != Acad::eOk) return 0;
        double sum = 0;
        const std::unique_ptr<AcDbBlockTableRecordIterator> entities(made);
        for (; !entities->done(); entities->step()) {
            AcDbObjectId id;
            if (entities->getEntityId(id) == Acad::eOk) sum += Of(id);
        }
        return m_blocks[blockId] = sum;
    }

    double m_precision;
    std::unordered_map<AcDbObjectId, double> m_blocks;
};

}  // namespace

std::optional<Box> ExtentsOf(const AcDbEntity& entity) {
    AcDbExtents extents;
    if (entity.getGeomExtents(extents) != Acad::eOk) return std::nullopt;
    Box box;
    box.Add(Point{extents.minPoint().x, extents.minPoint().y});
    box.Add(Point{extents.maxPoint().x, extents.maxPoint().y});
    return box;
}

Selection Pick(AcDbDatabase& database, const std::optional<Box>& window) {
    return Picker(window).Run(database);
}

double EstimateSegments(const AcArray<AcDbObjectId>& ids, double arcPrecision) {
    Estimator estimator(arcPrecision);
    double sum = 0;
    for (int i = 0; i < ids.length(); ++i) sum += estimator.Of(ids[i]);
    return sum;
}

}  // namespace app
