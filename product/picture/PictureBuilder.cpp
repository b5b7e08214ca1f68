#include "product/picture/PictureBuilder.h"

#include <algorithm>
#include <cmath>

#include "product/base/Extents.h"
#include "product/base/Text.h"
#include "plugin/util/EncircleLayers.h"
#include "plugin/util/LayerTools.h"

namespace product {
namespace {

Affine Flat(const AcGeMatrix3d& m) {
    return {m(0, 0), m(1, 0), m(0, 1), m(1, 1), m(0, 3), m(1, 3)};
}

// References are items: of one on a layer that is off, what has layers of its own still shows.
SDrawnOptions BlockByBlock() {
    SDrawnOptions options;
    options.m_bIntoBlocks = false;
    options.m_bWithHidden = true;
    return options;
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
    {&AcDbAttributeDefinition::desc, &PictureBuilder::DrawAttributeDefinition},
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

PictureBuilder::PictureBuilder(AcDbDatabase& database)
    : m_database(database), m_before(&database, BlockByBlock()) {
    for (const SLayerLinetype& layer : GetLayerLinetypes(&database))
        m_before.LayerOf(layer.m_layerId);
}

Picture PictureBuilder::Run() {
    Begin();
    m_walk->WalkSpace(acdbSymUtil()->blockModelSpaceId(&m_database),
                      [this](const SDrawnItem& item) { DrawItem(item, m_picture.shapes); });
    return Take();
}

Picture PictureBuilder::Run(const AcArray<AcDbObjectId>& ids) {
    Begin();
    m_walk->Walk(ids, [this](const SDrawnItem& item) { DrawItem(item, m_picture.shapes); });
    return Take();
}

void PictureBuilder::Begin() { m_walk.emplace(m_before); }

Picture PictureBuilder::Take() {
    Picture picture = std::move(m_picture);
    m_picture = Picture();
    m_blocks.clear();
    m_walk.reset();
    return picture;
}

Ink PictureBuilder::InkOfLinetype(const AcDbObjectId& linetypeId) {
    const SLinetype& linetype = m_walk->Linetypes().Look(linetypeId);
    if (linetype.m_kind == ELinetypeKind::Centre) return Ink::Centre;
    return linetype.IsContinuous() ? Ink::Outline : Ink::Dashed;
}

bool PictureBuilder::IsEnvelopeLayer(const AcDbObjectId& layerId) {
    return m_walk->LayerName(layerId).CompareNoCase(kEnvelopeLayer) == 0;
}

PictureBuilder::BlockLook PictureBuilder::LookOf(const AcDbObjectId& blockId) {
    const CDrawnWalk::SLayer& layer = m_walk->LayerOf(m_item->m_layerId);
    const bool isOff = (layer.m_nHidden & kDrawnOff) != 0;
    return {blockId,
            isOff,
            IsEnvelopeLayer(m_item->m_layerId),
            InkOfLinetype(layer.m_linetypeId),
            InkOfLinetype(m_item->m_linetypeId),
            m_inDimension};
}

void PictureBuilder::DrawItem(const SDrawnItem& item, Shapes& out) {
    const unsigned int hidden = item.m_nHidden & ~static_cast<unsigned int>(kDrawnLocked);
    const bool mayShow =
        hidden == kDrawnShown ||
        (hidden == kDrawnOff && item.m_entity.isKindOf(AcDbBlockReference::desc()));
    if (!mayShow || IsEnvelopeLayer(item.m_layerId)) return;
    m_ink = m_inDimension ? Ink::Dimension : InkOfLinetype(item.m_linetypeId);
    const SDrawnItem* const outer = m_item;
    m_item = &item;
    Draw(item.m_entity, out);
    m_item = outer;
}

void PictureBuilder::Draw(const AcDbEntity& entity, Shapes& out) {
    for (const ClassRow& row : kClasses)
        if (entity.isKindOf(row.type())) {
            (this->*row.draw)(entity, out);
            return;
        }
}

int PictureBuilder::BlockIndex(const AcDbObjectId& blockId) {
    const BlockLook look = LookOf(blockId);
    const auto known = m_blocks.find(look);
    if (known != m_blocks.end()) return known->second;
    const Ink ink = m_ink;
    Shapes shapes;
    const bool isDrawn = m_walk->WalkBlock(blockId, *m_item,
                                           [&](const SDrawnItem& item) { DrawItem(item, shapes); });
    m_ink = ink;
    if (!isDrawn) return -1;
    if (shapes.empty() && !m_item->IsShown()) return m_blocks[look] = -1;
    m_picture.blocks.push_back(std::move(shapes));
    return m_blocks[look] = static_cast<int>(m_picture.blocks.size()) - 1;
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
    // Counts of zero, which some writers leave, mean one.
    const int rows = array != nullptr ? std::max<int>(array->rows(), 1) : 1;
    const int columns = array != nullptr ? std::max<int>(array->columns(), 1) : 1;
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) {
            AcGeVector3d step(0, 0, 0);
            if (array != nullptr)
                step.set(column * array->columnSpacing(), row * array->rowSpacing(), 0);
            UseBlock(reference.blockTableRecord(),
                     AcGeMatrix3d::translation(axes * step) * reference.blockTransform(), out);
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

void PictureBuilder::DrawAttributeDefinition(const AcDbEntity& entity, Shapes& out) {
    if (m_item->m_nDepth > 0) DrawText(entity, out);
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
