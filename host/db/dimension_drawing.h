// The block that draws a dimension.
#pragma once

#include "dbdim.h"
#include "dbsymtb.h"

namespace host {

// Null when the dimension has none, or it is erased.
const AcDbBlockTableRecord* DrawingOf(const AcDbDimension& dimension);

// Where the block stands: in its own coordinates, moved by the insertion point for clones (group
// 12, OCS).
AcGeMatrix3d PlaceOfDrawing(const AcDbDimension& dimension);

// Definition points are kept in the block but not drawn.
bool IsDrawnOfDimension(const AcDbEntity& entity);

}  // namespace host
