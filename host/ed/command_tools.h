// What the host's own commands share.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "dbmain.h"
#include "gemat3d.h"
#include "host/ed/builtin_commands.h"
#include "host/ed/outline.h"
#include "host/ed/prompts.h"
#include "host/ed/selection_sets.h"

namespace host {

// The set picked beforehand, which is used up, else what the user selects; without what lies on
// locked layers, which is told.
SelectionSet SelectForChange(AcApDocument& document);

// Appends a new entity with the drawing's current properties to the current space.
Acad::ErrorStatus AddToDrawing(AcDbDatabase& database, std::unique_ptr<AcDbEntity> entity,
                               AcDbObjectId* id = nullptr);
// The same for one that has its properties already.
Acad::ErrorStatus AddCopy(AcDbDatabase& database, std::unique_ptr<AcDbEntity> entity,
                          AcDbObjectId* id = nullptr);

// The outlines of the entities, thinned out when they are many, as they look after the matrix.
class DragOutline {
public:
    explicit DragOutline(const SelectionSet& entities);  // O(curves of the entities), once
    // for drawing while the pointer moves
    std::vector<Piece> After(const AcGeMatrix3d& matrix) const;

private:
    std::vector<Piece> m_pieces;
};

// Transforms them all; what refuses is counted and told.
CommandEnd TransformAll(const SelectionSet& entities, const AcGeMatrix3d& matrix);

void Say(const std::wstring& line);  // a line to the command line's history

// The commands, by file.
// LINE: segments until Enter, Close or Undo.
CommandEnd DrawLine(AcApDocument* document);
// PLINE: one polyline of lines and arcs.
CommandEnd DrawPolyline(AcApDocument* document);
// ARC: through three points.
CommandEnd DrawArc(AcApDocument* document);
// MOVE: from one point to another.
CommandEnd MoveEntities(AcApDocument* document);
// ROTATE: about a point, by an angle or a second point.
CommandEnd RotateEntities(AcApDocument* document);
// SCALE: from a point, by a factor or two lengths.
CommandEnd ScaleEntities(AcApDocument* document);
// MIRROR: at a line, with or without what it was.
CommandEnd MirrorEntities(AcApDocument* document);
CommandEnd Zoom(AcApDocument* document);        // ZOOM: all, extents, window, previous, or a factor
CommandEnd Pan(AcApDocument* document);         // PAN: moves the view
CommandEnd Regenerate(AcApDocument* document);  // REGEN: draws anew
CommandEnd MeasureDistance(AcApDocument* document);
CommandEnd TellPoint(AcApDocument* document);         // ID: coordinates of a point
CommandEnd ListEntities(AcApDocument* document);      // LIST: what picked entities are
CommandEnd Layer(AcApDocument* document);             // -LAYER: layers by prompts
CommandEnd ChangeProperties(AcApDocument* document);  // PROPERTIES: by name, until Enter
CommandEnd StretchByGrip(AcApDocument* document);     // GRIP: what is picked, by one of its grips

}  // namespace host
