#include "host/mfc/module_handle.h"

#include <dlfcn.h>
#include <link.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <memory>

#include "host/base/format.h"

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
