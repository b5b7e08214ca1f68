#include "host/solid/occt/occt_solid.h"

#include <png.h>

namespace host::solid {

bool PngBytes(const Image& image, std::string& bytes, std::string& reason) {
    png_image header{};
    header.version = PNG_IMAGE_VERSION;
    header.width = static_cast<png_uint_32>(image.width);
    header.height = static_cast<png_uint_32>(image.height);
    header.format = PNG_FORMAT_RGB;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(header);
    std::string made(size, '\0');
    if (png_image_write_to_memory(&header, made.data(), &size, 0, image.pixels.data(), 0,
                                  nullptr) == 0) {
        reason = std::string("the picture cannot be compressed: ") + header.message;
        return false;
    }
    made.resize(size);
    bytes = std::move(made);
    return true;
}

}  // namespace host::solid
