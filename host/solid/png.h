// Pictures as PNG files.
#pragma once

#include <string>
#include <vector>

namespace host::solid {

// Rows from the top, red green blue.
struct Image {
    int width = 0, height = 0;
    std::vector<unsigned char> pixels;
};

// The image as a PNG file, packed quickly rather than tightly. False with a reason when the library
// for it, loaded at the first call, is missing or refuses.
// cost   linear in the pixels.
bool EncodePng(const Image& image, std::string& bytes, std::string& reason);

}  // namespace host::solid
