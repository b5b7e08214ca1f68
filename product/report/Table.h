// The table of a batch's tools, for spreadsheets and other programs.
#pragma once

#include <string>

#include "product/tool/ToolResult.h"

namespace product {

// CSV as RFC 4180 has it: commas, quotes where needed, lines ending with CR LF; UTF-8 with a byte
// order mark, so that spreadsheets read it as such. Numbers with a point, in the drawing's unit.
// What is not known is an empty field. A text that a spreadsheet would take for a formula begins
// with an apostrophe.
std::string TableHead();
// One tool. The texts of several may follow one another.
std::string TableRow(const DrawingResult& drawing, const ToolResult& tool);

// The same as JSON: an array of objects whose names are the columns', with null for what is not
// known. Head, rows with commas between them, and tail make up the whole text.
std::string TableJsonHead();
std::string TableJsonRow(const DrawingResult& drawing, const ToolResult& tool, bool isFirst);
std::string TableJsonTail();

}  // namespace product
