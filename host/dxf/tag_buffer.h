// New tags in the layout of the file they go into.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/record_tags.h"
#include "host/dxf/source.h"

namespace host::dxf {

// How a file is written.
struct WriteStyle {
    Form form = Form::kText;
    TextLayout layout;
    int version = kVersionR2018;
    int precision = 16;  // digits after the first of a real; 16 means that it reads back the same
    const TextCodec* codec = nullptr;
};

struct OutTag {
    int code = 0;
    std::size_t begin = 0, end = 0;  // in TagBuffer::bytes
    std::size_t value = 0;           // where the value begins, behind the group code
    Area area = Area::kBody;
    std::uint16_t scope = 0;
    std::uint16_t list = 0;  // tags of one list are only right together; 0: none
    std::int64_t mask = 0;   // bits of a flag group that the class knows; 0: the whole value
    std::int64_t bits = 0;
};

class TagBuffer {
public:
    explicit TagBuffer(const WriteStyle& style) : style_(style), scopes_{""} {}

    // The raw value as it stands in a file: a string already encoded.
    void PutText(int code, std::string_view text);
    void PutReal(int code, double value);
    void PutInt(int code, std::int64_t value);
    void PutHandle(int code, std::uint64_t handle);
    void PutChunk(int code, std::string_view bytes);
    // A value as ValueBytes gives it, under a code of the same kind.
    void PutValue(int code, std::string_view value);
    void PutFlags(int code, std::int64_t mask, std::int64_t value);

    // Following tags stand in this place.
    void EnterScope(const std::string& name, Area area);
    void BackToScope(std::uint16_t scope, Area area) {
        scope_ = scope;
        area_ = area;
    }
    std::uint16_t scope() const { return scope_; }
    // Tags up to EndList belong together: in a changed record they replace all tags of their codes,
    // of the extra codes too, that stand in their scope; with rest, everything of the scope that no
    // other tag claims.
    void BeginList(const std::vector<int>& extraCodes = {}, bool rest = false);
    // A list of entries, each beginning with the first of these codes. In a changed record those
    // that did not change stay as they are, and so do those that this program did not understand.
    void BeginEntries(const std::vector<int>& codes);
    void EndList() { list_ = 0; }
    struct List {
        std::vector<int> extraCodes;
        bool rest = false;
        std::uint16_t scope = 0;
        bool entries = false;
    };
    const List& ListOf(std::uint16_t number) const { return lists_[number - std::size_t{1}]; }
    std::size_t ListCount() const { return lists_.size(); }

    const std::string& bytes() const { return bytes_; }
    std::string TakeBytes() { return std::move(bytes_); }
    const std::vector<OutTag>& tags() const { return tags_; }
    const std::vector<std::string>& scopes() const { return scopes_; }
    std::string_view ValueBytes(const OutTag& tag) const {
        return std::string_view(bytes_).substr(tag.value, tag.end - tag.value);
    }
    std::string_view Bytes(const OutTag& tag) const {
        return std::string_view(bytes_).substr(tag.begin, tag.end - tag.begin);
    }
    const WriteStyle& style() const { return style_; }
    // A real that is no finite number was put; the file must not be written.
    bool HasBadReal() const { return badReal_; }

private:
    void Begin(int code);
    void Number(std::uint64_t bits, int size);
    void End(int code, std::size_t begin);

    const WriteStyle& style_;
    std::string bytes_;
    std::vector<OutTag> tags_;
    std::vector<std::string> scopes_;
    std::vector<List> lists_;
    std::size_t value_ = 0;  // of the tag that is being put
    std::uint16_t scope_ = 0, list_ = 0;
    Area area_ = Area::kBody;
    bool badReal_ = false;
};

}  // namespace host::dxf
