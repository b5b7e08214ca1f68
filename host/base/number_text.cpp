#include "host/base/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace host {
namespace {

// Room for the longest fixed number: 309 digits before the point, the greatest precision behind it.
constexpr int kMaxPrecision = 1000;
constexpr std::size_t kRoom = 400 + kMaxPrecision;

std::string Sign(const FormatPart& part, bool negative) {
    return negative ? "-" : part.plus ? "+" : part.blank ? " " : "";
}

std::string Digits(double magnitude, std::chars_format format, int precision) {
    char buffer[kRoom];
    return {buffer, std::to_chars(buffer, buffer + kRoom, magnitude, format, precision).ptr};
}

// %#e, %#f: a point even without digits behind it.
std::string WithPoint(std::string text) {
    if (text.find('.') == std::string::npos)
        text.insert((std::min)(text.find('e'), text.size()), ".");
    return text;
}

// %#g keeps the zeros at the end that %g cuts off.
std::string GeneralWithZeros(double magnitude, int precision) {
    const int digits = (std::max)(precision, 1);
    const std::string text = Digits(magnitude, std::chars_format::scientific, digits - 1);
    const int exponent = std::stoi(text.substr(text.find('e') + 1));
    if (exponent < -4 || exponent >= digits) return WithPoint(text);
    return WithPoint(Digits(magnitude, std::chars_format::fixed, digits - 1 - exponent));
}

std::string HexDigits(double magnitude, int precision) {
    char buffer[kRoom];
    const auto end =
        precision < 0
            ? std::to_chars(buffer, buffer + kRoom, magnitude, std::chars_format::hex)
            : std::to_chars(buffer, buffer + kRoom, magnitude, std::chars_format::hex, precision);
    return "0x" + std::string(buffer, end.ptr);
}

std::string Magnitude(const FormatPart& part, double magnitude) {
    const int precision = (std::min)(part.precision < 0 ? 6 : part.precision, kMaxPrecision);
    std::string text;
    switch (part.letter) {
        case 'e':
        case 'E':
            text = Digits(magnitude, std::chars_format::scientific, precision);
            break;
        case 'f':
        case 'F':
            text = Digits(magnitude, std::chars_format::fixed, precision);
            break;
        case 'a':
        case 'A':
            return HexDigits(magnitude, (std::min)(part.precision, kMaxPrecision));
        default:
            if (part.alternate) return GeneralWithZeros(magnitude, precision);
            text = Digits(magnitude, std::chars_format::general, precision);
    }
    return part.alternate ? WithPoint(text) : text;
}

}  // namespace

std::string IntegerText(const FormatPart& part, bool negative, std::uint64_t magnitude) {
    const bool hex = part.letter == 'x' || part.letter == 'X';
    char buffer[24];
    std::string digits(buffer, std::to_chars(buffer, buffer + sizeof(buffer), magnitude,
                                             hex                  ? 16
                                             : part.letter == 'o' ? 8
                                                                  : 10)
                                   .ptr);
    if (part.precision == 0 && magnitude == 0) digits.clear();
    if (part.precision > static_cast<int>(digits.size()))
        digits.insert(0, part.precision - digits.size(), '0');
    if (part.alternate && part.letter == 'o' && (digits.empty() || digits[0] != '0'))
        digits.insert(0, "0");
    if (part.alternate && hex && magnitude != 0) digits.insert(0, "0x");
    const bool isSigned = part.letter == 'd' || part.letter == 'i';
    std::string text = (isSigned ? Sign(part, negative) : "") + digits;
    if (part.letter == 'X')
        std::transform(text.begin(), text.end(), text.begin(),
                       [](char ch) { return ch >= 'a' ? static_cast<char>(ch - 32) : ch; });
    return text;
}

std::string FloatText(const FormatPart& part, double value) {
    const bool negative = std::signbit(value);
    std::string text;
    if (std::isnan(value))
        text = negative ? "nan(ind)" : "nan";
    else
        text = std::isinf(value) ? "inf" : Magnitude(part, std::fabs(value));
    text = Sign(part, negative) + text;
    if (part.letter >= 'A' && part.letter <= 'Z')
        std::transform(text.begin(), text.end(), text.begin(),
                       [](char ch) { return ch >= 'a' && ch <= 'z' ? char(ch - 32) : ch; });
    return text;
}

}  // namespace host
