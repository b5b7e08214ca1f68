#include "host/base/plain_number.h"

#include <charconv>

namespace host {
namespace {

bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

const wchar_t* SkipDigits(const wchar_t* at) {
    while (IsDigit(*at)) ++at;
    return at;
}

// Behind the digits of a number without its sign; null when there are none.
const wchar_t* EndOf(const wchar_t* begin) {
    const wchar_t* at = SkipDigits(begin);
    bool hasDigits = at != begin;
    if (*at == L'.') {
        const wchar_t* const end = SkipDigits(at + 1);
        hasDigits = hasDigits || end != at + 1;
        at = end;
    }
    if (!hasDigits) return nullptr;
    if (*at != L'e' && *at != L'E') return at;
    const wchar_t* exponent = at + 1;
    if (*exponent == L'+' || *exponent == L'-') ++exponent;
    return IsDigit(*exponent) ? SkipDigits(exponent) : at;
}

}  // namespace

bool ReadNumber(const wchar_t*& at, double& value) {
    const bool isNegative = *at == L'-';
    const wchar_t* const digits = isNegative || *at == L'+' ? at + 1 : at;
    const wchar_t* const end = EndOf(digits);
    if (end == nullptr) return false;
    std::string narrow;
    for (const wchar_t* p = digits; p != end; ++p) narrow += static_cast<char>(*p);
    double number = 0.0;
    const auto result = std::from_chars(narrow.data(), narrow.data() + narrow.size(), number);
    if (result.ec == std::errc::result_out_of_range) {
        // Too small is zero; too large is refused.
        long double wide = 0.0L;
        const auto again = std::from_chars(narrow.data(), narrow.data() + narrow.size(), wide);
        if (again.ec != std::errc() || wide > 1.0L) return false;
        number = 0.0;
    }
    value = isNegative ? -number : number;
    at = end;
    return true;
}

bool ReadWholeNumber(const std::wstring& text, double& value) {
    const wchar_t* at = text.c_str();
    double number = 0.0;
    if (!ReadNumber(at, number) || at != text.c_str() + text.size()) return false;
    value = number;
    return true;
}

}  // namespace host
