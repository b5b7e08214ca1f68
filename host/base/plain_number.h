// Numbers as people type them, whatever the process locale.
#pragma once

#include <string>

namespace host {

// Reads the decimal number that begins at `at`: a sign, digits with a point, an exponent, nothing
// else (no hexadecimal, no words such as inf and nan).
// at     behind the number on success, else unchanged
// value  finite; unchanged when there is no number or it is too large for a double
bool ReadNumber(const wchar_t*& at, double& value);

// The whole text is one number.
bool ReadWholeNumber(const std::wstring& text, double& value);

}  // namespace host
