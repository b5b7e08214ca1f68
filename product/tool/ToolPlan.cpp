#include "product/tool/ToolPlan.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <unordered_set>

#include "ToolFrame.h"
#include "product/base/Extents.h"
#include "product/base/Failure.h"
#include "product/tool/FoundTools.h"
#include "product/tool/Selection.h"
#include "product/tool/ToolNaming.h"
#include "product/base/Text.h"
#include "product/check/SourceCurves.h"

namespace product {
namespace {

std::vector<NamedTool> RowsFor(const std::vector<NamedTool>& table, const std::string& path) {
    const std::string file = std::filesystem::path(path).filename().string();
    std::vector<NamedTool> rows;
    for (const NamedTool& tool : table)
        if (tool.drawing.empty() || tool.drawing == file) rows.push_back(tool);
    return rows;
}

bool IsAskedFor(const BatchTask& task, const BatchRequest& request) {
    return request.tasks.empty() || std::find(request.tasks.begin(), request.tasks.end(),
                                              ToUtf8(task.name)) != request.tasks.end();
}

void RequireTasks(const BatchTaskList& list, const BatchRequest& request) {
    for (const std::string& name : request.tasks) {
        std::string known;
        bool isFound = false;
        for (const BatchTask& task : list) {
            isFound = isFound || ToUtf8(task.name) == name;
            known += (known.empty() ? "" : ", ") + ToUtf8(task.name);
        }
        if (!isFound)
            throw Failure(Fault::Request, "there is no task '" + name + "'; " +
                                              (known.empty() ? "the drawing stores none"
                                                             : "the drawing stores " + known));
    }
}

ToolSource SourceOf(AcDbDatabase& database, const BatchRequest& request,
                    const std::vector<NamedTool>& table) {
    if (!table.empty()) return ToolSource::Table;
    const bool isStored = BatchTaskList::isStored(&database);
    if (!request.tasks.empty()) return ToolSource::Stored;
    if (isStored && !request.fromFrames) return ToolSource::Stored;
    return request.fromFrames || !CollectToolFrames(&database).empty() ? ToolSource::Frames
                                                                       : ToolSource::Found;
}

[[noreturn]] void RefuseNone(ToolSource source) {
    static const char* const kTexts[] = {
        "no tool: no frame carries a tool number; name the tools with --tools FILE.csv, or compute "
        "one with qzenvelope compute",
        "no tool: the stored tasks hold none; add tools to them, or use --from-frames",
        "no tool: no line of the tools file is for this drawing", "no tool was found"};
    throw Failure(Fault::NothingThere, kTexts[static_cast<int>(source)]);
}

std::vector<SToolFrame> Frames(AcDbDatabase& database) {
    std::vector<SToolFrame> frames = CollectToolFrames(&database);
    for (const SToolFrame& frame : frames)
        if (!frame.m_rect.IsValid())
            throw Failure(Fault::Input, "the frame of tool " + ToUtf8(frame.m_strNumber) +
                                            ", handle " + HandleText(frame.m_id) +
                                            ", has no extents; audit the drawing");
    return frames;
}

class Planner {
public:
    Planner(AcDbDatabase& database, const BatchRequest& request) : m_request(request) {
        m_plan.list.load(&database);
    }

    // Takes the stored tasks that were asked for.
    void TakeStored() {
        for (size_t task = 0; task < m_plan.list.size(); ++task) {
            if (!IsAskedFor(m_plan.list[task], m_request)) continue;
            for (size_t tool = 0; tool < m_plan.list[task].tools.size(); ++tool) {
                const BatchTool& stored = m_plan.list[task].tools[tool];
                PlannedTool planned;
                planned.task = task;
                planned.tool = tool;
                planned.name = ToUtf8(stored.name);
                if (stored.sourceIds.isEmpty())
                    planned.problem = "nothing of it is left in the drawing; add the tool anew";
                m_plan.tools.push_back(planned);
            }
        }
    }

    // A new task, in the place of one of its name.
    void Begin(const std::string& path) {
        const CString name = FromUtf8(std::filesystem::path(path).stem().string());
        BatchTaskList& list = m_plan.list;
        m_task = static_cast<size_t>(
            std::find_if(list.begin(), list.end(),
                         [&](const BatchTask& task) { return task.name == name; }) -
            list.begin());
        if (m_task == list.size()) list.emplace_back();
        list[m_task] = BatchTask();
        list[m_task].name = name;
        ToolParameters parameters = m_request.parameters;
        // The dialogs, which read the task again, know one half.
        if (parameters.half == Half::Both) parameters.half = Half::Upper;
        list[m_task].params = EngineRecordOf(parameters);
    }

    // The centre line of a level axis, or nothing and what to do.
    void Add(const CString& name, const Selection& selection, const std::optional<Point>& axis,
             const std::string& remedy) {
        BatchTool tool;
        tool.name = name;
        tool.sourceIds = selection.ids;
        if (axis) tool.centre.set(axis->x, axis->y, 0);
        PlannedTool planned = Next(name);
        planned.notDisplayed = selection.notDisplayed;
        if (selection.ids.isEmpty())
            planned.problem = "nothing that is displayed lies inside its frame or window";
        else if (!axis)
            planned.problem = remedy;
        m_plan.list[m_task].tools.push_back(tool);
        m_plan.tools.push_back(planned);
        m_plan.envelopes.append(selection.envelopes);
    }

    // A tool that was found, with its own axis.
    void Add(const CString& name, const FoundRequest& found, int notDisplayed) {
        BatchTool tool;
        tool.name = name;
        tool.sourceIds = *found.request.picked;
        const Axis& axis = *found.request.axis;
        tool.centre.set(axis.from.x, axis.from.y, 0);
        PlannedTool planned = Next(name);
        planned.notDisplayed = notDisplayed;
        planned.axis = axis;
        planned.curves = found.request.curves;
        planned.found = found.tool;
        m_plan.list[m_task].tools.push_back(tool);
        m_plan.tools.push_back(planned);
    }

    ToolPlan m_plan;

private:
    PlannedTool Next(const CString& name) const {
        PlannedTool planned;
        planned.task = m_task;
        planned.tool = m_plan.list[m_task].tools.size();
        planned.name = ToUtf8(name);
        return planned;
    }

    const BatchRequest& m_request;
    size_t m_task = 0;
};

using IdSet = std::unordered_set<AcDbObjectId>;

IdSet IdsOf(const std::vector<SToolFrame>& frames) {
    IdSet ids;
    for (const SToolFrame& frame : frames) ids.insert(frame.m_id);
    return ids;
}

// A frame is no part of a tool, neither its own nor another's inside it.
Selection PickTool(const PickList& entities, const Box& window, const IdSet& frames) {
    Selection selection = entities.Pick(window);
    AcArray<AcDbObjectId> kept;
    for (int i = 0; i < selection.ids.length(); ++i)
        if (frames.count(selection.ids[i]) == 0) kept.append(selection.ids[i]);
    selection.ids = kept;
    return selection;
}

ToolRequest Asked(const BatchRequest& request) {
    ToolRequest asked;
    asked.parameters = request.parameters;
    return asked;
}

// The steps of the engine know level axes only.
bool CanTake(const FoundRequest& found, const BatchRequest& request) {
    return request.parameters.algorithm == Algorithm::Exact ||
           found.request.axis->from.y == found.request.axis->to.y;
}

// Inside a frame the step-by-step envelopes go by the drawn centre line, as ever; the exact one by
// everything that speaks for an axis.
void TakeFrame(Planner& planner, AcDbDatabase& database, const SToolFrame& frame,
               const Selection& selection, const BatchRequest& request) {
    const bool isExact = request.parameters.algorithm == Algorithm::Exact;
    const std::optional<Point> centre = FindAxis(selection.ids);
    if (centre && !isExact) {
        planner.Add(frame.m_strNumber, selection, centre, {});
        return;
    }
    FoundTools found = LookForTools(database, selection.ids, Asked(request));
    if (found.tools.size() == 1 && CanTake(found.tools[0], request)) {
        planner.m_plan.envelopes.append(selection.envelopes);
        planner.Add(frame.m_strNumber, found.tools[0], selection.notDisplayed);
        return;
    }
    planner.Add(frame.m_strNumber, selection, centre,
                found.tools.size() > 1
                    ? "its frame holds " + std::to_string(found.tools.size()) +
                          " tools; give each a frame of its own, or name them with --tools"
                    : "no axis lies inside its frame; draw it in a centre line type, or name the "
                      "tool with --tools");
}

void TakeFrames(Planner& planner, AcDbDatabase& database, const PickList& entities,
                const BatchRequest& request) {
    const std::vector<SToolFrame> frames = Frames(database);
    const IdSet ids = IdsOf(frames);
    for (const SToolFrame& frame : frames)
        TakeFrame(planner, database, frame, PickTool(entities, BoxOf(frame.m_rect), ids), request);
}

void TakeFound(Planner& planner, AcDbDatabase& database, const std::string& path,
               const BatchRequest& request) {
    const FoundTools found = FindToolsFor(database, Asked(request));
    for (size_t i = 0; i < found.tools.size(); ++i)
        planner.Add(FromUtf8(NameByFile(path, i, found.tools.size())), found.tools[i], 0);
}

void TakeTable(Planner& planner, const PickList& entities, AcDbDatabase& database,
               const std::vector<NamedTool>& rows) {
    const IdSet frames = IdsOf(Frames(database));
    for (const NamedTool& row : rows)
        planner.Add(FromUtf8(row.name), PickTool(entities, row.window, frames), row.centre, "");
}

}  // namespace

const char* NameOf(ToolSource source) {
    static const char* const kNames[] = {"frames", "stored tasks", "tools file", "found"};
    return kNames[static_cast<int>(source)];
}

namespace {

// The tools in the order of the plan, as they are called without a rule.
std::vector<NamedPlace> PlacesOf(AcDbDatabase& database, const std::string& path,
                                 const BatchRequest& request, const std::vector<NamedTool>& table) {
    const ToolSource source = SourceOf(database, request, table);
    std::vector<NamedPlace> places;
    if (source == ToolSource::Table) {
        for (const NamedTool& row : RowsFor(table, path)) places.push_back({row.name, row.window});
    } else if (source == ToolSource::Found) {
        const FoundTools found = FindToolsFor(database, Asked(request));
        for (size_t i = 0; i < found.tools.size(); ++i)
            places.push_back({NameByFile(path, i, found.tools.size()), found.tools[i].tool.window});
    } else if (source == ToolSource::Frames) {
        for (const SToolFrame& frame : Frames(database))
            places.push_back({ToUtf8(frame.m_strNumber), BoxOf(frame.m_rect)});
    } else {
        BatchTaskList list;
        list.load(&database);
        RequireTasks(list, request);
        for (const BatchTask& task : list)
            for (const BatchTool& tool : task.tools)
                if (IsAskedFor(task, request))
                    places.push_back({ToUtf8(tool.name), SelectionOf(tool.sourceIds).box});
    }
    return places;
}

// Gives the planned tools the names of the rule; a stored task keeps its own inside the drawing.
void Rename(ToolPlan& plan, AcDbDatabase& database, const std::string& path,
            const BatchRequest& request, const std::vector<NamedTool>& table) {
    std::vector<size_t> unnamed;
    const std::vector<std::string> names =
        NamesBy(request.name, database, path, PlacesOf(database, path, request, table), unnamed);
    for (size_t i = 0; i < plan.tools.size() && i < names.size(); ++i) {
        plan.tools[i].name = names[i];
        if (plan.source != ToolSource::Stored)
            plan.list[plan.tools[i].task].tools[plan.tools[i].tool].name = FromUtf8(names[i]);
    }
    for (const size_t i : unnamed)
        plan.tools.at(i).remarks.push_back("no text near the tool matches --name-pattern " +
                                           request.name.pattern);
}

}  // namespace

std::vector<std::string> ToolNames(AcDbDatabase& database, const std::string& path,
                                   const BatchRequest& request,
                                   const std::vector<NamedTool>& table) {
    const std::vector<NamedPlace> places = PlacesOf(database, path, request, table);
    if (places.empty()) RefuseNone(SourceOf(database, request, table));
    std::vector<size_t> unnamed;
    return NamesBy(request.name, database, path, places, unnamed);
}

ToolPlan PlanTools(AcDbDatabase& database, const std::string& path, const BatchRequest& request,
                   const std::vector<NamedTool>& table) {
    const ToolSource source = SourceOf(database, request, table);
    Planner planner(database, request);
    planner.m_plan.source = source;
    if (source == ToolSource::Stored) {
        RequireTasks(planner.m_plan.list, request);
        planner.TakeStored();
    } else {
        const PickList entities(database);
        planner.Begin(path);
        if (source == ToolSource::Frames)
            TakeFrames(planner, database, entities, request);
        else if (source == ToolSource::Found)
            TakeFound(planner, database, path, request);
        else
            TakeTable(planner, entities, database, RowsFor(table, path));
    }
    if (planner.m_plan.tools.empty()) RefuseNone(source);
    if (!request.name.IsUsual()) Rename(planner.m_plan, database, path, request, table);
    return std::move(planner.m_plan);
}

}  // namespace product
