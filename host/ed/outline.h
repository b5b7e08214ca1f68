// The drawn shape of an entity as straight pieces, for picking.
#pragma once

#include <utility>
#include <vector>

#include "dbmain.h"
#include "gepnt3d.h"

namespace host {

using Piece = std::pair<AcGePoint3d, AcGePoint3d>;

// Appends the pieces of what is drawn: curves sampled (64 steps, lines exactly), block references,
// dimensions and polylines through their parts, everything else by the frame of its extents. Parts
// that cannot be had are left out. O(size of the entity).
void AppendOutline(const AcDbEntity& entity, std::vector<Piece>& pieces);

// Distance in the XY plane.
double DistanceToPiece(const AcGePoint3d& point, const Piece& piece);

// True when the piece has a point in the rectangle, its border included.
bool MeetsRectangle(const Piece& piece, const AcGePoint3d& min, const AcGePoint3d& max);

}  // namespace host
