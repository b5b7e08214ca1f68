// The adapter that turns the kernel's exceptions into reasons.
#pragma once

#include <new>
#include <string>

#include <Standard_Failure.hxx>

namespace host::solid {

// Runs work, which returns false with a reason, and makes a reason of whatever it throws.
template <class Work>
bool Guarded(const char* doing, std::string& reason, Work work) {
    try {
        return work();
    } catch (const Standard_Failure& failure) {
        const char* text = failure.GetMessageString();
        reason = std::string(doing) + ": " + failure.DynamicType()->Name();
        if (text != nullptr && *text != '\0') reason += std::string(" (") + text + ")";
    } catch (const std::bad_alloc&) {
        reason = std::string(doing) + ": out of memory";
    }
    return false;
}

}  // namespace host::solid
