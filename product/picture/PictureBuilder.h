// Turns a drawing into shapes, entity by entity.
//
// What counts is what a viewer would see from above: curves as curves, texts as labels, hatches by
// their lines, dimensions by their blocks. Coordinates stay those of the drawing, in its units.
#pragma once

#include <unordered_map>

#include "LinetypeKind.h"
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

    // What pictures need of a layer, read once.
    struct LayerLook {
        bool displayed = true;  // neither off nor frozen
        bool isZero = false;    // within a block it stands for the layer of the reference
        bool isEnvelope = false;
        Ink ink = Ink::Outline;  // by the layer's linetype
    };

    const LayerLook& LookOf(const AcDbObjectId& layerId);
    Ink InkOfLinetype(const AcDbObjectId& linetypeId);

    // The entities of a block or of model space, as far as they are displayed; in a block those on
    // layer 0 always are, for their reference decides.
    void DrawContents(const AcDbObjectId& blockId, bool isModelSpace, Shapes& out);
    void DrawDisplayed(const AcDbObjectId& id, bool isModelSpace, Shapes& out);
    void Draw(const AcDbEntity& entity, Shapes& out);
    // Hands the picture over and begins anew; layers stay known.
    Picture Take();

    // The number of a block's shapes, which are drawn when it is first used; -1 while that very
    // block is being drawn, since it holds itself.
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
    // Every cell of an array, and the attributes that show.
    void DrawReference(const AcDbEntity& entity, Shapes& out);
    void DrawFourCorners(const AcDbEntity& entity, Shapes& out);
    // Infinite lines, and definitions of attributes.
    void DrawNothing(const AcDbEntity& entity, Shapes& out);
    // Splines, curves that lie aslant, and whatever else is a curve, by its geometry.
    void DrawAnyCurve(const AcDbEntity& entity, Shapes& out);

    AcDbDatabase& m_database;
    Picture m_picture;         // in the making
    Ink m_ink = Ink::Outline;  // of the entity being drawn
    bool m_inDimension = false;
    std::unordered_map<AcDbObjectId, LayerLook> m_layers;
    std::unordered_map<AcDbObjectId, int> m_blocks;  // by definition, of this picture
    CLinetypes m_linetypes;
};

}  // namespace product
