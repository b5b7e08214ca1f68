// What a run tells its user: a summary to read, or one JSON object.
#pragma once

#include <string>

#include "product/tool/Drawing.h"
#include "product/tool/EnvelopeRun.h"
#include "apps/qzenvelope/Options.h"
#include "product/tool/SolidRun.h"

namespace app {

// A few lines for a terminal.
std::string RunSummary(const EnvelopeRun& run, const SolidRun& solid, const Drawing& drawing,
                       const ComputeOptions& options);

// One JSON object, ending with a line break. Lengths in drawing units, points as [x, y], vertices
// as [x, y, bulge]; "envelope" is null when there is none.
// "solid" holds its figures, or why there is none and where, or is null without an axis.
std::string RunJson(const EnvelopeRun& run, const SolidRun& solid, const Drawing& drawing,
                    const ComputeOptions& options);

}  // namespace app
