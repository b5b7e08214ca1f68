#include "product/tool/DrawingRun.h"

#include <chrono>
#include <exception>
#include <filesystem>
#include <utility>

#include "KnifeDiagramFactory.h"
#include "host/db/build.h"
#include "product/base/Failure.h"
#include "product/base/Text.h"
#include "product/picture/Picture.h"
#include "product/tool/FoundTools.h"
#include "product/tool/ToolRun.h"

namespace product {
namespace {

// What the run tells of itself, as figures of the result.
void TakeFigures(const ToolRun& run, ToolResult& result) {
    if (!run.envelope.found) return;
    result.isComputed = true;
    result.handle = run.envelope.handle;
    result.vertices = static_cast<int>(run.envelope.vertices.size());
    result.length = run.envelope.extents.Width();
    result.diameter = run.envelope.diameter;
    if (!run.solid.profile) return;
    result.length = run.solid.measures.length;
    result.diameter = run.solid.measures.largestDiameter;
    result.volume = run.solid.measures.volume;
    FigureRequest asked;
    if (run.parts) {
        asked.isTipHigh = run.parts->tip.isHigh;
        asked.isTipSure = run.parts->tip.isSure;
        if (run.parts->isSplit) asked.cut = &run.parts->cut.profile;
    }
    result.figures = FiguresOf(*run.solid.profile, asked);
}

// A tool at which an earlier attempt ended, or that has nothing to compute, is told of and no more.
bool IsRefused(const PlannedTool& planned, const std::string* ended, BatchTool& tool,
               ToolResult& result) {
    result.reason = ended != nullptr ? *ended : planned.problem;
    if (result.reason.empty()) return false;
    tool.execStatus = kBatchFailed;
    return true;
}

class Run {
public:
    Run(Drawing& drawing, const DrawingRequest& asked, const BatchRequest& request,
        const std::vector<NamedTool>& table, ToolListener& listener)
        : m_drawing(drawing),
          m_asked(asked),
          m_request(request),
          m_listener(listener),
          m_plan(PlanTools(drawing.Database(), asked.input, request, table)) {
        if (m_plan.tools.size() != asked.files.size())
            throw Failure(Fault::Input,
                          "the drawing changed while the batch was running; run it again");
    }

    DrawingResult Work() {
        AcDbDatabase& database = m_drawing.Database();
        BatchTaskList& list = CKnifeDiagramFactory::GetInstance().GetTaskList(&database);
        list = m_plan.list;
        EraseEnvelopes(m_plan.envelopes);
        RunTools(list);
        DrawingResult result;
        result.input = m_asked.input;
        result.source = NameOf(m_plan.source);
        Finish(list, result);
        result.notes = m_drawing.Notes();
        CKnifeDiagramFactory::GetInstance().RemoveTaskList(&database);
        return result;
    }

private:
    void RunTools(BatchTaskList& list) {
        ToolRunner runner(m_drawing.Database(), m_request.withPage);
        for (size_t i = 0; i < m_plan.tools.size(); ++i) {
            const PlannedTool& planned = m_plan.tools[i];
            BatchTask& task = list[planned.task];
            BatchTool& tool = task.tools[planned.tool];
            m_listener.OnToolBegins(i);
            ToolResult result;
            result.id = "d" + std::to_string(m_asked.number) + "t" + std::to_string(i);
            result.name = planned.name;
            result.task = ToUtf8(task.name);
            result.unit = UnitName(m_drawing.Database());
            if (planned.notDisplayed > 0)
                result.findings.push_back(
                    {Finding::Kind::LeftOut, true,
                     std::to_string(planned.notDisplayed) +
                         " not displayed: invisible, or on layers that are off or frozen",
                     std::nullopt});
            if (planned.found) AddFoundFindings(*planned.found, result.findings);
            for (const std::string& remark : planned.remarks)
                result.findings.push_back({Finding::Kind::Note, true, remark, std::nullopt});
            const auto ended = m_asked.skipped.find(i);
            if (!IsRefused(planned, ended == m_asked.skipped.end() ? nullptr : &ended->second, tool,
                           result))
                RunOne(runner, RequestOf(task, tool, planned, m_asked.files[i]), tool, result);
            m_listener.OnToolEnds(i, std::move(result));
            // The engine's scratch lines; a large drawing would gather millions.
            host::PurgeErased(m_drawing.Database());
        }
    }

    ToolRequest RequestOf(const BatchTask& task, const BatchTool& tool, const PlannedTool& planned,
                          const std::string& file) const {
        ToolRequest request;
        // A stored task keeps its own; the flag that is not stored is the batch's.
        request.parameters = ToolParameters(task.params);
        const ToolParameters& asked = m_request.parameters;
        request.parameters.verticalEnds = asked.verticalEnds;
        request.parameters.algorithm = asked.algorithm;
        request.parameters.limit = asked.limit;
        request.parameters.exact = asked.exact;
        request.parameters.takeCircles = asked.takeCircles;
        if (m_plan.source != ToolSource::Stored) request.parameters.half = asked.half;
        request.picked = tool.sourceIds;
        request.formerEnvelope = tool.envelopeId;
        request.axis = planned.axis ? *planned.axis : Axis::Level({tool.centre.x, tool.centre.y});
        request.curves = planned.curves;
        if (planned.found) request.foundWindow = planned.found->window;
        request.name = planned.name;
        const std::string path = (std::filesystem::path(m_request.out) / file).string();
        request.fileName = file;
        request.place = "--out";
        request.solid.sat = path + ".sat";
        if (m_request.step) request.solid.step = path + ".stp";
        if (m_request.stl) request.solid.stl = path + ".stl";
        if (m_request.profile) request.profile = WithSuffix(path + ".dxf", kProfileSuffix);
        request.parts = m_request.parts;
        request.solid.chordTolerance = m_request.chordTolerance;
        request.solidInDrawing = true;
        return request;
    }

    static void RunOne(ToolRunner& runner, const ToolRequest& request, BatchTool& tool,
                       ToolResult& result) {
        result.lowerHalf = request.parameters.IsLower();
        ToolRun run;
        const auto start = std::chrono::steady_clock::now();
        try {
            runner.Compute(request, run);
            runner.WriteFiles(request, run);
            result.isExported = run.envelope.found;
            if (!run.envelope.found)
                result.reason =
                    "no envelope: nothing of it is seen from the chosen half; look at what was "
                    "left out";
        } catch (const std::exception& error) {
            result.reason = error.what();
        }
        result.seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        TakeFigures(run, result);
        result.entities = run.selection.ids.length();
        result.files = run.files;
        KeepInTask(run, tool);
        ToolReview review = runner.Review(request, run, result.id, result.findings);
        result.offContour = review.figures.offContour;
        result.betweenHalves = review.figures.betweenHalves;
        result.findings = std::move(review.findings);
        result.svg = std::move(review.svg);
        result.png = Base64(review.png);
    }

    // What the plug-in's own batch would leave in the list.
    static void KeepInTask(const ToolRun& run, BatchTool& tool) {
        if (run.isBegun) {
            tool.sourceIds = run.selection.ids;
            tool.envelopeId = run.envelopeId;
        }
        tool.execStatus = run.envelope.found ? kBatchDone : kBatchFailed;
        // The SAT file is the first one.
        if (run.envelope.found) tool.exportStatus = run.files.empty() ? kBatchFailed : kBatchDone;
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
            m_drawing.Write(m_asked.output);
            result.output = m_asked.output;
        } catch (const Failure& failure) {
            result.reason = failure.what();
        }
    }

    Drawing& m_drawing;
    const DrawingRequest& m_asked;
    const BatchRequest& m_request;
    ToolListener& m_listener;
    ToolPlan m_plan;
};

}  // namespace

DrawingResult RunDrawing(Drawing& drawing, const DrawingRequest& asked, const BatchRequest& request,
                         const std::vector<NamedTool>& table, ToolListener& listener) {
    return Run(drawing, asked, request, table, listener).Work();
}

}  // namespace product
