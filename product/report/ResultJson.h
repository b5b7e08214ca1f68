// Results of a batch as JSON: for the summary that programs read, and for the way from a worker's
// process to its parent.
#pragma once

#include <nlohmann/json.hpp>

#include "product/tool/ToolResult.h"

namespace product {

// "gap", "crossing", "left out", ...: the kind of a finding.
const char* NameOf(Finding::Kind kind);

// To JSON and back; what goes out comes back alike. Pictures are left out where they are not asked
// for, and a drawing goes without its tools.
// fails  nlohmann::json::exception when members are missing or of another type
nlohmann::ordered_json ToJson(const ToolResult& tool, bool withPictures);
ToolResult ToolFromJson(const nlohmann::ordered_json& json);
nlohmann::ordered_json ToJson(const DrawingResult& drawing);
DrawingResult DrawingFromJson(const nlohmann::ordered_json& json);

}  // namespace product
