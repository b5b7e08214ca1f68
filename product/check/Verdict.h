// What a run comes to in one line.
#pragma once

#include <string>
#include <vector>

#include "product/check/Finding.h"

namespace product {

// "sure", or "worth a look: ..." with every warning, the most important first.
std::string VerdictOf(const std::vector<Finding>& findings);

// "failed: ..." with the reason, and what is worth a look beside it.
std::string FailedVerdict(const std::string& reason, const std::vector<Finding>& findings);

// Warnings first, the most important before the others; what was only looked at as it came.
void SortFindings(std::vector<Finding>& findings);

// The warnings, the most important first: what makes the result wrong before what may.
std::vector<Finding> Warnings(const std::vector<Finding>& findings);

}  // namespace product
