#include "product/report/ResultJson.h"

#include <algorithm>
#include <iterator>

namespace product {
namespace {

using Json = nlohmann::ordered_json;

const char* const kKinds[] = {"axis",     "border",   "window", "exact",  "gap",
                              "crossing", "left out", "beyond", "halves", "outline",
                              "solid",    "parts",    "note"};

// The members that are written and read as they are.
template <class Visitor, class Tool>
void VisitFields(Tool& tool, Visitor visit) {
    visit("id", tool.id);
    visit("tool", tool.name);
    visit("task", tool.task);
    visit("handle", tool.handle);
    visit("computed", tool.isComputed);
    visit("exported", tool.isExported);
    visit("reason", tool.reason);
    visit("seconds", tool.seconds);
    visit("entities", tool.entities);
    visit("vertices", tool.vertices);
    visit("length", tool.length);
    visit("diameter", tool.diameter);
    visit("volume", tool.volume);
    visit("unit", tool.unit);
    visit("lower_half", tool.lowerHalf);
    visit("files", tool.files);
}

template <class Visitor, class Figures>
void VisitFigures(Figures& figures, Visitor visit) {
    visit("tip_diameter", figures.tipDiameter);
    visit("cutting_diameter", figures.cuttingDiameter);
    visit("greatest_diameter", figures.greatestDiameter);
    visit("overall_length", figures.overallLength);
    visit("cutting_length", figures.cuttingLength);
    visit("usable_length", figures.usableLength);
    visit("neck_diameter", figures.neckDiameter);
    visit("neck_length", figures.neckLength);
    visit("shank_diameter", figures.shankDiameter);
    visit("shank_length", figures.shankLength);
    visit("corner_radius", figures.cornerRadius);
    visit("chamfer_width", figures.chamferWidth);
    visit("chamfer_angle", figures.chamferAngle);
    visit("point_angle", figures.pointAngle);
    visit("point_length", figures.pointLength);
    visit("volume", figures.volume);
    visit("cutting_volume", figures.cuttingVolume);
}

template <class Visitor, class Drawing>
void VisitDrawing(Drawing& drawing, Visitor visit) {
    visit("drawing", drawing.input);
    visit("output", drawing.output);
    visit("source", drawing.source);
    visit("reason", drawing.reason);
    visit("unreadable", drawing.isUnreadable);
    visit("unchanged", drawing.isUnchanged);
    visit("seconds", drawing.seconds);
    visit("notes", drawing.notes);
}

Json OrNull(const std::optional<double>& number) { return number ? Json(*number) : Json(); }

std::optional<double> NumberOf(const Json& json) {
    return json.is_null() ? std::nullopt : std::optional<double>(json.get<double>());
}

Json FindingJson(const Finding& finding) {
    return {{"kind", NameOf(finding.kind)},
            {"warning", finding.isWarning},
            {"text", finding.text},
            {"at", finding.at ? Json{finding.at->x, finding.at->y} : Json()}};
}

Finding FindingOf(const Json& json) {
    Finding finding;
    const auto kind = std::find(std::begin(kKinds), std::end(kKinds), json.at("kind"));
    // A kind that is not known is a note.
    if (kind != std::end(kKinds))
        finding.kind = static_cast<Finding::Kind>(kind - std::begin(kKinds));
    finding.isWarning = json.at("warning");
    finding.text = json.at("text");
    if (!json.at("at").is_null()) finding.at = Point{json.at("at").at(0), json.at("at").at(1)};
    return finding;
}

}  // namespace

const char* NameOf(Finding::Kind kind) { return kKinds[static_cast<int>(kind)]; }

Json ToJson(const ToolResult& tool, bool withPictures) {
    Json json;
    VisitFields(tool, [&](const char* name, const auto& value) { json[name] = value; });
    Json& figures = json["figures"] = Json::object();
    VisitFigures(tool.figures, [&](const char* name, const auto& value) {
        if (value) figures[name] = *value;
    });
    json["off_contour"] = OrNull(tool.offContour);
    json["between_halves"] = OrNull(tool.betweenHalves);
    json["verdict"] = tool.Verdict();
    json["findings"] = Json::array();
    for (const Finding& finding : tool.findings) json["findings"].push_back(FindingJson(finding));
    if (withPictures) {
        json["svg"] = tool.svg;
        json["png"] = tool.png;
    }
    return json;
}

ToolResult ToolFromJson(const Json& json) {
    ToolResult tool;
    VisitFields(tool, [&](const char* name, auto& value) { json.at(name).get_to(value); });
    const Json& figures = json.at("figures");
    VisitFigures(tool.figures, [&](const char* name, auto& value) {
        if (figures.contains(name)) value = figures.at(name).get<double>();
    });
    tool.offContour = NumberOf(json.at("off_contour"));
    tool.betweenHalves = NumberOf(json.at("between_halves"));
    for (const Json& finding : json.at("findings")) tool.findings.push_back(FindingOf(finding));
    tool.svg = json.value("svg", "");
    tool.png = json.value("png", "");
    return tool;
}

Json ToJson(const DrawingResult& drawing) {
    Json json;
    VisitDrawing(drawing, [&](const char* name, const auto& value) { json[name] = value; });
    return json;
}

DrawingResult DrawingFromJson(const Json& json) {
    DrawingResult drawing;
    VisitDrawing(drawing, [&](const char* name, auto& value) { json.at(name).get_to(value); });
    return drawing;
}

}  // namespace product
