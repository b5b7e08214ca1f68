// The only place of host/solid that talks to the dynamic loader.
#include "host/solid/kernel.h"

#include <dlfcn.h>

namespace host::solid {

const Kernel* LoadKernel(std::string& reason) {
    struct Library {
        const Kernel* kernel = nullptr;
        std::string reason;

        // Looked for beside the program by the run path that linking to host_solid gives it.
        Library() {
            void* const handle = ::dlopen("libhost_solid_occt.so", RTLD_NOW | RTLD_LOCAL);
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
