// Which tools of a drawing a batch computes, and with which parameters.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "BatchTaskList.h"
#include "product/detect/FindTools.h"
#include "product/tool/ToolRequest.h"
#include "product/tool/ToolTable.h"

namespace product {

enum class ToolSource { Frames, Stored, Table, Found };

// "frames", "stored tasks", "tools file", "found".
const char* NameOf(ToolSource source);

struct PlannedTool {
    size_t task = 0, tool = 0;               // in the list
    std::string name;                        // UTF-8
    std::string problem;                     // why it cannot be computed; empty: it can
    int notDisplayed = 0;                    // inside its frame or window, but not picked
    std::optional<Axis> axis;                // none: level through the tool's centre
    std::vector<plane::Curve> curves;        // as ToolRequest::curves
    std::optional<detect::FoundTool> found;  // when the tool was found, not named
    std::vector<std::string> remarks;        // what a person may want to look at beside that
};

struct ToolPlan {
    ToolSource source = ToolSource::Frames;
    BatchTaskList list;  // what the drawing will store: its own tasks and those made here
    std::vector<PlannedTool> tools;
    // Of earlier runs, inside the frames and windows: to be erased before the first tool is run.
    AcArray<AcDbObjectId> envelopes;
};

// Names of a drawing's tools in the order of its plan, without looking at what each consists of.
// Nothing in the drawing changes.
//
// path     the drawing's file, for lines of the table that are for one drawing only
// table    the tools file's; empty: none was given
// fails    as PlanTools
// cost     O(entities) for frames
std::vector<std::string> ToolNames(AcDbDatabase& database, const std::string& path,
                                   const BatchRequest& request,
                                   const std::vector<NamedTool>& table);

// Finds the tools: those of the table, else the stored tasks', else one for each frame, whose
// entities are what lies inside the frame's extents and is displayed (frames are none of them), and
// whose axis is the one that is found there, else FindAxis(); in a drawing without frames whatever
// FindToolsFor() finds. A made task is named after the file and takes the place of a stored one
// of that name. Nothing in the drawing changes.
//
// fails     Failure: Request for a stored task that is asked for and not there, NothingThere for a
//           drawing without any tool; the text says what to do
ToolPlan PlanTools(AcDbDatabase& database, const std::string& path, const BatchRequest& request,
                   const std::vector<NamedTool>& table);

}  // namespace product
