#pragma once

#include <cstdint>

namespace host {

// What the operating system calls this process.
std::uint32_t ProcessNumber();

}  // namespace host
