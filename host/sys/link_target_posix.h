// Where a chain of symbolic links ends.
#pragma once

#include <string>

namespace host {

// Follows symbolic links by hand, because the last target need not exist yet. False when they lead
// in a circle.
bool ResolveLinks(std::string path, std::string& target);

}  // namespace host
