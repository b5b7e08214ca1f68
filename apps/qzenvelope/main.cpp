// qzenvelope: envelopes of rotating tools from the command line.

#include <algorithm>
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "apps/qzenvelope/BatchRun.h"
#include "apps/qzenvelope/FileRoles.h"
#include "apps/qzenvelope/Language.h"
#include "apps/qzenvelope/Options.h"
#include "apps/qzenvelope/Output.h"
#include "apps/qzenvelope/ReportRun.h"
#include "apps/qzenvelope/RunDisplay.h"
#include "apps/qzenvelope/WatchRun.h"
#include "host/dwg/drawing_file.h"
#include "host/sys/process_end.h"
#include "product/base/Drawing.h"
#include "product/report/Info.h"
#include "product/report/Report.h"
#include "product/check/Verdict.h"
#include "product/tool/FoundTools.h"
#include "product/tool/ToolJobs.h"
#include "product/base/Words.h"

namespace {

using namespace app;

void Warn(const std::string& input, const std::vector<std::string>& warnings) {
    for (const std::string& warning : warnings) Complain(input + Tr(": warning: ") + warning);
}

// What a refusal is about and what helps, as far as it does not say so itself: files that cannot be
// read or written are named by their own refusals.
Failure Completed(const Failure& failure, const std::string& input) {
    if (failure.Code() == Fault::Input || failure.Code() == Fault::Output) return failure;
    const char* const remedy =
        failure.Code() == Fault::NoSolid ? Tr("; look at it with --svg") : "";
    return {failure.Code(), input + ": " + failure.what() + remedy};
}

// The tool that was named, else every one that is found.
std::vector<ToolJob> JobsOf(Drawing& drawing, const ComputeOptions& options) {
    std::vector<ToolJob> jobs;
    if (!options.findsTools) {
        jobs.emplace_back();
        jobs.back().request = options.request;
        return jobs;
    }
    try {
        for (FoundRequest& found : FindToolsFor(drawing.Database(), options.request).tools) {
            CheckFiles(found.request);
            jobs.emplace_back();
            jobs.back().request = std::move(found.request);
            jobs.back().found = std::move(found.tool);
        }
    } catch (const NoSureTool& refusal) {
        if (options.json) Print(NoToolJson(refusal));
        throw Completed(refusal, options.request.input);
    } catch (const Failure& failure) {
        throw Completed(failure, options.request.input);
    }
    return jobs;
}

ExitStatus Compute(const ComputeOptions& options) {
    const ToolRequest& request = options.request;
    CheckFiles(request);
    std::optional<RunDisplay> display(std::in_place);
    display->Enter(Tr("reading"));
    Drawing drawing(request.input);
    display->Enter(Tr("looking for tools"));
    std::vector<ToolJob> jobs = JobsOf(drawing, options);
    RunJobs(drawing, jobs, display->Listener());
    display.reset();
    for (const ToolJob& job : jobs) Warn(request.input, job.run.warnings);
    // What stopped the only tool before anything was done is all there is to tell.
    if (jobs.size() == 1 && jobs[0].failure && !jobs[0].run.envelope.found && !jobs[0].run.isBegun)
        throw Completed(*jobs[0].failure, request.input);
    Print(options.json ? JobsJson(jobs, drawing) : JobsSummary(jobs, drawing));
    ExitStatus status = kDone;
    for (const ToolJob& job : jobs) {
        if (job.failure) {
            Complain(Completed(*job.failure, request.input).what());
            status = std::max(status, StatusOf(job.failure->Code()));
        }
        if (options.isStrict && !Warnings(job.review.findings).empty())
            status = std::max(status, kNoResult);
    }
    return status;
}

ExitStatus Copy(const CopyOptions& options) {
    RunDisplay display;
    display.Enter(Tr("reading"));
    Drawing drawing(options.input);
    display.Enter(Tr("writing"));
    drawing.Write(options.output);
    return kDone;
}

ExitStatus Run(const std::vector<std::string>& arguments) {
    ChooseLanguage(arguments);
    const Options options = ParseOptions(arguments);
    if (!host::LimitMemory(options.memoryLimit))
        throw Failure(Fault::Request, Tr("--memory-limit: the system sets no limit; leave it out"));
    if (options.command != Options::Command::Batch)
        host::LimitTime(options.timeLimit, Tr("the run"));
    host::dwg::SetConverter(options.dwgConverter);
    for (const std::string& warning : options.warnings) Complain(Tr("warning: ") + warning);
    switch (options.command) {
        case Options::Command::Compute:
            return Compute(options.compute);
        case Options::Command::Batch:
            if (!options.batch.watch.empty()) WatchFolder(options.batch);
            return RunBatch(options.batch);
        case Options::Command::Report:
            return RunReport(options.report);
        case Options::Command::Info:
            Print(InfoText(Drawing(options.info.input), options.info.input, options.info.json));
            return kDone;
        case Options::Command::Copy:
            return Copy(options.copy);
        case Options::Command::Nothing:
            Print(options.text);
            return kDone;
    }
    return kUsage;
}

// Before everything else that is made before main().
struct CleanEnd {
    CleanEnd() { host::EndCleanly("qzenvelope"); }
};
__attribute__((init_priority(101))) const CleanEnd g_cleanEnd;

}  // namespace

int main(int argc, char** argv) {
    try {
        return Run(std::vector<std::string>(argv + 1, argv + argc));
    } catch (const Failure& failure) {
        Complain(failure.what());
        return StatusOf(failure.Code());
    } catch (const std::exception& error) {
        Complain(error.what());
        return kNoResult;
    }
}
