// Texts for people, in the language they chose.
#pragma once

#include <string>

namespace product {

// A text in the language of UseLanguage(), UTF-8; the text itself where there is none. What stands
// between double quotes after Tr or Noted is what translators get: scripts/update-words.
//
// cost  a look into a table
const char* Tr(const char* text) __attribute__((format_arg(1)));

// Marks a text of a table that is made before the language is known; Tr() is for when it is shown.
constexpr const char* Noted(const char* text) { return text; }

// The language that somebody's environment asks for, "zh" or "en": LC_ALL, LC_MESSAGES or LANG,
// whichever comes first, and LANGUAGE before them where one of them is set at all.
std::string LanguageOfLocale();

// From now on Tr() speaks this language. No locale needs to be installed for it: the system's
// locale stays as it is in everything else, numbers above all.
//
// language  "zh"; any other is English
// folder    of the translations, folder/zh_CN/LC_MESSAGES/qzenvelope.mo
void UseLanguage(const std::string& language, const std::string& folder);

}  // namespace product
