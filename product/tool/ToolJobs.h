// The tools of one request, from the drawing that was read to written files and verdicts.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "product/base/Drawing.h"
#include "product/base/Failure.h"
#include "product/detect/FindTools.h"
#include "product/tool/ToolRun.h"

namespace product {

struct ToolJob {
    ToolRequest request;
    std::optional<detect::FoundTool> found;  // when nobody named the axis
    ToolRun run;
    ToolReview review;
    // Why it has no envelope, or why one of its files is missing.
    std::optional<Failure> failure;
};

// Computes every job, writes the drawing when one of them has an envelope, and then each job's
// files. A job that fails does not stop the others.
//
// jobs   all of one drawing, with one output for the drawing
// enter  is told what begins: "computing", "checking", "writing"; may be empty
// fails  Failure with Output when the drawing cannot be written; the jobs tell what was computed
void RunJobs(Drawing& drawing, std::vector<ToolJob>& jobs,
             const std::function<void(const char* phase)>& enter = {});

}  // namespace product
