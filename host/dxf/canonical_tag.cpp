#include "host/dxf/canonical_tag.h"

#include <algorithm>
#include <cmath>

namespace host::dxf {

namespace {

// Text that is decoded and encoded to itself whatever the character set.
bool IsPlain(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) {
        return static_cast<signed char>(c) >= ' ' && c != '\\' && c != '^';
    });
}

bool IsWhole(ValueKind kind) {
    return kind == ValueKind::kInt16 || kind == ValueKind::kInt32 || kind == ValueKind::kInt64 ||
           kind == ValueKind::kBool;
}

}  // namespace

void CanonicalTag::SetStyle(const WriteStyle& style) {
    if (style_ == &style) return;
    style_ = &style;
    buffer_ = std::make_unique<TagBuffer>(style);
}

// The usual kinds are compared as values; Of() says the same with more effort.
bool CanonicalTag::IsLike(const Tag& there, const TagBuffer& buffer, const OutTag& tag) {
    const ValueKind kind = KindOf(there.code);
    if (tag.held == OutTag::Held::kReal && kind == ValueKind::kReal) {
        const double value = source_.Real(there);
        return IsSameReal(*style_, std::isfinite(value) ? value : 0.0, tag.real);
    }
    if (tag.held == OutTag::Held::kInt && IsWhole(kind)) return source_.Int(there) == tag.number;
    if (tag.held == OutTag::Held::kHandle && kind == ValueKind::kHandle)
        return source_.Handle(there) == static_cast<std::uint64_t>(tag.number);
    if (tag.held == OutTag::Held::kText && kind == ValueKind::kText) {
        if (there.value == buffer.TextOf(tag)) return true;
        if (IsPlain(there.value)) return false;
    }
    const TagBuffer& canonical = Of(there);
    return canonical.IsSameValue(canonical.tags().front(), buffer, tag);
}

const TagBuffer& CanonicalTag::Of(const Tag& there) {
    TagBuffer& buffer = *buffer_;
    buffer.Clear();
    const ValueKind kind = KindOf(there.code);
    if (kind == ValueKind::kReal)
        buffer.PutReal(there.code, source_.Real(there));
    else if (IsWhole(kind))
        buffer.PutInt(there.code, source_.Int(there));
    else if (kind == ValueKind::kHandle)
        buffer.PutHandle(there.code, source_.Handle(there));
    else
        buffer.PutText(there.code, source_.codec->Encode(source_.codec->Decode(there.value)));
    return buffer;
}

}  // namespace host::dxf
