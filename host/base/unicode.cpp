#include <cwchar>

#include "host/base/format.h"

namespace host {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendWide(std::wstring& out, char32_t ch) {
    if (sizeof(wchar_t) == 2 && ch > 0xFFFF) {
        out += static_cast<wchar_t>(0xD800 + ((ch - 0x10000) >> 10));
        out += static_cast<wchar_t>(0xDC00 + ((ch - 0x10000) & 0x3FF));
    } else {
        out += static_cast<wchar_t>(ch);
    }
}

void AppendUtf8(std::string& out, char32_t ch) {
    const int more = ch < 0x80 ? 0 : ch < 0x800 ? 1 : ch < 0x10000 ? 2 : 3;
    static const unsigned char kLead[] = {0x00, 0xC0, 0xE0, 0xF0};
    out += static_cast<char>(kLead[more] | (ch >> (6 * more)));
    for (int i = more - 1; i >= 0; --i) out += static_cast<char>(0x80 | ((ch >> (6 * i)) & 0x3F));
}

// The character at the start of text; its length is 0 when the bytes are no shortest-form UTF-8.
char32_t Decode(std::string_view text, std::size_t& length) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    length = lead < 0x80                   ? 1
             : lead >= 0xC2 && lead < 0xE0 ? 2
             : lead >= 0xE0 && lead < 0xF0 ? 3
             : lead >= 0xF0 && lead < 0xF5 ? 4
                                           : 0;
    if (length <= 1) return lead;
    char32_t ch = lead & (0xFF >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if (i >= text.size() || (byte(i) & 0xC0) != 0x80) {
            length = 0;
            return 0;
        }
        ch = (ch << 6) | (byte(i) & 0x3F);
    }
    const char32_t least = length == 2 ? 0x80 : length == 3 ? 0x800 : 0x10000;
    if (ch < least || ch > 0x10FFFF || (ch >= 0xD800 && ch < 0xE000)) length = 0;
    return ch;
}

// The character at position i, which moves behind it; half a surrogate pair is no character.
char32_t Take(std::wstring_view text, std::size_t& i) {
    const auto isHigh = [](char32_t ch) { return ch >= 0xD800 && ch < 0xDC00; };
    const auto isLow = [](char32_t ch) { return ch >= 0xDC00 && ch < 0xE000; };
    const auto ch = static_cast<char32_t>(text[i++]);
    if constexpr (sizeof(wchar_t) == 2) {
        const char32_t next = i < text.size() ? static_cast<char32_t>(text[i]) : 0;
        if (isHigh(ch) && isLow(next)) {
            ++i;
            return 0x10000 + ((ch - 0xD800) << 10) + (next - 0xDC00);
        }
    }
    return isHigh(ch) || isLow(ch) || ch > 0x10FFFF ? kReplacement : ch;
}

}  // namespace

std::wstring Widen(std::string_view utf8) {
    std::wstring out;
    out.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        std::size_t length = 0;
        const char32_t ch = Decode(utf8.substr(i), length);
        AppendWide(out, length > 0 ? ch : kReplacement);
        i += length > 0 ? length : 1;
    }
    return out;
}

std::string Narrow(std::wstring_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) AppendUtf8(out, Take(text, i));
    return out;
}

}  // namespace host
