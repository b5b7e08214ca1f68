// How a tool is placed in its pictures: what they show beside the drawing, and how much of it.
#pragma once

#include <string>

#include "product/picture/Picture.h"
#include "product/tool/ToolRun.h"

namespace product {

// The drawing with everything that was picked in view, the window, the axis and the envelope, for a
// file of its own. Dimensions that meet the view are shown whole.
//
// shapes   of the whole drawing
// warning  receives a sentence when the solid cannot be shown below
Picture SheetPicture(Picture shapes, const ToolRequest& request, const ToolRun& run,
                     std::string& warning);

// One tool by itself for the page: both halves of its envelope in view, nearby dimensions and the
// numbered places of warnings; the solid stands in another column.
//
// shapes   of what was picked
Picture PagePicture(Picture shapes, const ToolRequest& request, const ToolRun& run,
                    const std::vector<Finding>& findings);

}  // namespace product
