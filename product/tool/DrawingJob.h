// The work on one drawing of a batch, in the worker's process.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "product/tool/ToolPlan.h"
#include "product/tool/ToolResult.h"
#include "apps/qzenvelope/WorkerPool.h"

namespace app {

struct DrawingJob {
    size_t number = 0;  // among the drawings of the batch
    std::string input;
    std::string output;              // the drawing with its envelopes
    std::vector<std::string> files;  // name of each tool's files, without folder and extension
    std::set<size_t> skipped;        // tools at which an earlier worker crashed
};

// What a worker sends while it works.
struct JobMessage {
    enum Kind { ToolBegins, ToolEnds, DrawingEnds } kind = ToolBegins;
    size_t tool = 0;        // ToolBegins, ToolEnds
    ToolResult result;      // ToolEnds
    DrawingResult drawing;  // DrawingEnds; its tools were sent before
};
std::string ToText(const JobMessage& message, bool withPictures);
JobMessage MessageFromText(const std::string& text);

// Names of a drawing's tools, as a text to send.
std::string NamesToText(const std::vector<std::string>& names);
std::vector<std::string> NamesFromText(const std::string& text);

// Reads the drawing, computes and exports its tools one by one - one that fails does not stop the
// rest -, stores the task list and writes the drawing.
//
// fails  Failure when the drawing cannot be read or is not the one that was looked through before;
//        what fails later is told in the results
void RunDrawing(const DrawingJob& job, const BatchOptions& options,
                const std::vector<NamedTool>& table, const Send& send);

}  // namespace app
