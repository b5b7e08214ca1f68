// Many drawings, every tool of each.
#pragma once

#include <string>
#include <vector>

#include "apps/qzenvelope/Options.h"
#include "product/tool/ToolResult.h"

namespace app {

struct BatchResult {
    std::vector<DrawingResult> drawings;  // in the order of the command line
    std::vector<std::string> warnings;
    double seconds = 0;

    size_t ToolCount() const;
    size_t FailedTools() const;
    size_t ToolsWithWarnings() const;
    // The worst of what happened.
    ExitStatus Status() const;
};

// Runs the batch: looks the drawings through, names the files, works on the drawings in processes
// of their own, shows progress, writes the page and prints a summary. A tool at which a worker
// crashes is left out and its drawing done again.
//
// fails  Failure with kUsage when nothing can be begun: no such folder, the output would replace an
//        input, a tools file that cannot be read
ExitStatus RunBatch(const BatchOptions& options);

}  // namespace app
