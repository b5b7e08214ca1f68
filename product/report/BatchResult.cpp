#include "product/report/BatchResult.h"

#include <algorithm>

namespace product {
namespace {

template <class Condition>
size_t CountTools(const BatchResult& result, Condition condition) {
    size_t count = 0;
    for (const DrawingResult& drawing : result.drawings)
        for (const ToolResult& tool : drawing.tools) count += condition(tool) ? 1 : 0;
    return count;
}

}  // namespace

size_t BatchResult::ToolCount() const {
    return CountTools(*this, [](const ToolResult&) { return true; });
}

size_t BatchResult::FailedTools() const {
    return CountTools(*this, [](const ToolResult& tool) { return !tool.IsGood(); });
}

size_t BatchResult::ToolsWithWarnings() const {
    return CountTools(*this, [](const ToolResult& tool) { return tool.HasWarning(); });
}

size_t BatchResult::UnchangedDrawings() const {
    return static_cast<size_t>(
        std::count_if(drawings.begin(), drawings.end(),
                      [](const DrawingResult& drawing) { return drawing.isUnchanged; }));
}

}  // namespace product
