#include "host/base/host_assert.h"

#include <cstdio>
#include <cstdlib>

void host::AssertionFailed(const char* file, int line, const char* condition, const char* why) {
    std::fprintf(stderr, "%s:%d: %s (%s)\n", file, line, why, condition);
    std::fflush(stderr);
    std::abort();
}
