#include "product/tool/DrawingJob.h"

#include <memory>
#include <utility>

#include "product/tool/Drawing.h"
#include "product/tool/Text.h"
#include "product/tool/ToolRun.h"
#include "plugin/batch/KnifeDiagramFactory.h"
#include "plugin/batch/Progress.h"
#include "host/db/build.h"

namespace app {
namespace {

using Json = nlohmann::ordered_json;

// A tool at which an earlier worker crashed, or that has nothing to compute, is told of and no
// more.
bool IsRefused(const PlannedTool& planned, bool isSkipped, BatchTool& tool, ToolResult& result) {
    if (isSkipped)
        result.reason = "the program crashed on this tool; please report it with the drawing";
    else
        result.reason = planned.problem;
    if (result.reason.empty()) return false;
    tool.execStatus = kBatchFailed;
    return true;
}

class Job {
public:
    Job(const DrawingJob& job, const BatchOptions& options, const std::vector<NamedTool>& table,
        const Send& send)
        : m_job(job), m_options(options), m_send(send), m_drawing(job.input) {
        AcDbDatabase& database = m_drawing.Database();
        m_plan = PlanTools(database, job.input, options, table);
        if (m_plan.tools.size() != job.files.size())
            throw Failure(kNoResult,
                          "the drawing changed while the batch was running; run it again");
        // Before the first run, which switches every layer on.
        if (!options.report.empty()) m_pictures = std::make_unique<PictureBuilder>(database);
    }

    void Run() {
        BatchTaskList& list =
            CKnifeDiagramFactory::GetInstance().GetTaskList(&m_drawing.Database());
        list = m_plan.list;
        RunTools(list);
        DrawingResult result;
        result.input = m_job.input;
        result.source = NameOf(m_plan.source);
        Finish(list, result);
        result.notes = m_drawing.Notes();
        JobMessage message;
        message.kind = JobMessage::DrawingEnds;
        message.drawing = std::move(result);
        m_send(ToText(message, false));
        CKnifeDiagramFactory::GetInstance().RemoveTaskList(&m_drawing.Database());
    }

private:
    void RunTools(BatchTaskList& list) {
        ToolRun run(m_drawing.Database(), m_options, m_pictures.get());
        progressStart();
        for (size_t i = 0; i < m_plan.tools.size(); ++i) {
            progressStep(static_cast<int>(m_plan.tools.size()), static_cast<int>(i), 1.0);
            const PlannedTool& planned = m_plan.tools[i];
            BatchTask& task = list[planned.task];
            BatchTool& tool = task.tools[planned.tool];
            JobMessage message;
            message.tool = i;
            m_send(ToText(message, false));
            message.kind = JobMessage::ToolEnds;
            ToolResult& result = message.result;
            result.id = "d" + std::to_string(m_job.number) + "t" + std::to_string(i);
            result.name = planned.name;
            result.task = ToUtf8(task.name);
            result.unit = UnitName(m_drawing.Database());
            if (planned.notDisplayed > 0)
                result.findings.push_back(
                    {Finding::Kind::LeftOut, true,
                     std::to_string(planned.notDisplayed) +
                         " not displayed: invisible, or on layers that are off or frozen",
                     std::nullopt});
            if (!IsRefused(planned, m_job.skipped.count(i) != 0, tool, result))
                run.Run(tool, ParametersOf(task), m_job.files[i], result);
            m_send(ToText(message, !m_options.report.empty()));
            // The engine's scratch lines; a large drawing would gather millions.
            host::PurgeErased(m_drawing.Database());
        }
        progressEnd();
    }

    // A stored task keeps its own; the flag that is not stored is the command line's.
    CEncircleCalInfo ParametersOf(const BatchTask& task) const {
        CEncircleCalInfo parameters = task.params;
        parameters.m_bSideLinesVertical = m_options.verticalEnds;
        return parameters;
    }

    void Finish(BatchTaskList& list, DrawingResult& result) {
        for (BatchTask& task : list) task.rollUpStatus();
        const Acad::ErrorStatus es = list.store(&m_drawing.Database());
        if (es != Acad::eOk) {
            result.reason =
                "the task list cannot be stored in the drawing: " + ToUtf8(acadErrorStatusText(es));
            return;
        }
        for (const host::OpenObject& open : host::OpenObjectsReport(m_drawing.Database()))
            result.notes.push_back("the run left object " + HandleText(AcDbHandle(open.handle)) +
                                   " open");
        try {
            m_drawing.Write(m_job.output);
            result.output = m_job.output;
        } catch (const Failure& failure) {
            result.reason = failure.what();
        }
    }

    const DrawingJob& m_job;
    const BatchOptions& m_options;
    const Send& m_send;
    Drawing m_drawing;
    ToolPlan m_plan;
    std::unique_ptr<PictureBuilder> m_pictures;
};

}  // namespace

std::string ToText(const JobMessage& message, bool withPictures) {
    Json json{{"kind", static_cast<int>(message.kind)}, {"tool", message.tool}};
    if (message.kind == JobMessage::ToolEnds) json["result"] = ToJson(message.result, withPictures);
    if (message.kind == JobMessage::DrawingEnds) json["drawing"] = ToJson(message.drawing);
    // Names come from drawings and may hold bytes that are no UTF-8.
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

JobMessage MessageFromText(const std::string& text) {
    const Json json = Json::parse(text);
    JobMessage message;
    message.kind = static_cast<JobMessage::Kind>(json.at("kind").get<int>());
    message.tool = json.at("tool");
    if (message.kind == JobMessage::ToolEnds) message.result = ToolFromJson(json.at("result"));
    if (message.kind == JobMessage::DrawingEnds)
        message.drawing = DrawingFromJson(json.at("drawing"));
    return message;
}

std::string NamesToText(const std::vector<std::string>& names) {
    return Json(names).dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::vector<std::string> NamesFromText(const std::string& text) {
    return Json::parse(text).get<std::vector<std::string>>();
}

void RunDrawing(const DrawingJob& job, const BatchOptions& options,
                const std::vector<NamedTool>& table, const Send& send) {
    Job(job, options, table, send).Run();
}

}  // namespace app
