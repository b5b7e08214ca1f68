#include "apps/qzenvelope/BatchRun.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <set>

#include "apps/qzenvelope/FileNumbers.h"
#include "apps/qzenvelope/FileRoles.h"
#include "apps/qzenvelope/JobMessage.h"
#include "apps/qzenvelope/Output.h"
#include "apps/qzenvelope/Progress.h"
#include "apps/qzenvelope/WorkerPool.h"
#include "FileName.h"
#include "host/base/format.h"
#include "host/dwg/drawing_file.h"
#include "host/geos/geos_late.h"
#include "host/solid/kernel.h"
#include "host/solid/revolve.h"
#include "host/sys/file_io.h"
#include "host/sys/folder_lock.h"
#include "host/sys/process_end.h"
#include "product/base/Drawing.h"
#include "product/report/Page.h"
#include "product/report/Summary.h"
#include "product/report/Table.h"
#include "product/tool/DrawingRun.h"

namespace app {
namespace {

namespace fs = std::filesystem;

std::vector<NamedTool> ReadTable(const std::string& path) {
    if (path.empty()) return {};
    host::FileBytes bytes;
    host::FileError error;
    if (!host::ReadWholeFile(path, bytes, error))
        throw Failure(Fault::Input, path + ": the tools file cannot be read: " + error.reason);
    return ReadToolTable(std::string(bytes.View()), path);
}

void MakeFolder(const fs::path& folder, const char* option) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (!fs::is_directory(folder))
        throw Failure(Fault::Request, folder.string() + ": the folder cannot be made" +
                                          (error ? ": " + error.message() : "") +
                                          "; choose another place with " + option);
}

// A refusal inside a worker that does not name its drawing by itself.
template <class Work>
void NameIn(const std::string& input, Work work) {
    try {
        work();
    } catch (const Failure& failure) {
        throw Failure(failure.Code(), input + ": " + failure.what());
    }
}

// Sends on to the parent what a drawing's run tells.
class Sender : public ToolListener {
public:
    // timeLimit  of each tool, seconds; 0: none
    Sender(const Send& send, bool withPictures, double timeLimit)
        : m_send(send), m_withPictures(withPictures), m_timeLimit(timeLimit) {}

    void OnToolBegins(size_t tool) override {
        JobMessage message;
        message.tool = tool;
        m_send(ToText(message, false));
        host::LimitTime(m_timeLimit, "the tool");
    }
    void OnToolEnds(size_t tool, ToolResult&& result) override {
        host::LimitTime(0, "");
        JobMessage message;
        message.kind = JobMessage::ToolEnds;
        message.tool = tool;
        message.result = std::move(result);
        m_send(ToText(message, m_withPictures));
    }
    void Finish(DrawingResult&& result) {
        JobMessage message;
        message.kind = JobMessage::DrawingEnds;
        message.drawing = std::move(result);
        m_send(ToText(message, false));
    }

private:
    const Send& m_send;
    bool m_withPictures;
    double m_timeLimit;
};

class Batch {
public:
    explicit Batch(const BatchOptions& options)
        : m_options(options),
          m_table(ReadTable(options.tools)),
          m_atATime(options.jobs > 0 ? static_cast<size_t>(options.jobs) : ProcessorCount()) {}

    BatchResult Run() {
        const auto start = std::chrono::steady_clock::now();
        m_result.out = m_options.request.out;
        m_result.page = m_options.report;
        TakeInputs();
        MakeFolder(m_options.request.out, "--out");
        if (!m_lock.Take(m_options.request.out))
            throw Failure(Fault::Request, m_options.request.out +
                                              ": another batch is writing into this folder; wait "
                                              "for it, or choose another with --out");
        for (const auto& [file, option] :
             {std::pair(&m_options.report, "--report"), std::pair(&m_options.table, "--table")})
            if (!file->empty() && fs::path(*file).has_parent_path())
                MakeFolder(fs::path(*file).parent_path(), option);
        host::solid::InstallModeller();
        // Workers come into being with the libraries, instead of each loading them.
        if (!m_options.report.empty()) host::GeosFault();
        std::string reason;
        if (m_options.request.stl) host::solid::LoadKernel(reason);
        LookThrough();
        NameFiles();
        CheckFiles();
        for (const std::string& warning : m_result.warnings) Complain("warning: " + warning);
        WorkThrough();
        m_result.seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        return std::move(m_result);
    }

private:
    void TakeInputs() {
        std::set<host::FileIdentity> seen;
        for (const std::string& input : m_options.inputs) {
            const host::FileIdentity file = host::IdentityOf(input);
            if (file.kind == host::FileIdentity::kFile && !seen.insert(file).second) {
                m_result.warnings.push_back(input + " is named twice; it is done once");
                continue;
            }
            DrawingRequest job;
            job.number = m_jobs.size();
            job.input = input;
            m_jobs.push_back(job);
            m_result.drawings.emplace_back();
            m_result.drawings.back().input = input;
        }
        std::vector<std::string> stems, extensions;
        for (const DrawingRequest& job : m_jobs)
            stems.push_back(fs::path(job.input).stem().string());
        std::vector<size_t> renamed;
        const std::vector<std::string> names = NumberedNames(stems, renamed);
        for (size_t i = 0; i < m_jobs.size(); ++i) {
            // What was read as DWG is written as DXF: most converters know one way only.
            const std::string extension = host::dwg::IsDwgPath(m_jobs[i].input)
                                              ? ".dxf"
                                              : fs::path(m_jobs[i].input).extension().string();
            const fs::path file = names[i] + extension;
            m_jobs[i].output = (fs::path(m_options.request.out) / file).string();
        }
        CheckFiles();
        for (const size_t i : renamed)
            m_result.warnings.push_back("another drawing is named like " + m_jobs[i].input +
                                        "; it becomes " + m_jobs[i].output);
    }

    // Once before anything is done, and again when the tools' names are known, before anything is
    // written.
    void CheckFiles() const {
        const char* const folder = "choose another folder with --out";
        FileRoles files;
        files.Input(m_options.tools);
        for (const DrawingRequest& job : m_jobs) files.Input(job.input);
        for (const DrawingRequest& job : m_jobs) {
            files.Output(job.output, job.output, folder);
            for (const std::string& name : job.files) {
                if (!IsFileName(host::Widen(name).c_str()))
                    continue;  // refused when the tool is exported
                const std::string path = (fs::path(m_options.request.out) / name).string();
                files.Output(path + ".sat", path + ".sat", folder);
                if (m_options.request.step) files.Output(path + ".stp", path + ".stp", folder);
                if (m_options.request.stl)
                    for (const std::string& stl : StlFiles(path + ".stl", m_options.request.parts))
                        files.Output(stl, stl, folder);
                if (m_options.request.profile) {
                    const std::string profile = WithSuffix(path + ".dxf", kProfileSuffix);
                    files.Output(profile, profile, folder);
                }
            }
        }
        files.Output(m_options.report, "--report " + m_options.report,
                     "choose another place with --report");
        files.Output(m_options.table, "--table " + m_options.table,
                     "choose another place with --table");
    }

    // Finds out which tools there are, so that equal names are known before anything is written.
    void LookThrough() {
        WorkerPool pool;
        pool.work = [this](size_t i, const Send& send) {
            host::LimitTime(m_options.timeLimit, "reading");
            const Drawing drawing(m_jobs[i].input);
            send(NamesToText({}));
            NameIn(m_jobs[i].input, [&] {
                send(NamesToText(
                    ToolNames(drawing.Database(), m_jobs[i].input, m_options.request, m_table)));
            });
        };
        // An empty list first: the drawing was read, whatever it then holds.
        std::vector<char> isRead(m_jobs.size(), 0);
        pool.onMessage = [&](size_t i, const std::string& text) {
            isRead[i] = 1;
            m_jobs[i].files = NamesFromText(text);
        };
        pool.onEnd = [&](size_t i, const WorkerEnd& end) {
            if (!end.isWhole) Fail(i, end, isRead[i] == 0 && !end.isLimit);
            return false;
        };
        pool.Run(m_jobs.size(), m_atATime);
    }

    void Fail(size_t i, const WorkerEnd& end, bool isUnreadable) {
        DrawingResult& drawing = m_result.drawings[i];
        drawing.reason = end.isRefusal ? end.how : drawing.input + ": " + end.how;
        drawing.isUnreadable = isUnreadable;
    }

    void NameFiles() {
        std::vector<std::string> names;
        for (const DrawingRequest& job : m_jobs)
            names.insert(names.end(), job.files.begin(), job.files.end());
        std::vector<size_t> renamed;
        const std::vector<std::string> files = NumberedNames(names, renamed);
        for (const size_t i : renamed)
            m_result.warnings.push_back("there is more than one tool " + names[i] +
                                        "; the files of one are named " + files[i]);
        size_t next = 0;
        for (DrawingRequest& job : m_jobs)
            for (std::string& file : job.files) file = files[next++];
        for (size_t i = 0; i < m_jobs.size(); ++i) {
            m_result.drawings[i].tools.resize(m_jobs[i].files.size());
            for (size_t k = 0; k < m_jobs[i].files.size(); ++k)
                m_result.drawings[i].tools[k].name = m_jobs[i].files[k];
        }
        m_total = names.size();
    }

    void WorkThrough() {
        Progress progress(m_total, m_options.json);
        // Those that could not be looked through have no tools.
        std::vector<size_t> ready;
        for (size_t i = 0; i < m_jobs.size(); ++i)
            if (!m_jobs[i].files.empty()) ready.push_back(i);
        std::vector<std::vector<char>> isTold;
        for (const DrawingRequest& job : m_jobs) isTold.emplace_back(job.files.size(), 0);
        std::vector<size_t> current(m_jobs.size(), 0);
        std::vector<std::chrono::steady_clock::time_point> started(m_jobs.size());

        WorkerPool pool;
        pool.work = [&](size_t i, const Send& send) {
            const DrawingRequest& job = m_jobs[ready[i]];
            Drawing drawing(job.input);
            Sender sender(send, m_options.request.withPage, m_options.timeLimit);
            NameIn(job.input, [&] {
                sender.Finish(RunDrawing(drawing, job, m_options.request, m_table, sender));
            });
        };
        pool.onMessage = [&](size_t i, const std::string& text) {
            const size_t job = ready[i];
            JobMessage message = MessageFromText(text);
            DrawingResult& drawing = m_result.drawings[job];
            if (message.kind == JobMessage::ToolBegins) {
                current[job] = message.tool;
                progress.Begin(m_jobs[job].files.at(message.tool));
            } else if (message.kind == JobMessage::ToolEnds) {
                if (std::exchange(isTold[job].at(message.tool), 1) == 0)
                    progress.End(drawing.input, message.result);
                drawing.tools.at(message.tool) = std::move(message.result);
                current[job] = message.tool + 1;
            } else {
                message.drawing.tools = std::move(drawing.tools);
                drawing = std::move(message.drawing);
                current[job] = drawing.tools.size();
            }
        };
        pool.onEnd = [&](size_t i, const WorkerEnd& end) {
            if (end.isWhole) return false;
            const size_t job = ready[i];
            // It ended at a tool that was not among the skipped: the others still can be done.
            const size_t tool = current[job];
            const std::string why =
                end.isLimit ? "the tool " + end.how + "; raise the limit or simplify the tool"
                            : "the program crashed on this tool; please report it with the drawing";
            if (!end.isRefusal && tool < m_jobs[job].files.size() &&
                m_jobs[job].skipped.emplace(tool, why).second) {
                progress.Say(m_result.drawings[job].input + ": tool " + m_jobs[job].files[tool] +
                             ": the worker " + end.how + "; the drawing is done again without it");
                return true;
            }
            Fail(job, end, false);
            return false;
        };
        pool.Run(ready.size(), m_atATime);
    }

    const BatchOptions& m_options;
    std::vector<NamedTool> m_table;
    size_t m_atATime;
    std::vector<DrawingRequest> m_jobs;
    size_t m_total = 0;
    BatchResult m_result;
    host::FolderLock m_lock;
};

}  // namespace

ExitStatus StatusOf(const BatchResult& result) {
    ExitStatus status = result.FailedTools() > 0 ? kNoResult : kDone;
    for (const DrawingResult& drawing : result.drawings)
        if (!drawing.reason.empty())
            status = std::max(status, drawing.isUnreadable ? kUsage : kNoResult);
    return status;
}

namespace {

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

}  // namespace

ExitStatus RunBatch(const BatchOptions& options) {
    BatchResult result = Batch(options).Run();
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
