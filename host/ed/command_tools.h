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
    explicit DragOutline(const SelectionSet& entities);
    std::vector<Piece> After(const AcGeMatrix3d& matrix) const;

private:
    std::vector<Piece> m_pieces;
};

// Transforms them all; what refuses is counted and told.
CommandEnd TransformAll(const SelectionSet& entities, const AcGeMatrix3d& matrix);

void Say(const std::wstring& line);

// The commands, by file.
CommandEnd DrawLine(AcApDocument* document);
CommandEnd DrawPolyline(AcApDocument* document);
CommandEnd DrawArc(AcApDocument* document);
CommandEnd MoveEntities(AcApDocument* document);
CommandEnd RotateEntities(AcApDocument* document);
CommandEnd ScaleEntities(AcApDocument* document);
CommandEnd MirrorEntities(AcApDocument* document);
CommandEnd Zoom(AcApDocument* document);
CommandEnd Pan(AcApDocument* document);
CommandEnd Regenerate(AcApDocument* document);
CommandEnd MeasureDistance(AcApDocument* document);
CommandEnd TellPoint(AcApDocument* document);
CommandEnd ListEntities(AcApDocument* document);
CommandEnd Layer(AcApDocument* document);

}  // namespace host
