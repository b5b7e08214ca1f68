// Turns a drawing into shapes, entity by entity.
//
// What counts is what a viewer would see from above: curves as curves, texts as labels, hatches by
// their lines, dimensions by their blocks. Coordinates stay those of the drawing, in its units.
#pragma once

#include <map>
#include <optional>
#include <tuple>

#include "DrawnWalk.h"
#include "product/picture/Picture.h"
#include "arxHeaders.h"

namespace product {

// Draws what is displayed in model space, block definitions once each. Solids, images and what the
// database does not know are left out; so are envelopes, which are drawn from their own data.
//
// cost  opens every displayed entity once
class PictureBuilder {
public:
    // Reads the layers: what they show at this moment is what pictures show, whatever a run
    // switches on afterwards. Nothing in the drawing changes, here and below.
    explicit PictureBuilder(AcDbDatabase& database);

    // The shapes of model space and their blocks; envelope, axis and view are for the caller.
    Picture Run();
    // The same of some entities of model space, with the blocks that these use. What is not
    // displayed, or cannot be opened, is left out.
    Picture Run(const AcArray<AcDbObjectId>& ids);

private:
    using Shapes = std::vector<Shape>;
    // Draws one entity of its class into the shapes, with m_ink as the ink.
    using DrawFunction = void (PictureBuilder::*)(const AcDbEntity&, Shapes&);
    struct ClassRow {
        AcRxClass* (*type)();
        DrawFunction draw;
    };
    // From the special to the general: the first row whose class an entity is of draws it. An
    // entity of no row is left out.
    static const ClassRow kClasses[];

    // A block, and what a reference to it decides of its look: whether its layer is off, holds
    // envelopes, the inks by layer and by block, and whether all is in the ink of dimensions.
    // References that agree in this share one set of shapes.
    using BlockLook = std::tuple<AcDbObjectId, bool, bool, Ink, Ink, bool>;

    Ink InkOfLinetype(const AcDbObjectId& linetypeId);
    bool IsEnvelopeLayer(const AcDbObjectId& layerId);
    BlockLook LookOf(const AcDbObjectId& blockId);

    // Draws what a walk comes by; for the visitors of m_walk.
    void DrawItem(const SDrawnItem& item, Shapes& out);
    void Draw(const AcDbEntity& entity, Shapes& out);
    // Begins a picture with the layers as they were, and hands it over at the end.
    void Begin();
    Picture Take();

    // The number of a block's shapes as the item in hand shows it; they are drawn when they are
    // first used. -1 for a block that holds itself, or shows nothing because its layer is off.
    int BlockIndex(const AcDbObjectId& blockId);
    void UseBlock(const AcDbObjectId& blockId, const AcGeMatrix3d& place, Shapes& out);
    // Empty paths and texts make no shape.
    void AddStroke(Path path, Shapes& out) const;
    void AddLabel(const std::string& text, double height, int anchor, const Affine& place,
                  Shapes& out) const;

    // One for each kind of entity, in the order of the rows.
    void DrawLine(const AcDbEntity& entity, Shapes& out);
    void DrawArc(const AcDbEntity& entity, Shapes& out);
    void DrawCircle(const AcDbEntity& entity, Shapes& out);
    void DrawEllipse(const AcDbEntity& entity, Shapes& out);
    void DrawPolyline(const AcDbEntity& entity, Shapes& out);
    // By what it explodes into: heavy polylines, whose fitted curves then show.
    void DrawPieces(const AcDbEntity& entity, Shapes& out);
    void DrawHatch(const AcDbEntity& entity, Shapes& out);
    void DrawText(const AcDbEntity& entity, Shapes& out);
    void DrawMText(const AcDbEntity& entity, Shapes& out);
    // The dimension's own block, in the ink of dimensions; its extents are noted for the caller,
    // who may widen the view for it.
    void DrawDimension(const AcDbEntity& entity, Shapes& out);
    void DrawLeader(const AcDbEntity& entity, Shapes& out);
    // Every cell of an array.
    void DrawReference(const AcDbEntity& entity, Shapes& out);
    void DrawFourCorners(const AcDbEntity& entity, Shapes& out);
    // Constant ones, within blocks.
    void DrawAttributeDefinition(const AcDbEntity& entity, Shapes& out);
    // Infinite lines.
    void DrawNothing(const AcDbEntity& entity, Shapes& out);
    // Splines, curves that lie aslant, and whatever else is a curve, by its geometry.
    void DrawAnyCurve(const AcDbEntity& entity, Shapes& out);

    AcDbDatabase& m_database;
    Picture m_picture;         // in the making
    Ink m_ink = Ink::Outline;  // of the entity being drawn
    bool m_inDimension = false;
    CDrawnWalk m_before;                 // has read the layers, and nothing else
    std::optional<CDrawnWalk> m_walk;    // of the picture in the making
    const SDrawnItem* m_item = nullptr;  // that the walk has come to
    std::map<BlockLook, int> m_blocks;   // of this picture
};

}  // namespace product
