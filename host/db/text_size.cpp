#include "host/db/text_size.h"

#include <cwchar>

namespace {

bool IsWide(wchar_t ch) {
    return (ch >= 0x1100 && ch <= 0x115F) || (ch >= 0x2E80 && ch <= 0xA4CF) ||
           (ch >= 0xAC00 && ch <= 0xD7A3) || (ch >= 0xF900 && ch <= 0xFAFF) ||
           (ch >= 0xFE30 && ch <= 0xFE4F) || (ch >= 0xFF00 && ch <= 0xFF60);
}

double Advance(wchar_t ch) { return IsWide(ch) ? host::kWide : host::kNarrow; }

// Skips the argument of a formatting code that ends with a semicolon.
size_t SkipArgument(const std::wstring& text, size_t at) {
    const size_t end = text.find(L';', at);
    return end == std::wstring::npos ? text.size() : end + 1;
}

// Takes the formatting out of a paragraph text; \n marks the line ends.
std::wstring Unformatted(const std::wstring& text) {
    std::wstring plain;
    for (size_t i = 0; i < text.size();) {
        const wchar_t ch = text[i++];
        if (ch == L'{' || ch == L'}') continue;
        if (ch != L'\\' || i == text.size()) {
            plain += ch;
            continue;
        }
        const wchar_t code = text[i++];
        if (code == L'P' || code == L'X')
            plain += L'\n';
        else if (code == L'~')
            plain += L' ';
        else if (code == L'\\' || code == L'{' || code == L'}')
            plain += code;
        else if (code == L'S') {  // 1/2, 1^2 or 1#2
            const size_t end = SkipArgument(text, i);
            for (; i < end; ++i)
                if (text[i] != L';')
                    plain += std::wcschr(L"^#", text[i]) != nullptr ? L'/' : text[i];
        } else if (std::wcschr(L"ACcFfHQTWp", code) != nullptr) {
            i = SkipArgument(text, i);
        } else if (std::wcschr(L"LlOoKkN", code) == nullptr) {
            plain += L'\\';
            plain += code;
        }
    }
    return plain;
}

// Breaks one line between words, or between ideographs.
void Wrap(const std::wstring& line, double width, std::vector<std::wstring>& lines) {
    std::wstring rest = line;
    while (width > 0.0 && host::TextWidth(rest) > width) {
        double used = 0.0;
        size_t cut = 0, at = 0;
        for (; at < rest.size() && (at == 0 || used + Advance(rest[at]) <= width); ++at) {
            used += Advance(rest[at]);
            if (rest[at] == L' ' || IsWide(rest[at])) cut = at + 1;
        }
        if (cut == 0) break;  // a word wider than the column stays whole
        if (cut >= rest.size()) break;
        lines.push_back(rest.substr(0, cut));
        rest.erase(0, cut);
    }
    lines.push_back(rest);
}

}  // namespace

namespace host {

double TextWidth(const std::wstring& text) {
    double width = 0.0;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'%' && text.compare(i, 2, L"%%") == 0 && i + 2 < text.size()) {
            const wchar_t code = text[i + 2];
            if (std::wcschr(L"uUoOkK", code) == nullptr) width += kNarrow;
            i += 2;
        } else {
            width += Advance(text[i]);
        }
    }
    return width;
}

std::vector<std::wstring> PlainLines(const std::wstring& contents, double width) {
    const std::wstring plain = Unformatted(contents);
    std::vector<std::wstring> lines;
    size_t from = 0;
    for (;;) {
        const size_t end = plain.find(L'\n', from);
        Wrap(plain.substr(from, end == std::wstring::npos ? end : end - from), width, lines);
        if (end == std::wstring::npos) return lines;
        from = end + 1;
    }
}

}  // namespace host
