#include "product/tool/ToolPlan.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <unordered_set>

#include "ToolFrame.h"
#include "product/base/Extents.h"
#include "product/base/Failure.h"
#include "product/tool/Selection.h"
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
    return isStored && !request.fromFrames ? ToolSource::Stored : ToolSource::Frames;
}

[[noreturn]] void RefuseNone(ToolSource source) {
    static const char* const kTexts[] = {
        "no tool: no frame carries a tool number; name the tools with --tools FILE.csv, or compute "
        "one with qzenvelope compute",
        "no tool: the stored tasks hold none; add tools to them, or use --from-frames",
        "no tool: no line of the tools file is for this drawing"};
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
                PlannedTool planned{task, tool, ToUtf8(stored.name), {}, 0};
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
        list[m_task].params = EngineRecordOf(m_request.parameters);
    }

    void Add(const CString& name, const Selection& selection, const std::optional<Point>& axis,
             const char* remedy) {
        BatchTool tool;
        tool.name = name;
        tool.sourceIds = selection.ids;
        if (axis) tool.centre.set(axis->x, axis->y, 0);
        PlannedTool planned{
            m_task, m_plan.list[m_task].tools.size(), ToUtf8(name), {}, selection.notDisplayed};
        if (selection.ids.isEmpty())
            planned.problem = "nothing that is displayed lies inside its frame or window";
        else if (!axis)
            planned.problem = remedy;
        m_plan.list[m_task].tools.push_back(tool);
        m_plan.tools.push_back(planned);
        m_plan.envelopes.append(selection.envelopes);
    }

    ToolPlan m_plan;

private:
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

void TakeFrames(Planner& planner, const PickList& entities, AcDbDatabase& database) {
    const std::vector<SToolFrame> frames = Frames(database);
    const IdSet ids = IdsOf(frames);
    for (const SToolFrame& frame : frames) {
        const Selection selection = PickTool(entities, BoxOf(frame.m_rect), ids);
        planner.Add(frame.m_strNumber, selection, FindAxis(selection.ids),
                    "no horizontal centre line lies inside its frame; draw its axis in a centre "
                    "line type, or name the tool with --tools");
    }
}

void TakeTable(Planner& planner, const PickList& entities, AcDbDatabase& database,
               const std::vector<NamedTool>& rows) {
    const IdSet frames = IdsOf(Frames(database));
    for (const NamedTool& row : rows)
        planner.Add(FromUtf8(row.name), PickTool(entities, row.window, frames), row.centre, "");
}

}  // namespace

const char* NameOf(ToolSource source) {
    static const char* const kNames[] = {"frames", "stored tasks", "tools file"};
    return kNames[static_cast<int>(source)];
}

std::vector<std::string> ToolNames(AcDbDatabase& database, const std::string& path,
                                   const BatchRequest& request,
                                   const std::vector<NamedTool>& table) {
    const ToolSource source = SourceOf(database, request, table);
    std::vector<std::string> names;
    if (source == ToolSource::Table) {
        for (const NamedTool& row : RowsFor(table, path)) names.push_back(row.name);
    } else if (source == ToolSource::Frames) {
        for (const SToolFrame& frame : Frames(database)) names.push_back(ToUtf8(frame.m_strNumber));
    } else {
        BatchTaskList list;
        list.load(&database);
        RequireTasks(list, request);
        for (const BatchTask& task : list)
            for (const BatchTool& tool : task.tools)
                if (IsAskedFor(task, request)) names.push_back(ToUtf8(tool.name));
    }
    if (names.empty()) RefuseNone(source);
    return names;
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
            TakeFrames(planner, entities, database);
        else
            TakeTable(planner, entities, database, RowsFor(table, path));
    }
    if (planner.m_plan.tools.empty()) RefuseNone(source);
    return std::move(planner.m_plan);
}

}  // namespace product
