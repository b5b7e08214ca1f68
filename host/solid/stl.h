// STL files.
#pragma once

#include <string>

#include "host/solid/kernel.h"

namespace host::solid {

// Binary STL: 80 bytes of head, the count, then normal and corners of each triangle as 32-bit
// reals, little-endian (3D Systems, 1988). Triangles that single precision folds into a line are
// left out. The head names the writer and nothing that changes from run to run.
std::string StlBytes(const Mesh& mesh);

}  // namespace host::solid
