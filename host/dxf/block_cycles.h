// Blocks that contain themselves.
#pragma once

#include <vector>

#include "host/dxf/loaded_drawing.h"

namespace host::dxf {

// Records of block references and dimensions, inside block definitions, without which no block
// would contain itself, directly or through others. Such blocks cannot be drawn or measured to an
// end. Blocks must be named already. O(references).
std::vector<std::size_t> ReferencesThatCloseCycles(const LoadedDrawing& drawing);

}  // namespace host::dxf
