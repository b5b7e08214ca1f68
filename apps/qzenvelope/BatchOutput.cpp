// What a batch leaves beside its tools' files: page, table, summary.

#include <algorithm>
#include <filesystem>

#include "apps/qzenvelope/BatchRun.h"
#include "apps/qzenvelope/Output.h"
#include "host/sys/file_io.h"
#include "product/report/Page.h"
#include "product/report/Summary.h"
#include "product/report/Table.h"
#include "product/base/Words.h"

namespace app {

using product::Tr;

ExitStatus StatusOf(const BatchResult& result) {
    ExitStatus status = result.FailedTools() > 0 ? kNoResult : kDone;
    for (const DrawingResult& drawing : result.drawings)
        if (!drawing.reason.empty())
            status = std::max(status, drawing.isUnreadable ? kUsage : kNoResult);
    return status;
}

namespace {

namespace fs = std::filesystem;

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
        trouble = path + Tr(": the ") + what + Tr(" cannot be written: ") + error.reason +
                  Tr("; choose another place with ") + option;
}

}  // namespace

ExitStatus RunBatch(const BatchOptions& options) {
    BatchResult result = ComputeBatch(options);
    std::string trouble;
    if (!options.report.empty())
        WriteSum(options.report, PageText(result), Tr("report"), "--report", trouble);
    if (!trouble.empty()) result.page.clear();
    if (!options.table.empty())
        WriteSum(options.table, TableText(result, options.table), Tr("table"), "--table", trouble);
    // The results first: page and table can be made again, the work need not be.
    Print(options.json ? BatchJson(result) : BatchSummary(result));
    if (!trouble.empty()) throw Failure(Fault::Output, trouble);
    return std::max(StatusOf(result),
                    options.isStrict && result.ToolsWithWarnings() > 0 ? kNoResult : kDone);
}

}  // namespace app
