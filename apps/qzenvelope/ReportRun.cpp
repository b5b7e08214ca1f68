#include "apps/qzenvelope/ReportRun.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <unordered_set>

#include "apps/qzenvelope/FileRoles.h"
#include "apps/qzenvelope/GrowingFile.h"
#include "apps/qzenvelope/Output.h"
#include "product/report/PagedReport.h"
#include "product/report/ResultRecord.h"
#include "product/report/Table.h"
#include "product/base/Words.h"

namespace app {

using product::Tr;
namespace {

namespace fs = std::filesystem;

constexpr size_t kMostTroubles = 100;  // told one by one

// A table of any length.
class TableFile {
public:
    explicit TableFile(const std::string& path)
        : m_path(path), m_isJson(fs::path(path).extension() == ".json"), m_file(path) {
        m_file.Add(m_isJson ? TableJsonHead() : TableHead());
        if (m_file.IsWanted() && !m_file.IsGood()) Refuse({});
    }

    void Add(const DrawingResult& drawing) {
        if (!m_file.IsWanted()) return;
        for (const ToolResult& tool : drawing.tools) {
            m_file.Add(m_isJson ? TableJsonRow(drawing, tool, m_isFirst) : TableRow(drawing, tool));
            m_isFirst = false;
        }
    }
    void Finish() {
        if (m_isJson) m_file.Add(TableJsonTail());
        std::string reason;
        if (!m_file.Finish(reason)) Refuse(reason);
    }

private:
    [[noreturn]] void Refuse(const std::string& reason) const {
        throw Failure(Fault::Output, m_path + Tr(": the table cannot be written") +
                                         (reason.empty() ? "" : ": " + reason) +
                                         Tr("; choose another place with --table"));
    }

    std::string m_path;
    bool m_isJson, m_isFirst = true;
    GrowingFile m_file;
};

class Report {
public:
    explicit Report(const ReportOptions& options) : m_options(options), m_table(options.table) {
        if (!options.report.empty()) m_pages = std::make_unique<PagedReport>(options.report);
    }

    ExitStatus Run() {
        for (const std::string& input : m_options.inputs) Read(input);
        MissingShares();
        if (m_told > kMostTroubles)
            m_troubles.push_back(std::to_string(m_told - kMostTroubles) + Tr(" more of this kind"));
        if (m_pages != nullptr) m_pages->Finish(m_troubles);
        m_table.Finish();
        for (const std::string& trouble : m_troubles) Complain(Tr("warning: ") + trouble);
        Print(std::to_string(m_tools) + (m_tools == 1 ? Tr(" tool of ") : Tr(" tools of ")) +
              std::to_string(m_drawings) +
              (m_drawings == 1 ? Tr(" drawing: ") : Tr(" drawings: ")) +
              std::to_string(m_tools - m_failed) + Tr(" done, ") + std::to_string(m_failed) +
              Tr(" failed\n") +
              (m_options.report.empty() ? "" : Tr("  report  ") + m_options.report + "\n") +
              (m_options.table.empty() ? "" : Tr("  table   ") + m_options.table + "\n"));
        return m_failed > 0 || !m_troubles.empty() || m_faulty ? kNoResult : kDone;
    }

private:
    void Tell(const std::string& trouble) {
        if (++m_told <= kMostTroubles) m_troubles.push_back(trouble);
    }

    void Read(const std::string& input) {
        std::ifstream file(input, std::ios::binary);
        if (!file || fs::is_directory(input))
            throw Failure(Fault::Input, input + Tr(": the results cannot be read; name a file that "
                                                   "--json-lines wrote"));
        ResultHead head;
        bool hasHead = false;
        size_t number = 0, drawings = 0;
        for (std::string line; std::getline(file, line);) {
            ++number;
            if (line.empty()) continue;
            if (IsHead(line, head)) {
                hasHead = true;
                m_shares[head.count].insert(head.number);
                continue;
            }
            try {
                Add(RecordFromLine(line));
                ++drawings;
            } catch (const Failure&) {
                throw;
            } catch (const std::exception&) {
                if (!hasHead && number == 1)
                    throw Failure(Fault::Input, input + Tr(": line 1: these are no results; name a "
                                                           "file that --json-lines wrote"));
                Tell(input + Tr(": line ") + std::to_string(number) +
                     Tr(" is not whole and is passed over; start that batch again"));
            }
        }
        if (hasHead && drawings < head.drawings)
            Tell(input + ": " + std::to_string(drawings) + Tr(" of ") +
                 std::to_string(head.drawings) +
                 Tr(" drawings: the batch did not come to its end; start it again"));
    }

    void Add(ResultRecord record) {
        if (!m_seen.insert(std::hash<std::string>()(record.drawing.input)).second) {
            Tell(record.drawing.input + Tr(" is told more than once; the first time counts"));
            return;
        }
        ++m_drawings;
        m_faulty = m_faulty || !record.drawing.reason.empty();
        m_tools += record.drawing.tools.size();
        for (const ToolResult& tool : record.drawing.tools) m_failed += tool.IsGood() ? 0 : 1;
        m_table.Add(record.drawing);
        if (m_pages != nullptr) m_pages->Add(std::move(record.drawing));
    }

    void MissingShares() {
        for (const auto& [count, numbers] : m_shares)
            for (size_t number = 1; number <= count; ++number)
                if (numbers.count(number) == 0)
                    Tell(Tr("the results of share ") + std::to_string(number) + "/" +
                         std::to_string(count) + Tr(" are missing"));
    }

    const ReportOptions& m_options;
    TableFile m_table;
    std::unique_ptr<PagedReport> m_pages;
    std::unordered_set<size_t> m_seen;            // hashes of the drawings' names
    std::map<size_t, std::set<size_t>> m_shares;  // that were read, by how many there are
    std::vector<std::string> m_troubles;
    size_t m_told = 0, m_tools = 0, m_failed = 0, m_drawings = 0;
    bool m_faulty = false;
};

}  // namespace

ExitStatus RunReport(const ReportOptions& options) {
    FileRoles files;
    for (const std::string& input : options.inputs) files.Input(input);
    files.Output(options.report, "--report " + options.report,
                 Tr("choose another place with --report"));
    files.Output(options.table, "--table " + options.table,
                 Tr("choose another place with --table"));
    if (!options.table.empty())
        files.Output(options.table + ".part", options.table + ".part",
                     Tr("choose another place with --table"));
    std::error_code error;  // told when the table cannot be begun
    fs::create_directories(fs::path(options.table).parent_path(), error);
    return Report(options).Run();
}

}  // namespace app
