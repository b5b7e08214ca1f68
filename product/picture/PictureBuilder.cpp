#include "product/picture/PictureBuilder.h"

#include <cmath>
#include <memory>

#include "product/base/Extents.h"
#include "product/base/Text.h"
#include "plugin/util/EncircleLayers.h"
#include "plugin/util/LayerTools.h"

namespace product {
namespace {

Affine Flat(const AcGeMatrix3d& m) {
    return {m(0, 0), m(1, 0), m(0, 1), m(1, 1), m(0, 3), m(1, 3)};
}

}  // namespace

// The first row whose class the entity is of draws it.
const PictureBuilder::ClassRow PictureBuilder::kClasses[] = {
    {&AcDbLine::desc, &PictureBuilder::DrawLine},
    {&AcDbPolyline::desc, &PictureBuilder::DrawPolyline},
    {&AcDbArc::desc, &PictureBuilder::DrawArc},
    {&AcDbCircle::desc, &PictureBuilder::DrawCircle},
    {&AcDbEllipse::desc, &PictureBuilder::DrawEllipse},
    {&AcDbBlockReference::desc, &PictureBuilder::DrawReference},
    {&AcDbDimension::desc, &PictureBuilder::DrawDimension},
    {&AcDbAttributeDefinition::desc, &PictureBuilder::DrawNothing},
    {&AcDbText::desc, &PictureBuilder::DrawText},
    {&AcDbMText::desc, &PictureBuilder::DrawMText},
    {&AcDb2dPolyline::desc, &PictureBuilder::DrawPieces},
    {&AcDb3dPolyline::desc, &PictureBuilder::DrawPieces},
    {&AcDbLeader::desc, &PictureBuilder::DrawLeader},
    {&AcDbHatch::desc, &PictureBuilder::DrawHatch},
    {&AcDbSolid::desc, &PictureBuilder::DrawFourCorners},
    {&AcDbTrace::desc, &PictureBuilder::DrawFourCorners},
    {&AcDbRay::desc, &PictureBuilder::DrawNothing},
    {&AcDbXline::desc, &PictureBuilder::DrawNothing},
    {&AcDbCurve::desc, &PictureBuilder::DrawAnyCurve},
};

PictureBuilder::PictureBuilder(AcDbDatabase& database) : m_database(database) {
    for (const SLayerLinetype& layer : GetLayerLinetypes(&database)) LookOf(layer.m_layerId);
}

Picture PictureBuilder::Run() {
    DrawContents(acdbSymUtil()->blockModelSpaceId(&m_database), true, m_picture.shapes);
    return Take();
}

Picture PictureBuilder::Run(const AcArray<AcDbObjectId>& ids) {
    for (int i = 0; i < ids.length(); ++i) DrawDisplayed(ids[i], true, m_picture.shapes);
    return Take();
}

Picture PictureBuilder::Take() {
    Picture picture = std::move(m_picture);
    m_picture = Picture();
    m_blocks.clear();
    return picture;
}

Ink PictureBuilder::InkOfLinetype(const AcDbObjectId& linetypeId) {
    // What follows its layer or its block without having one is drawn full.
    if (linetypeId == m_database.byBlockLinetype()) return Ink::Outline;
    const SLinetype& linetype = m_linetypes.Look(linetypeId);
    if (linetype.m_kind == ELinetypeKind::Centre) return Ink::Centre;
    return linetype.IsContinuous() ? Ink::Outline : Ink::Dashed;
}

const PictureBuilder::LayerLook& PictureBuilder::LookOf(const AcDbObjectId& layerId) {
    const auto [at, isNew] = m_layers.try_emplace(layerId);
    if (!isNew) return at->second;
    LayerLook& look = at->second;
    AcDbLayerTableRecordPointer layer(layerId, AcDb::kForRead);
    if (layer.openStatus() != Acad::eOk) return look;
    AcString name;
    look.displayed = !layer->isOff() && !layer->isFrozen();
    look.isZero = layerId == m_database.layerZero();
    look.isEnvelope = layer->getName(name) == Acad::eOk && name.compareNoCase(kEnvelopeLayer) == 0;
    look.ink = InkOfLinetype(layer->linetypeObjectId());
    return look;
}

void PictureBuilder::DrawContents(const AcDbObjectId& blockId, bool isModelSpace, Shapes& out) {
    AcDbObjectPointer<AcDbBlockTableRecord> block(blockId, AcDb::kForRead);
    AcDbBlockTableRecordIterator* made = nullptr;
    if (block.openStatus() != Acad::eOk || block->newIterator(made) != Acad::eOk) return;
    const std::unique_ptr<AcDbBlockTableRecordIterator> entities(made);
    for (; !entities->done(); entities->step()) {
        AcDbObjectId id;
        if (entities->getEntityId(id) == Acad::eOk) DrawDisplayed(id, isModelSpace, out);
    }
}

void PictureBuilder::DrawDisplayed(const AcDbObjectId& id, bool isModelSpace, Shapes& out) {
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    if (entity.openStatus() != Acad::eOk || entity->visibility() == AcDb::kInvisible) return;
    // Inside a block, layer 0 stands for the layer of the reference.
    const LayerLook& look = LookOf(entity->layerId());
    if ((!look.displayed && (isModelSpace || !look.isZero)) || look.isEnvelope) return;
    m_ink = entity->linetypeId() == m_database.byLayerLinetype()
                ? look.ink
                : InkOfLinetype(entity->linetypeId());
    if (m_inDimension) m_ink = Ink::Dimension;
    Draw(*entity.object(), out);
}

void PictureBuilder::Draw(const AcDbEntity& entity, Shapes& out) {
    for (const ClassRow& row : kClasses)
        if (entity.isKindOf(row.type())) {
            (this->*row.draw)(entity, out);
            return;
        }
}

int PictureBuilder::BlockIndex(const AcDbObjectId& blockId) {
    const auto [at, isNew] = m_blocks.try_emplace(blockId, -1);
    if (!isNew) return at->second;  // -1: this very block is being drawn, it holds itself
    const Ink ink = m_ink;
    Shapes shapes;
    DrawContents(blockId, false, shapes);
    m_ink = ink;
    m_picture.blocks.push_back(std::move(shapes));
    return m_blocks[blockId] = static_cast<int>(m_picture.blocks.size()) - 1;
}

void PictureBuilder::UseBlock(const AcDbObjectId& blockId, const AcGeMatrix3d& place, Shapes& out) {
    Shape use;
    use.kind = Shape::BlockUse;
    use.block = BlockIndex(blockId);
    use.place = Flat(place);
    if (use.block >= 0) out.push_back(use);
}

void PictureBuilder::AddStroke(Path path, Shapes& out) const {
    if (path.IsEmpty()) return;
    Shape shape;
    shape.ink = m_ink;
    shape.path = std::move(path);
    out.push_back(std::move(shape));
}

void PictureBuilder::AddLabel(const std::string& text, double height, int anchor,
                              const Affine& place, Shapes& out) const {
    if (text.empty() || !(height > 0)) return;
    Shape shape;
    shape.kind = Shape::Label;
    shape.text = text;
    shape.textHeight = height;
    shape.anchor = anchor;
    shape.place = place;
    out.push_back(shape);
}

void PictureBuilder::DrawReference(const AcDbEntity& entity, Shapes& out) {
    const auto& reference = *AcDbBlockReference::cast(&entity);
    const auto* array = AcDbMInsertBlock::cast(&entity);
    const AcGeMatrix3d axes = AcGeMatrix3d::planeToWorld(reference.normal()) *
                              AcGeMatrix3d::rotation(reference.rotation(), AcGeVector3d::kZAxis);
    for (int row = 0; row < (array != nullptr ? array->rows() : 1); ++row)
        for (int column = 0; column < (array != nullptr ? array->columns() : 1); ++column) {
            AcGeVector3d step(0, 0, 0);
            if (array != nullptr)
                step.set(column * array->columnSpacing(), row * array->rowSpacing(), 0);
            UseBlock(reference.blockTableRecord(),
                     AcGeMatrix3d::translation(axes * step) * reference.blockTransform(), out);
        }
    const std::unique_ptr<AcDbObjectIterator> attributes(reference.attributeIterator());
    for (; attributes && !attributes->done(); attributes->step()) {
        AcDbObjectPointer<AcDbAttribute> attribute(attributes->objectId(), AcDb::kForRead);
        if (attribute.openStatus() == Acad::eOk && !attribute->isInvisible())
            DrawText(*attribute.object(), out);
    }
}

// A dimension shows its block, whose coordinates are the drawing's own.
void PictureBuilder::DrawDimension(const AcDbEntity& entity, Shapes& out) {
    const AcDbObjectId blockId = AcDbDimension::cast(&entity)->dimBlockId();
    if (blockId.isNull()) return;
    const bool outer = m_inDimension;
    m_inDimension = true;
    UseBlock(blockId, AcGeMatrix3d::kIdentity, out);
    m_inDimension = outer;
    const std::optional<Box> box = ExtentsOf(entity);
    if (box && !outer) m_picture.dimensions.push_back(*box);
}

void PictureBuilder::DrawNothing(const AcDbEntity&, Shapes&) {}

void PictureBuilder::DrawText(const AcDbEntity& entity, Shapes& out) {
    const auto& text = *AcDbText::cast(&entity);
    const AcDb::TextHorzMode across = text.horizontalMode();
    const bool middle = across == AcDb::kTextMid || across == AcDb::kTextCenter;
    const AcGePoint3d at =
        text.isDefaultAlignment() || across == AcDb::kTextFit || across == AcDb::kTextAlign
            ? text.position()
            : text.alignmentPoint();
    AcGeMatrix3d place = AcGeMatrix3d::translation(at.asVector()) *
                         AcGeMatrix3d::planeToWorld(text.normal()) *
                         AcGeMatrix3d::rotation(text.rotation(), AcGeVector3d::kZAxis);
    const double height = text.height();
    double down = 0;  // from the place to the base line
    if (text.verticalMode() == AcDb::kTextTop) down = height;
    if (text.verticalMode() == AcDb::kTextVertMid || across == AcDb::kTextMid) down = height / 2;
    place = place * AcGeMatrix3d::translation(AcGeVector3d(0, -down, 0));
    Affine flat = Flat(place);
    const double wide = text.widthFactor() * (text.isMirroredInX() ? -1 : 1);
    flat.a *= wide;
    flat.b *= wide;
    AddLabel(PlainText(ToUtf8(text.textStringConst())), height,
             middle                       ? 1
             : across == AcDb::kTextRight ? 2
                                          : 0,
             flat, out);
}

void PictureBuilder::DrawMText(const AcDbEntity& entity, Shapes& out) {
    const auto& text = *AcDbMText::cast(&entity);
    ACHAR* contents = text.contents();
    const std::vector<std::string> lines = PlainLines(ToUtf8(contents));
    acutDelString(contents);
    const double height = text.textHeight();
    const double step = height * 5 / 3 * text.lineSpacingFactor();  // base line to base line
    const double block = height + step * static_cast<double>(lines.size() - 1);
    const int row = (text.attachment() - 1) / 3, column = (text.attachment() - 1) % 3;
    const double top = row == 0 ? 0 : row == 1 ? block / 2 : block;
    const AcGeMatrix3d axes = AcGeMatrix3d::translation(text.location().asVector()) *
                              AcGeMatrix3d::planeToWorld(text.normal()) *
                              AcGeMatrix3d::rotation(text.rotation(), AcGeVector3d::kZAxis);
    for (size_t i = 0; i < lines.size(); ++i) {
        const AcGeVector3d down(0, top - height - step * static_cast<double>(i), 0);
        AddLabel(lines[i], height, column, Flat(axes * AcGeMatrix3d::translation(down)), out);
    }
}

}  // namespace product
