// Sizes of texts without their fonts.
#pragma once

#include <string>
#include <vector>

namespace host {

// Width of a line of text of height 1 with width factor 1, estimated: fonts are not read. Letters
// of the Latin and similar scripts count kNarrow, ideographs and full-width forms kWide. Codes such
// as
// %%d (degree), %%c (diameter) and %%p (plus-minus) count as the one character they stand for;
// %%u and %%o draw nothing by themselves.
double TextWidth(const std::wstring& text);
constexpr double kNarrow = 0.9;
constexpr double kWide = 1.2;

// The lines of a paragraph text without its formatting codes (\P ends a line, \S stacks a fraction,
// braces group), broken where a line would be wider than width (in units of the text height); 0
// does not break.
std::vector<std::wstring> PlainLines(const std::wstring& contents, double width);

}  // namespace host
