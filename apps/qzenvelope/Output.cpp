#include "apps/qzenvelope/Output.h"

#include <cstdio>

#include "product/base/Failure.h"

namespace app {

void Print(const std::string& text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0)
        throw product::Failure(product::Fault::Output, "the standard output cannot be written");
}

}  // namespace app
