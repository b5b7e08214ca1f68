// Whether a request makes sense for what was picked.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "product/tool/Selection.h"
#include "product/tool/ToolRequest.h"

namespace product {

// Compares the parameters with what was picked.
//
// axis      none: no axis
// warnings  receives what the user should know though the run can go on
// fails     Failure: Request for parameters that make no sense for what was picked (a centre far
//           outside, a precision that would make millions of segments, tolerances larger than the
//           tool or no numbers), NothingThere when what was picked has no extents
// cost      that of EstimateSegments()
void CheckRequest(const Selection& selection, const ToolParameters& parameters,
                  const std::optional<Axis>& axis, std::vector<std::string>& warnings);

// Refuses blocks that come to more entities than the limit, before anything takes them apart.
// fails  Failure with Request that names the block
void CheckPieces(const AcArray<AcDbObjectId>& picked, double limit);

// A box as messages show it: "x 0 .. 60, y -10 .. 10".
std::string Describe(const Box& box);

}  // namespace product
