// A folder whose drawings are computed as they come in.
#pragma once

#include "apps/qzenvelope/Options.h"

namespace app {

// Computes the drawings of options.watch, and again whenever some came, changed or went; keeps one
// page of them, OUT/index.html unless another is named. Looks once a second. A drawing counts when
// it stands still: it looked the same a look ago, and a text drawing has its end mark or has not
// been touched for a minute. What is still growing holds nobody else up. Ends with the process
// alone; what fails on the way is told and does not end it.
//
// fails  Failure with Request when there is no such folder
[[noreturn]] void WatchFolder(BatchOptions options);

}  // namespace app
