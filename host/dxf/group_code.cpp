#include "host/dxf/group_code.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace host::dxf {

namespace {

struct KindRange {
    int first, last;
    ValueKind kind;
};

// Source: DXF reference, "Group code value types"; 480 and 481 as newer files use them.
constexpr KindRange kKindRanges[] = {
    {-9999, 4, ValueKind::kText},     {5, 5, ValueKind::kHandle},
    {6, 9, ValueKind::kText},         {10, 59, ValueKind::kReal},
    {60, 79, ValueKind::kInt16},      {90, 99, ValueKind::kInt32},
    {100, 104, ValueKind::kText},     {105, 105, ValueKind::kHandle},
    {106, 109, ValueKind::kText},     {110, 149, ValueKind::kReal},
    {160, 169, ValueKind::kInt64},    {170, 179, ValueKind::kInt16},
    {210, 239, ValueKind::kReal},     {270, 289, ValueKind::kInt16},
    {290, 299, ValueKind::kBool},     {300, 309, ValueKind::kText},
    {310, 319, ValueKind::kChunk},    {320, 369, ValueKind::kHandle},
    {370, 389, ValueKind::kInt16},    {390, 399, ValueKind::kHandle},
    {400, 409, ValueKind::kInt16},    {410, 419, ValueKind::kText},
    {420, 429, ValueKind::kInt32},    {430, 439, ValueKind::kText},
    {440, 459, ValueKind::kInt32},    {460, 469, ValueKind::kReal},
    {470, 479, ValueKind::kText},     {480, 481, ValueKind::kHandle},
    {999, 1003, ValueKind::kText},    {1004, 1004, ValueKind::kChunk},
    {1005, 1005, ValueKind::kHandle}, {1006, 1009, ValueKind::kText},
    {1010, 1059, ValueKind::kReal},   {1060, 1070, ValueKind::kInt16},
    {1071, 1071, ValueKind::kInt32}};

constexpr int kTableSize = 1072;

constexpr std::array<ValueKind, kTableSize> MakeKindTable() {
    std::array<ValueKind, kTableSize> table{};
    for (ValueKind& kind : table) kind = ValueKind::kUnknown;
    for (const KindRange& range : kKindRanges)
        for (int code = range.first < 0 ? 0 : range.first; code <= range.last; ++code)
            table[static_cast<std::size_t>(code)] = range.kind;
    return table;
}

constexpr std::array<ValueKind, kTableSize> kKindTable = MakeKindTable();

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// from_chars takes no plus sign.
std::string_view WithoutPlus(std::string_view text) {
    if (text.size() > 1 && text[0] == '+') text.remove_prefix(1);
    return text;
}

int HexDigit(char c) {
    if (IsDigit(c)) return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

// Digits with at most one point; advances p behind them. False without any digit.
bool SkipMantissa(const char*& p, const char* end) {
    const char* digits = p;
    while (p != end && IsDigit(*p)) ++p;
    std::ptrdiff_t count = p - digits;
    if (p != end && *p == '.') {
        ++p;
        digits = p;
        while (p != end && IsDigit(*p)) ++p;
        count += p - digits;
    }
    return count > 0;
}

constexpr char kHexDigits[] = "0123456789ABCDEF";

}  // namespace

ValueKind KindOf(int code) {
    if (code < 0) return ValueKind::kText;
    return code < kTableSize ? kKindTable[static_cast<std::size_t>(code)] : ValueKind::kUnknown;
}

std::string_view Trim(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

bool IsRealText(std::string_view text) {
    text = Trim(text);
    const char* p = text.data();
    const char* end = p + text.size();
    if (p != end && (*p == '-' || *p == '+')) ++p;
    if (!SkipMantissa(p, end)) return false;
    if (p == end) return text.size() < 300 || std::isfinite(RealFromText(text));
    if (*p != 'e' && *p != 'E') return false;
    ++p;
    if (p != end && (*p == '-' || *p == '+')) ++p;
    const char* digits = p;
    while (p != end && IsDigit(*p)) ++p;
    return p == end && p != digits && std::isfinite(RealFromText(text));
}

bool IsIntText(std::string_view text) {
    text = Trim(text);
    const char* p = text.data();
    const char* end = p + text.size();
    if (p != end && (*p == '-' || *p == '+')) ++p;
    const char* digits = p;
    while (p != end && IsDigit(*p)) ++p;
    return p == end ? p != digits : IsRealText(text);
}

double RealFromText(std::string_view text) {
    text = WithoutPlus(Trim(text));
    double value = 0.0;
    const auto [p, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc()) return value;
    if (error != std::errc::result_out_of_range) return 0.0;
    // Too small is zero; too large is infinite, which the syntax check refuses.
    const std::size_t e = text.find_first_of("eE");
    const bool tiny = e != std::string_view::npos
                          ? text.substr(e + 1, 1) == "-"
                          : text.find_first_of("123456789") > text.find('.');
    return tiny ? 0.0 : std::numeric_limits<double>::infinity();
}

std::int64_t IntFromText(std::string_view text) {
    text = WithoutPlus(Trim(text));
    // Each number that is handed out has an opposite: colours are turned about.
    constexpr std::int64_t kHighest = std::numeric_limits<std::int64_t>::max();
    std::int64_t value = 0;
    const char* end = text.data() + text.size();
    const auto [p, error] = std::from_chars(text.data(), end, value);
    if (error == std::errc() && p == end) return (std::max)(value, -kHighest);
    constexpr double kLimit = 9.2e18;  // below 2^63, so that the cast is defined
    const double real = RealFromText(text);
    if (real >= kLimit) return kHighest;
    if (real <= -kLimit) return -kHighest;
    return static_cast<std::int64_t>(real);
}

bool HandleFromText(std::string_view text, std::uint64_t& value) {
    text = Trim(text);
    if (text.empty() || text.size() > 16) return false;
    std::uint64_t result = 0;
    for (char c : text) {
        const int digit = HexDigit(c);
        if (digit < 0) return false;
        result = result * 16 + static_cast<std::uint64_t>(digit);
    }
    value = result;
    return true;
}

std::string TextFromReal(double value) {
    std::string text;
    AppendTextOfReal(value, text);
    return text;
}

void AppendTextOfReal(double value, std::string& out) {
    char buffer[40];
    const std::string_view text(
        buffer, static_cast<std::size_t>(std::to_chars(buffer, buffer + sizeof buffer, value).ptr -
                                         buffer));
    const std::size_t stop = text.find_first_of(".e");
    out += text.substr(0, stop);
    if (stop == std::string_view::npos || text[stop] == 'e') out += ".0";
    if (stop != std::string_view::npos) out += text.substr(stop);
}

std::string TextFromHandle(std::uint64_t value) {
    char buffer[16];
    char* p = buffer + sizeof buffer;
    do {
        *--p = kHexDigits[value & 15];
        value >>= 4;
    } while (value != 0);
    return std::string(p, buffer + sizeof buffer);
}

std::string TextFromChunk(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() * 2);
    for (char c : bytes) {
        const unsigned byte = static_cast<unsigned char>(c);
        text += kHexDigits[byte >> 4];
        text += kHexDigits[byte & 15];
    }
    return text;
}

std::string ChunkFromText(std::string_view text) {
    text = Trim(text);
    std::string bytes;
    bytes.reserve(text.size() / 2);
    for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
        const int high = HexDigit(text[i]), low = HexDigit(text[i + 1]);
        if (high < 0 || low < 0) break;
        bytes += static_cast<char>(high * 16 + low);
    }
    return bytes;
}

}  // namespace host::dxf
