#include "host/base/letter_case.h"

#include <cstdint>

namespace host {
namespace {

// Capitals from first to last, every step-th of them; the small letter stands delta further on.
struct CaseRange {
    char32_t first, last, step;
    std::int32_t delta;
};

// After Unicode's character database, ordered by use: the most frequent alphabets first.
const CaseRange kRanges[] = {
    {'A', 'Z', 1, 32},      {0xC0, 0xD6, 1, 32},     {0xD8, 0xDE, 1, 32},
    {0x410, 0x42F, 1, 32},  {0x400, 0x40F, 1, 80},   {0x391, 0x3A1, 1, 32},
    {0x3A3, 0x3AB, 1, 32},  {0x100, 0x12E, 2, 1},    {0x132, 0x136, 2, 1},
    {0x139, 0x147, 2, 1},   {0x14A, 0x176, 2, 1},    {0x178, 0x178, 1, -121},
    {0x179, 0x17D, 2, 1},   {0x1CD, 0x1DB, 2, 1},    {0x1DE, 0x1EE, 2, 1},
    {0x1F8, 0x21E, 2, 1},   {0x222, 0x232, 2, 1},    {0x386, 0x386, 1, 38},
    {0x388, 0x38A, 1, 37},  {0x38C, 0x38C, 1, 64},   {0x38E, 0x38F, 1, 63},
    {0x460, 0x480, 2, 1},   {0x48A, 0x4BE, 2, 1},    {0x4C1, 0x4CD, 2, 1},
    {0x4D0, 0x52E, 2, 1},   {0x531, 0x556, 1, 48},   {0x1E00, 0x1E94, 2, 1},
    {0x1EA0, 0x1EFE, 2, 1}, {0x2160, 0x216F, 1, 16}, {0xFF21, 0xFF3A, 1, 32},
};

bool Holds(const CaseRange& range, char32_t ch) {
    return ch >= range.first && ch <= range.last && (ch - range.first) % range.step == 0;
}

// An ideograph needs no search: nothing between these has case.
bool IsCaseless(char32_t ch) {
    return ch < 'A' || (ch > 0x216F + 16 && ch < 0xFF21) || ch > 0xFF5A;
}

}  // namespace

wchar_t LowerCase(wchar_t ch) {
    const auto code = static_cast<char32_t>(ch);
    if (IsCaseless(code)) return ch;
    if (code < 0x80) return code <= 'Z' ? static_cast<wchar_t>(code + 32) : ch;
    for (const CaseRange& range : kRanges)
        if (Holds(range, code)) return static_cast<wchar_t>(code + range.delta);
    return ch;
}

wchar_t UpperCase(wchar_t ch) {
    const auto code = static_cast<char32_t>(ch);
    if (IsCaseless(code)) return ch;
    for (const CaseRange& range : kRanges)
        if (Holds(range, code - range.delta)) return static_cast<wchar_t>(code - range.delta);
    return ch;
}

}  // namespace host
