// Boxes of what block references and dimensions show.
#pragma once

#include "dbents.h"
#include "dbmain.h"

namespace host {

// Pieces up to which a reference is expanded for its box. Beyond it the box of each block is taken
// once and moved, which is as tight for references that stand straight or at right angles, and may
// be larger for others.
constexpr double kMostExactPieces = 250000.0;

// Entities that a reference to a block comes to when it and all in it are taken apart, one cell;
// each block is looked at once. May pass every integer; a block that holds itself counts as
// nothing there.
double CountPieces(const AcDbBlockTableRecord& block);

// Adds the box of the block that a reference or a dimension shows, moved by matrix, to box; as
// tight as the entities' own extents are up to kMostExactPieces. Attributes of nested references
// count, the entity's own do not. Nothing for other entities.
// cost   O(min(p, kMostExactPieces) + n) for p pieces and n entities of the blocks; the depth of
//        nesting does not matter
void AddShownBlock(const AcDbEntity& entity, const AcGeMatrix3d& matrix, AcDbExtents& box);

// Adds the box of a single entity after a map, as tight as its own extents are where it can be
// mapped.
void AddMoved(const AcDbEntity& entity, const AcGeMatrix3d& matrix, AcDbExtents& box);

}  // namespace host
