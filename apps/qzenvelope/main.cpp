// qzenvelope: envelopes of rotating tools from the command line.

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "apps/qzenvelope/BatchRun.h"
#include "apps/qzenvelope/FileRoles.h"
#include "apps/qzenvelope/Options.h"
#include "apps/qzenvelope/Output.h"
#include "host/sys/process_end.h"
#include "product/base/Drawing.h"
#include "product/report/Info.h"
#include "product/report/Report.h"
#include "product/tool/ToolRun.h"

namespace {

using namespace app;

void Warn(const std::string& input, const std::vector<std::string>& warnings) {
    for (const std::string& warning : warnings) Complain(input + ": warning: " + warning);
}

// What a refusal is about and what helps, as far as it does not say so itself: files that cannot be
// read or written are named by their own refusals.
Failure Completed(const Failure& failure, const std::string& input) {
    if (failure.Code() == Fault::Input || failure.Code() == Fault::Output) return failure;
    const char* const remedy = failure.Code() == Fault::NoSolid ? "; look at it with --svg" : "";
    return {failure.Code(), input + ": " + failure.what() + remedy};
}

ExitStatus Compute(const ComputeOptions& options) {
    const ToolRequest& request = options.request;
    CheckFiles(request);
    Drawing drawing(request.input);
    ToolRun run;
    try {
        RunTool(drawing, request, run);
    } catch (const Failure& failure) {
        Warn(request.input, run.warnings);
        throw Completed(failure, request.input);
    }
    Warn(request.input, run.warnings);
    Print(options.json ? RunJson(run, request, drawing) : RunSummary(run, request, drawing));
    if (run.envelope.found) return kDone;
    throw Failure(Fault::NoResult,
                  request.input +
                      ": no envelope: nothing that was picked is seen from the chosen half; check"
                      " --centre and --half, and the list of what was left out");
}

ExitStatus Run(const std::vector<std::string>& arguments) {
    const Options options = ParseOptions(arguments);
    if (!host::LimitMemory(options.memoryLimit))
        throw Failure(Fault::Request, "--memory-limit: the system sets no limit; leave it out");
    if (options.command != Options::Command::Batch) host::LimitTime(options.timeLimit, "the run");
    switch (options.command) {
        case Options::Command::Compute:
            return Compute(options.compute);
        case Options::Command::Batch:
            return RunBatch(options.batch);
        case Options::Command::Info:
            Print(InfoText(Drawing(options.info.input), options.info.input, options.info.json));
            return kDone;
        case Options::Command::Copy:
            Drawing(options.copy.input).Write(options.copy.output);
            return kDone;
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
