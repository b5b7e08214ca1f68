// No PNG library is built for Windows: there the drawing program makes its own pictures.
#include "host/solid/png.h"

namespace host::solid {

bool EncodePng(const Image&, std::string&, std::string& reason) {
    reason = "this build writes no PNG pictures";
    return false;
}

}  // namespace host::solid
