#include "host/dxf/tag_buffer.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace host::dxf {

namespace {

std::string RoundedReal(double value, int precision) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.*g", precision + 1, value);
    for (char& c : buffer)
        if (c == ',') c = '.';  // the process may run in a locale with a decimal comma
    return TextFromReal(RealFromText(buffer));
}

bool IsExact(const WriteStyle& style) { return style.form != Form::kText || style.precision >= 16; }

void AppendBits(std::uint64_t bits, int size, std::string& out) {
    for (int i = 0; i < size; ++i) out += static_cast<char>(bits >> (8 * i) & 0xFF);
}

// A whole number right-aligned as the common programs write it.
void AppendNumber(std::int64_t value, std::size_t width, std::string& out) {
    char buffer[24];
    const auto size =
        static_cast<std::size_t>(std::to_chars(buffer, buffer + sizeof buffer, value).ptr - buffer);
    if (size < width) out.append(width - size, ' ');
    out.append(buffer, size);
}

void AppendCode(const WriteStyle& style, int code, std::string& out) {
    if (style.form == Form::kText) {
        AppendNumber(code, style.layout.padded ? 3 : 0, out);
        out += style.layout.lineEnd;
    } else if (style.form == Form::kBinaryWide) {
        AppendBits(static_cast<std::uint64_t>(code), 2, out);
    } else if (code < 255) {
        AppendBits(static_cast<std::uint64_t>(code), 1, out);
    } else {
        AppendBits(255, 1, out);
        AppendBits(static_cast<std::uint64_t>(code), 2, out);
    }
}

void AppendEnd(const WriteStyle& style, std::string& out) {
    if (style.form == Form::kText)
        out += style.layout.lineEnd;
    else
        out += '\0';
}

void AppendReal(const WriteStyle& style, double value, std::string& out) {
    if (style.form == Form::kText) {
        if (IsExact(style))
            AppendTextOfReal(value, out);
        else
            out += RoundedReal(value, style.precision);
        AppendEnd(style, out);
        return;
    }
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    AppendBits(bits, 8, out);
}

void AppendInt(const WriteStyle& style, int code, std::int64_t value, std::string& out) {
    const ValueKind kind = KindOf(code);
    if (style.form == Form::kText) {
        const std::size_t width = !style.layout.padded        ? 0
                                  : kind == ValueKind::kInt16 ? 6
                                  : kind == ValueKind::kInt32 ? 9
                                  : kind == ValueKind::kBool  ? 6
                                                              : 0;
        AppendNumber(value, width, out);
        AppendEnd(style, out);
        return;
    }
    const int size = kind == ValueKind::kInt16   ? 2
                     : kind == ValueKind::kInt32 ? 4
                     : kind == ValueKind::kInt64 ? 8
                                                 : 1;
    AppendBits(static_cast<std::uint64_t>(value), size, out);
}

}  // namespace

bool IsSameReal(const WriteStyle& style, double a, double b) {
    if (std::memcmp(&a, &b, sizeof a) == 0) return true;
    return !IsExact(style) && RoundedReal(a, style.precision) == RoundedReal(b, style.precision);
}

void TagBuffer::Clear() {
    texts_.clear();
    tags_.clear();
    scopeCount_ = listCount_ = 0;
    list_ = 0;
    badReal_ = false;
    EnterScope("", Area::kBody);
}

OutTag& TagBuffer::Add(int code, OutTag::Held held) {
    OutTag& tag = tags_.emplace_back();
    tag.code = code;
    tag.held = held;
    tag.area = area_;
    tag.scope = scope_;
    tag.list = list_;
    return tag;
}

void TagBuffer::PutText(int code, std::string_view text) {
    OutTag& tag = Add(code, OutTag::Held::kText);
    tag.begin = texts_.size();
    // A zero byte would end the string in a binary file, a line break the value in a text file.
    for (char c : text)
        if (c != '\0' && c != '\n' && c != '\r') texts_ += c;
    tag.end = texts_.size();
}

void TagBuffer::PutReal(int code, double value) {
    if (!std::isfinite(value)) {
        badReal_ = true;
        value = 0.0;
    }
    Add(code, OutTag::Held::kReal).real = value;
}

void TagBuffer::PutInt(int code, std::int64_t value) {
    Add(code, OutTag::Held::kInt).number = value;
}

void TagBuffer::PutFlags(int code, std::int64_t mask, std::int64_t value) {
    PutInt(code, value);
    tags_.back().mask = mask;
}

void TagBuffer::PutHandle(int code, std::uint64_t handle) {
    Add(code, OutTag::Held::kHandle).number = static_cast<std::int64_t>(handle);
}

void TagBuffer::PutChunk(int code, std::string_view bytes) {
    constexpr std::size_t kLongest = 127;  // one line of a text file takes 254 digits
    do {
        const std::string_view part = bytes.substr(0, kLongest);
        OutTag& tag = Add(code, OutTag::Held::kChunk);
        tag.begin = texts_.size();
        texts_ += part;
        tag.end = texts_.size();
        bytes.remove_prefix(part.size());
    } while (!bytes.empty());
}

void TagBuffer::BeginList(const std::vector<int>& extraCodes, bool rest) {
    if (listCount_ == lists_.size()) lists_.emplace_back();
    List& list = lists_[listCount_++];
    list.extraCodes.assign(extraCodes.begin(), extraCodes.end());
    list.rest = rest;
    list.entries = false;
    list.scope = scope_;
    list.first = list.last = tags_.size();
    list_ = static_cast<std::uint16_t>(listCount_);
}

void TagBuffer::BeginEntries(const std::vector<int>& codes) {
    BeginList(codes);
    lists_[listCount_ - 1].entries = true;
}

void TagBuffer::EndList() {
    lists_[listCount_ - 1].last = tags_.size();
    list_ = 0;
}

void TagBuffer::EnterScope(std::string_view name, Area area) {
    if (scopeCount_ == scopes_.size()) scopes_.emplace_back();
    scopes_[scopeCount_].assign(name);
    scope_ = static_cast<std::uint16_t>(scopeCount_++);
    area_ = area;
}

bool TagBuffer::IsSameValue(const OutTag& tag, const TagBuffer& other,
                            const OutTag& otherTag) const {
    if (tag.held != otherTag.held) {
        std::string mine, theirs;
        AppendValue(tag, tag.code, mine);
        other.AppendValue(otherTag, otherTag.code, theirs);
        return mine == theirs;
    }
    switch (tag.held) {
        case OutTag::Held::kReal:
            return IsSameReal(style_, tag.real, otherTag.real);
        case OutTag::Held::kInt:
        case OutTag::Held::kHandle:
            return tag.number == otherTag.number;
        default:
            return TextOf(tag) == other.TextOf(otherTag);
    }
}

void TagBuffer::AppendTag(const OutTag& tag, int code, std::string& out) const {
    AppendCode(style_, code, out);
    AppendValue(tag, code, out);
}

void TagBuffer::AppendValue(const OutTag& tag, int code, std::string& out) const {
    switch (tag.held) {
        case OutTag::Held::kReal:
            AppendReal(style_, tag.real, out);
            return;
        case OutTag::Held::kInt:
            AppendInt(style_, code, tag.number, out);
            return;
        case OutTag::Held::kHandle:
            out += TextFromHandle(static_cast<std::uint64_t>(tag.number));
            AppendEnd(style_, out);
            return;
        case OutTag::Held::kText:
            out += TextOf(tag);
            AppendEnd(style_, out);
            return;
        case OutTag::Held::kChunk:
            if (style_.form == Form::kText) {
                out += TextFromChunk(TextOf(tag));
                AppendEnd(style_, out);
            } else {
                AppendBits(tag.end - tag.begin, 1, out);
                out += TextOf(tag);
            }
            return;
    }
}

void TagBuffer::AppendTo(std::string& out) const {
    for (const OutTag& tag : tags_) AppendTag(tag, out);
}

std::string TagBuffer::Bytes() const {
    std::string bytes;
    AppendTo(bytes);
    return bytes;
}

}  // namespace host::dxf
