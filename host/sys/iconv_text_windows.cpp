// The same by the code pages of Windows, which have the numbers that iconv's names end with.
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <cstdlib>

#include "host/sys/iconv_text.h"

namespace host::dxf {

namespace {

// Number of the Windows code page; 0, which is none of them, for a name that says none.
UINT PageOf(const std::string& charset) {
    constexpr UINT kJohab = 1361, kMacintosh = 10000, kLatin1 = 28591;
    if (charset == "UTF-8") return CP_UTF8;
    if (charset == "JOHAB") return kJohab;
    if (charset == "MACINTOSH") return kMacintosh;
    if (charset.rfind("ISO-8859-", 0) == 0)
        return kLatin1 - 1 + static_cast<UINT>(std::atoi(charset.c_str() + 9));
    if (charset.rfind("CP", 0) == 0) return static_cast<UINT>(std::atoi(charset.c_str() + 2));
    return 0;
}

bool IsHighSurrogate(wchar_t c) { return c >= 0xD800 && c < 0xDC00; }

}  // namespace

struct CharsetConverter::Handles {
    explicit Handles(const std::string& charset) : page(PageOf(charset)) {
        if (page != 0 && !::IsValidCodePage(page)) page = 0;
    }
    UINT page;
};

CharsetConverter::CharsetConverter(std::string charset) : charset_(std::move(charset)) {}

CharsetConverter::~CharsetConverter() = default;

CharsetConverter::Handles& CharsetConverter::Open() {
    if (!handles_) handles_ = std::make_unique<Handles>(charset_);
    return *handles_;
}

bool CharsetConverter::IsKnown() { return Open().page != 0; }

bool CharsetConverter::Decode(std::string_view bytes, std::u32string& out) {
    if (!IsKnown()) return false;
    out.clear();
    if (bytes.empty()) return true;
    const int size = static_cast<int>(bytes.size());
    // No page makes more code units than it takes bytes.
    std::wstring wide(bytes.size(), L'\0');
    const int count = ::MultiByteToWideChar(Open().page, MB_ERR_INVALID_CHARS, bytes.data(), size,
                                            wide.data(), size);
    if (count <= 0) return false;
    for (int i = 0; i < count; ++i) {
        char32_t c = wide[static_cast<std::size_t>(i)];
        if (IsHighSurrogate(wide[static_cast<std::size_t>(i)]) && i + 1 < count)
            c = 0x10000 + ((c - 0xD800) << 10) + (wide[static_cast<std::size_t>(++i)] - 0xDC00);
        out += c;
    }
    return true;
}

bool CharsetConverter::EncodeOne(char32_t value, std::string& out) {
    if (!IsKnown()) return false;
    wchar_t wide[2] = {static_cast<wchar_t>(value), 0};
    int units = 1;
    if (value > 0xFFFF) {
        wide[0] = static_cast<wchar_t>(0xD800 + ((value - 0x10000) >> 10));
        wide[1] = static_cast<wchar_t>(0xDC00 + ((value - 0x10000) & 0x3FF));
        units = 2;
    }
    char bytes[kLongestCharacter];
    // UTF-8 has every character, and refuses to be asked whether one was missing.
    const bool isTotal = Open().page == CP_UTF8;
    BOOL missing = FALSE;
    const int count = ::WideCharToMultiByte(
        Open().page, isTotal ? WC_ERR_INVALID_CHARS : WC_NO_BEST_FIT_CHARS, wide, units, bytes,
        static_cast<int>(sizeof bytes), nullptr, isTotal ? nullptr : &missing);
    if (count <= 0 || missing) return false;
    out.append(bytes, static_cast<std::size_t>(count));
    return true;
}

}  // namespace host::dxf
