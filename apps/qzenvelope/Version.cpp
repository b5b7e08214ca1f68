#include "apps/qzenvelope/Version.h"

#include "version.h"

namespace app {

std::string VersionText() { return "qzenvelope " QZ_VERSION " (" QZ_COMMIT ")"; }

}  // namespace app
