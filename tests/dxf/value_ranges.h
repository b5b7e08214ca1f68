// Which values may follow a group code, by the words of the format's reference and not by the
// writer's own table.
#pragma once

#include <string>

namespace test {

// What a text drawing holds that lies outside the range of its group code, a line each, at most
// twenty; empty when all is well.
std::string RangeFaults(const std::string& drawing);

}  // namespace test
