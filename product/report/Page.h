// The report of a batch: one page of HTML that needs nothing but itself.
#pragma once

#include <string>

#include "product/report/BatchResult.h"

namespace product {

// A row for each tool: profile with envelope, shaded solid, figures and findings; sortable by
// column, to be searched, narrowed down and printed. Scripts, styles and pictures are inside; the
// page forbids itself the network.
std::string PageText(const BatchResult& result);

// The look and the behaviour of the page.
const char* PageStyle();
const char* PageScript();

}  // namespace product
