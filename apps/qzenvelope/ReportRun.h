// Results of batches put together.
#pragma once

#include "apps/qzenvelope/Options.h"

namespace app {

// Reads files of results line by line and writes pages, an index and a table of all of them; memory
// stays that of a page. A drawing that is told more than once counts where it was told first.
//
// fails  Failure with Input for a file that cannot be read or holds no results, with Output when a
//        file cannot be written
// result kNoResult when a tool failed, a line is not whole, or a run did not come to its end
ExitStatus RunReport(const ReportOptions& options);

}  // namespace app
