// Joins neighbours of a chain that lie on one line or one circle.
#pragma once

#include "host/solid/profile.h"

namespace host::solid {

// Lines: joined when every corner in between stays within kJoinTol of the joined line. Arcs: when
// the next one lies within kJoinTol of the first one's circle and turns the same way, up to 240
// degrees. A closed chain keeps at least two pieces. Cost O(n).
void JoinNeighbours(Chain& chain);

}  // namespace host::solid
