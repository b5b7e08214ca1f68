#include "host/mfc/module_handle.h"

// The loader's functions by hand: the system's headers and the host's declare the same types.
extern "C" {
__declspec(dllimport) int __stdcall GetModuleHandleExW(unsigned long flags, const wchar_t* name,
                                                       HMODULE* module);
__declspec(dllimport) unsigned long __stdcall GetModuleFileNameW(HMODULE module, wchar_t* path,
                                                                 unsigned long size);
}

namespace host {

namespace {

// Values of the system (libloaderapi.h).
constexpr unsigned long kPin = 1, kUnchangedCount = 2, kFromAddress = 4;

HMODULE Look(unsigned long flags, const void* address) {
    HMODULE module = nullptr;
    const bool found =
        GetModuleHandleExW(flags, static_cast<const wchar_t*>(address), &module) != 0;
    return found ? module : nullptr;
}

}  // namespace

HINSTANCE ModuleOfAddress(const void* address) {
    return Look(kFromAddress | kUnchangedCount, address);
}

HINSTANCE ProgramModule() { return Look(kUnchangedCount, nullptr); }

std::wstring ModulePath(HINSTANCE module) {
    if (module == nullptr) return {};
    std::wstring path(32767, L'\0');  // the longest path of the system
    path.resize(GetModuleFileNameW(module, path.data(), static_cast<unsigned long>(path.size())));
    return path;
}

// A module's handle is its address.
bool PinModule(HINSTANCE module) {
    return module != nullptr && Look(kPin | kFromAddress, module) == module;
}

}  // namespace host
