// Status values of the host.
#pragma once

#include "host_errorstatus.h"

namespace Acad {
#define HOST_ERROR_STATUS_ENUMERATOR(name) name,
// A status that nobody looks at is a warning, and so an error, in this build.
// 0 is success; whether a call changed anything before it failed is said where the call stands.
enum [[nodiscard]] ErrorStatus{HOST_ERROR_STATUS_LIST(HOST_ERROR_STATUS_ENUMERATOR)};
#undef HOST_ERROR_STATUS_ENUMERATOR

static_assert(eOk == 0 && eNotApplicable == 2 && eInvalidInput == 3,
              "these three numbers are documented");
}  // namespace Acad
