// Reads STEP files by the modelling kernel's own reader, which knows nothing of how ours are
// written.
#pragma once

#include <string>

namespace step {

// What the kernel finds in a file.
struct Solid {
    std::string fault;  // empty: one valid solid
    double volume = 0.0, area = 0.0;
    int planes = 0, cones = 0, spheres = 0, tori = 0, faces = 0;
};

Solid Read(const std::string& text);

}  // namespace step
