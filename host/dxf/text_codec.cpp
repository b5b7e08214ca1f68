#include "host/dxf/text_codec.h"

#include <algorithm>

namespace host::dxf {

namespace {

struct CodePageName {
    std::string_view codePage, charset;
};

// Values of $DWGCODEPAGE that hosts of all releases have written; the rest follows from the number.
constexpr CodePageName kCodePages[] = {
    {"ascii", "CP1252"},         {"big5", "CP950"},           {"johab", "JOHAB"},
    {"gb2312", "CP936"},         {"ksc5601", "CP949"},        {"mac-roman", "MACINTOSH"},
    {"macroman", "MACINTOSH"},   {"mac", "MACINTOSH"},        {"dos932", "CP932"},
    {"ansi_1361", "JOHAB"},      {"utf-8", "UTF-8"},          {"utf8", "UTF-8"},
    {"ansi_65001", "UTF-8"},     {"iso8859-1", "ISO-8859-1"}, {"iso8859-2", "ISO-8859-2"},
    {"iso8859-3", "ISO-8859-3"}, {"iso8859-4", "ISO-8859-4"}, {"iso8859-5", "ISO-8859-5"},
    {"iso8859-6", "ISO-8859-6"}, {"iso8859-7", "ISO-8859-7"}, {"iso8859-8", "ISO-8859-8"},
    {"iso8859-9", "ISO-8859-9"}};

// Pages that \M+nXXXX names by n. Source: DXF reference, "Multibyte character".
constexpr const char* kEscapePages[] = {"", "CP932", "CP950", "CP949", "JOHAB", "CP936"};

constexpr char32_t kRawByte = 0xDC00;  // + byte: a byte that no character set explains

bool IsRawByte(char32_t c) { return c >= kRawByte + 0x80 && c <= kRawByte + 0xFF; }

bool IsSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDFFF; }

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

// Length of the well-formed UTF-8 sequence at the start (Unicode, table 3-7), 0 when there is none.
std::size_t Utf8Length(std::string_view s) {
    const auto at = [&](std::size_t i) {
        return i < s.size() ? static_cast<unsigned char>(s[i]) : 0u;
    };
    const auto tail = [&](std::size_t i) { return at(i) >= 0x80 && at(i) <= 0xBF; };
    const unsigned lead = at(0);
    if (s.empty()) return 0;
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead <= 0xDF) return tail(1) ? 2 : 0;
    if (lead >= 0xE0 && lead <= 0xEF) {
        const bool second = lead == 0xE0   ? at(1) >= 0xA0 && at(1) <= 0xBF
                            : lead == 0xED ? at(1) >= 0x80 && at(1) <= 0x9F
                                           : tail(1);
        return second && tail(2) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        const bool second = lead == 0xF0   ? at(1) >= 0x90 && at(1) <= 0xBF
                            : lead == 0xF4 ? at(1) >= 0x80 && at(1) <= 0x8F
                                           : tail(1);
        return second && tail(2) && tail(3) ? 4 : 0;
    }
    return 0;
}

std::u32string DecodeUtf8(std::string_view bytes) {
    std::u32string out;
    out.reserve(bytes.size());
    while (!bytes.empty()) {
        const std::size_t length = Utf8Length(bytes);
        char32_t c = static_cast<unsigned char>(bytes[0]);
        if (length == 0) c += kRawByte;
        if (length == 2) c &= 0x1F;
        if (length == 3) c &= 0x0F;
        if (length == 4) c &= 0x07;
        for (std::size_t i = 1; i < length; ++i)
            c = c << 6 | (static_cast<unsigned char>(bytes[i]) & 0x3Fu);
        out += c;
        bytes.remove_prefix((std::max)(length, std::size_t{1}));
    }
    return out;
}

void AppendUtf8(char32_t c, std::string& out) {
    const auto put = [&](char32_t byte) { out += static_cast<char>(byte); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0 | c >> 6);
        put(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        put(0xE0 | c >> 12);
        put(0x80 | (c >> 6 & 0x3F));
        put(0x80 | (c & 0x3F));
    } else {
        put(0xF0 | c >> 18);
        put(0x80 | (c >> 12 & 0x3F));
        put(0x80 | (c >> 6 & 0x3F));
        put(0x80 | (c & 0x3F));
    }
}

// A wide string holds UTF-16 where wchar_t is short, and pairs of \U+ escapes anywhere.
std::u32string ScalarsFromWide(std::wstring_view text) {
    std::u32string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t c = static_cast<char32_t>(text[i]);
        if (sizeof(wchar_t) == 2) c &= 0xFFFF;
        const bool high = c >= 0xD800 && c <= 0xDBFF;
        if (high && i + 1 < text.size()) {
            const char32_t low = static_cast<char32_t>(text[i + 1]) & 0xFFFF;
            if (low >= 0xDC00 && low <= 0xDFFF) {
                c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                ++i;
            }
        }
        out += c;
    }
    return out;
}

std::wstring WideFromScalars(const std::u32string& text) {
    std::wstring out;
    out.reserve(text.size());
    for (char32_t c : text) {
        if (sizeof(wchar_t) == 2 && c > 0xFFFF) {
            out += static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10));
            out += static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
        } else {
            out += static_cast<wchar_t>(c);
        }
    }
    return out;
}

int HexDigit(char32_t c) {
    if (c >= U'0' && c <= U'9') return static_cast<int>(c - U'0');
    if (c >= U'A' && c <= U'F') return static_cast<int>(c - U'A') + 10;
    if (c >= U'a' && c <= U'f') return static_cast<int>(c - U'a') + 10;
    return -1;
}

// Four hexadecimal digits at position i, or -1.
int FourDigits(const std::u32string& text, std::size_t i) {
    if (i + 4 > text.size()) return -1;
    int value = 0;
    for (std::size_t k = i; k < i + 4; ++k) {
        const int digit = HexDigit(text[k]);
        if (digit < 0) return -1;
        value = value * 16 + digit;
    }
    return value;
}

bool StartsEscape(const std::u32string& text, std::size_t i, char32_t letter) {
    return i + 2 < text.size() && text[i] == U'\\' && text[i + 1] == letter && text[i + 2] == U'+';
}

// \U+XXXX at i; two that form a surrogate pair are one character.
bool ReplaceUnicodeEscape(const std::u32string& text, std::size_t& i, std::u32string& out) {
    constexpr std::size_t kLength = 7;
    if (!StartsEscape(text, i, U'U')) return false;
    const int first = FourDigits(text, i + 3);
    if (first < 0) return false;
    i += kLength;
    out += static_cast<char32_t>(first);
    if (first < 0xD800 || first > 0xDBFF || !StartsEscape(text, i, U'U')) return true;
    const int second = FourDigits(text, i + 3);
    if (second < 0xDC00 || second > 0xDFFF) return true;
    i += kLength;
    out.back() = 0x10000 + (static_cast<char32_t>(first - 0xD800) << 10) +
                 static_cast<char32_t>(second - 0xDC00);
    return true;
}

bool ReplaceCaret(const std::u32string& text, std::size_t& i, std::u32string& out) {
    if (text[i] != U'^' || i + 1 >= text.size()) return false;
    const char32_t c = text[i + 1];
    if (c == U' ') {
        out += U'^';
    } else if (c > U'@' && c <= U'_') {
        out += c - U'@';
    } else {
        return false;
    }
    i += 2;
    return true;
}

void AppendUnicodeEscape(char32_t c, std::string& out) {
    if (c > 0xFFFF) {
        AppendUnicodeEscape(0xD800 + ((c - 0x10000) >> 10), out);
        AppendUnicodeEscape(0xDC00 + ((c - 0x10000) & 0x3FF), out);
        return;
    }
    out += "\\U+";
    for (int shift = 12; shift >= 0; shift -= 4) out += "0123456789ABCDEF"[c >> shift & 15];
}

std::string PlainBytes(std::wstring_view text) {
    std::string out(text.size(), '\0');
    std::transform(text.begin(), text.end(), out.begin(),
                   [](wchar_t c) { return static_cast<char>(c); });
    return out;
}

}  // namespace

std::string CharsetOfCodePage(std::string_view codePage) {
    const std::string name = Lower(codePage);
    for (const CodePageName& entry : kCodePages)
        if (entry.codePage == name) return std::string(entry.charset);
    std::size_t digits = name.size();
    while (digits > 0 && name[digits - 1] >= '0' && name[digits - 1] <= '9') --digits;
    const std::string prefix = name.substr(0, digits), number = name.substr(digits);
    const bool known = prefix == "ansi_" || prefix == "dos" || prefix == "cp" || prefix == "dos_";
    return known && number.size() >= 3 && number.size() <= 4 ? "CP" + number : std::string();
}

void Utf8Statistics::Add(std::string_view bytes) {
    std::size_t i = 0;
    while (i < bytes.size()) {
        if (static_cast<unsigned char>(bytes[i]) < 0x80) {
            ++i;
            continue;
        }
        const std::size_t length = Utf8Length(bytes.substr(i));
        if (length == 0) ++invalid;
        if (length == 2) ++twoByte;
        if (length > 2) ++longer;
        i += (std::max)(length, std::size_t{1});
    }
}

std::wstring WideFromUtf8(std::string_view bytes) { return WideFromScalars(DecodeUtf8(bytes)); }

std::string Utf8FromWide(std::wstring_view text) {
    std::string out;
    out.reserve(text.size());
    for (char32_t c : ScalarsFromWide(text)) {
        if (IsRawByte(c))
            out += static_cast<char>(c - kRawByte);
        else
            AppendUtf8(c > 0x10FFFF || IsSurrogate(c) ? 0xFFFD : c, out);
    }
    return out;
}

TextCodec::TextCodec(Mode mode, const std::string& charset)
    : mode_(mode), page_(charset.empty() ? "CP1252" : charset) {}

std::u32string TextCodec::DecodePage(std::string_view bytes) const {
    std::u32string out;
    if (page_.Decode(bytes, out)) return out;
    out.clear();
    while (!bytes.empty()) {
        char32_t c = 0;
        const std::size_t length = page_.DecodeOne(bytes, c);
        if (length == 0) c = static_cast<unsigned char>(bytes[0]);
        out += length == 0 && c >= 0x80 ? kRawByte + c : c;
        bytes.remove_prefix((std::max)(length, std::size_t{1}));
    }
    return out;
}

std::u32string TextCodec::DecodeCharset(std::string_view bytes) const {
    if (mode_ == Mode::kUtf8) return DecodeUtf8(bytes);
    if (mode_ == Mode::kUtf8OrCodePage) {
        Utf8Statistics found;
        found.Add(bytes);
        if (found.invalid == 0) return DecodeUtf8(bytes);
    }
    return DecodePage(bytes);
}

bool TextCodec::ReplaceMultibyteEscape(const std::u32string& text, std::size_t& i,
                                       std::u32string& out) const {
    constexpr std::size_t kLength = 8;
    if (!StartsEscape(text, i, U'M') || i + kLength > text.size()) return false;
    const int page = HexDigit(text[i + 3]), value = FourDigits(text, i + 4);
    if (page < 1 || page > 5 || value < 0) return false;
    const char bytes[] = {static_cast<char>(value >> 8), static_cast<char>(value & 0xFF)};
    const std::size_t skip = value < 0x100 ? 1 : 0;
    std::u32string decoded;
    if (!EscapePage(page).Decode(std::string_view(bytes + skip, 2 - skip), decoded)) return false;
    out += decoded;
    i += kLength;
    return true;
}

CharsetConverter& TextCodec::EscapePage(int number) const {
    std::unique_ptr<CharsetConverter>& page = escapePages_[static_cast<std::size_t>(number)];
    if (!page) page = std::make_unique<CharsetConverter>(kEscapePages[number]);
    return *page;
}

std::wstring TextCodec::Decode(std::string_view bytes) const {
    const auto isPlain = [](char c) {
        return static_cast<signed char>(c) >= 0 && c != '\\' && c != '^';
    };
    if (std::all_of(bytes.begin(), bytes.end(), isPlain))
        return std::wstring(bytes.begin(), bytes.end());
    const std::u32string text = DecodeCharset(bytes);
    std::u32string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();)
        if (!ReplaceUnicodeEscape(text, i, out) && !ReplaceMultibyteEscape(text, i, out) &&
            !ReplaceCaret(text, i, out))
            out += text[i++];
    return WideFromScalars(out);
}

void TextCodec::EncodeOne(char32_t c, std::string& out) const {
    if (c == U'^') {
        out += "^ ";
    } else if (c > 0 && c < 0x20) {
        out += '^';
        out += static_cast<char>(c + '@');
    } else if (c < 0x80) {
        if (c != 0) out += static_cast<char>(c);
    } else if (IsRawByte(c)) {
        out += static_cast<char>(c - kRawByte);
    } else if (IsSurrogate(c)) {
        AppendUnicodeEscape(c, out);
    } else if (c > 0x10FFFF) {
        AppendUnicodeEscape(0xFFFD, out);
    } else if (mode_ != Mode::kCodePage) {
        AppendUtf8(c, out);
    } else {
        // Some Asian pages put a currency sign in the backslash's place; read again, it would be
        // one.
        std::string bytes;
        const bool known = page_.EncodeOne(c, bytes);
        if (known && static_cast<unsigned char>(bytes[0]) >= 0x80)
            out += bytes;
        else
            AppendUnicodeEscape(c, out);
    }
}

std::string TextCodec::Encode(std::wstring_view text) const {
    const auto isPlain = [](wchar_t c) { return c >= L' ' && c < 0x80 && c != L'\\' && c != L'^'; };
    if (std::all_of(text.begin(), text.end(), isPlain)) return PlainBytes(text);
    std::string out;
    out.reserve(text.size());
    const std::u32string scalars = ScalarsFromWide(text);
    for (std::size_t i = 0; i < scalars.size(); ++i) {
        // Text that happens to look like an escape must not be taken for one.
        const bool unicode = StartsEscape(scalars, i, U'U') && FourDigits(scalars, i + 3) >= 0;
        if (unicode || (StartsEscape(scalars, i, U'M') && FourDigits(scalars, i + 4) >= 0))
            AppendUnicodeEscape(scalars[i], out);
        else
            EncodeOne(scalars[i], out);
    }
    return out;
}

}  // namespace host::dxf
