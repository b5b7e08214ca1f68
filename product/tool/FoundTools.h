// The tools of a drawing that nobody named: found by what is drawn, as requests.
#pragma once

#include <string>
#include <vector>

#include "product/base/Failure.h"
#include "product/check/Finding.h"
#include "product/detect/FindTools.h"
#include "product/tool/ToolRequest.h"

namespace product {

// One found tool.
struct FoundRequest {
    ToolRequest request;  // with its axis and what belongs to it
    detect::FoundTool tool;
};

struct FoundTools {
    std::vector<FoundRequest> tools;          // from left to right
    std::vector<detect::FoundTool> doubtful;  // considered and not taken, the most likely first
    std::vector<detect::Rest> rest;           // what none of these explains
    std::vector<std::string> faults;          // what of the sheet could not be read
};

// The refusal of a sheet on which no tool is sure, with what was considered.
class NoSureTool : public Failure {
public:
    NoSureTool(const std::string& text, std::vector<detect::FoundTool> considered)
        : Failure(Fault::NothingThere, text), m_considered(std::move(considered)) {}
    const std::vector<detect::FoundTool>& Considered() const { return m_considered; }

private:
    std::vector<detect::FoundTool> m_considered;
};

// Looks for tools among what the request picks. Each found tool's request is the given one with the
// axis and the tool's entities; of several tools the files are numbered, "out-2.sat". The drawing
// is for all of them. Nothing in the drawing changes.
//
// cost   O(n log n) for n curves, blocks taken apart
// fails  Failure with NothingThere when nothing is picked, NoSureTool when no tool is sure; the
// text
//        lists what was considered, and why it was not taken
FoundTools FindToolsFor(AcDbDatabase& database, const ToolRequest& request);

// The same among some entities, and without refusing.
FoundTools LookForTools(AcDbDatabase& database, const AcArray<AcDbObjectId>& ids,
                        const ToolRequest& request);

// What the search says of a tool: what weighs against its axis, and what touches it and was taken
// for a note, without a doubt where a text stands beside it.
void AddFoundFindings(const detect::FoundTool& tool, std::vector<Finding>& findings);

// The candidates of a whole drawing, found or not; nothing is refused.
//
// fails  as CheckPieces() for a drawing that comes to too many pieces
FoundTools CandidatesOf(AcDbDatabase& database);

// "--axis=0,0,120,0 --window=0,-10,120,10": the options that take it.
std::string OptionsFor(const detect::FoundTool& tool);

// "axis 0,0 to 120,0 by its centre line, confidence 0.95".
std::string Describe(const detect::FoundTool& tool);

}  // namespace product
