// Comparing names as the host does: character by character, without case.
#pragma once

#include <string>

namespace host {

// Null equals null only.
bool EqualsNoCase(const wchar_t* a, const wchar_t* b);

// Upper case, character by character.
std::wstring ToUpper(const std::wstring& text);

// True when the text matches one of the comma-separated patterns, without case:
// * any run, ? any character, # a digit, @ a letter, . anything else, [abc] [a-z] [~abc] one of (or
// none of) them, ~ first in a pattern: everything but, ` takes the next character as it is.
bool MatchesWildcards(const std::wstring& text, const std::wstring& patterns);

}  // namespace host
