// Upper and lower case of single characters, the same whatever the process locale.
#pragma once

namespace host {

// By Unicode's simple mappings for Latin, Greek, Cyrillic, Armenian and full-width letters;
// everything else stays. The C library's own functions know nothing but ASCII until a locale is
// set.
wchar_t LowerCase(wchar_t ch);
wchar_t UpperCase(wchar_t ch);

}  // namespace host
