// Rectangles of what a drawing holds, in the XY plane and in drawing units.
#pragma once

#include <optional>

#include "QZRect.h"
#include "arxHeaders.h"
#include "product/base/Outline.h"

namespace product {

// The extents of an entity that is open; nothing for those that have none, such as an empty block.
std::optional<Box> ExtentsOf(const AcDbEntity& entity);

// The plug-in's rectangle as a box; an invalid one is an empty box.
Box BoxOf(const CQZRect& rect);

}  // namespace product
