// What is told about an envelope's solid.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "product/tool/SolidRun.h"

namespace product {

// Its figures, in drawing units; or "refused", the reason, with the place "at"; null without
// either.
nlohmann::ordered_json SolidJson(const SolidRun& solid);

// The same as a phrase: "volume 1570.8, area ...", or "none: the profile crosses ..."; empty
// without either.
std::string SolidPhrase(const SolidRun& solid);

}  // namespace product
