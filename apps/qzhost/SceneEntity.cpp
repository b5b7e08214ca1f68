#include "apps/qzhost/SceneEntity.h"

#include <cmath>
#include <memory>

#include "product/base/Text.h"
#include "arxHeaders.h"
#include "host/ed/outline.h"

namespace app {
namespace {

// Block references in block references; a drawing that refers to itself must end somewhere.
constexpr int kMaxDepth = 16;

QRgb ColourOfIndex(int index) {
    static const QRgb kBasic[] = {0xFFE8E8E8, 0xFFFF4040, 0xFFFFFF40, 0xFF40FF40, 0xFF40FFFF,
                                  0xFF6080FF, 0xFFFF40FF, 0xFFE8E8E8, 0xFF909090, 0xFFC0C0C0};
    if (index < 10) return kBasic[(std::max)(index, 0)];
    if (index >= 250) return QColor::fromHsv(0, 0, (std::min)(51 * (index - 249), 255)).rgb();
    // Ten shades of each of 24 hues: five steps of darkness, every other one pale.
    static const int kValues[] = {255, 204, 153, 127, 76};
    const int shade = index % 10;
    return QColor::fromHsv((index / 10 - 1) * 15, shade % 2 == 0 ? 255 : 127, kValues[shade / 2])
        .rgb();
}

QRgb ColourOf(const AcCmEntityColor& colour) {
    return colour.isByColor() ? qRgb(colour.red(), colour.green(), colour.blue())
                              : ColourOfIndex(colour.colorIndex());
}

Qt::PenStyle StyleOf(const AcDbObjectId& linetype) {
    AcString name;
    if (acdbSymUtil()->getSymbolName(name, linetype) != Acad::eOk) return Qt::SolidLine;
    name.makeUpper();
    if (name.find(_T("CENTER")) >= 0 || name.find(_T("DASHDOT")) >= 0) return Qt::DashDotLine;
    return name == _T("CONTINUOUS") || name == _T("BYBLOCK") ? Qt::SolidLine : Qt::DashLine;
}

QTransform Flat(const AcGeMatrix3d& m) {
    return QTransform(m(0, 0), m(1, 0), m(0, 1), m(1, 1), m(0, 3), m(1, 3));
}

QString PlainText(const std::string& text) {
    return QString::fromStdString(product::PlainText(text));
}

SceneLabel LabelOf(const AcDbText& text) {
    const AcDb::TextHorzMode across = text.horizontalMode();
    const bool isStretched = across == AcDb::kTextFit || across == AcDb::kTextAlign;
    const AcGePoint3d at =
        text.isDefaultAlignment() || isStretched ? text.position() : text.alignmentPoint();
    SceneLabel label;
    label.text = PlainText(product::ToUtf8(text.textStringConst()));
    label.height = text.height();
    label.anchor = across == AcDb::kTextRight                                ? 2
                   : across == AcDb::kTextMid || across == AcDb::kTextCenter ? 1
                                                                             : 0;
    double down = 0.0;
    if (text.verticalMode() == AcDb::kTextTop) down = label.height;
    if (text.verticalMode() == AcDb::kTextVertMid || across == AcDb::kTextMid)
        down = label.height / 2;
    label.place =
        Flat(AcGeMatrix3d::translation(at.asVector()) * AcGeMatrix3d::planeToWorld(text.normal()) *
             AcGeMatrix3d::rotation(text.rotation(), AcGeVector3d::kZAxis) *
             AcGeMatrix3d::translation(AcGeVector3d(0, -down, 0)));
    return label;
}

void AddLines(const AcDbMText& text, std::vector<SceneLabel>& labels) {
    ACHAR* contents = text.contents();
    const std::vector<std::string> lines = product::PlainLines(product::ToUtf8(contents));
    acutDelString(contents);
    const double height = text.textHeight();
    const double step = height * 5 / 3 * text.lineSpacingFactor();
    const double block = height + step * (static_cast<double>(lines.size()) - 1);
    const int row = (text.attachment() - 1) / 3;
    const double top = block * row / 2;
    const AcGeMatrix3d axes = AcGeMatrix3d::translation(text.location().asVector()) *
                              AcGeMatrix3d::planeToWorld(text.normal()) *
                              AcGeMatrix3d::rotation(text.rotation(), AcGeVector3d::kZAxis);
    for (size_t i = 0; i < lines.size(); ++i) {
        const AcGeVector3d down(0, top - height - step * static_cast<double>(i), 0);
        labels.push_back({QString::fromStdString(lines[i]), height, (text.attachment() - 1) % 3,
                          Flat(axes * AcGeMatrix3d::translation(down))});
    }
}

bool IsCompound(const AcDbEntity& entity) {
    return entity.isKindOf(AcDbBlockReference::desc()) || entity.isKindOf(AcDbDimension::desc()) ||
           entity.isKindOf(AcDbHatch::desc());
}

void Add(const AcDbEntity& entity, SceneItem& item, int depth);

void AddAttributes(const AcDbBlockReference& reference, SceneItem& item) {
    const std::unique_ptr<AcDbObjectIterator> attributes(reference.attributeIterator());
    for (; attributes != nullptr && !attributes->done(); attributes->step()) {
        const AcDbObjectPointer<AcDbAttribute> attribute(attributes->objectId(), AcDb::kForRead);
        if (attribute.openStatus() == Acad::eOk && !attribute->isInvisible())
            item.labels.push_back(LabelOf(*attribute.object()));
    }
}

void AddParts(const AcDbVoidPtrArray& parts, SceneItem& item, int depth) {
    for (int i = 0; i < parts.length(); ++i) {
        const std::unique_ptr<AcDbEntity> part(static_cast<AcDbEntity*>(parts[i]));
        if (part->visibility() == AcDb::kVisible) Add(*part, item, depth);
    }
}

void Add(const AcDbEntity& entity, SceneItem& item, int depth) {
    AcDbVoidPtrArray parts;
    if (entity.isKindOf(AcDbAttributeDefinition::desc())) return;
    if (const auto* text = AcDbText::cast(&entity)) {
        item.labels.push_back(LabelOf(*text));
    } else if (const auto* lines = AcDbMText::cast(&entity)) {
        AddLines(*lines, item.labels);
    } else if (depth < kMaxDepth && IsCompound(entity) && entity.explode(parts) == Acad::eOk) {
        AddParts(parts, item, depth + 1);
        if (const auto* reference = AcDbBlockReference::cast(&entity))
            AddAttributes(*reference, item);
    } else {
        std::vector<host::Piece> pieces;
        host::AppendOutline(entity, pieces);
        for (const host::Piece& piece : pieces) {
            const QPointF from(piece.first.x, piece.first.y);
            if (item.path.isEmpty() || item.path.currentPosition() != from) item.path.moveTo(from);
            item.path.lineTo(piece.second.x, piece.second.y);
        }
    }
}

}  // namespace

SceneItem MakeSceneItem(const AcDbEntity& entity) {
    SceneItem item;
    item.id = entity.objectId();
    const AcDbLayerTableRecordPointer layer(entity.layerId(), AcDb::kForRead);
    const bool hasLayer = layer.openStatus() == Acad::eOk;
    const AcCmEntityColor colour = entity.entityColor();
    item.colour = colour.isByLayer() && hasLayer ? ColourOf(layer->color()) : ColourOf(colour);
    const bool isByLayer = entity.linetypeId() == entity.database()->byLayerLinetype();
    item.style = StyleOf(isByLayer && hasLayer ? layer->linetypeObjectId() : entity.linetypeId());
    Add(entity, item, 0);
    return item;
}

}  // namespace app
