// What a run of the engine is asked for, and whether that makes sense.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/qzenvelope/Options.h"
#include "plugin/batch/BatchTool.h"

namespace app {

// The engine's record of the options; no axis.
CEncircleCalInfo ParametersOf(const ToolOptions& options);

EnvelopePipeline PipelineOf(Algorithm algorithm);

// Compares the parameters with what was picked, whose extents are given.
//
// axis      a point on the axis; none: no axis
// warnings  receives what the user should know though the run can go on
// fails     Failure: kUsage for parameters that make no sense for what was picked (a centre far
//           outside, a precision that would make millions of segments, tolerances larger than the
//           tool or no numbers), kNoResult when what was picked has no extents
void CheckRequest(const AcArray<AcDbObjectId>& picked, const Box& box,
                  const CEncircleCalInfo& parameters, const std::optional<Point>& axis,
                  std::vector<std::string>& warnings);

// A box as messages show it.
std::string Describe(const Box& box);

}  // namespace app
