// Text of the drawing as it is printed: UTF-8, plain.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "arxHeaders.h"
#include "cstringt.h"

namespace product {

// UTF-8 of a wide text, whether its characters are 16 or 32 bits; lone surrogates become U+FFFD.
std::string ToUtf8(const ACHAR* text);
// The wide text of UTF-8; bytes that are none become U+FFFD.
CString FromUtf8(const std::string& text);

// A text's codes replaced by what they show: %%d degree, %%c diameter, %%p plus-minus, %%nnn a
// character; underlining and the like vanish.
std::string PlainText(const std::string& text);

// The lines of a multi-line text without its formatting; stacked fractions become "a/b".
std::vector<std::string> PlainLines(const std::string& text);

// "LINE" for an AcDbLine: the class's name in files, or its own where it has none.
std::string TypeName(const AcRxClass* type);

// The drawing unit: "millimetres", "none", "not stated" in versions before R2000, which do not say.
std::string UnitName(const AcDbDatabase& database);
std::string UnitName(AcDb::UnitsValue units);
// The unit of a name as people write it: mm, inch, "millimetres", ...; nothing for any other word.
std::optional<AcDb::UnitsValue> UnitOf(const std::string& name);

// Fit for XML and HTML, in contents and attributes; control characters, which neither knows,
// vanish.
std::string Escaped(const std::string& text);

// A coordinate or a length as a person reads it: six digits, and further from the origin as many as
// show a ten thousandth of a unit.
std::string Figure(double value);

std::string HandleText(const AcDbHandle& handle);
inline std::string HandleText(const AcDbObjectId& id) {
    return HandleText(id.isNull() ? AcDbHandle() : id.handle());
}

}  // namespace product
