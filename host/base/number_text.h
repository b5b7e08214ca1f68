// Numbers to text as the C library's printf writes them, whatever the process locale.
#pragma once

#include <cstdint>
#include <string>

namespace host {

// One conversion of a format: what stands between the % and the letter, and the letter.
struct FormatPart {
    bool left = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool zero = false;
    int width = 0;
    int precision = -1;  // -1: none given
    wchar_t letter = 0;
};

// The text with its sign, without padding. letter: d i u x X o.
std::string IntegerText(const FormatPart& part, bool negative, std::uint64_t magnitude);

// letter: e E f F g G a A. Infinity is "inf", not-a-number "nan", or "-nan(ind)" for the one that
// an invalid operation makes, as on Windows.
std::string FloatText(const FormatPart& part, double value);

}  // namespace host
