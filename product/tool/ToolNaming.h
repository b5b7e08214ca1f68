// What the tools of a drawing are called when their frames do not say.
#pragma once

#include <string>
#include <vector>

#include "arxHeaders.h"
#include "product/tool/ToolRequest.h"

namespace product {

// A tool of a drawing before it is computed.
struct NamedPlace {
    std::string name;  // UTF-8
    Box box;           // its frame, its window, or what belongs to it
};

// The names that a rule gives: the file's, numbered when there are several tools; or of the text
// that matches the pattern - a line of it, else a word - and is nearest to the tool, as far as half
// the tool's diagonal away. A text names one tool. A tool without such a text keeps its name.
//
// unnamed  receives the indices of tools for which no text was found
// cost     O(n log n + t m) for n entities, t tools and m texts that match
std::vector<std::string> NamesBy(const NameRule& rule, AcDbDatabase& database,
                                 const std::string& path, const std::vector<NamedPlace>& tools,
                                 std::vector<size_t>& unnamed);

// "sheet", or "sheet-2" for the second of several.
std::string NameByFile(const std::string& path, size_t number, size_t count);

}  // namespace product
