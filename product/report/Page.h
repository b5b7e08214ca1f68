// The report of a batch: one page of HTML that needs nothing but itself.
#pragma once

#include <string>
#include <vector>

#include "product/report/BatchResult.h"

namespace product {

// A row for each tool: profile with envelope, shaded solid, figures and findings; sortable by
// column, to be searched, narrowed down and printed. Scripts, styles and pictures are inside; the
// page forbids itself the network.
std::string PageText(const BatchResult& result);

// One page of several. Its pictures are files: each tool's svg and png name one, as the page sees
// it. Links lead to the index and to the pages before and after it.
struct PagePlace {
    std::string index, before, after;  // empty: there is none
    size_t number = 1;
};
std::string PageText(const BatchResult& result, const PagePlace& place);

// What an index tells of one of its pages.
struct PageEntry {
    std::string file, first, last;  // the page, its first and its last tool
    size_t tools = 0, failed = 0, warned = 0;
};
// The index of pages with the sums over all of them.
std::string IndexText(const std::vector<PageEntry>& pages, size_t drawings,
                      const std::vector<std::string>& troubles);

// The look and the behaviour of the page.
const char* PageStyle();
const char* PageScript();

}  // namespace product
