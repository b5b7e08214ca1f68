// A picture of a revolved solid to check a tool at a glance: shaded, beside its profile.
#pragma once

#include <string>

#include "host/solid/kernel.h"
#include "host/solid/png.h"

namespace host::solid {

// The solid alone, shaded, axis level, its right end turned towards the viewer, on white. Fits into
// the given width; the height follows. Edges at which the profile has a corner are drawn dark.
//
// mesh   the solid's triangles, as fine as the picture should be round
// width  pixels, 100 at least
Image RenderSolid(const Profile& profile, const Mesh& mesh, int width);

// The solid above its profile, which is drawn to the same scale along the axis: filled, with the
// axis dash-dotted.
Image RenderPicture(const Profile& profile, const Mesh& mesh, int width);

}  // namespace host::solid
