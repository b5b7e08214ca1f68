#include "apps/qzhost/scene/SceneEntity.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "apps/qzhost/scene/SceneCurves.h"
#include "apps/qzhost/scene/SceneText.h"
#include "arxHeaders.h"
#include "host/base/angles.h"

namespace app {
namespace {

constexpr int kUsualWeight = 25;  // hundredths of a millimetre, where nothing is said

QRgb ColourOf(const AcCmEntityColor& colour) {
    return colour.isByColor() ? qRgb(colour.red(), colour.green(), colour.blue())
                              : ColourOfIndex(colour.colorIndex());
}

// How something is drawn when it says "by block": as the reference is.
struct Style {
    QRgb colour = 0;
    AcDbObjectId layer;
    short pattern = 0;
    double patternScale = 1.0;
    int weight = kUsualWeight;
};

class Builder {
public:
    Builder(SceneStyles& styles, SceneChunk& chunk) : m_styles(styles), m_chunk(chunk) {}

    void Add(const AcDbEntity& entity, const Style* outer) {
        if (entity.isKindOf(AcDbAttributeDefinition::desc()) && outer == nullptr) return;
        const Style style = StyleOf(entity, outer);
        const size_t labels = m_chunk.labels.size();
        if (AppendLabels(entity, m_chunk.labels)) {
            for (size_t i = labels; i < m_chunk.labels.size(); ++i)
                m_chunk.labels[i].colour = style.colour;
        } else if (IsMadeOfParts(entity) &&
                   m_styles.Parts().ForEach(entity,
                                            [&](const AcDbEntity& part) { Add(part, &style); })) {
            if (const auto* const reference = AcDbBlockReference::cast(&entity))
                AddAttributes(*reference, style);
        } else if (const auto* const reference = AcDbBlockReference::cast(&entity);
                   reference != nullptr) {
            AddSkewed(*reference, style);
            AddAttributes(*reference, style);
        } else {
            AddCurves(entity, style);
        }
    }

private:
    static bool IsMadeOfParts(const AcDbEntity& entity) {
        const auto* const hatch = AcDbHatch::cast(&entity);
        return entity.isKindOf(AcDbBlockReference::desc()) ||
               entity.isKindOf(AcDbDimension::desc()) ||
               (hatch != nullptr && !hatch->isSolidFill());
    }

    Style StyleOf(const AcDbEntity& entity, const Style* outer) {
        Style style;
        const bool isOnZero =
            outer != nullptr && entity.layerId() == m_styles.Database().layerZero();
        style.layer = isOnZero ? outer->layer : entity.layerId();
        const SceneStyles::Layer& layer = m_styles.LayerOf(style.layer);
        const AcCmEntityColor colour = entity.entityColor();
        style.colour = colour.isByLayer()                       ? layer.colour
                       : colour.isByBlock() && outer != nullptr ? outer->colour
                                                                : ColourOf(colour);
        const AcDbDatabase& database = m_styles.Database();
        const AcDbObjectId linetype = entity.linetypeId();
        style.pattern = linetype == database.byLayerLinetype() ? m_styles.PatternOf(layer.linetype)
                        : linetype == database.byBlockLinetype() && outer != nullptr
                            ? outer->pattern
                            : m_styles.PatternOf(linetype);
        style.patternScale = entity.linetypeScale() * database.ltscale();
        const int weight = entity.lineWeight();
        style.weight = weight >= 0                                        ? weight
                       : weight == AcDb::kLnWtByBlock && outer != nullptr ? outer->weight
                       : weight == AcDb::kLnWtByLayer                     ? layer.weight
                                                                          : kUsualWeight;
        return style;
    }

    // Where scales differ, arcs of the block are no arcs any more: its shapes are made as they lie
    // in the block, and moved from there.
    void AddSkewed(const AcDbBlockReference& reference, const Style& style) {
        const AcDbObjectPointer<AcDbBlockTableRecord> block(reference.blockTableRecord(),
                                                            AcDb::kForRead);
        AcDbBlockTableRecordIterator* entities = nullptr;
        if (block.openStatus() != Acad::eOk || block->newIterator(entities) != Acad::eOk) return;
        const std::unique_ptr<AcDbBlockTableRecordIterator> owned(entities);
        std::vector<AcDbObjectId> ids;
        for (; !entities->done(); entities->step()) {
            AcDbObjectId id;
            if (entities->getEntityId(id) == Acad::eOk) ids.push_back(id);
        }
        const std::vector<AcGeMatrix3d> cells = CellsOf(reference);
        if (!m_styles.Parts().Enter(reference.blockTableRecord(), ids.size() * cells.size()))
            return;
        for (const AcGeMatrix3d& cell : cells) {
            const Marks from{m_chunk.parts.size(), m_chunk.labels.size()};
            for (const AcDbObjectId id : ids) {
                const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
                if (entity.openStatus() == Acad::eOk &&
                    !entity->isKindOf(AcDbAttributeDefinition::desc()) &&
                    entity->visibility() == AcDb::kVisible &&
                    m_styles.Parts().IsShown(entity->layerId()))
                    Add(*entity.object(), &style);
            }
            Move(from, cell);
        }
        m_styles.Parts().Leave(reference.blockTableRecord());
    }

    static std::vector<AcGeMatrix3d> CellsOf(const AcDbBlockReference& reference) {
        const AcGeMatrix3d first = reference.blockTransform();
        const auto* const array = AcDbMInsertBlock::cast(&reference);
        if (array == nullptr) return {first};
        const AcGeMatrix3d axes =
            AcGeMatrix3d::planeToWorld(reference.normal()) *
            AcGeMatrix3d::rotation(reference.rotation(), AcGeVector3d::kZAxis);
        std::vector<AcGeMatrix3d> cells;
        // Zero counts, which some writers leave, mean one.
        for (int row = 0; row < (std::max)(1, static_cast<int>(array->rows())); ++row)
            for (int column = 0; column < (std::max)(1, static_cast<int>(array->columns()));
                 ++column) {
                const AcGeVector3d step(column * array->columnSpacing(), row * array->rowSpacing(),
                                        0);
                cells.push_back(AcGeMatrix3d::translation(axes * step) * first);
            }
        return cells;
    }

    struct Marks {
        size_t parts, labels;
    };
    void Move(const Marks& from, const AcGeMatrix3d& m) {
        const QTransform to(m(0, 0), m(1, 0), m(0, 1), m(1, 1), m(0, 3), m(1, 3));
        const QPointF origin = to.map(QPointF(0, 0));
        for (size_t i = from.parts; i < m_chunk.parts.size(); ++i) {
            const ScenePart& part = m_chunk.parts[i];
            QPointF* const p = m_chunk.points.data() + part.first;
            if (part.kind != ScenePart::kArc) {
                for (unsigned k = 0; k < part.count; ++k) p[k] = to.map(p[k]);
                continue;
            }
            p[0] = to.map(p[0]);
            for (const int axis : {1, 2}) p[axis] = to.map(p[axis]) - origin;
        }
        for (size_t i = from.labels; i < m_chunk.labels.size(); ++i)
            m_chunk.labels[i].place = m_chunk.labels[i].place * to;
    }

    void AddAttributes(const AcDbBlockReference& reference, const Style& style) {
        const std::unique_ptr<AcDbObjectIterator> attributes(reference.attributeIterator());
        for (; attributes != nullptr && !attributes->done(); attributes->step()) {
            const AcDbObjectPointer<AcDbAttribute> attribute(attributes->objectId(),
                                                             AcDb::kForRead);
            if (attribute.openStatus() == Acad::eOk && !attribute->isInvisible())
                Add(*attribute.object(), &style);
        }
    }

    void AddCurves(const AcDbEntity& entity, const Style& style) {
        const size_t before = m_chunk.parts.size();
        AppendCurves(entity, m_chunk);
        for (size_t i = before; i < m_chunk.parts.size(); ++i) {
            ScenePart& part = m_chunk.parts[i];
            part.colour = style.colour;
            part.pattern = style.pattern;
            part.patternScale = static_cast<float>(style.patternScale);
            part.weight = static_cast<unsigned char>((std::clamp)(style.weight / 10, 0, 255));
        }
    }

    SceneStyles& m_styles;
    SceneChunk& m_chunk;
};

// Around the points of a part; arcs by the places where they turn.
QRectF BoxOf(const ScenePart& part, const std::vector<QPointF>& points) {
    QRectF box = NoBox();
    const QPointF* const p = points.data() + part.first;
    const auto add = [&box](const QPointF& at) { box = United(box, QRectF(at, at)); };
    if (part.kind != ScenePart::kArc) {
        for (unsigned i = 0; i < part.count; ++i) add(p[i]);
        return box;
    }
    const double start = (std::min)(p[3].x(), p[3].x() + p[3].y()), turn = std::fabs(p[3].y());
    const auto at = [p](double t) { return p[0] + p[1] * std::cos(t) + p[2] * std::sin(t); };
    add(at(start));
    add(at(start + turn));
    for (const double turning : {std::atan2(p[2].x(), p[1].x()), std::atan2(p[2].y(), p[1].y())})
        for (double t = turning + std::ceil((start - turning) / host::kPi) * host::kPi;
             t < start + turn; t += host::kPi)
            add(at(t));
    return box;
}

}  // namespace

QRgb ColourOfIndex(int index) {
    static const QRgb kBasic[] = {kForeground, 0xFFFF4040, 0xFFFFFF40,  0xFF40FF40, 0xFF40FFFF,
                                  0xFF6080FF,  0xFFFF40FF, kForeground, 0xFF909090, 0xFFC0C0C0};
    if (index < 10) return kBasic[(std::max)(index, 0)];
    if (index >= 250) return QColor::fromHsv(0, 0, (std::min)(51 * (index - 249), 255)).rgb();
    // Ten shades of each of 24 hues: five steps of darkness, every other one pale.
    static const int kValues[] = {255, 204, 153, 127, 76};
    const int shade = index % 10;
    return QColor::fromHsv((index / 10 - 1) * 15, shade % 2 == 0 ? 255 : 127, kValues[shade / 2])
        .rgb();
}

const SceneStyles::Layer& SceneStyles::LayerOf(AcDbObjectId id) {
    const auto known = m_layers.find(id);
    if (known != m_layers.end()) return known->second;
    Layer& layer = m_layers[id];
    layer.colour = ColourOfIndex(7);
    layer.weight = kUsualWeight;
    const AcDbLayerTableRecordPointer record(id, AcDb::kForRead);
    if (record.openStatus() != Acad::eOk) return layer;
    layer.colour = ColourOf(record->color());
    layer.linetype = record->linetypeObjectId();
    if (record->lineWeight() >= 0) layer.weight = record->lineWeight();
    return layer;
}

short SceneStyles::PatternOf(AcDbObjectId linetype) {
    if (linetype.isNull()) return 0;
    const auto known = m_byLinetype.find(linetype);
    if (known != m_byLinetype.end()) return known->second;
    short& pattern = m_byLinetype[linetype];
    const AcDbObjectPointer<AcDbLinetypeTableRecord> record(linetype, AcDb::kForRead);
    if (record.openStatus() != Acad::eOk || record->numDashes() < 2) return pattern;
    std::vector<double> dashes;
    double length = 0.0;
    for (int i = 0; i < record->numDashes(); ++i) {
        dashes.push_back(record->dashLengthAt(i));
        length += std::fabs(dashes.back());
    }
    if (!(length > 0.0)) return pattern;
    pattern = static_cast<short>(m_patterns.size());
    m_patterns.push_back(std::move(dashes));
    return pattern;
}

void AppendSceneItem(const AcDbEntity& entity, SceneStyles& styles, SceneChunk& chunk) {
    SceneItem item;
    item.id = entity.objectId();
    item.firstPart = static_cast<unsigned>(chunk.parts.size());
    item.firstLabel = static_cast<unsigned>(chunk.labels.size());
    Builder(styles, chunk).Add(entity, nullptr);
    item.parts = static_cast<unsigned>(chunk.parts.size()) - item.firstPart;
    item.labels = static_cast<unsigned>(chunk.labels.size()) - item.firstLabel;
    for (unsigned i = 0; i < item.parts; ++i)
        item.box = United(item.box, BoxOf(chunk.parts[item.firstPart + i], chunk.points));
    for (unsigned i = 0; i < item.labels; ++i)
        item.box = United(item.box, BoxOf(chunk.labels[item.firstLabel + i]));
    chunk.box = United(chunk.box, item.box);
    chunk.items.push_back(item);
}

}  // namespace app
