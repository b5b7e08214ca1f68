// What came of one drawing, as one line of text: what a batch remembers of its runs, and what the
// parts of a batch on many machines are put together from.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "product/tool/ToolResult.h"

namespace product {

struct ResultRecord {
    DrawingResult drawing;
    // What it was computed from: the drawing's content, the options and the program.
    std::string content, options;
    bool hasPictures = false;
    std::vector<std::string> names, files;  // of its tools, before and after numbering
    std::vector<std::pair<std::string, std::uintmax_t>> written;  // its files and their sizes
};

// One JSON object without line breaks, and a line break. What is no UTF-8 is replaced.
std::string ToLine(const ResultRecord& record);
// fails  std::exception for a text that is no such line
ResultRecord RecordFromLine(const std::string& line);

// The first line of a file of results: which part of how many, and of how many drawings.
struct ResultHead {
    std::string version;  // of the program
    size_t number = 1, count = 1, drawings = 0;
};
std::string ToLine(const ResultHead& head);
// Whether a line is a head; head is changed then.
bool IsHead(const std::string& line, ResultHead& head);

}  // namespace product
