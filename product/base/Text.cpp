#include "product/base/Text.h"

#include <cmath>
#include <cstdio>
#include <iterator>
#include <utility>
#include <cstdlib>

#include "host/dxf/text_codec.h"

namespace product {
namespace {

void AppendUtf8(char32_t c, std::string& out) {
    if (c < 0x80) {
        out += static_cast<char>(c);
        return;
    }
    const int more = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
    static const unsigned char kLeads[] = {0, 0xC0, 0xE0, 0xF0};
    out += static_cast<char>(kLeads[more] | (c >> (6 * more)));
    for (int shift = 6 * (more - 1); shift >= 0; shift -= 6)
        out += static_cast<char>(0x80 | ((c >> shift) & 0x3F));
}

bool IsHighSurrogate(char32_t c) { return c >= 0xD800 && c < 0xDC00; }
bool IsLowSurrogate(char32_t c) { return c >= 0xDC00 && c < 0xE000; }

// Appends what a code such as %%c shows and moves past it.
void AppendCode(const std::string& text, size_t& at, std::string& out) {
    const char code = at < text.size() ? static_cast<char>(text[at] | 0x20) : ' ';
    if (code == 'd') out += "\u00B0";
    if (code == 'c') out += "\u2300";
    if (code == 'p') out += "\u00B1";
    if (at < text.size() && text[at] == '%') out += '%';
    size_t digits = 0;
    while (digits < 3 && at + digits < text.size() && text[at + digits] >= '0' &&
           text[at + digits] <= '9')
        ++digits;
    if (digits == 3) {
        const int number = std::atoi(text.substr(at, 3).c_str());
        if (number >= 32) AppendUtf8(static_cast<char32_t>(number), out);
    }
    at += digits == 3 ? 3 : 1;
}

}  // namespace

std::string ToUtf8(const ACHAR* text) {
    std::string out;
    for (; text != nullptr && *text != 0; ++text) {
        char32_t c = static_cast<char32_t>(*text);
        if (IsHighSurrogate(c) && IsLowSurrogate(static_cast<char32_t>(text[1])))
            c = 0x10000 + ((c - 0xD800) << 10) + (static_cast<char32_t>(*++text) - 0xDC00);
        const bool none = IsHighSurrogate(c) || IsLowSurrogate(c) || c > 0x10FFFF;
        AppendUtf8(none ? 0xFFFD : c, out);
    }
    return out;
}

CString FromUtf8(const std::string& text) { return host::dxf::WideFromUtf8(text).c_str(); }

std::string PlainText(const std::string& text) {
    std::string out;
    for (size_t i = 0; i < text.size();) {
        if (text.compare(i, 2, "%%") == 0) {
            i += 2;
            AppendCode(text, i, out);
        } else {
            out += text[i++];
        }
    }
    return out;
}

std::vector<std::string> PlainLines(const std::string& text) {
    std::vector<std::string> lines(1);
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '{' || c == '}') continue;
        if (c != '\\' || i + 1 == text.size()) {
            lines.back() += c;
            continue;
        }
        const char code = text[++i];
        if (code == 'P' || code == 'X') {
            lines.emplace_back();
        } else if (code == '~') {
            lines.back() += ' ';
        } else if (code == '\\' || code == '{' || code == '}') {
            lines.back() += code;
        } else if (code == 'S') {
            for (++i; i < text.size() && text[i] != ';'; ++i)
                lines.back() += text[i] == '^' || text[i] == '#' ? '/' : text[i];
        } else if (std::string("ACcFfHpQTW").find(code) != std::string::npos) {
            while (i < text.size() && text[i] != ';') ++i;  // a value up to the semicolon
        }
    }
    for (std::string& line : lines) line = PlainText(line);
    return lines;
}

std::string TypeName(const AcRxClass* type) {
    if (type == nullptr) return "unknown";
    return ToUtf8(type->dxfName() != nullptr ? type->dxfName() : type->name());
}

std::string Escaped(const std::string& text) {
    std::string out;
    for (const char c : text) switch (c) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            default:
                if (static_cast<unsigned char>(c) >= 0x20 || c == '\t' || c == '\n') out += c;
        }
    return out;
}

std::string Figure(double value) {
    char text[64];
    // Beyond that a double has no such digits.
    const bool isFar = std::abs(value) >= 100 && std::abs(value) < 1e11;
    std::snprintf(text, sizeof text, isFar ? "%.4f" : "%.6g", value);
    std::string figure = text;
    if (isFar) {
        figure.erase(figure.find_last_not_of('0') + 1);
        if (figure.back() == '.') figure.pop_back();
    }
    return figure;
}

std::string HandleText(const AcDbHandle& handle) {
    ACHAR text[AcDbHandle::kStrSiz] = {};
    return handle.getIntoAsciiBuffer(text, AcDbHandle::kStrSiz) ? ToUtf8(text) : "0";
}

namespace {

const char* const kUnitNames[] = {
    "none",       "inches",     "feet",        "miles",      "millimetres", "centimetres",
    "metres",     "kilometres", "microinches", "mils",       "yards",       "angstroms",
    "nanometres", "microns",    "decimetres",  "decametres", "hectometres", "gigametres"};

}  // namespace

std::string UnitName(const AcDbDatabase& database) {
    if (database.originalFileVersion() < AcDb::kDHL_1015) return "not stated";
    return UnitName(database.insunits());
}

std::string UnitName(AcDb::UnitsValue units) {
    const int unit = static_cast<int>(units);
    const int known = static_cast<int>(std::size(kUnitNames));
    return unit >= 0 && unit < known ? kUnitNames[unit] : "unit code " + std::to_string(unit);
}

std::optional<AcDb::UnitsValue> UnitOf(const std::string& name) {
    static const std::pair<const char*, int> kShort[] = {
        {"in", 1}, {"inch", 1}, {"ft", 2}, {"mm", 4}, {"cm", 5}, {"m", 6}, {"um", 13}};
    for (const auto& [known, unit] : kShort)
        if (name == known) return static_cast<AcDb::UnitsValue>(unit);
    for (size_t i = 1; i < std::size(kUnitNames); ++i)
        if (name == kUnitNames[i]) return static_cast<AcDb::UnitsValue>(i);
    return std::nullopt;
}

}  // namespace product
