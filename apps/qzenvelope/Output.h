// What the program prints.
#pragma once

#include <string>

namespace app {

// To the standard output, all of it at once.
// fails  Failure with Output when it cannot be written, such as to a full disk
void Print(const std::string& text);

// A sentence on standard error, behind the program's name.
void Complain(const std::string& text);

// Text with control characters spelled out, "\\x1b", but for line ends and tabs: names come from
// drawings, and a terminal obeys what is in them.
std::string Shown(const std::string& text);

}  // namespace app
