// libpng, loaded when the first picture is written: most runs write none.
#include "host/solid/png.h"

#include <dlfcn.h>
#include <png.h>

namespace host::solid {

namespace {

// The name that the library promises to keep within its interface's version 1.6.
constexpr char kLibrary[] = "libpng16.so.16";

struct Library {
    decltype(&::png_image_write_to_memory) write = nullptr;
    std::string fault;

    Library() {
        void* const handle = ::dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);
        void* const symbol =
            handle == nullptr ? nullptr : ::dlsym(handle, "png_image_write_to_memory");
        if (symbol != nullptr)
            write = reinterpret_cast<decltype(write)>(symbol);
        else
            fault = std::string("the library for PNG pictures cannot be loaded: ") + ::dlerror();
    }
};

}  // namespace

bool EncodePng(const Image& image, std::string& bytes, std::string& reason) {
    static const Library library;
    if (library.write == nullptr) {
        reason = library.fault;
        return false;
    }
    png_image header{};
    header.version = PNG_IMAGE_VERSION;
    header.width = static_cast<png_uint_32>(image.width);
    header.height = static_cast<png_uint_32>(image.height);
    header.format = PNG_FORMAT_RGB;
    header.flags = PNG_IMAGE_FLAG_FAST;  // a little larger, several times faster
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(header);
    std::string made(size, '\0');
    if (library.write(&header, made.data(), &size, 0, image.pixels.data(), 0, nullptr) == 0) {
        reason = std::string("the picture cannot be compressed: ") + header.message;
        return false;
    }
    made.resize(size);
    bytes = std::move(made);
    return true;
}

}  // namespace host::solid
