#include "tchar.h"

#include <charconv>
#include <cmath>
#include <cwctype>
#include <limits>
#include <string>
#include <system_error>

#include "host/base/letter_case.h"

int _tcsicmp(const TCHAR* a, const TCHAR* b) {
    return _tcsnicmp(a, b, std::numeric_limits<std::size_t>::max());
}

int _tcsnicmp(const TCHAR* a, const TCHAR* b, std::size_t n) {
    for (; n > 0; --n, ++a, ++b) {
        const wchar_t la = host::LowerCase(*a), lb = host::LowerCase(*b);
        if (la != lb) return la < lb ? -1 : 1;
        if (la == 0) break;
    }
    return 0;
}

std::int64_t _ttoi64(const TCHAR* text) {
    while (std::iswspace(static_cast<std::wint_t>(*text))) ++text;
    const bool negative = *text == L'-';
    if (negative || *text == L'+') ++text;
    constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
    constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
    std::int64_t value = 0;  // counted downward, where there is room for one more
    for (; *text >= L'0' && *text <= L'9'; ++text) {
        const int digit = static_cast<int>(*text - L'0');
        if (value < (kMin + digit) / 10) return negative ? kMin : kMax;
        value = value * 10 - digit;
    }
    return negative ? value : value == kMin ? kMax : -value;
}

int _ttoi(const TCHAR* text) {
    const std::int64_t value = _ttoi64(text);
    if (value > std::numeric_limits<int>::max()) return std::numeric_limits<int>::max();
    if (value < std::numeric_limits<int>::min()) return std::numeric_limits<int>::min();
    return static_cast<int>(value);
}

double _tstof(const TCHAR* text) { return _tcstod(text, nullptr); }

namespace {

// What a number too large or too small for a double becomes. The wider type tells which; where it
// cannot either, the sign of the exponent does.
double OutOfRange(const char* first, const char* last, std::chars_format format) {
    long double wide = 0.0L;
    if (std::from_chars(first, last, wide, format).ec == std::errc())
        return static_cast<double>(wide);
    const char mark = format == std::chars_format::hex ? 'p' : 'e';
    for (const char* at = first; at + 1 < last; ++at)
        if ((*at | 0x20) == mark && at[1] == '-') return 0.0;
    return HUGE_VAL;
}

}  // namespace

double _tcstod(const TCHAR* text, TCHAR** end) {
    const TCHAR* at = text;
    while (std::iswspace(static_cast<std::wint_t>(*at))) ++at;
    const bool negative = *at == L'-';
    if (negative || *at == L'+') ++at;
    const bool hex = at[0] == L'0' && (at[1] == L'x' || at[1] == L'X');
    const auto format = hex ? std::chars_format::hex : std::chars_format::general;
    const TCHAR* const digits = hex ? at + 2 : at;

    std::string narrow;
    for (const TCHAR* p = digits; *p > 0 && *p < 0x7F; ++p) narrow += static_cast<char>(*p);
    const char* const first = narrow.data();
    const char* const last = first + narrow.size();
    double value = 0.0;
    const bool doubleSign = !narrow.empty() && narrow[0] == '-';
    const auto result = doubleSign ? std::from_chars_result{first, std::errc::invalid_argument}
                                   : std::from_chars(first, last, value, format);
    const TCHAR* stop = text;
    if (result.ec == std::errc::result_out_of_range) value = OutOfRange(first, result.ptr, format);
    if (result.ec != std::errc::invalid_argument)
        stop = digits + (result.ptr - first);
    else if (hex)
        stop = at + 1;  // the 0 of "0x" is a number by itself
    if (end) *end = const_cast<TCHAR*>(stop);
    return negative ? -value : value;
}
