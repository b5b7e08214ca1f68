#include "product/tool/ToolJobs.h"

#include <algorithm>

#include "EncircleWatch.h"
#include "product/base/Text.h"
#include "product/check/TraceGaps.h"
#include "product/tool/FoundTools.h"

namespace product {
namespace {

std::string WhyNone(const ToolParameters& parameters) {
    if (parameters.algorithm == Algorithm::Hatch)
        return "no envelope: what was picked encloses no area that could be traced; close the "
               "contour, or use --algorithm exact";
    return "no envelope: nothing that was picked is seen from the chosen half; check --centre and "
           "--half, and the list of what was left out";
}

// Hands on what the engine tells, and never stops it: who interrupts the program ends it at once.
class Watch : public CEncircleWatch {
public:
    explicit Watch(RunListener* listener) : m_listener(listener) {}
    bool MayBreak(size_t, size_t) override { return true; }
    bool MayGoOn(const char* pPass, size_t nDone, size_t nAll) override {
        m_listener->Step(pPass, nDone, nAll);
        return true;
    }

private:
    RunListener* m_listener;
};

}  // namespace

void RunJobs(Drawing& drawing, std::vector<ToolJob>& jobs, RunListener* listener) {
    Watch watch(listener);
    std::optional<CEncircleWatchScope> watched;
    if (listener != nullptr) watched.emplace(watch);
    const auto tell = [listener](const char* phase) {
        if (listener != nullptr) listener->Enter(phase);
    };
    const bool withPictures = std::any_of(
        jobs.begin(), jobs.end(), [](const ToolJob& job) { return !job.request.svg.empty(); });
    ToolRunner runner(drawing.Database(), withPictures);
    for (ToolJob& job : jobs) {
        tell("computing");
        try {
            runner.Compute(job.request, job.run);
            if (!job.run.envelope.found)
                job.failure.emplace(Fault::NoResult, WhyNone(job.request.parameters));
            else if (Crosses(job.run.envelope.selfMeeting))
                job.failure.emplace(Fault::NoSolid,
                                    "the envelope crosses itself at " +
                                        Figure(job.run.envelope.selfMeeting->at.x) + "," +
                                        Figure(job.run.envelope.selfMeeting->at.y) +
                                        ": no solid can be made of it" +
                                        (job.run.exact ? "; look at the drawing there"
                                                       : "; use --algorithm exact"));
        } catch (const Failure& failure) {
            job.failure = failure;
        }
        if (!job.run.isBegun) continue;
        tell("checking");
        std::vector<Finding> known;
        if (job.found) AddFoundFindings(*job.found, known);
        job.review = runner.Review(job.request, job.run, {}, known);
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
