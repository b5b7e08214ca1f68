#include "host/sys/process.h"

#include <unistd.h>

std::uint32_t host::ProcessNumber() { return static_cast<std::uint32_t>(::getpid()); }
