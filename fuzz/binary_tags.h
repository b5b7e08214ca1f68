// Groups of binary drawings as those of text drawings, and back.
#pragma once

#include <string>
#include <vector>

namespace fuzz {

struct Tag {
    std::string code, value;  // as they stand in a text drawing
};

bool IsBinaryDrawing(const std::string& bytes);
// Everything up to the first group that is cut off.
std::vector<Tag> TagsOfBinary(const std::string& bytes);
// In the form, of R12 or later, of the drawing that the tags came from.
std::string BinaryOfTags(const std::vector<Tag>& tags, const std::string& origin);

}  // namespace fuzz
