// The converter between DWG and DXF that this machine has.
#pragma once

#include <string>
#include <vector>

namespace host::dwg {

// What came of one conversion.
struct Conversion {
    bool isDone = false;
    std::string how;     // "dwg2dxf 0.12.5 (/usr/bin/dwg2dxf)"
    std::string reason;  // why not, and what helps
    std::string said;    // what the converter printed, as one line; shortened
};

// Converts a file to another; the ending of the second says into what.
//
// folder  a scratch folder that holds neither of the two: some converters take folders only
Conversion Convert(const std::string& from, const std::string& to, const std::string& folder);

// A command as words: split at blanks, "..." and '...' keep them together.
std::vector<std::string> WordsOf(const std::string& command);

}  // namespace host::dwg
