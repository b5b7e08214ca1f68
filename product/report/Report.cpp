#include "product/report/Report.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <nlohmann/json.hpp>

#include "product/base/Text.h"
#include "product/check/TraceGaps.h"
#include "product/check/Verdict.h"
#include "product/report/ResultJson.h"
#include "product/report/SolidReport.h"
#include "product/tool/FoundTools.h"
#include "product/base/Words.h"

namespace product {
namespace {

using Json = nlohmann::ordered_json;

Json Corners(const Box& box) {
    if (box.IsEmpty()) return nullptr;
    return {box.low.x, box.low.y, box.high.x, box.high.y};
}

Json MeetingJson(const Envelope& envelope) {
    Json json = {{"crosses", Crosses(envelope.selfMeeting)}};
    if (!envelope.selfMeeting) return json;
    const SelfMeeting& meeting = *envelope.selfMeeting;
    json["kind"] = MeetingName(meeting.kind);
    json["at"] = {meeting.at.x, meeting.at.y};
    json["edges"] = {meeting.first, meeting.second};
    return json;
}

Json EnvelopeJson(const Envelope& envelope) {
    if (!envelope.found) return nullptr;
    Json vertices = Json::array();
    for (const Vertex& v : envelope.vertices) vertices.push_back({v.x, v.y, v.bulge});
    return {{"closed", envelope.closed},
            {"layer", envelope.layer},
            {"handle", envelope.handle},
            {"vertices", std::move(vertices)},
            {"length", envelope.length},
            {"diameter", envelope.diameter},
            {"extents", Corners(envelope.extents)},
            {"self_crossing", MeetingJson(envelope)}};
}

// The numbered pipelines by their numbers.
Json AlgorithmJson(Algorithm algorithm) {
    const std::string name = NameOf(algorithm);
    return name.size() == 1 ? Json(name[0] - '0') : Json(name);
}

// The lengths are those that the run worked with: of the exact envelope its own.
Json ParametersJson(const ToolRequest& request, const std::optional<SExactResult>& exact) {
    const ToolParameters& p = request.parameters;
    Json json = {
        {"centre", request.axis ? Json{request.axis->from.x, request.axis->from.y} : Json()},
        {"window", request.rule.window ? Corners(*request.rule.window) : Json()},
        {"half", NameOf(p.half)},
        {"algorithm", AlgorithmJson(p.algorithm)},
        {"include_dashed", p.includeDashed},
        {"vertical_ends", p.verticalEnds},
        {"axis", request.SeesAxis()}};
    if (exact)
        json.update({{"point_tolerance", exact->m_dPoint},
                     {"side_length", exact->m_dSide},
                     {"overshoot", exact->m_dOvershoot},
                     {"curve_tolerance", exact->m_dCurve}});
    else if (p.algorithm != Algorithm::Exact)
        json.update({{"point_tolerance", p.pointTolerance},
                     {"line_tolerance", p.lineTolerance},
                     {"horver_tolerance", p.horVerTolerance},
                     {"arc_precision", p.arcPrecision},
                     {"side_length", p.sideLength}});
    return json;
}

Json TraceJson(const ToolRun& run, const ToolParameters& parameters) {
    Json segments = Json::object(), leftOut = Json::array(), gaps = Json::array(),
         notes = Json::array();
    for (const auto& [name, count] : run.trace.m_counts) segments[name] = count;
    for (const CEncircleTrace::SLeftOut& left : run.trace.m_leftOut) {
        Json handles = Json::array();
        for (const CString& handle : left.m_handles) handles.push_back(ToUtf8(handle));
        leftOut.push_back({{"reason", CEncircleTrace::GetReasonName(left.m_reason)},
                           {"what", ToUtf8(left.m_strWhat)},
                           {"count", left.m_nCount},
                           {"handles", std::move(handles)}});
    }
    for (const CEncircleTrace::SGap& gap : WideGaps(run.trace, parameters.pointTolerance))
        gaps.push_back({{"side", SideName(gap.m_side)},
                        {"kind", IsStep(gap, parameters.pointTolerance) ? "step" : "gap"},
                        {"from", {gap.m_from.x, gap.m_from.y}},
                        {"to", {gap.m_to.x, gap.m_to.y}},
                        {"length", gap.m_dLength}});
    for (const CString& note : run.trace.m_notes) notes.push_back(ToUtf8(note));
    return {{"segments", std::move(segments)},
            {"left_out", std::move(leftOut)},
            {"gaps", std::move(gaps)},
            {"notes", std::move(notes)}};
}

Json PlaceJson(const SExactResult::SPlace& place) { return {place.m_dX, place.m_dY}; }

Json AxisJson(const std::optional<Axis>& axis) {
    if (!axis) return Json();
    return {{axis->from.x, axis->from.y}, {axis->to.x, axis->to.y}};
}

// What the exact envelope tells beside its outline.
void AddExact(const SExactResult& exact, Json& json) {
    Json bridges = Json::array(), gaps = Json::array(), openEnds = Json::array(),
         tails = Json::array(), leftOut = Json::array();
    const auto span = [](const SExactResult::SBridge& bridge) {
        return Json{{"from", PlaceJson(bridge.m_from)},
                    {"to", PlaceJson(bridge.m_to)},
                    {"length", bridge.m_dLength}};
    };
    for (const SExactResult::SBridge& bridge : exact.m_bridges) bridges.push_back(span(bridge));
    for (const SExactResult::SBridge& gap : exact.m_gaps) gaps.push_back(span(gap));
    for (const SExactResult::SPlace& end : exact.m_openEnds) openEnds.push_back(PlaceJson(end));
    for (const SExactResult::STail& tail : exact.m_tails)
        tails.push_back({{"at", PlaceJson(tail.m_at)},
                         {"length", tail.m_dLength},
                         {"handle", HandleText(tail.m_id)}});
    for (const SExactResult::SLeftOut& left : exact.m_leftOut)
        leftOut.push_back({{"reason", NameOf(left.m_reason)},
                           {"what", ToUtf8(left.m_strWhat)},
                           {"handle", HandleText(left.m_id)},
                           {"at", PlaceJson(left.m_at)}});
    json["gaps"] = std::move(gaps);
    json["bridges"] = std::move(bridges);
    json["open_ends"] = std::move(openEnds);
    json["tails"] = std::move(tails);
    json["left_out"] = std::move(leftOut);
    json["lengths"] = {{"size", exact.m_dSize},
                       {"point_tolerance", exact.m_dPoint},
                       {"side_length", exact.m_dSide},
                       {"overshoot", exact.m_dOvershoot},
                       {"curve_tolerance", exact.m_dCurve}};
}

Json TextOrNull(const std::string& text) { return text.empty() ? Json() : Json(text); }

// printf into a string that grows as needed.
template <class... Values>
std::string Line(const char* format, Values... values) {
    const int size = std::snprintf(nullptr, 0, format, values...);
    std::string line(static_cast<size_t>(size) + 1, '\0');
    std::snprintf(line.data(), line.size(), format, values...);
    line.pop_back();
    return line + "\n";
}

std::string EnvelopeSummary(const Envelope& e) {
    if (!e.found) return Tr("  envelope   none\n");
    std::string text = Line(Tr("  envelope   %s polyline of %zu vertices on layer %s, handle %s"),
                            e.closed ? Tr("closed") : Tr("open"), e.vertices.size(),
                            e.layer.c_str(), e.handle.c_str());
    text += Tr("  extents    x ") + Figure(e.extents.low.x) + " .. " + Figure(e.extents.high.x) +
            "   y " + Figure(e.extents.low.y) + " .. " + Figure(e.extents.high.y) + "\n";
    text += Tr("  length     ") + Figure(e.length) + Tr(" along the outline, ") +
            Figure(e.span > 0 ? e.span : e.extents.Width()) + Tr(" end to end\n");
    if (e.diameter > 0) text += Tr("  diameter   ") + Figure(e.diameter) + "\n";
    if (e.selfMeeting)
        text += Line(Tr("  %s    the outline %s at %s,%s"),
                     Crosses(e.selfMeeting) ? Tr("CROSSES") : Tr("touches"),
                     Crosses(e.selfMeeting) ? Tr("crosses itself, no solid can be made of it,")
                                            : Tr("touches itself"),
                     Figure(e.selfMeeting->at.x).c_str(), Figure(e.selfMeeting->at.y).c_str());
    return text;
}

// hasGaps  the checks know of places that are not drawn
std::string TraceSummary(const ToolRun& run, const ToolParameters& parameters, bool hasGaps) {
    std::string text;
    int steps = 0, gaps = 0;
    for (const CEncircleTrace::SGap& gap : WideGaps(run.trace, parameters.pointTolerance)) {
        ++(IsStep(gap, parameters.pointTolerance) ? steps : gaps);
        if (IsStep(gap, parameters.pointTolerance)) continue;
        text += Line(Tr("  gap        %-6s %s,%s to %s,%s, %s long, bridged"), SideName(gap.m_side),
                     Figure(gap.m_from.x).c_str(), Figure(gap.m_from.y).c_str(),
                     Figure(gap.m_to.x).c_str(), Figure(gap.m_to.y).c_str(),
                     Figure(gap.m_dLength).c_str());
    }
    if (gaps == 0)
        text += hasGaps ? Tr("  gaps       see the verdict: parts of the outline are not drawn\n")
                        : Tr("  gaps       none\n");
    if (steps > 0)
        text += Line(Tr("  faces      %d square to the axis, closed as they should be"), steps);
    for (const CEncircleTrace::SLeftOut& left : run.trace.m_leftOut)
        text += Line(Tr("  left out   %5d  %-10s %s"), left.m_nCount,
                     CEncircleTrace::GetReasonName(left.m_reason), ToUtf8(left.m_strWhat).c_str());
    for (const CString& note : run.trace.m_notes)
        text += Line(Tr("  note       %s"), ToUtf8(note).c_str());
    return text;
}

const char* HalfPhrase(Half half) {
    return half == Half::Both    ? Tr("both halves")
           : half == Half::Lower ? Tr("lower half")
                                 : Tr("upper half");
}

std::string PlaceText(const SExactResult::SPlace& place) {
    return Figure(place.m_dX) + "," + Figure(place.m_dY);
}

// Entities of one reason and kind are counted together.
std::string LeftOutSummary(const SExactResult& exact) {
    std::map<std::pair<std::string, std::string>, int> counts;
    for (const SExactResult::SLeftOut& left : exact.m_leftOut)
        ++counts[{NameOf(left.m_reason), ToUtf8(left.m_strWhat)}];
    std::string text;
    for (const auto& [what, count] : counts)
        text +=
            Line(Tr("  left out   %5d  %-10s %s"), count, what.first.c_str(), what.second.c_str());
    return text;
}

std::string ExactSummary(const SExactResult& exact) {
    std::string text;
    for (const SExactResult::SBridge& bridge : exact.m_bridges)
        text += Tr("  bridge     ") + PlaceText(bridge.m_from) + Tr(" to ") +
                PlaceText(bridge.m_to) + ", " + Figure(bridge.m_dLength) + Tr(" long, not drawn\n");
    for (const SExactResult::SBridge& gap : exact.m_gaps)
        text += Tr("  gap        ") + PlaceText(gap.m_from) + Tr(" to ") + PlaceText(gap.m_to) +
                ", " + Figure(gap.m_dLength) + Tr(" long, nothing is drawn there\n");
    if (exact.m_bridges.empty() && exact.m_gaps.empty()) text += Tr("  gaps       none\n");
    for (const SExactResult::SPlace& end : exact.m_openEnds)
        text += Tr("  open end   ") + PlaceText(end) + "\n";
    for (const SExactResult::STail& tail : exact.m_tails)
        text += Tr("  overshoot  ") + PlaceText(tail.m_at) + ", " + Figure(tail.m_dLength) +
                Tr(" long, cut off\n");
    return text + LeftOutSummary(exact);
}

Json RunJson(const ToolRun& run, const ToolRequest& request, const Drawing& drawing) {
    Json json = {{"envelope", EnvelopeJson(run.envelope)},
                 {"solid", SolidJson(run.solid)},
                 {"parts", PartsJson(run)},
                 {"picked", run.selection.ids.length()},
                 {"seconds", run.seconds},
                 {"input", request.input},
                 {"output", TextOrNull(run.envelope.found ? request.output : "")},
                 {"svg", TextOrNull(request.svg)},
                 {"sat", TextOrNull(request.solid.sat)},
                 {"step", TextOrNull(request.solid.step)},
                 {"stl", TextOrNull(request.solid.stl)},
                 {"png", TextOrNull(request.solid.png)},
                 {"profile", TextOrNull(request.profile)},
                 {"files", run.files},
                 {"selection",
                  {{"extents", Corners(run.selection.box)},
                   {"not_displayed", run.selection.notDisplayed},
                   {"earlier_envelopes_erased", run.envelopesErased}}},
                 {"trace", TraceJson(run, request.parameters)},
                 {"parameters", ParametersJson(request, run.exact)},
                 {"file",
                  {{"version", drawing.Version()},
                   {"code_page", drawing.CodePage()},
                   {"notes", drawing.Notes()}}},
                 {"warnings", run.warnings}};
    json["unit"] =
        request.solid.units ? UnitName(*request.solid.units) : UnitName(drawing.Database());
    json["axis"] = AxisJson(request.SeesAxis() ? request.axis : std::nullopt);
    if (run.exact) AddExact(*run.exact, json);
    return json;
}

// The unit, where it comes from, and what the solid's files take it for when nobody says.
std::string UnitPhrase(const ToolRequest& request, const Drawing& drawing) {
    if (request.solid.units) return UnitName(*request.solid.units) + Tr(", as --units says");
    const std::string name = UnitName(drawing.Database());
    if (name == "none" || name == "not stated")
        return Tr(
            "not stated in the drawing; STEP and SAT take it for millimetres, --units says "
            "otherwise");
    return name + Tr(", as the drawing's header says");
}

std::string RunSummary(const ToolRun& run, const ToolRequest& request, const Drawing& drawing,
                       const std::vector<Finding>& findings) {
    const bool hasGaps = std::any_of(findings.begin(), findings.end(), [](const Finding& finding) {
        return finding.kind == Finding::Kind::Gap && finding.isWarning;
    });
    std::string text = request.input + "\n";
    text += Line(Tr("  picked     %d entities, %s%s"), run.selection.ids.length(),
                 HalfPhrase(request.parameters.half), request.SeesAxis() ? "" : Tr(", no axis"));
    if (run.selection.notDisplayed > 0)
        text += Line(Tr("             %d inside the window are not displayed and were not picked"),
                     run.selection.notDisplayed);
    if (run.envelopesErased > 0)
        text +=
            Line(Tr("             %d envelope of an earlier run replaced"), run.envelopesErased);
    text += EnvelopeSummary(run.envelope);
    if (const std::string phrase = SolidPhrase(run.solid); !phrase.empty())
        text += Tr("  solid      ") + phrase + "\n";
    text += PartsPhrase(run);
    text += Tr("  unit       ") + UnitPhrase(request, drawing) + "\n";
    text += run.exact ? ExactSummary(*run.exact) : TraceSummary(run, request.parameters, hasGaps);
    text += Line(Tr("  time       %.1f ms in the engine"), run.seconds * 1000);
    for (const std::string& note : drawing.Notes()) text += Tr("  file       ") + note + "\n";
    if (run.envelope.found && !request.output.empty())
        text += Tr("  written    ") + request.output + "\n";
    for (const std::string& path : run.files) text += Tr("  written    ") + path + "\n";
    if (!request.svg.empty()) text += Tr("  picture    ") + request.svg + "\n";
    if (run.envelope.found && request.output.empty())
        text += Tr("  nothing was written to the drawing; -o FILE saves it with its envelope\n");
    return text;
}

Json FindingsJson(const std::vector<Finding>& findings) {
    Json list = Json::array();
    for (const Finding& finding : findings) {
        Json json = {
            {"kind", NameOf(finding.kind)}, {"warning", finding.isWarning}, {"text", finding.text}};
        if (finding.at) json["at"] = {finding.at->x, finding.at->y};
        list.push_back(std::move(json));
    }
    return list;
}

Json JobJson(const ToolJob& job, const Drawing& drawing) {
    Json json = RunJson(job.run, job.request, drawing);
    const detect::FoundTool* const found = job.found ? &*job.found : nullptr;
    if (job.request.rule.window || found != nullptr)
        json["window"] = Corners(found != nullptr ? found->window : *job.request.rule.window);
    else
        json["window"] = Corners(job.run.selection.box);
    json["cue"] = found != nullptr ? NameOf(found->cue) : "given";
    json["confidence"] = found != nullptr ? found->confidence : 1.0;
    json["verdict"] = job.failure ? FailedVerdict(job.failure->what(), job.review.findings)
                                  : VerdictOf(job.review.findings);
    json["findings"] = FindingsJson(job.review.findings);
    json["failure"] = job.failure ? Json(job.failure->what()) : Json();
    return json;
}

}  // namespace

std::string JobsSummary(const std::vector<ToolJob>& jobs, const Drawing& drawing) {
    std::string text;
    for (size_t i = 0; i < jobs.size(); ++i) {
        const ToolJob& job = jobs[i];
        text += RunSummary(job.run, job.request, drawing, job.review.findings);
        if (job.found)
            text += Tr("  found      ") +
                    (jobs.size() > 1 ? Tr("tool ") + std::to_string(i + 1) + Tr(" of ") +
                                           std::to_string(jobs.size()) + ", "
                                     : std::string()) +
                    Describe(*job.found) + "\n";
        // What failed is told apart; a failed tool is never sure.
        if (!job.failure || !Warnings(job.review.findings).empty())
            text += VerdictOf(job.review.findings) + "\n";
    }
    return text;
}

std::string JobsJson(const std::vector<ToolJob>& jobs, const Drawing& drawing) {
    Json tools = Json::array();
    for (const ToolJob& job : jobs) tools.push_back(JobJson(job, drawing));
    Json json = jobs.size() == 1 ? tools[0] : Json::object();
    json["tools"] = std::move(tools);
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace product
