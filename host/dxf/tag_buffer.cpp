#include "host/dxf/tag_buffer.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace host::dxf {

namespace {

// A number right-aligned as the common programs write it.
std::string Padded(std::string text, std::size_t width) {
    return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}

std::string RoundedReal(double value, int precision) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.*g", precision + 1, value);
    for (char& c : buffer)
        if (c == ',') c = '.';  // the process may run in a locale with a decimal comma
    return TextFromReal(RealFromText(buffer));
}

}  // namespace

void TagBuffer::Begin(int code) {
    if (style_.form == Form::kText) {
        const std::string text = std::to_string(code);
        bytes_ += style_.layout.padded ? Padded(text, 3) : text;
        bytes_ += style_.layout.lineEnd;
    } else if (style_.form == Form::kBinaryWide) {
        Number(static_cast<std::uint64_t>(code), 2);
    } else if (code < 255) {
        Number(static_cast<std::uint64_t>(code), 1);
    } else {
        Number(255, 1);
        Number(static_cast<std::uint64_t>(code), 2);
    }
    value_ = bytes_.size();
}

void TagBuffer::Number(std::uint64_t bits, int size) {
    for (int i = 0; i < size; ++i) bytes_ += static_cast<char>(bits >> (8 * i) & 0xFF);
}

void TagBuffer::End(int code, std::size_t begin) {
    OutTag tag;
    tag.code = code;
    tag.begin = begin;
    tag.end = bytes_.size();
    tag.value = value_;
    tag.area = area_;
    tag.scope = scope_;
    tag.list = list_;
    tags_.push_back(tag);
}

void TagBuffer::PutText(int code, std::string_view text) {
    const std::size_t begin = bytes_.size();
    Begin(code);
    // A zero byte would end the string in a binary file, a line break the value in a text file.
    for (char c : text)
        if (c != '\0' && c != '\n' && c != '\r') bytes_ += c;
    if (style_.form == Form::kText)
        bytes_ += style_.layout.lineEnd;
    else
        bytes_ += '\0';
    End(code, begin);
}

void TagBuffer::PutReal(int code, double value) {
    if (!std::isfinite(value)) {
        badReal_ = true;
        value = 0.0;
    }
    if (style_.form == Form::kText) {
        PutText(code, style_.precision >= 16 ? TextFromReal(value)
                                             : RoundedReal(value, style_.precision));
        return;
    }
    const std::size_t begin = bytes_.size();
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    Begin(code);
    Number(bits, 8);
    End(code, begin);
}

void TagBuffer::PutInt(int code, std::int64_t value) {
    const ValueKind kind = KindOf(code);
    if (style_.form == Form::kText) {
        const std::size_t width = !style_.layout.padded       ? 0
                                  : kind == ValueKind::kInt16 ? 6
                                  : kind == ValueKind::kInt32 ? 9
                                  : kind == ValueKind::kBool  ? 6
                                                              : 0;
        PutText(code, Padded(std::to_string(value), width));
        return;
    }
    const std::size_t begin = bytes_.size();
    const int size = kind == ValueKind::kInt16   ? 2
                     : kind == ValueKind::kInt32 ? 4
                     : kind == ValueKind::kInt64 ? 8
                                                 : 1;
    Begin(code);
    Number(static_cast<std::uint64_t>(value), size);
    End(code, begin);
}

void TagBuffer::PutValue(int code, std::string_view value) {
    const std::size_t begin = bytes_.size();
    Begin(code);
    bytes_ += value;
    End(code, begin);
}

void TagBuffer::PutFlags(int code, std::int64_t mask, std::int64_t value) {
    PutInt(code, value);
    tags_.back().mask = mask;
    tags_.back().bits = value;
}

void TagBuffer::PutHandle(int code, std::uint64_t handle) { PutText(code, TextFromHandle(handle)); }

void TagBuffer::PutChunk(int code, std::string_view bytes) {
    constexpr std::size_t kLongest = 127;  // one line of a text file takes 254 digits
    do {
        const std::string_view part = bytes.substr(0, kLongest);
        if (style_.form == Form::kText) {
            PutText(code, TextFromChunk(part));
        } else {
            const std::size_t begin = bytes_.size();
            Begin(code);
            Number(part.size(), 1);
            bytes_ += part;
            End(code, begin);
        }
        bytes.remove_prefix(part.size());
    } while (!bytes.empty());
}

void TagBuffer::BeginList(const std::vector<int>& extraCodes, bool rest) {
    lists_.push_back({extraCodes, rest, scope_, false});
    list_ = static_cast<std::uint16_t>(lists_.size());
}

void TagBuffer::BeginEntries(const std::vector<int>& codes) {
    BeginList(codes);
    lists_.back().entries = true;
}

void TagBuffer::EnterScope(const std::string& name, Area area) {
    scopes_.push_back(name);
    scope_ = static_cast<std::uint16_t>(scopes_.size() - 1);
    area_ = area;
}

}  // namespace host::dxf
