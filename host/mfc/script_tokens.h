// The words of a resource script, behind its preprocessor.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/mfc/resource_script.h"

namespace host {

struct ScriptToken {
    enum Kind { kName, kNumber, kText, kSign, kEnd };
    Kind kind = kEnd;         // what it is
    std::wstring text;        // name, contents of a text, or the sign
    std::int64_t number = 0;  // of a kNumber
    int line = 0;             // from 1, in the file below
    std::wstring file;        // as the include names it
};

// Thrown inside the reader; its text is a ScriptFault.
struct ScriptError {
    std::wstring text;  // the fault, ready to be shown
};
// Ends the reading with "file(line): why".
[[noreturn]] void FailAt(const ScriptToken& token, const std::wstring& why);
[[noreturn]] void FailAt(const std::wstring& file, int line, const std::wstring& why);

// Words of one line or text without directives. A comment ends with its line or with "*/".
std::vector<ScriptToken> ScanScript(const std::wstring& text, const std::wstring& file,
                                    int firstLine);

// All words of a script with macros put in and directives followed, and an end mark.
std::vector<ScriptToken> PreprocessScript(const std::wstring& text, const std::wstring& file,
                                          const IncludeReader& includes);

// The value of a name of the Windows headers (styles, languages, ids); nothing for other names.
std::optional<std::int64_t> FindScriptName(const std::wstring& name);

bool EqualsIgnoringCase(const std::wstring& a, const wchar_t* b);  // simple lower-casing of both

}  // namespace host
