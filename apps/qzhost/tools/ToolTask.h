// The tools of a drawing as the batch has them, and the run that checks them all.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "dbmain.h"
#include "product/report/BatchResult.h"
#include "product/tool/ToolRequest.h"

namespace app {

// A tool before it is run.
struct ListedTool {
    std::string name, task;
    std::vector<AcDbObjectId> ids;  // in the drawing
    AcGePoint3d centre;
    product::ToolParameters parameters;
    bool isComputed = false, isExported = false, isFailed = false;
    std::string problem;  // why it cannot be computed
};

// The stored tasks' tools, else one for each frame, else what is found; nothing in the drawing
// changes.
// reason  receives why there is none
std::vector<ListedTool> ListTools(AcDbDatabase& drawing, std::string& reason);

// Computes, checks and exports every tool in a copy of the drawing; the drawing itself stays.
//
// title     the drawing's file, as the page names it
// folder    receives the solids' files and the drawing with its envelopes
// progress  is told how many are done, of how many; false stops before the next one
// fails     product::Failure: nothing to run, a file that cannot be written
product::BatchResult CheckTools(AcDbDatabase& drawing, const std::string& title,
                                const std::string& folder,
                                const std::function<bool(size_t done, size_t all)>& progress);

}  // namespace app
