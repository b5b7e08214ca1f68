// Files of one name in one folder.
#pragma once

#include <string>
#include <vector>

namespace app {

// Gives each name that an earlier one has already a number: of three tools "A" the files are "A",
// "A-2" and "A-3", or the next numbers that no other name has. Names that differ only in the case
// of ASCII letters are one, as they are for many file systems. Empty names stay.
//
// renamed  receives for each name that was changed its index
std::vector<std::string> NumberedNames(const std::vector<std::string>& names,
                                       std::vector<size_t>& renamed);

}  // namespace app
