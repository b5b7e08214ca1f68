#include "apps/qzenvelope/BatchRun.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <set>

#include "product/tool/Drawing.h"
#include "product/tool/DrawingJob.h"
#include "apps/qzenvelope/FileNumbers.h"
#include "apps/qzenvelope/FileRoles.h"
#include "apps/qzenvelope/Progress.h"
#include "product/report/Summary.h"
#include "apps/qzenvelope/WorkerPool.h"
#include "product/report/Page.h"
#include "plugin/util/FileName.h"
#include "host/base/format.h"
#include "host/sys/file_io.h"
#include "host/solid/kernel.h"
#include "host/solid/revolve.h"

namespace app {
namespace {

namespace fs = std::filesystem;

std::vector<NamedTool> ReadTable(const std::string& path) {
    if (path.empty()) return {};
    host::FileBytes bytes;
    host::FileError error;
    if (!host::ReadWholeFile(path, bytes, error))
        throw Failure(kUsage, path + ": the tools file cannot be read: " + error.reason);
    return ReadToolTable(std::string(bytes.View()), path);
}

void MakeFolder(const fs::path& folder, const char* option) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (!fs::is_directory(folder))
        throw Failure(kUsage, folder.string() + ": the folder cannot be made" +
                                  (error ? ": " + error.message() : "") +
                                  "; choose another place with " + option);
}

class Batch {
public:
    explicit Batch(const BatchOptions& options)
        : m_options(options),
          m_table(ReadTable(options.tools)),
          m_atATime(options.jobs > 0 ? static_cast<size_t>(options.jobs) : ProcessorCount()) {}

    BatchResult Run() {
        const auto start = std::chrono::steady_clock::now();
        TakeInputs();
        MakeFolder(m_options.out, "--out");
        if (!m_options.report.empty() && fs::path(m_options.report).has_parent_path())
            MakeFolder(fs::path(m_options.report).parent_path(), "--report");
        host::solid::InstallModeller();
        // Workers come into being with the kernel, instead of each loading it.
        std::string reason;
        if (!m_options.report.empty() || m_options.step || m_options.stl)
            host::solid::LoadKernel(reason);
        LookThrough();
        NameFiles();
        CheckFiles();
        for (const std::string& warning : m_result.warnings)
            std::fprintf(stderr, "qzenvelope: warning: %s\n", warning.c_str());
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
            DrawingJob job;
            job.number = m_jobs.size();
            job.input = input;
            m_jobs.push_back(job);
            m_result.drawings.emplace_back();
            m_result.drawings.back().input = input;
        }
        std::vector<std::string> stems, extensions;
        for (const DrawingJob& job : m_jobs) stems.push_back(fs::path(job.input).stem().string());
        std::vector<size_t> renamed;
        const std::vector<std::string> names = NumberedNames(stems, renamed);
        for (size_t i = 0; i < m_jobs.size(); ++i) {
            const fs::path file = names[i] + fs::path(m_jobs[i].input).extension().string();
            m_jobs[i].output = (fs::path(m_options.out) / file).string();
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
        for (const DrawingJob& job : m_jobs) files.Input(job.input);
        for (const DrawingJob& job : m_jobs) {
            files.Output(job.output, job.output, folder);
            for (const std::string& name : job.files) {
                if (!IsFileName(host::Widen(name).c_str()))
                    continue;  // refused when the tool is exported
                const std::string path = (fs::path(m_options.out) / name).string();
                files.Output(path + ".sat", path + ".sat", folder);
                if (m_options.step) files.Output(path + ".stp", path + ".stp", folder);
                if (m_options.stl) files.Output(path + ".stl", path + ".stl", folder);
            }
        }
        files.Output(m_options.report, "--report " + m_options.report,
                     "choose another place with --report");
    }

    // Finds out which tools there are, so that equal names are known before anything is written.
    void LookThrough() {
        WorkerPool pool;
        pool.work = [this](size_t i, const Send& send) {
            const Drawing drawing(m_jobs[i].input);
            send(NamesToText(ToolNames(drawing.Database(), m_jobs[i].input, m_options, m_table)));
        };
        pool.onMessage = [this](size_t i, const std::string& text) {
            m_jobs[i].files = NamesFromText(text);
        };
        pool.onEnd = [this](size_t i, const WorkerEnd& end) {
            if (!end.isWhole) Fail(i, end, true);
            return false;
        };
        pool.Run(m_jobs.size(), m_atATime);
    }

    void Fail(size_t i, const WorkerEnd& end, bool isUnreadable) {
        DrawingResult& drawing = m_result.drawings[i];
        // Most refusals name the file themselves.
        const bool isNamed = end.how.find(drawing.input) != std::string::npos;
        drawing.reason = isNamed ? end.how : drawing.input + ": " + end.how;
        drawing.isUnreadable = isUnreadable;
    }

    void NameFiles() {
        std::vector<std::string> names;
        for (const DrawingJob& job : m_jobs)
            names.insert(names.end(), job.files.begin(), job.files.end());
        std::vector<size_t> renamed;
        const std::vector<std::string> files = NumberedNames(names, renamed);
        for (const size_t i : renamed)
            m_result.warnings.push_back("there is more than one tool " + names[i] +
                                        "; the files of one are named " + files[i]);
        size_t next = 0;
        for (DrawingJob& job : m_jobs)
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
        for (const DrawingJob& job : m_jobs) isTold.emplace_back(job.files.size(), 0);
        std::vector<size_t> current(m_jobs.size(), 0);
        std::vector<std::chrono::steady_clock::time_point> started(m_jobs.size());

        WorkerPool pool;
        pool.work = [&](size_t i, const Send& send) {
            RunDrawing(m_jobs[ready[i]], m_options, m_table, send);
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
            // It crashed at a tool that was not among the skipped: the others still can be done.
            const size_t tool = current[job];
            if (tool < m_jobs[job].files.size() && m_jobs[job].skipped.insert(tool).second) {
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
    std::vector<DrawingJob> m_jobs;
    size_t m_total = 0;
    BatchResult m_result;
};

template <class Condition>
size_t CountTools(const BatchResult& result, Condition condition) {
    size_t count = 0;
    for (const DrawingResult& drawing : result.drawings)
        for (const ToolResult& tool : drawing.tools) count += condition(tool) ? 1 : 0;
    return count;
}

}  // namespace

size_t BatchResult::ToolCount() const {
    return CountTools(*this, [](const ToolResult&) { return true; });
}

size_t BatchResult::FailedTools() const {
    return CountTools(*this, [](const ToolResult& tool) { return !tool.IsGood(); });
}

size_t BatchResult::ToolsWithWarnings() const {
    return CountTools(*this, [](const ToolResult& tool) { return tool.HasWarning(); });
}

ExitStatus BatchResult::Status() const {
    ExitStatus status = FailedTools() > 0 ? kNoResult : kDone;
    for (const DrawingResult& drawing : drawings)
        if (!drawing.reason.empty())
            status = std::max(status, drawing.isUnreadable ? kUsage : kNoResult);
    return status;
}

ExitStatus RunBatch(const BatchOptions& options) {
    const BatchResult result = Batch(options).Run();
    if (!options.report.empty()) {
        const std::string page = PageText(result, options);
        host::FileError error;
        if (!host::WriteFileAtomically(options.report, {std::string_view(page)}, error))
            throw Failure(kNoResult, options.report + ": the report cannot be written: " +
                                         error.reason + "; choose another place with --report");
    }
    const std::string text =
        options.json ? BatchJson(result, options) : BatchSummary(result, options);
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0)
        throw Failure(kNoResult, "the standard output cannot be written");
    return result.Status();
}

}  // namespace app
