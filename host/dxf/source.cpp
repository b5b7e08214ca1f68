#include "host/dxf/source.h"

#include <algorithm>

#include "host/dxf/tokens.h"

namespace host::dxf {

namespace {

// Binary numbers are little-endian on every machine.
std::uint64_t LittleEndian(std::string_view bytes) {
    std::uint64_t value = 0;
    for (std::size_t i = bytes.size(); i-- > 0;)
        value = value << 8 | static_cast<unsigned char>(bytes[i]);
    return value;
}

}  // namespace

std::string_view Source::Name(std::size_t record) const {
    const Record& r = records[record];
    return Trim(bytes.View().substr(r.begin + r.name, r.nameLength));
}

std::string_view Source::Layer(std::size_t record) const {
    const Record& r = records[record];
    return Trim(bytes.View().substr(r.begin + r.layer, r.layerLength));
}

std::string_view Source::Linetype(std::size_t record) const {
    const Record& r = records[record];
    return Trim(bytes.View().substr(r.begin + r.linetype, r.linetypeLength));
}

double Source::Real(const Tag& tag) const {
    if (info.form == Form::kText) return RealFromText(tag.value);
    if (tag.value.size() != sizeof(double) || KindOf(tag.code) != ValueKind::kReal)
        return static_cast<double>(Int(tag));
    const std::uint64_t bits = LittleEndian(tag.value);
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

std::int64_t Source::Int(const Tag& tag) const {
    if (info.form == Form::kText) return IntFromText(tag.value);
    const std::uint64_t bits = tag.value.size() <= 8 ? LittleEndian(tag.value) : 0;
    switch (KindOf(tag.code)) {
        case ValueKind::kInt16:
            return static_cast<std::int16_t>(bits);
        case ValueKind::kInt32:
            return static_cast<std::int32_t>(bits);
        case ValueKind::kInt64:
            return static_cast<std::int64_t>(bits);
        case ValueKind::kBool:
            return static_cast<std::int64_t>(bits & 0xFF);
        default:
            return 0;
    }
}

std::uint64_t Source::Handle(const Tag& tag) const {
    std::uint64_t value = 0;
    HandleFromText(tag.value, value);
    return value;
}

std::string Source::Chunk(const Tag& tag) const {
    return info.form == Form::kText ? ChunkFromText(tag.value) : std::string(tag.value);
}

std::size_t Source::LineOf(std::size_t offset) const {
    const std::string_view before = bytes.View().substr(0, offset);
    const char eol = layout.lineEnd.back();
    return static_cast<std::size_t>(std::count(before.begin(), before.end(), eol)) + 1;
}

std::string Source::Place(std::size_t offset) const {
    return info.form == Form::kText ? "line " + std::to_string(LineOf(offset))
                                    : "byte " + std::to_string(offset);
}

bool TagWalker::Next(Tag& tag) {
    const std::string_view bytes = source_.bytes.View();
    const auto step = [&](auto tokens) {
        const bool found = tokens.Next(tag) == Step::kTag;
        position_ = tokens.position();
        return found;
    };
    if (source_.info.form == Form::kBinaryShort)
        return step(BinaryTokens<false>(bytes, position_, stop_));
    if (source_.info.form == Form::kBinaryWide)
        return step(BinaryTokens<true>(bytes, position_, stop_));
    return source_.layout.lineEnd == "\r" ? step(TextTokens<'\r'>(bytes, position_, stop_))
                                          : step(TextTokens<'\n'>(bytes, position_, stop_));
}

}  // namespace host::dxf
