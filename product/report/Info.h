// What a drawing holds.
#pragma once

#include <string>

#include "product/base/Drawing.h"
#include "product/tool/FoundTools.h"

namespace product {

// Layers with their state and what lies on them, entities by type, extents, frames with their tool
// numbers, envelopes with the figures of their solids, what may be a tool and what speaks for it, a
// stored task list, faults in the file: as text for a terminal, or as one JSON object.
//
// cost     opens every entity of model space once, and looks for tools
// fails    Failure with Input when the drawing has no model space
std::string InfoText(const Drawing& drawing, const std::string& path, bool asJson);

// What a run that found no tool tells as one JSON object: "tools" empty, "verdict" the refusal, and
// "candidates" as info lists them.
std::string NoToolJson(const NoSureTool& refusal);

}  // namespace product
