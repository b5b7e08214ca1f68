#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <algorithm>

#include "host/sys/library_file.h"

namespace host {

void* OpenLibrary(const std::wstring& path, const char* function, void*& library,
                  std::wstring& reason) {
    std::wstring file = path;
    // The loader looks beside the file for what it needs only when the path is written its own way.
    std::replace(file.begin(), file.end(), L'/', L'\\');
    const HMODULE module = ::LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    library = module;
    if (module == nullptr) {
        reason = path + L" cannot be loaded: error " + std::to_wstring(::GetLastError());
        return nullptr;
    }
    const FARPROC found = ::GetProcAddress(module, function);
    if (found == nullptr) {
        ::FreeLibrary(module);
        library = nullptr;
    }
    return reinterpret_cast<void*>(found);
}

}  // namespace host
