#include "product/tool/ToolResult.h"

#include <algorithm>

namespace product {

bool ToolResult::HasWarning() const {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.isWarning; });
}

}  // namespace product
