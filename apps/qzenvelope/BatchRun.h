// Many drawings, every tool of each.
#pragma once

#include "apps/qzenvelope/Options.h"
#include "product/report/BatchResult.h"

namespace app {

// The worst of what happened.
ExitStatus StatusOf(const BatchResult& result);

// Runs the batch, without its sums: no page, no table, nothing printed but warnings and progress.
// What is unchanged since an earlier batch into the same folder is taken over.
//
// fails  as RunBatch()
BatchResult ComputeBatch(const BatchOptions& options);

// Runs the batch: looks the drawings through, names the files, works on the drawings in processes
// of their own, shows progress, writes the page and prints a summary. A tool at which a worker
// crashes is left out and its drawing done again.
//
// fails  Failure with Request or Input when nothing can be begun: no such folder, the output would
//        replace an input, a tools file that cannot be read
ExitStatus RunBatch(const BatchOptions& options);

}  // namespace app
