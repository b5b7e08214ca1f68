#include "fuzz/binary_tags.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "host/dxf/group_code.h"

using host::dxf::KindOf;
using host::dxf::ValueKind;

namespace fuzz {
namespace {

const std::string kMark("AutoCAD Binary DXF\r\n\x1a\0", 22);
constexpr unsigned kLongCode = 255;  // of the form of R12: two bytes follow

bool IsWide(const std::string& bytes) {
    return bytes.size() > kMark.size() + 1 && bytes[kMark.size() + 1] == 0;
}

size_t WidthOf(ValueKind kind) {
    switch (kind) {
        case ValueKind::kReal:
        case ValueKind::kInt64:
            return 8;
        case ValueKind::kInt32:
            return 4;
        case ValueKind::kInt16:
            return 2;
        case ValueKind::kBool:
            return 1;
        default:
            return 0;
    }
}

uint64_t LittleEndian(const char* from, size_t width) {
    uint64_t bits = 0;
    for (size_t i = width; i > 0; --i) bits = bits << 8 | static_cast<unsigned char>(from[i - 1]);
    return bits;
}

void Append(std::string& out, uint64_t bits, size_t width) {
    for (size_t i = 0; i < width; ++i) out += static_cast<char>(bits >> (8 * i) & 0xFF);
}

std::string TextOf(ValueKind kind, uint64_t bits) {
    if (kind == ValueKind::kInt16) return std::to_string(static_cast<int16_t>(bits));
    if (kind == ValueKind::kInt32) return std::to_string(static_cast<int32_t>(bits));
    if (kind != ValueKind::kReal) return std::to_string(static_cast<int64_t>(bits));
    double value;
    std::memcpy(&value, &bits, sizeof value);
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

// Any text, since values may have been set to what is no number.
uint64_t BitsOf(ValueKind kind, const std::string& text) {
    uint64_t bits = std::strtoull(text.c_str(), nullptr, 10);
    if (kind != ValueKind::kReal) return bits;
    const double value = std::strtod(text.c_str(), nullptr);
    std::memcpy(&bits, &value, sizeof value);
    return bits;
}

}  // namespace

bool IsBinaryDrawing(const std::string& bytes) { return bytes.rfind(kMark, 0) == 0; }

std::vector<Tag> TagsOfBinary(const std::string& bytes) {
    std::vector<Tag> tags;
    const bool isWide = IsWide(bytes);
    for (size_t at = kMark.size(); at < bytes.size();) {
        size_t codeWidth = isWide ? 2 : 1;
        if (!isWide && static_cast<unsigned char>(bytes[at]) == kLongCode) ++at, codeWidth = 2;
        if (at + codeWidth > bytes.size()) break;
        const int code = static_cast<int>(LittleEndian(&bytes[at], codeWidth));
        at += codeWidth;
        const ValueKind kind = KindOf(code);
        std::string value;
        if (const size_t width = WidthOf(kind)) {
            if (at + width > bytes.size()) break;
            value = TextOf(kind, LittleEndian(&bytes[at], width));
            at += width;
        } else if (kind == ValueKind::kChunk) {
            const size_t length = at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
            if (at + 1 + length > bytes.size()) break;
            value = host::dxf::TextFromChunk(std::string_view(bytes).substr(at + 1, length));
            at += 1 + length;
        } else {
            value = bytes.c_str() + at;
            at += value.size() + 1;
        }
        tags.push_back({std::to_string(code), value});
    }
    return tags;
}

std::string BinaryOfTags(const std::vector<Tag>& tags, const std::string& origin) {
    std::string out = kMark;
    const bool isWide = IsWide(origin);
    for (const Tag& tag : tags) {
        const int code = static_cast<int>(std::strtol(tag.code.c_str(), nullptr, 10)) & 0xFFFF;
        const bool isLong = !isWide && code >= static_cast<int>(kLongCode);
        if (isLong) Append(out, kLongCode, 1);
        Append(out, static_cast<uint64_t>(code), isWide || isLong ? 2 : 1);
        const ValueKind kind = KindOf(code);
        if (const size_t width = WidthOf(kind)) {
            Append(out, BitsOf(kind, tag.value), width);
        } else if (kind == ValueKind::kChunk) {
            const std::string chunk = host::dxf::ChunkFromText(tag.value).substr(0, 255);
            out += static_cast<char>(chunk.size());
            out += chunk;
        } else {
            out += tag.value.c_str();
            out += '\0';
        }
    }
    return out;
}

}  // namespace fuzz
