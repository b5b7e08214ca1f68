// A check of the host's own invariants that stays on in release.
#pragma once

namespace host {
// Prints "file:line: why (condition)" on standard error and aborts.
[[noreturn]] void AssertionFailed(const char* file, int line, const char* condition,
                                  const char* why);
}  // namespace host

// For what can only be wrong by a fault of ours, never for wrong input. why is a phrase that says
// what would go on wrongly.
#define HOST_ASSERT(condition, why)     \
    ((condition) ? static_cast<void>(0) \
                 : ::host::AssertionFailed(__FILE__, __LINE__, #condition, why))
