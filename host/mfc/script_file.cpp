// Resource scripts as files.
#include <filesystem>
#include <fstream>
#include <iterator>

#include "host/base/format.h"
#include "host/mfc/resource_script.h"

namespace host {
namespace {

std::optional<std::string> ReadBytes(const std::wstring& path) {
    std::ifstream file(std::filesystem::u8path(Narrow(path)), std::ios::binary);
    if (!file) return {};
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

std::wstring DecodeUtf16(const std::string& bytes) {
    std::wstring text;
    char32_t high = 0;
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
        const char32_t unit =
            static_cast<unsigned char>(bytes[i]) | (static_cast<unsigned char>(bytes[i + 1]) << 8);
        const bool isLow = unit >= 0xDC00 && unit < 0xE000;
        if (sizeof(wchar_t) == 4 && unit >= 0xD800 && unit < 0xDC00) {
            high = unit;
        } else if (high != 0 && isLow) {
            text += static_cast<wchar_t>(0x10000 + ((high - 0xD800) << 10) + (unit - 0xDC00));
            high = 0;
        } else {
            text += static_cast<wchar_t>(unit);
        }
    }
    return text;
}

bool IsAscii(const std::string& bytes) {
    for (const char byte : bytes)
        if (static_cast<unsigned char>(byte) >= 0x80) return false;
    return true;
}

// The resource compiler takes bytes for the system's code page unless told otherwise.
ScriptFault Decode(const std::string& bytes, const std::wstring& name, std::wstring& text) {
    if (bytes.compare(0, 2, "\xFF\xFE") == 0) {
        text = DecodeUtf16(bytes);
        return {};
    }
    const bool hasMark = bytes.compare(0, 3, "\xEF\xBB\xBF") == 0;
    const bool isDeclared = bytes.find("code_page(65001)") != std::string::npos;
    if (!IsAscii(hasMark ? bytes.substr(3) : bytes) && !isDeclared)
        return name + L"(1): texts beyond ASCII need #pragma code_page(65001) and UTF-8";
    text = Widen(hasMark ? std::string_view(bytes).substr(3) : std::string_view(bytes));
    return {};
}

}  // namespace

ScriptFault ReadResourceScript(const std::wstring& path, ResourceScript& out) {
    const std::size_t slash = path.find_last_of(L"/\\");
    const std::wstring folder = slash == std::wstring::npos ? L"" : path.substr(0, slash + 1);
    const std::wstring name = path.substr(folder.size());
    const std::optional<std::string> bytes = ReadBytes(path);
    if (!bytes) return path + L": the resource script cannot be read";
    std::wstring text;
    if (ScriptFault fault = Decode(*bytes, name, text); !fault.empty()) return fault;
    const IncludeReader includes =
        [&](const std::wstring& included) -> std::optional<std::wstring> {
        const std::optional<std::string> more = ReadBytes(folder + included);
        if (!more) return {};
        return more->compare(0, 2, "\xFF\xFE") == 0 ? DecodeUtf16(*more) : Widen(*more);
    };
    return ParseResourceScript(text, name, includes, out);
}

}  // namespace host
