#include "product/tool/ToolJobs.h"

#include <algorithm>

namespace product {

void RunJobs(Drawing& drawing, std::vector<ToolJob>& jobs,
             const std::function<void(const char* phase)>& enter) {
    const auto tell = [&enter](const char* phase) {
        if (enter) enter(phase);
    };
    const bool withPictures = std::any_of(
        jobs.begin(), jobs.end(), [](const ToolJob& job) { return !job.request.svg.empty(); });
    ToolRunner runner(drawing.Database(), withPictures);
    for (ToolJob& job : jobs) {
        tell("computing");
        try {
            runner.Compute(job.request, job.run);
            if (!job.run.envelope.found)
                job.failure.emplace(Fault::NoResult,
                                    "no envelope: nothing that was picked is seen from the chosen "
                                    "half; check --centre and --half, and the list of what was "
                                    "left out");
        } catch (const Failure& failure) {
            job.failure = failure;
        }
        tell("checking");
        if (job.run.isBegun) job.review = runner.Review(job.request, job.run, {});
        if (job.found)
            for (const std::string& remark : job.found->remarks)
                job.review.findings.push_back({Finding::Kind::Axis, true, remark, std::nullopt});
    }
    tell("writing");
    const auto hasEnvelope = [](const ToolJob& job) { return job.run.envelope.found; };
    if (!jobs.empty() && !jobs.front().request.output.empty() &&
        std::any_of(jobs.begin(), jobs.end(), hasEnvelope))
        drawing.Write(jobs.front().request.output);
    for (ToolJob& job : jobs) {
        if (job.failure && !job.run.envelope.found && job.request.svg.empty()) continue;
        try {
            runner.WriteFiles(job.request, job.run);
        } catch (const Failure& failure) {
            if (!job.failure) job.failure = failure;
        }
    }
}

}  // namespace product
