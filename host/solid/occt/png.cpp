#include "host/solid/occt/occt_solid.h"

#include <csetjmp>
#include <cstddef>

#include <png.h>

namespace host::solid {

namespace {

void Append(png_structp png, png_bytep data, png_size_t size) {
    static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<char*>(data), size);
}
void Flush(png_structp) {}

}  // namespace

// The library reports failures by a long jump over C frames only; nothing with a destructor is made
// between the mark and the last call.
bool PngBytes(const Image& image, std::string& bytes, std::string& reason) {
    std::string made;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png == nullptr ? nullptr : png_create_info_struct(png);
    if (info == nullptr || setjmp(png_jmpbuf(png)) != 0) {
        png_destroy_write_struct(&png, &info);
        reason = "the picture cannot be compressed";
        return false;
    }
    png_set_write_fn(png, &made, Append, Flush);
    png_set_IHDR(png, info, static_cast<png_uint_32>(image.width),
                 static_cast<png_uint_32>(image.height), 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    for (int row = 0; row < image.height; ++row)
        png_write_row(png,
                      image.pixels.data() + static_cast<std::ptrdiff_t>(3) * image.width * row);
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    bytes = std::move(made);
    return true;
}

}  // namespace host::solid
