// The tools of one request, from the drawing that was read to written files and verdicts.
#pragma once

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

// Is told what long work is at, in the thread that does it. All texts are literals.
class RunListener {
public:
    virtual ~RunListener() = default;
    // "computing", "checking", "writing": for each job anew.
    virtual void Enter(const char* phase) = 0;
    // Of the step-by-step engine, a few thousand records apart; all is 0 where nobody knows it.
    virtual void Step(const char* pass, size_t done, size_t all) = 0;
};

// Computes every job, writes the drawing when one of them has an envelope, and then each job's
// files. A job that fails does not stop the others.
//
// jobs      all of one drawing, with one output for the drawing
// listener  is told how far the work is; null: nobody is, and the engine's runs count nothing ahead
// fails     Failure with Output when the drawing cannot be written; the jobs tell what was computed
void RunJobs(Drawing& drawing, std::vector<ToolJob>& jobs, RunListener* listener = nullptr);

}  // namespace product
