#include "apps/qzenvelope/BatchRun.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <set>

#include "apps/qzenvelope/FileNumbers.h"
#include "apps/qzenvelope/FileRoles.h"
#include "apps/qzenvelope/InputFiles.h"
#include "apps/qzenvelope/JobSender.h"
#include "apps/qzenvelope/Manifest.h"
#include "apps/qzenvelope/Output.h"
#include "apps/qzenvelope/Progress.h"
#include "apps/qzenvelope/ResultLines.h"
#include "apps/qzenvelope/Version.h"
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
#include "product/tool/DrawingRun.h"
#include "product/base/Words.h"

namespace app {

using product::Tr;
namespace {

namespace fs = std::filesystem;

std::vector<NamedTool> ReadTable(const std::string& path) {
    if (path.empty()) return {};
    host::FileBytes bytes;
    host::FileError error;
    if (!host::ReadWholeFile(path, bytes, error))
        throw Failure(Fault::Input, path + Tr(": the tools file cannot be read: ") + error.reason);
    return ReadToolTable(std::string(bytes.View()), path);
}

void MakeFolder(const fs::path& folder, const char* option) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (!fs::is_directory(folder))
        throw Failure(Fault::Request, folder.string() + Tr(": the folder cannot be made") +
                                          (error ? ": " + error.message() : "") +
                                          Tr("; choose another place with ") + option);
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
        TakeInputs(
            ShareOf(ExpandInputs(m_options.inputs, m_options.recursive, m_options.request.out),
                    m_options.shard));
        MakeFolder(m_options.request.out, "--out");
        if (!m_lock.Take(m_options.request.out))
            throw Failure(
                Fault::Request,
                m_options.request.out + Tr(": another batch is writing into this folder; wait "
                                           "for it, or choose another with --out"));
        for (const auto& [file, option] :
             {std::pair(&m_options.report, "--report"), std::pair(&m_options.table, "--table"),
              std::pair(&m_options.jsonLines, "--json-lines")})
            if (!file->empty() && fs::path(*file).has_parent_path())
                MakeFolder(fs::path(*file).parent_path(), option);
        host::solid::InstallModeller();
        // Workers come into being with the libraries, instead of each loading them.
        if (!m_options.report.empty()) host::GeosFault();
        std::string reason;
        if (m_options.request.stl) host::solid::LoadKernel(reason);
        Manifest manifest((fs::path(m_options.request.out) / kManifestName).string());
        m_manifest = &manifest;
        TakeUnchanged();
        LookThrough();
        NameFiles();
        CheckFiles();
        ResultLines lines(m_options.jsonLines, {VersionText(), m_options.shard.number,
                                                m_options.shard.count, m_jobs.size()});
        m_lines = &lines;
        for (const std::string& warning : m_result.warnings) Complain(Tr("warning: ") + warning);
        TellWhatIsDone();
        WorkThrough();
        manifest.Finish();
        lines.Finish();
        m_result.seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        return std::move(m_result);
    }

private:
    void TakeInputs(const std::vector<std::string>& inputs) {
        std::set<host::FileIdentity> seen;
        for (const std::string& input : inputs) {
            const host::FileIdentity file = host::IdentityOf(input);
            if (file.kind == host::FileIdentity::kFile && !seen.insert(file).second) {
                m_result.warnings.push_back(input + Tr(" is named twice; it is done once"));
                continue;
            }
            DrawingRequest job;
            job.number = m_jobs.size();
            job.input = input;
            m_jobs.push_back(job);
            m_result.drawings.emplace_back();
            m_result.drawings.back().input = input;
        }
        m_marks.resize(m_jobs.size());
        m_names.resize(m_jobs.size());
        m_found.resize(m_jobs.size(), nullptr);
        std::vector<std::string> stems;
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
            m_result.warnings.push_back(Tr("another drawing is named like ") + m_jobs[i].input +
                                        Tr("; it becomes ") + m_jobs[i].output);
    }

    // Once before anything is done, and again when the tools' names are known, before anything is
    // written.
    void CheckFiles() const {
        const char* const folder = Tr("choose another folder with --out");
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
                     Tr("choose another place with --report"));
        files.Output(m_options.table, "--table " + m_options.table,
                     Tr("choose another place with --table"));
        files.Output(m_options.jsonLines, "--json-lines " + m_options.jsonLines,
                     Tr("choose another place with --json-lines"));
        const std::string manifest = (fs::path(m_options.request.out) / kManifestName).string();
        files.Output(manifest, manifest, folder);
    }

    // What an earlier batch has done of this one.
    void TakeUnchanged() {
        m_fingerprint = VersionText() + "\n" + m_options.fingerprint + "\n" +
                        (m_options.tools.empty() ? "" : MarkOf(m_options.tools));
        for (size_t i = 0; i < m_jobs.size(); ++i) {
            const std::string& input = m_jobs[i].input;
            m_marks[i] = MarkOf(input);
            if (m_options.force) continue;
            const ResultRecord* record =
                m_manifest->Unchanged(input, m_marks[i], m_fingerprint, m_options.request.withPage);
            if (record == nullptr || record->drawing.output != m_jobs[i].output) continue;
            m_names[i] = record->names;
            m_jobs[i].files = record->names;
            m_found[i] = record;
        }
    }

    // Those that need no work, and those that cannot be worked on.
    void TellWhatIsDone() {
        for (size_t i = 0; i < m_jobs.size(); ++i) {
            if (m_found[i] != nullptr) {
                m_lines->Add(m_manifest->LineOf(m_jobs[i].input));
            } else if (m_jobs[i].files.empty()) {
                m_lines->Add(ToLine(RecordOf(i)));
            }
        }
    }

    ResultRecord RecordOf(size_t job) const {
        ResultRecord record;
        record.drawing = m_result.drawings[job];
        // What broke off may go well another time.
        if (m_jobs[job].skipped.empty()) record.content = m_marks[job];
        record.options = m_fingerprint;
        record.hasPictures = m_options.request.withPage;
        record.names = m_names[job];
        record.files = m_jobs[job].files;
        record.written = SizesOf(record.drawing);
        return record;
    }

    // A drawing has come to its end.
    void Remember(size_t job) {
        const ResultRecord record = RecordOf(job);
        m_manifest->Add(record);
        m_lines->Add(ToLine(record));
        if (!m_options.report.empty()) return;
        m_result.drawings[job].DropPictures();
    }

    // Finds out which tools there are, so that equal names are known before anything is written.
    void LookThrough() {
        std::vector<size_t> jobs;
        for (size_t i = 0; i < m_jobs.size(); ++i)
            if (m_found[i] == nullptr) jobs.push_back(i);
        WorkerPool pool;
        pool.work = [&](size_t k, const Send& send) {
            const size_t i = jobs[k];
            host::LimitTime(m_options.timeLimit, Tr("reading"));
            const Drawing drawing(m_jobs[i].input);
            send(NamesToText({}));
            NameIn(m_jobs[i].input, [&] {
                send(NamesToText(
                    ToolNames(drawing.Database(), m_jobs[i].input, m_options.request, m_table)));
            });
        };
        // An empty list first: the drawing was read, whatever it then holds.
        std::vector<char> isRead(m_jobs.size(), 0);
        pool.onMessage = [&](size_t k, const std::string& text) {
            isRead[jobs[k]] = 1;
            m_jobs[jobs[k]].files = m_names[jobs[k]] = NamesFromText(text);
        };
        pool.onEnd = [&](size_t k, const WorkerEnd& end) {
            const size_t i = jobs[k];
            if (!end.isWhole) Fail(i, end, isRead[i] == 0 && !end.isLimit);
            return false;
        };
        pool.Run(jobs.size(), m_atATime);
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
            m_result.warnings.push_back(Tr("there is more than one tool ") + names[i] +
                                        Tr("; the files of one are named ") + files[i]);
        size_t next = 0;
        for (DrawingRequest& job : m_jobs)
            for (std::string& file : job.files) file = files[next++];
        for (size_t i = 0; i < m_jobs.size(); ++i) {
            m_result.drawings[i].tools.resize(m_jobs[i].files.size());
            for (size_t k = 0; k < m_jobs[i].files.size(); ++k)
                m_result.drawings[i].tools[k].name = m_jobs[i].files[k];
            if (m_found[i] != nullptr) Keep(i);
            if (m_found[i] == nullptr) m_total += m_jobs[i].files.size();
        }
    }

    // Unless its files have other names now, for there are other drawings.
    void Keep(size_t job) {
        const ResultRecord& record = *m_found[job];
        if (record.files != m_jobs[job].files) {
            m_found[job] = nullptr;
            return;
        }
        m_result.drawings[job] =
            m_options.report.empty()
                ? record.drawing
                : RecordFromLine(m_manifest->LineOf(m_jobs[job].input)).drawing;
        m_result.drawings[job].isUnchanged = true;
    }

    void WorkThrough() {
        Progress progress(m_total, m_options.json);
        // Those that could not be looked through have no tools.
        std::vector<size_t> ready;
        for (size_t i = 0; i < m_jobs.size(); ++i)
            if (!m_jobs[i].files.empty() && m_found[i] == nullptr) ready.push_back(i);
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
            const size_t job = ready[i];
            if (end.isWhole) {
                Remember(job);
                return false;
            }
            // It ended at a tool that was not among the skipped: the others still can be done.
            const size_t tool = current[job];
            const std::string why =
                end.isLimit
                    ? Tr("the tool ") + end.how + Tr("; raise the limit or simplify the tool")
                    : Tr("the program crashed on this tool; please report it with the drawing");
            if (!end.isRefusal && tool < m_jobs[job].files.size() &&
                m_jobs[job].skipped.emplace(tool, why).second) {
                progress.Say(m_result.drawings[job].input + Tr(": tool ") +
                             m_jobs[job].files[tool] + Tr(": the worker ") + end.how +
                             Tr("; the drawing is done again without it"));
                return true;
            }
            Fail(job, end, false);
            Remember(job);
            return false;
        };
        pool.Run(ready.size(), m_atATime);
    }

    const BatchOptions& m_options;
    std::vector<NamedTool> m_table;
    size_t m_atATime;
    std::vector<DrawingRequest> m_jobs;
    std::vector<std::string> m_marks;               // of the drawings' contents
    std::vector<std::vector<std::string>> m_names;  // of each drawing's tools, not yet numbered
    std::vector<const ResultRecord*> m_found;       // what an earlier batch did; null: to be done
    std::string m_fingerprint;
    Manifest* m_manifest = nullptr;
    ResultLines* m_lines = nullptr;
    size_t m_total = 0;
    BatchResult m_result;
    host::FolderLock m_lock;
};

}  // namespace

BatchResult ComputeBatch(const BatchOptions& options) { return Batch(options).Run(); }

}  // namespace app
