#include "product/tool/ToolResult.h"

#include <algorithm>

#include "product/check/Verdict.h"

namespace product {

bool ToolResult::HasWarning() const {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.isWarning; });
}

std::string ToolResult::Verdict() const {
    return IsGood() ? VerdictOf(findings) : FailedVerdict(reason, findings);
}

}  // namespace product
