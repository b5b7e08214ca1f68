#include "product/report/SolidReport.h"

#include <cstdio>
#include <utility>

namespace product {

nlohmann::ordered_json SolidJson(const SolidRun& solid) {
    if (solid.refusal)
        return {{"refused", solid.refusal->Text()},
                {"at", {solid.refusal->at.x, solid.refusal->at.y}}};
    if (!solid.profile) return nullptr;
    return {{"volume", solid.measures.volume},
            {"area", solid.measures.area},
            {"largest_diameter", solid.measures.largestDiameter},
            {"length", solid.measures.length}};
}

std::string SolidPhrase(const SolidRun& solid) {
    if (solid.refusal) return "none: " + solid.refusal->Text();
    if (!solid.profile) return {};
    const host::solid::Measures& m = solid.measures;
    char text[160];
    std::snprintf(text, sizeof text, "volume %.8g, area %.8g, largest diameter %.6g, length %.6g",
                  m.volume, m.area, m.largestDiameter, m.length);
    return text;
}

nlohmann::ordered_json PartsJson(const ToolRun& run) {
    if (!run.parts || !run.solid.profile) return nullptr;
    const ToolParts& parts = *run.parts;
    nlohmann::ordered_json json = {
        {"tip",
         {{"end", EndName(*run.solid.profile, parts.tip.isHigh)},
          {"sure", parts.tip.isSure},
          {"why", parts.tip.why}}},
        {"split_by", parts.isSplit ? nlohmann::ordered_json(parts.how) : nullptr}};
    if (!parts.isSplit) return json;
    json["cutting_length"] = parts.length;
    for (const auto& [name, part] : {std::pair("cut", &parts.cut), std::pair("nocut", &parts.rest)})
        json[name] = {{"volume", part->measures.volume},
                      {"area", part->measures.area},
                      {"largest_diameter", part->measures.largestDiameter},
                      {"length", part->measures.length},
                      {"handle", part->handle}};
    return json;
}

std::string PartsPhrase(const ToolRun& run) {
    if (!run.parts || !run.parts->isSplit) return {};
    const ToolParts& parts = *run.parts;
    char text[320];
    std::snprintf(text, sizeof text,
                  "  parts      cutting part %.6g long at the %s end, by %s\n"
                  "             volume %.8g cutting, %.8g the rest\n",
                  parts.length, EndName(*run.solid.profile, parts.tip.isHigh), parts.how.c_str(),
                  parts.cut.measures.volume, parts.rest.measures.volume);
    return text;
}

}  // namespace product
