// What the program prints.
#pragma once

#include <string>

namespace app {

// To the standard output, all of it at once.
// fails  Failure with Output when it cannot be written, such as to a full disk
void Print(const std::string& text);

}  // namespace app
