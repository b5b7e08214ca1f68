// Tables of tools: every line is a tool with finite numbers and an area, or the refusal names it.
#include <cmath>
#include <string>

#include "fuzz/check.h"
#include "product/base/Failure.h"
#include "product/tool/ToolTable.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    try {
        const auto tools = product::ReadToolTable(text, "fuzz.csv");
        FUZZ_CHECK(!tools.empty());
        for (const product::NamedTool& tool : tools) {
            FUZZ_CHECK(!tool.name.empty() && tool.line > 0);
            FUZZ_CHECK(std::isfinite(tool.centre.x) && std::isfinite(tool.centre.y));
            FUZZ_CHECK(tool.window.Width() > 0 && tool.window.Height() > 0);
        }
    } catch (const product::Failure& failure) {
        FUZZ_CHECK(std::string(failure.what()).rfind("fuzz.csv", 0) == 0);
    }
    return 0;
}
