// Shaded pictures of a solid of revolution, as PNG files in memory. The picture is drawn by our own
// renderer; packing it into a PNG file asks the modelling kernel, which may be missing.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/solid/profile.h"

namespace product {

// A solid to be shown; several of one picture have one frame.
struct ShownSolid {
    const host::solid::Profile* profile = nullptr;
    int rgb = -1;  // 0xRRGGBB; -1: steel
};

struct SolidPicture {
    std::string bytes;          // a PNG file
    int width = 0, height = 0;  // pixels
};

// The solid alone, in one part or more, as the report shows it and as it stands below a picture of
// the drawing.
//
// width   pixels; the height follows from the solid
// result  nothing, with a reason, when it cannot be made
std::optional<SolidPicture> DrawSolid(const std::vector<ShownSolid>& solids, int width,
                                      std::string& reason);

// The solid above its profile, as the file that --png writes.
// result  false, with a reason, when it cannot be made
bool DrawSolidSheet(const std::vector<ShownSolid>& solids, std::string& bytes, std::string& reason);

}  // namespace product
