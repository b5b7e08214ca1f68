// Formatting by Microsoft's rules, for CString, AcString and acutPrintf alike.
#pragma once

#include <cstdarg>
#include <string>
#include <string_view>

namespace host {

// Appends the formatted text. Rules as in cstringt.h at Format: %s wide, %S narrow (UTF-8). Does
// not follow the process locale. args is used up. Unknown conversions are written as they stand.
void AppendFormatted(std::wstring& out, const wchar_t* format, va_list args);

// UTF-8 to wide text of this machine's wchar_t and back. Each byte that is no UTF-8 gives U+FFFD,
// so does half a surrogate pair; nothing fails.
std::wstring Widen(std::string_view utf8);
std::string Narrow(std::wstring_view text);

}  // namespace host
