#include "apps/qzhost/tools/ToolTask.h"

#include <chrono>
#include <filesystem>
#include <memory>

#include "ExportNames.h"
#include "SatExport.h"
#include "apps/qzhost/review/DrawingCopy.h"
#include "host/dxf/dxf_file.h"
#include "plugin/batch/Progress.h"
#include "product/base/Drawing.h"
#include "product/base/Failure.h"
#include "product/base/Text.h"
#include "product/base/WorkingDatabase.h"
#include "product/tool/DrawingRun.h"

// The plug-in's free operations, for its classes that this program holds itself: progress has its
// own way here, and no file is asked for. The module brings its own.
void progressStart() {}
void progressStep(int, int, double) {}
void progressEnd() {}
CString AskSatPath(const CString&, CWnd*) { return CString(); }

namespace app {
namespace {

// A stop that the user asked for; leaves the run through its listener.
struct Stopped {};

class Listener : public product::ToolListener {
public:
    Listener(size_t all, const std::function<bool(size_t, size_t)>& progress)
        : m_all(all), m_progress(progress) {}

    void OnToolBegins(size_t tool) override {
        if (m_progress && !m_progress(tool, m_all)) throw Stopped();
    }
    void OnToolEnds(size_t, product::ToolResult&& result) override {
        results.push_back(std::move(result));
    }

    std::vector<product::ToolResult> results;

private:
    size_t m_all;
    const std::function<bool(size_t, size_t)>& m_progress;
};

// A file of the drawing as it is now, in the folder of temporary files.
class FileOfNow {
public:
    explicit FileOfNow(const AcDbDatabase& drawing) {
        namespace fs = std::filesystem;
        static int count = 0;
        m_path = (fs::temp_directory_path() /
                  ("qzhost-" +
                   std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()) +
                   "-" + std::to_string(++count) + ".dxf"))
                     .string();
        host::dxf::Report report;
        const host::dxf::Result result = host::dxf::WriteFile(drawing, m_path, report);
        if (!result.ok()) throw product::Failure(product::Fault::Output, result.message);
    }
    ~FileOfNow() {
        std::error_code error;
        std::filesystem::remove(m_path, error);
    }
    FileOfNow(const FileOfNow&) = delete;
    FileOfNow& operator=(const FileOfNow&) = delete;
    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
};

}  // namespace

std::vector<ListedTool> ListTools(AcDbDatabase& drawing, std::string& reason) {
    std::vector<ListedTool> listed;
    const product::WorkingDatabase original(drawing);
    product::ToolPlan plan;
    try {
        plan = product::PlanTools(drawing, "drawing", {}, {});
    } catch (const product::Failure& failure) {
        reason = failure.what();
        return listed;
    }
    for (const product::PlannedTool& planned : plan.tools) {
        const BatchTask& task = plan.list[planned.task];
        const BatchTool& tool = task.tools[planned.tool];
        ListedTool row;
        row.name = planned.name;
        row.task = product::ToUtf8(task.name);
        row.centre = tool.centre;
        row.parameters = product::ToolParameters(task.params);
        row.problem = planned.problem;
        row.isComputed = tool.execStatus == kBatchDone;
        row.isExported = tool.exportStatus == kBatchDone;
        row.isFailed = tool.execStatus == kBatchFailed || tool.exportStatus == kBatchFailed;
        for (int i = 0; i < tool.sourceIds.length(); ++i) row.ids.push_back(tool.sourceIds[i]);
        listed.push_back(std::move(row));
    }
    return listed;
}

product::BatchResult CheckTools(AcDbDatabase& drawing, const std::string& title,
                                const std::string& folder,
                                const std::function<bool(size_t, size_t)>& progress) {
    namespace fs = std::filesystem;
    const auto start = std::chrono::steady_clock::now();
    const FileOfNow file(drawing);
    const product::WorkingDatabase original(
        drawing);  // the former working drawing comes back, whatever happens
    product::Drawing copy(file.Path());
    product::BatchRequest request;
    request.out = folder;
    request.withPage = true;
    const std::vector<std::string> names =
        product::ToolNames(copy.Database(), file.Path(), request, {});
    product::DrawingRequest asked;
    asked.input = file.Path();
    const std::string stem = fs::path(title).stem().string();
    asked.output = (fs::path(folder) / (stem + "-envelopes.dxf")).string();
    CExportNames files;
    for (const std::string& name : names) files.Expect(product::FromUtf8(name));
    for (const std::string& name : names)
        asked.files.push_back(product::ToUtf8(files.Take(product::FromUtf8(name))));
    Listener listener(names.size(), progress);
    product::BatchResult result;
    result.out = folder;
    product::DrawingResult done;
    try {
        done = product::RunDrawing(copy, asked, request, {}, listener);
    } catch (const Stopped&) {
        done.reason = "stopped";
    }
    done.input = title;
    done.tools = std::move(listener.results);
    result.drawings.push_back(std::move(done));
    result.seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return result;
}

}  // namespace app
