// Turns a drawing into shapes.
#pragma once

#include <unordered_map>

#include "product/picture/Picture.h"
#include "arxHeaders.h"

namespace product {

// Draws what is displayed in model space, block definitions once each. Solids, images and what the
// database does not know are left out; so are envelopes, which are drawn from their own data.
//
// cost  opens every displayed entity once
class PictureBuilder {
public:
    // Reads the layers: what they show at this moment is what pictures show.
    explicit PictureBuilder(AcDbDatabase& database);

    // The shapes of model space and their blocks; envelope, axis and view are for the caller.
    Picture Run();
    // The same of some entities of model space.
    Picture Run(const AcArray<AcDbObjectId>& ids);

private:
    using Shapes = std::vector<Shape>;
    using DrawFunction = void (PictureBuilder::*)(const AcDbEntity&, Shapes&);
    struct ClassRow {
        AcRxClass* (*type)();
        DrawFunction draw;
    };
    static const ClassRow kClasses[];

    struct LayerLook {
        bool displayed = true;
        bool isZero = false;
        bool isEnvelope = false;
        Ink ink = Ink::Outline;  // by the layer's linetype
    };

    const LayerLook& LookOf(const AcDbObjectId& layerId);
    Ink InkOfLinetype(const AcDbObjectId& linetypeId) const;
    void DrawContents(const AcDbObjectId& blockId, bool isModelSpace, Shapes& out);
    void DrawDisplayed(const AcDbObjectId& id, bool isModelSpace, Shapes& out);
    Picture Take();
    void Draw(const AcDbEntity& entity, Shapes& out);
    int BlockIndex(const AcDbObjectId& blockId);
    void UseBlock(const AcDbObjectId& blockId, const AcGeMatrix3d& place, Shapes& out);
    void AddStroke(Path path, Shapes& out) const;
    void AddLabel(const std::string& text, double height, int anchor, const Affine& place,
                  Shapes& out) const;

    void DrawLine(const AcDbEntity& entity, Shapes& out);
    void DrawArc(const AcDbEntity& entity, Shapes& out);
    void DrawCircle(const AcDbEntity& entity, Shapes& out);
    void DrawEllipse(const AcDbEntity& entity, Shapes& out);
    void DrawPolyline(const AcDbEntity& entity, Shapes& out);
    void DrawPieces(const AcDbEntity& entity, Shapes& out);
    void DrawHatch(const AcDbEntity& entity, Shapes& out);
    void DrawText(const AcDbEntity& entity, Shapes& out);
    void DrawMText(const AcDbEntity& entity, Shapes& out);
    void DrawDimension(const AcDbEntity& entity, Shapes& out);
    void DrawLeader(const AcDbEntity& entity, Shapes& out);
    void DrawReference(const AcDbEntity& entity, Shapes& out);
    void DrawFourCorners(const AcDbEntity& entity, Shapes& out);
    void DrawNothing(const AcDbEntity& entity, Shapes& out);
    void DrawAnyCurve(const AcDbEntity& entity, Shapes& out);

    AcDbDatabase& m_database;
    Picture m_picture;
    Ink m_ink = Ink::Outline;  // of the entity being drawn
    bool m_inDimension = false;
    std::unordered_map<AcDbObjectId, LayerLook> m_layers;
    std::unordered_map<AcDbObjectId, int> m_blocks;
};

}  // namespace product
