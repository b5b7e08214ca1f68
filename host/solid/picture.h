// A picture of a revolved solid to check a tool at a glance: shaded, beside its profile.
#pragma once

#include <string>
#include <vector>

#include "host/solid/kernel.h"
#include "host/solid/png.h"

namespace host::solid {

// A solid and what it looks like.
struct PaintedSolid {
    const Profile* profile = nullptr;
    Mesh mesh;     // its triangles, as fine as the picture should be round
    int rgb = -1;  // 0xRRGGBB; -1: steel
};

// The solids alone, shaded, axis level, their right end turned towards the viewer, on white; all
// have one frame. Fits into the given width; the height follows. Edges at which a profile has a
// corner are drawn dark.
//
// width  pixels, 100 at least
Image RenderSolid(const std::vector<PaintedSolid>& solids, int width);

// The solids above their profiles, which are drawn to the same scale along the axis: filled, with
// the axis dash-dotted.
Image RenderPicture(const std::vector<PaintedSolid>& solids, int width);

}  // namespace host::solid
