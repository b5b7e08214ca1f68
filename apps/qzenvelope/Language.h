// The language that the program speaks.
#pragma once

#include <string>
#include <vector>

namespace app {

// Reads --lang zh or --lang en out of the arguments before anything is said, else the environment,
// and speaks that language. What --lang may be is checked later, with the other options.
void ChooseLanguage(const std::vector<std::string>& arguments);

// "zh" or "en".
const std::string& Language();

}  // namespace app
