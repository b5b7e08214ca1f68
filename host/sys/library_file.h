// The dynamic loader, as far as modules need it; they stay mapped to the end.
#pragma once

#include <string>

namespace host {

// Maps a library and returns the function of that name. Null, with a reason, when the file cannot
// be mapped; null and an empty reason when it has no such function: it is then unmapped again, and
// library is null.
void* OpenLibrary(const std::wstring& path, const char* function, void*& library,
                  std::wstring& reason);

}  // namespace host
