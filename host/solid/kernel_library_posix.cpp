// The only place of host/solid that talks to the dynamic loader.
#include "host/solid/kernel.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

namespace host::solid {

namespace {

constexpr char kLibraryName[] = "libhost_solid_occt.so";

// Looked for beside the program, then wherever the loader looks. The program's own folder is named
// because a run path is lost when something stands between this call and the loader, as the address
// sanitizer does.
void* OpenLibrary() {
    std::error_code failed;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failed);
    if (!failed && std::filesystem::exists(program.parent_path() / kLibraryName, failed))
        return ::dlopen((program.parent_path() / kLibraryName).c_str(), RTLD_NOW | RTLD_LOCAL);
    return ::dlopen(kLibraryName, RTLD_NOW | RTLD_LOCAL);
}

}  // namespace

const Kernel* LoadKernel(std::string& reason) {
    struct Library {
        const Kernel* kernel = nullptr;
        std::string reason;

        Library() {
            void* const handle = OpenLibrary();
            void* const symbol = handle == nullptr ? nullptr : ::dlsym(handle, kKernelSymbol);
            if (symbol != nullptr)
                kernel = reinterpret_cast<KernelFunction>(symbol)();
            else
                reason = std::string("the modelling library cannot be loaded: ") + ::dlerror();
        }
    };
    static const Library library;
    if (library.kernel == nullptr) reason = library.reason;
    return library.kernel;
}

}  // namespace host::solid
