// A file that names the tools of drawings without frames.
#pragma once

#include <string>
#include <vector>

#include "product/base/Outline.h"

namespace product {

struct NamedTool {
    std::string name;  // UTF-8
    Point centre;
    Box window;
    std::string drawing;  // file name that it is for; empty: every drawing
    int line = 0;
};

// Reads lines of name, centre x, centre y, x1, y1, x2, y2 and perhaps a drawing's file name,
// separated by commas, semicolons or tabs (whichever the first line has); fields may stand in
// double quotes. Empty lines and those that begin with # are passed over, and so is a first line
// whose second field is no number: it names the columns.
//
// text   UTF-8, with or without byte order mark
// fails  Failure with Input that names the line: too few fields, what is no number, a window
//        without area, no name; or no tool at all
std::vector<NamedTool> ReadToolTable(const std::string& text, const std::string& path);

}  // namespace product
