#include "host/mfc/module_handle.h"

#include <algorithm>

#include "host_winuser.h"

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
