#include "host/sys/library_file.h"

#include <dlfcn.h>

#include "host/base/format.h"

namespace host {

void* OpenLibrary(const std::wstring& path, const char* function, void*& library,
                  std::wstring& reason) {
    library = dlopen(Narrow(path).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        reason = Widen(dlerror());
        return nullptr;
    }
    void* const found = dlsym(library, function);
    if (found == nullptr) {
        dlclose(library);
        library = nullptr;
    }
    return found;
}

}  // namespace host
