// What a batch leaves beside its tools' files: page, table, summary; and the watch over a folder.

#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <utility>

#include "apps/qzenvelope/BatchRun.h"
#include "apps/qzenvelope/InputFiles.h"
#include "apps/qzenvelope/Output.h"
#include "host/sys/file_io.h"
#include "product/report/Page.h"
#include "product/report/Summary.h"
#include "product/report/Table.h"

namespace app {

ExitStatus StatusOf(const BatchResult& result) {
    ExitStatus status = result.FailedTools() > 0 ? kNoResult : kDone;
    for (const DrawingResult& drawing : result.drawings)
        if (!drawing.reason.empty())
            status = std::max(status, drawing.isUnreadable ? kUsage : kNoResult);
    return status;
}

namespace {

namespace fs = std::filesystem;

constexpr unsigned kBetweenLooks = 1000000;  // microseconds

std::string TableText(const BatchResult& result, const std::string& path) {
    const bool isJson = fs::path(path).extension() == ".json";
    std::string text = isJson ? TableJsonHead() : TableHead();
    bool isFirst = true;
    for (const DrawingResult& drawing : result.drawings)
        for (const ToolResult& tool : drawing.tools) {
            text += isJson ? TableJsonRow(drawing, tool, isFirst) : TableRow(drawing, tool);
            isFirst = false;
        }
    return isJson ? text + TableJsonTail() : text;
}

// Writes a file that sums the batch up; what keeps it from being written is told at the end, for
// the work need not be done again.
void WriteSum(const std::string& path, const std::string& text, const char* what,
              const char* option, std::string& trouble) {
    host::FileError error;
    if (!host::WriteFileAtomically(path, {std::string_view(text)}, error) && trouble.empty())
        trouble = path + ": the " + what + " cannot be written: " + error.reason +
                  "; choose another place with " + option;
}

// How a file looked when it was last seen.
struct Seen {
    std::uintmax_t size = 0;
    fs::file_time_type time;

    bool operator==(const Seen& other) const { return size == other.size && time == other.time; }
};
using Sight = std::map<std::string, Seen>;

Sight LookInto(const std::string& folder) {
    Sight sight;
    for (const std::string& drawing : DrawingsIn(folder)) {
        std::error_code error;
        const Seen seen{fs::file_size(drawing, error), fs::last_write_time(drawing, error)};
        if (!error) sight.emplace(drawing, seen);
    }
    return sight;
}

// Computes a folder's drawings whenever they have changed and stand still again. Ends with the
// process alone.
[[noreturn]] void Watch(BatchOptions options) {
    const std::string folder = std::exchange(options.watch, {});
    if (options.report.empty())
        options.report = (fs::path(options.request.out) / "index.html").string();
    options.request.withPage = true;
    if (!fs::is_directory(folder))
        throw Failure(Fault::Request,
                      "--watch: " + folder + " is no folder; name one that is there");
    Complain("watching " + folder + "; end it with Ctrl-C");
    Sight done;
    for (Sight before = LookInto(folder);; ::usleep(kBetweenLooks)) {
        const Sight now = LookInto(folder);
        if (now == before && now != done && !now.empty()) {
            options.inputs.clear();
            for (const auto& [drawing, seen] : now) options.inputs.push_back(drawing);
            try {
                RunBatch(options);
                done = now;
            } catch (const Failure& failure) {
                Complain(failure.what());
                done = now;
            }
        }
        before = now;
    }
}

}  // namespace

ExitStatus RunBatch(const BatchOptions& options) {
    if (!options.watch.empty()) Watch(options);
    BatchResult result = ComputeBatch(options);
    std::string trouble;
    if (!options.report.empty())
        WriteSum(options.report, PageText(result), "report", "--report", trouble);
    if (!trouble.empty()) result.page.clear();
    if (!options.table.empty())
        WriteSum(options.table, TableText(result, options.table), "table", "--table", trouble);
    // The results first: page and table can be made again, the work need not be.
    Print(options.json ? BatchJson(result) : BatchSummary(result));
    if (!trouble.empty()) throw Failure(Fault::Output, trouble);
    return std::max(StatusOf(result),
                    options.isStrict && result.ToolsWithWarnings() > 0 ? kNoResult : kDone);
}

}  // namespace app
