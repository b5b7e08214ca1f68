// What a batch tells its user at its end.
#pragma once

#include <string>

#include "product/report/BatchResult.h"

namespace product {

// A few lines for a terminal: how many, how long, where the files are, what failed and why.
std::string BatchSummary(const BatchResult& result);

// One JSON object, ending with a line break; lengths in drawing units.
std::string BatchJson(const BatchResult& result);

}  // namespace product
