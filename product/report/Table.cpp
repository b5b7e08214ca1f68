#include "product/report/Table.h"

#include <cstdio>
#include <nlohmann/json.hpp>

#include "product/base/Text.h"
#include "product/check/Verdict.h"

namespace product {
namespace {

using Json = nlohmann::ordered_json;

const char* const kByteOrderMark = "\xEF\xBB\xBF";

struct NumberColumn {
    const char* title;  // for people, with the symbol before it
    const char* name;   // for programs
    std::optional<double> ToolFigures::*value;
};
const NumberColumn kNumbers[] = {
    {"DC diameter at the tip", "dc", &ToolFigures::tipDiameter},
    {"DCX greatest diameter of the cutting part", "dcx", &ToolFigures::cuttingDiameter},
    {"greatest diameter", "greatest_diameter", &ToolFigures::greatestDiameter},
    {"OAL overall length", "oal", &ToolFigures::overallLength},
    {"LCF cutting length", "lcf", &ToolFigures::cuttingLength},
    {"LU usable length", "lu", &ToolFigures::usableLength},
    {"DN neck diameter", "dn", &ToolFigures::neckDiameter},
    {"neck length", "neck_length", &ToolFigures::neckLength},
    {"DMM shank diameter", "dmm", &ToolFigures::shankDiameter},
    {"LS shank length", "ls", &ToolFigures::shankLength},
    {"RE corner radius", "re", &ToolFigures::cornerRadius},
    {"CHW corner chamfer width", "chw", &ToolFigures::chamferWidth},
    {"KCH corner chamfer angle", "kch", &ToolFigures::chamferAngle},
    {"SIG point angle", "sig", &ToolFigures::pointAngle},
    {"PL point length", "pl", &ToolFigures::pointLength},
    {"volume", "volume", &ToolFigures::volume},
    {"volume of the cutting part", "cutting_volume", &ToolFigures::cuttingVolume},
};

struct TextColumn {
    const char* title;
    const char* name;
};
const TextColumn kBefore[] = {{"tool number", "tool"}, {"drawing", "drawing"}};
const TextColumn kAfter[] = {{"unit", "unit"}, {"verdict", "verdict"}, {"files", "files"}};

std::string VerdictText(const ToolResult& tool) {
    return tool.IsGood() ? VerdictOf(tool.findings) : "failed: " + tool.reason;
}

// Nine digits: what the profile says, without what the last bits say.
std::string Number(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.9g", value);
    return text;
}

std::string Field(std::string text) {
    if (!text.empty() && std::string("=+-@\t\r").find(text[0]) != std::string::npos)
        text.insert(0, "'");
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char c : text) quoted += c == '"' ? "\"\"" : std::string(1, c);
    return quoted + "\"";
}

std::string Joined(const std::vector<std::string>& files) {
    std::string text;
    for (const std::string& file : files) text += (text.empty() ? "" : "; ") + file;
    return text;
}

}  // namespace

std::string TableHead() {
    std::string line = kByteOrderMark;
    for (const TextColumn& column : kBefore) line += std::string(column.title) + ",";
    for (const NumberColumn& column : kNumbers) line += std::string(column.title) + ",";
    for (const TextColumn& column : kAfter) line += std::string(column.title) + ",";
    line.pop_back();
    return line + "\r\n";
}

std::string TableRow(const DrawingResult& drawing, const ToolResult& tool) {
    std::string line = Field(tool.name) + "," + Field(drawing.input) + ",";
    for (const NumberColumn& column : kNumbers) {
        const std::optional<double>& value = tool.figures.*column.value;
        line += (value ? Number(*value) : "") + ",";
    }
    return line + Field(tool.unit) + "," + Field(VerdictText(tool)) + "," +
           Field(Joined(tool.files)) + "\r\n";
}

std::string TableJsonHead() { return "[\n"; }

std::string TableJsonRow(const DrawingResult& drawing, const ToolResult& tool, bool isFirst) {
    Json json = {{kBefore[0].name, tool.name}, {kBefore[1].name, drawing.input}};
    for (const NumberColumn& column : kNumbers) {
        const std::optional<double>& value = tool.figures.*column.value;
        json[column.name] = value ? Json(*value) : Json();
    }
    json[kAfter[0].name] = tool.unit;
    json[kAfter[1].name] = VerdictText(tool);
    json[kAfter[2].name] = tool.files;
    return (isFirst ? "  " : ",\n  ") + json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string TableJsonTail() { return "\n]\n"; }

}  // namespace product
