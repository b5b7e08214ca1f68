#include "host/sys/process.h"

#include <process.h>

std::uint32_t host::ProcessNumber() { return static_cast<std::uint32_t>(_getpid()); }
