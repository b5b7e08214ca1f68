// What a run tells its user: a summary to read, or one JSON object.
#pragma once

#include <string>

#include "product/base/Drawing.h"
#include "product/tool/ToolRun.h"

namespace product {

// A few lines for a terminal.
std::string RunSummary(const ToolRun& run, const ToolRequest& request, const Drawing& drawing);

// One JSON object, ending with a line break. Lengths in drawing units, points as [x, y], vertices
// as [x, y, bulge]; "envelope" is null when there is none. "solid" holds its figures, or why there
// is none and where, or is null without an axis.
std::string RunJson(const ToolRun& run, const ToolRequest& request, const Drawing& drawing);

}  // namespace product
