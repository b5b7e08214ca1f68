#include "product/tool/FoundTools.h"

#include <algorithm>
#include <cstdio>

#include "ToolFrame.h"
#include "product/base/Extents.h"
#include "product/base/Failure.h"
#include "product/base/Text.h"
#include "product/check/Findings.h"
#include "product/detect/ReadSheet.h"
#include "product/tool/EngineRequest.h"
#include "product/tool/Selection.h"

namespace product {
namespace {

constexpr size_t kMostTold = 4;  // candidates in a refusal
// Of a tool's diagonal: how far its envelope may reach beyond what is drawn.
constexpr double kAround = 1e-3;
// What was not taken is told beside tools that were, when it is as long as that share of the
// longest of them.
constexpr double kTellLength = 0.3;

void NumberFiles(ToolRequest& request, size_t number) {
    for (std::string* path : {&request.svg, &request.solid.sat, &request.solid.step,
                              &request.solid.stl, &request.solid.png, &request.profile})
        *path = WithSuffix(*path, "-" + std::to_string(number));
    if (!request.name.empty()) request.name += "-" + std::to_string(number);
}

ToolRequest RequestFor(const ToolRequest& asked, const detect::FoundTool& tool,
                       const detect::ReadResult& read) {
    ToolRequest request = asked;
    request.axis = Axis{tool.from, tool.to};
    request.foundWindow = tool.window;
    AcArray<AcDbObjectId> ids;
    for (const int entity : tool.entities) ids.append(read.entities[entity]);
    request.picked = ids;
    if (tool.hasWholeEntities && !request.rule.HasFilters()) return request;
    // A block holds more than this tool.
    for (const int s : tool.strokes) {
        const std::vector<plane::Curve>& curves = read.sheet.strokes[s].curves;
        request.curves.insert(request.curves.end(), curves.begin(), curves.end());
    }
    return request;
}

// What an earlier run drew of a tool goes when the tool is computed again.
void AddEarlier(const AcArray<AcDbObjectId>& envelopes, FoundTools& found) {
    for (int i = 0; i < envelopes.length(); ++i) {
        const AcDbObjectPointer<AcDbEntity> envelope(envelopes[i], AcDb::kForRead);
        if (envelope.openStatus() != Acad::eOk) continue;
        const std::optional<Box> box = ExtentsOf(*envelope.object());
        if (!box) continue;
        for (FoundRequest& tool : found.tools) {
            Box window = tool.tool.window;
            const double around = kAround * detect::Diagonal(window);
            window.Add(Point{window.low.x - around, window.low.y - around});
            window.Add(Point{window.high.x + around, window.high.y + around});
            if (window.Contains(*box)) tool.request.picked->append(envelopes[i]);
        }
    }
}

// Frames of tools are known by what they carry: they are no part of any. A tool inside one has its
// number for a name.
AcArray<AcDbObjectId> WithoutFrames(const AcArray<AcDbObjectId>& ids,
                                    const std::vector<SToolFrame>& frames) {
    AcArray<AcDbObjectId> out;
    for (int i = 0; i < ids.length(); ++i)
        if (std::none_of(frames.begin(), frames.end(),
                         [&](const SToolFrame& frame) { return frame.m_id == ids[i]; }))
            out.append(ids[i]);
    return out;
}
void NameByFrame(FoundRequest& tool, const std::vector<SToolFrame>& frames) {
    const Box& window = tool.tool.window;
    const Point middle{(window.low.x + window.high.x) / 2, (window.low.y + window.high.y) / 2};
    for (const SToolFrame& frame : frames)
        if (middle.x >= frame.m_rect.min.x && middle.x <= frame.m_rect.max.x &&
            middle.y >= frame.m_rect.min.y && middle.y <= frame.m_rect.max.y)
            tool.request.name = ToUtf8(frame.m_strNumber);
}

[[noreturn]] void RefuseUnsure(const FoundTools& found) {
    std::string text = "no tool was found with confidence";
    for (const std::string& fault : found.faults) text += "; " + fault;
    if (found.doubtful.empty())
        text += "; nothing that is drawn looks like one";
    else
        text += "; considered:";
    for (size_t i = 0; i < found.doubtful.size() && i < kMostTold; ++i) {
        const detect::FoundTool& tool = found.doubtful[i];
        text += "\n  " + Describe(tool);
        for (const std::string& remark : tool.remarks) text += "; " + remark;
        text += "; to take it: " + OptionsFor(tool);
    }
    throw NoSureTool(text + "\n  name the axis with --centre or --axis, and the tool with --window",
                     found.doubtful);
}

double LengthOf(const detect::FoundTool& tool) { return plane::Distance(tool.from, tool.to); }

// Nobody shall miss a tool because others were found.
void TellTheRest(FoundTools& found) {
    double longest = 0;
    for (const FoundRequest& one : found.tools) longest = std::max(longest, LengthOf(one.tool));
    std::vector<std::string>& remarks = found.tools.front().tool.remarks;
    for (const detect::FoundTool& other : found.doubtful)
        if (LengthOf(other) >= kTellLength * longest)
            remarks.push_back("the sheet may hold another tool, which was not taken: " +
                              Describe(other) + "; to take it: " + OptionsFor(other));
    for (size_t i = 0; i < found.rest.size() && i < kMostTold; ++i) {
        const Box& box = found.rest[i].box;
        remarks.push_back(
            std::to_string(found.rest[i].strokes) + " lines around " +
            Figure((box.low.x + box.high.x) / 2) + ", " + Figure((box.low.y + box.high.y) / 2) +
            " were taken neither for a tool nor for a note" +
            (i + 1 == kMostTold && found.rest.size() > kMostTold
                 ? ", and " + std::to_string(found.rest.size() - kMostTold) + " more such groups"
                 : ""));
    }
}

}  // namespace

std::string OptionsFor(const detect::FoundTool& tool) {
    return "--axis=" + Figure(tool.from.x) + "," + Figure(tool.from.y) + "," + Figure(tool.to.x) +
           "," + Figure(tool.to.y) + " --window=" + Figure(tool.window.low.x) + "," +
           Figure(tool.window.low.y) + "," + Figure(tool.window.high.x) + "," +
           Figure(tool.window.high.y);
}

void AddFoundFindings(const detect::FoundTool& tool, std::vector<Finding>& findings) {
    AddFaultFindings(tool.faults, findings);
    for (const std::string& remark : tool.remarks)
        findings.push_back({Finding::Kind::Axis, true, remark, std::nullopt});
    if (tool.standing)
        findings.push_back({Finding::Kind::Outline, true,
                            "what stands on the contour at " + Figure(tool.standing->x) + ", " +
                                Figure(tool.standing->y) +
                                " may be a mark: the line below it runs on",
                            tool.standing});
    for (const detect::LeftOutNote& note : tool.leftOut)
        findings.push_back({Finding::Kind::LeftOut, !note.hasText,
                            std::to_string(note.strokes) +
                                (note.strokes == 1 ? " line that touches" : " lines that touch") +
                                " the contour at " + Figure(note.at.x) + ", " + Figure(note.at.y) +
                                (note.strokes == 1 ? " was" : " were") + " taken for a note",
                            note.at});
}

FoundTools CandidatesOf(AcDbDatabase& database) {
    const ToolRequest request;
    const Selection selection = PickBy(database, request.rule);
    CheckPieces(selection.ids, request.parameters.limit);
    return LookForTools(database, WithoutFrames(selection.ids, CollectToolFrames(&database)),
                        request);
}

std::string Describe(const detect::FoundTool& tool) {
    char confidence[32];
    std::snprintf(confidence, sizeof confidence, "%.2f", tool.confidence);
    return "axis " + Figure(tool.from.x) + "," + Figure(tool.from.y) + " to " + Figure(tool.to.x) +
           "," + Figure(tool.to.y) + " by its " + NameOf(tool.cue) + ", confidence " + confidence;
}

FoundTools LookForTools(AcDbDatabase& database, const AcArray<AcDbObjectId>& ids,
                        const ToolRequest& request) {
    const detect::ReadResult read = detect::ReadSheet(database, ids, 0, request.rule.Filter());
    detect::Finding finding = detect::FindTools(read.sheet);
    FoundTools found;
    found.doubtful = std::move(finding.doubtful);
    found.rest = std::move(finding.rest);
    found.faults = read.faults;
    for (detect::FoundTool& tool : finding.tools)
        found.tools.push_back({RequestFor(request, tool, read), std::move(tool)});
    if (found.tools.size() > 1)
        for (size_t i = 0; i < found.tools.size(); ++i) NumberFiles(found.tools[i].request, i + 1);
    return found;
}

FoundTools FindToolsFor(AcDbDatabase& database, const ToolRequest& request) {
    const Selection selection = PickBy(database, request.rule);
    if (selection.ids.isEmpty())
        throw Failure(Fault::NothingThere,
                      "there is nothing to look at: " +
                          std::string(request.rule.window ? "nothing displayed lies inside "
                                                            "the window"
                                                          : "model space is empty") +
                          "; qzenvelope info shows what the drawing holds");
    CheckPieces(selection.ids, request.parameters.limit);
    const std::vector<SToolFrame> frames = CollectToolFrames(&database);
    FoundTools found = LookForTools(database, WithoutFrames(selection.ids, frames), request);
    if (found.tools.empty()) RefuseUnsure(found);
    if (request.name.empty())
        for (FoundRequest& tool : found.tools) NameByFrame(tool, frames);
    AddEarlier(selection.envelopes, found);
    TellTheRest(found);
    found.tools.front().tool.faults = found.faults;
    return found;
}

}  // namespace product
