#include "product/report/Summary.h"

#include <algorithm>
#include <cstdio>

#include "product/report/ResultJson.h"
#include "product/base/Words.h"

namespace product {
namespace {

using Json = nlohmann::ordered_json;

std::string Counted(size_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

}  // namespace

std::string BatchSummary(const BatchResult& result) {
    std::string text;
    for (const DrawingResult& drawing : result.drawings) {
        if (!drawing.reason.empty()) text += Tr("  FAILED  ") + drawing.reason + "\n";
        for (const ToolResult& tool : drawing.tools)
            if (!tool.IsGood())
                text += Tr("  FAILED  ") + drawing.input + Tr(": tool ") + tool.name + ": " +
                        tool.reason + "\n";
            else if (tool.HasWarning())
                text += Tr("  LOOK    ") + drawing.input + Tr(": tool ") + tool.name + ": " +
                        tool.Verdict() + "\n";
    }
    const size_t tools = result.ToolCount(), failed = result.FailedTools();
    const auto drawings = static_cast<size_t>(
        std::count_if(result.drawings.begin(), result.drawings.end(),
                      [](const DrawingResult& drawing) { return !drawing.reason.empty(); }));
    std::string head = Counted(tools, Tr("tool"), Tr("tools")) + Tr(" of ") +
                       Counted(result.drawings.size(), Tr("drawing"), Tr("drawings")) + ": " +
                       std::to_string(tools - failed) + Tr(" done, ") + std::to_string(failed) +
                       Tr(" failed");
    if (drawings > 0)
        head += ", " + Counted(drawings, Tr("drawing"), Tr("drawings")) + Tr(" failed");
    if (const size_t warned = result.ToolsWithWarnings(); warned > 0)
        head += ", " + std::to_string(warned) + Tr(" worth a look");
    char time[32];
    std::snprintf(time, sizeof time, ", %.1f s\n", result.seconds);
    text = head + time + text;
    if (const size_t unchanged = result.UnchangedDrawings(); unchanged > 0)
        text +=
            "  " + Counted(unchanged, Tr("drawing"), Tr("drawings")) +
            Tr(" unchanged since an earlier batch and not computed again; --force computes them\n");
    text += Tr("  files   ") + result.out + "\n";
    if (!result.page.empty()) text += Tr("  report  ") + result.page + "\n";
    return text;
}

std::string BatchJson(const BatchResult& result) {
    Json drawings = Json::array();
    for (const DrawingResult& drawing : result.drawings) {
        Json json = ToJson(drawing);
        json["tools"] = Json::array();
        for (const ToolResult& tool : drawing.tools) json["tools"].push_back(ToJson(tool, false));
        drawings.push_back(std::move(json));
    }
    const Json json = {{"tools", result.ToolCount()},
                       {"failed", result.FailedTools()},
                       {"with_warnings", result.ToolsWithWarnings()},
                       {"unchanged", result.UnchangedDrawings()},
                       {"seconds", result.seconds},
                       {"out", result.out},
                       {"report", result.page.empty() ? Json() : Json(result.page)},
                       {"warnings", result.warnings},
                       {"drawings", std::move(drawings)}};
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace product
