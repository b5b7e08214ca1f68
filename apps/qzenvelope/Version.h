// Which program this is.
#pragma once

#include <string>

namespace app {

// "qzenvelope 1.1.0 (1a2b3c4d5e)": the version, and the commit that it was built from.
std::string VersionText();

}  // namespace app
