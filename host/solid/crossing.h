// Finds where the outline of a profile meets itself.
#pragma once

#include <optional>
#include <vector>

#include "host/solid/piece.h"

namespace host::solid {

// The first place where two pieces of a closed ring come within the position tolerance of one
// another, other than neighbours at their common corner; nothing when the ring is simple. The
// pieces follow one another, the last ends where the first starts; two pieces or more.
//
// cost  O(n log n) for outlines as drawings have them: a tree of boxes over runs of consecutive
//       pieces, compared with itself; memory O(n).
std::optional<AcGePoint2d> FindSelfMeeting(const std::vector<Piece>& ring);

}  // namespace host::solid
