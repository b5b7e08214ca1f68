#include "host/mfc/module_handle.h"

#include <dlfcn.h>
#include <link.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <memory>

#include "host/ge/format.h"
#include "host_winuser.h"

namespace host {

HINSTANCE ModuleOfAddress(const void* address) {
    Dl_info info = {};
    if (dladdr(address, &info) == 0) return nullptr;
    return static_cast<HINSTANCE>(info.dli_fbase);
}

// The loader lists the program first; its headers lie in it.
HINSTANCE ProgramModule() {
    static HINSTANCE const program = [] {
        const void* headers = nullptr;
        dl_iterate_phdr(
            [](dl_phdr_info* info, std::size_t, void* out) {
                *static_cast<const void**>(out) = info->dlpi_phdr;
                return 1;
            },
            &headers);
        return ModuleOfAddress(headers);
    }();
    return program;
}

std::wstring ModulePath(HINSTANCE module) {
    if (module == nullptr) return {};
    if (module == ProgramModule()) {
        char path[PATH_MAX];
        const ssize_t length = readlink("/proc/self/exe", path, sizeof(path));
        if (length > 0) return Widen({path, static_cast<std::size_t>(length)});
    }
    Dl_info info = {};
    if (dladdr(module, &info) == 0 || info.dli_fname == nullptr) return {};
    const std::unique_ptr<char, decltype(&std::free)> whole(realpath(info.dli_fname, nullptr),
                                                            &std::free);
    return Widen(whole ? whole.get() : info.dli_fname);
}

bool PinModule(HINSTANCE module) {
    if (module == nullptr) return false;
    if (module == ProgramModule()) return true;
    const std::string path = Narrow(ModulePath(module));
    return dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE) != nullptr;
}

}  // namespace host

BOOL GetModuleHandleEx(DWORD dwFlags, LPCTSTR lpModuleName, HMODULE* phModule) {
    *phModule = nullptr;
    HMODULE module = nullptr;
    if (lpModuleName == nullptr) {
        module = host::ProgramModule();
    } else if (dwFlags & GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS) {
        module = host::ModuleOfAddress(lpModuleName);
    }
    if (module == nullptr) return FALSE;
    if ((dwFlags & GET_MODULE_HANDLE_EX_FLAG_PIN) && !host::PinModule(module)) return FALSE;
    *phModule = module;
    return TRUE;
}

DWORD GetModuleFileName(HMODULE hModule, LPTSTR lpFilename, DWORD nSize) {
    const std::wstring path =
        host::ModulePath(hModule == nullptr ? host::ProgramModule() : hModule);
    if (nSize == 0 || path.empty()) return 0;
    const std::size_t count = (std::min)(path.size(), static_cast<std::size_t>(nSize) - 1);
    std::copy_n(path.begin(), count, lpFilename);
    lpFilename[count] = 0;
    return static_cast<DWORD>(count);
}
