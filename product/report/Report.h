// What a run tells its user: a summary to read, or one JSON object.
#pragma once

#include <string>
#include <vector>

#include "product/base/Drawing.h"
#include "product/tool/ToolJobs.h"

namespace product {

// A few lines for a terminal for each tool, the last of them its verdict.
std::string JobsSummary(const std::vector<ToolJob>& jobs, const Drawing& drawing);

// One JSON object, ending with a line break. Lengths in drawing units, points as [x, y], vertices
// as [x, y, bulge]; "envelope" is null when there is none. "solid" holds its figures, or why there
// is none and where, or is null without an axis. "tools" has an object for each tool; of a single
// one its members stand beside "tools", too.
std::string JobsJson(const std::vector<ToolJob>& jobs, const Drawing& drawing);

}  // namespace product
