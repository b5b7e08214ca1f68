#include "product/report/SolidReport.h"

#include <cstdio>

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

}  // namespace product
