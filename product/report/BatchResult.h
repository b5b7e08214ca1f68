// What came of a whole batch.
#pragma once

#include <string>
#include <vector>

#include "product/tool/ToolResult.h"

namespace product {

struct BatchResult {
    std::vector<DrawingResult> drawings;  // in the order in which they were named
    std::vector<std::string> warnings;    // that concern no single drawing
    double seconds = 0;                   // wall clock, of everything
    std::string out;                      // folder of the files
    std::string page;                     // the report's file; empty: there is none

    size_t ToolCount() const;
    size_t FailedTools() const;
    size_t ToolsWithWarnings() const;
    size_t UnchangedDrawings() const;
};

}  // namespace product
