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

// What was put. Values stay values until they are written, so that records can be compared without
// turning numbers into text.
struct OutTag {
    enum class Held : std::uint8_t { kText, kReal, kInt, kHandle, kChunk };
    int code = 0;                    // group code
    Held held = Held::kText;         // which of the members below counts
    Area area = Area::kBody;         // which part of the record it belongs to
    std::uint16_t scope = 0;         // number of its subclass
    std::uint16_t list = 0;          // tags of one list are only right together; 0: none
    std::size_t begin = 0, end = 0;  // of a text or chunk, in TagBuffer's texts
    double real = 0.0;               // of a real
    std::int64_t number = 0;         // of a whole number, or a handle's bits
    std::int64_t mask = 0;  // bits of a flag group that the class knows; 0: the whole value
};

class TagBuffer {
public:
    // empty, in the file's way of writing
    explicit TagBuffer(const WriteStyle& style) : style_(style) { Clear(); }
    // As new; the memory is used again.
    void Clear();

    // The raw value as it stands in a file: a string already encoded.
    // Each appends one tag in the present scope and list.
    void PutText(int code, std::string_view text);
    void PutReal(int code, double value);             // a number that is none is noted
    void PutInt(int code, std::int64_t value);        // of the size that the code has
    void PutHandle(int code, std::uint64_t handle);   // hexadecimal capitals
    void PutChunk(int code, std::string_view bytes);  // hexadecimal pairs in text files
    // A group of bits of which the class knows those of the mask; the others stay as they are in a
    // changed record.
    void PutFlags(int code, std::int64_t mask, std::int64_t value);

    // Following tags stand in this place.
    void EnterScope(std::string_view name, Area area);
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
    void EndList();
    struct List {
        std::vector<int> extraCodes;
        bool rest = false;     // claims everything else of its scope
        bool entries = false;  // made by BeginEntries
        std::uint16_t scope = 0;
        std::size_t first = 0, last = 0;  // its tags, from first to before last
    };
    const List& ListOf(std::uint16_t number) const { return lists_[number - std::size_t{1}]; }
    std::size_t ListCount() const { return listCount_; }

    const std::vector<OutTag>& tags() const { return tags_; }
    // subclasses entered so far, the head included
    std::size_t ScopeCount() const { return scopeCount_; }
    std::string_view ScopeName(std::size_t scope) const { return scopes_[scope]; }
    std::string_view ScopeName(const OutTag& tag) const { return scopes_[tag.scope]; }
    // A text or chunk.
    std::string_view TextOf(const OutTag& tag) const {
        return std::string_view(texts_).substr(tag.begin, tag.end - tag.begin);
    }
    // Whether a file would show the same value.
    bool IsSameValue(const OutTag& tag, const TagBuffer& other, const OutTag& otherTag) const;

    // The bytes of a tag, of its value, and of all tags in a file.
    void AppendTag(const OutTag& tag, std::string& out) const { AppendTag(tag, tag.code, out); }
    void AppendTag(const OutTag& tag, int code, std::string& out) const;
    void AppendValue(const OutTag& tag, int code, std::string& out) const;
    void AppendTo(std::string& out) const;
    std::string Bytes() const;

    const WriteStyle& style() const { return style_; }
    // A real that is no finite number was put; the file must not be written.
    bool HasBadReal() const { return badReal_; }

private:
    OutTag& Add(int code, OutTag::Held held);  // a new tag at the end

    const WriteStyle& style_;
    std::string texts_;  // of all texts and chunks, one behind another
    std::vector<OutTag> tags_;
    // The first so many are in use; the others wait with their memory.
    std::vector<std::string> scopes_;
    std::vector<List> lists_;
    std::size_t scopeCount_ = 0, listCount_ = 0;
    std::uint16_t scope_ = 0, list_ = 0;
    Area area_ = Area::kBody;
    bool badReal_ = false;  // see HasBadReal
};

// Whether reals that are written so would read the same in the file.
bool IsSameReal(const WriteStyle& style, double a, double b);

}  // namespace host::dxf
