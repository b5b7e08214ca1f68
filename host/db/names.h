// Names of table records and dictionary entries.
#pragma once

#include <string>

#include "adesk.h"

namespace host {

// The form under which names that differ only in case are equal: each letter by itself, for Latin,
// Greek, Cyrillic and full-width letters, whatever the locale of the process.
std::wstring FoldName(const ACHAR* name);
bool SameName(const ACHAR* a, const ACHAR* b);

// False for an empty or overlong name (255 characters at most) and for < > / \ " : ; ? * | , = `
// and control characters. A leading asterisk and vertical bars may be allowed.
bool IsValidName(const ACHAR* name, bool allowAsterisk, bool allowVerticalBar);

}  // namespace host
