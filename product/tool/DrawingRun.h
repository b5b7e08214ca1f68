// The work on one drawing of a batch: every tool of it, the task list, the drawing's new file.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "product/base/Drawing.h"
#include "product/tool/ToolPlan.h"
#include "product/tool/ToolResult.h"

namespace product {

struct DrawingRequest {
    size_t number = 0;  // among the drawings of the batch
    std::string input;
    std::string output;              // the drawing with its envelopes
    std::vector<std::string> files;  // name of each tool's files, without folder and extension
    std::map<size_t, std::string> skipped;  // tools at which an earlier attempt ended, and why
};

// Is told of each tool when it begins and when it has ended.
class ToolListener {
public:
    virtual ~ToolListener() = default;
    virtual void OnToolBegins(size_t tool) = 0;
    virtual void OnToolEnds(size_t tool, ToolResult&& result) = 0;
};

// Computes and exports the tools of a drawing one by one - one that fails does not stop the rest -,
// stores the task list and writes the drawing.
//
// drawing  what asked.input names, as it was read: runs change it
// result   without its tools, which the listener was told of
// fails    as PlanTools(), and with Input when the drawing has not as many tools as were found
//          when it was looked through; what fails later is told in the results
DrawingResult RunDrawing(Drawing& drawing, const DrawingRequest& asked, const BatchRequest& request,
                         const std::vector<NamedTool>& table, ToolListener& listener);

}  // namespace product
