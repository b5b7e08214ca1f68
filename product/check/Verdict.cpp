#include "product/check/Verdict.h"

#include <algorithm>
#include <iterator>

namespace product {
namespace {

// The smaller, the more likely the result is not the tool.
int RankOf(Finding::Kind kind) {
    switch (kind) {
        case Finding::Kind::Crossing:
            return 0;
        case Finding::Kind::Border:
            return 1;
        case Finding::Kind::Axis:
            return 2;
        case Finding::Kind::Exact:
            return 3;
        case Finding::Kind::Outline:
            return 4;
        case Finding::Kind::Solid:
            return 5;
        case Finding::Kind::Beyond:
            return 6;
        case Finding::Kind::Window:
            return 7;
        case Finding::Kind::Gap:
            return 8;
        case Finding::Kind::Halves:
            return 9;
        case Finding::Kind::LeftOut:
            return 10;
        case Finding::Kind::Parts:
            return 11;
        case Finding::Kind::Note:
            break;
    }
    return 12;
}

}  // namespace

void SortFindings(std::vector<Finding>& findings) {
    std::stable_sort(findings.begin(), findings.end(), [](const Finding& a, const Finding& b) {
        if (a.isWarning != b.isWarning) return a.isWarning;
        return a.isWarning && RankOf(a.kind) < RankOf(b.kind);
    });
}

std::vector<Finding> Warnings(const std::vector<Finding>& findings) {
    std::vector<Finding> warnings;
    std::copy_if(findings.begin(), findings.end(), std::back_inserter(warnings),
                 [](const Finding& finding) { return finding.isWarning; });
    SortFindings(warnings);
    return warnings;
}

std::string VerdictOf(const std::vector<Finding>& findings) {
    const std::vector<Finding> warnings = Warnings(findings);
    if (warnings.empty()) return "sure";
    std::string text = "worth a look:";
    for (size_t i = 0; i < warnings.size(); ++i) text += (i > 0 ? "; " : " ") + warnings[i].text;
    return text;
}

std::string FailedVerdict(const std::string& reason, const std::vector<Finding>& findings) {
    const std::string text = "failed: " + reason;
    return Warnings(findings).empty() ? text : text + "; " + VerdictOf(findings);
}

}  // namespace product
