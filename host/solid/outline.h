// First half of preparing a profile: from the outline as drawn to a clean ring of pieces in frame
// coordinates.
#pragma once

#include <vector>

#include "host/solid/profile.h"

namespace host::solid {

// Numbers, closedness and the axis; fills the frame and the outline's corners in frame coordinates,
// the closing corner dropped, y mostly positive.
Refusal PlaceOnAxis(const Outline& outline, const AcGePoint3d& axisPoint,
                    const AcGeVector3d& axisDir, Frame& frame, std::vector<Corner>& corners);

// Corners to pieces: wide arcs are halved, short pieces go, ends snap to the axis and to
// axis-parallel lines, nearly straight arcs become lines. Empty when fewer than two pieces are
// left.
std::vector<Piece> CleanRing(const std::vector<Corner>& corners);

}  // namespace host::solid
