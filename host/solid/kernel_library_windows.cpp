// No modelling library is built for Windows: there the drawing program has a kernel of its own.
#include "host/solid/kernel.h"

namespace host::solid {

const Kernel* LoadKernel(std::string& reason) {
    reason = "this build has no modelling library";
    return nullptr;
}

}  // namespace host::solid
