// Resource scripts: any text gives dialogs or a fault that names its place, with other scripts
// included or not.
#include <string>

#include "fuzz/check.h"
#include "host/base/format.h"
#include "host/mfc/resource_script.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::wstring text = host::Widen({reinterpret_cast<const char*>(data), size});
    int depth = 0;
    // A script may include itself, by any name.
    const auto includes = [&](const std::wstring& name) -> std::optional<std::wstring> {
        return ++depth > 20 || name.empty() ? std::nullopt : std::make_optional(text);
    };
    host::ResourceScript script;
    const host::ScriptFault fault = host::ParseResourceScript(text, L"fuzz.rc", includes, script);
    FUZZ_CHECK(fault.empty() || (script.dialogs.empty() && script.strings.empty()));
    FUZZ_CHECK(fault.empty() || fault.find(L"fuzz.rc") != std::wstring::npos ||
               fault.find(L"(") != std::wstring::npos);
    return 0;
}
