// What is told about an envelope's solid.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "product/tool/ToolRun.h"

namespace product {

// Its figures, in drawing units; or "refused", the reason, with the place "at"; null without
// either.
nlohmann::ordered_json SolidJson(const SolidRun& solid);

// The same as a phrase: "volume 1570.8, area ...", or "none: the profile crosses ..."; empty
// without either.
std::string SolidPhrase(const SolidRun& solid);

// Tip and parts; null for a run without a solid.
nlohmann::ordered_json PartsJson(const ToolRun& run);
// Lines of the summary; empty for a tool that is not split.
std::string PartsPhrase(const ToolRun& run);

}  // namespace product
