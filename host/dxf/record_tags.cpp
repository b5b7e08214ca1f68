#include "host/dxf/record_tags.h"

#include "host/dxf/tokens.h"

namespace host::dxf {

namespace {

// Follows the tags of a record and tells where each stands.
class Placer {
public:
    explicit Placer(RecordTags& out) : out_(out) { Enter("", Area::kBody); }

    void Add(const Tag& tag) {
        const std::string_view text = Trim(tag.value);
        if (tag.code == kXdataApplication) {
            Enter(text, Area::kXdata);
        } else if (area_ == Area::kBody && !data_) {
            Open(tag.code, text);
        }
        out_.tags.push_back({tag, area_, scope_});
        if (area_ == Area::kGroup && tag.code == 102 && text.substr(0, 1) == "}") {
            area_ = Area::kBody;
            scope_ = outer_;
        }
    }

private:
    void Open(int code, std::string_view text) {
        if (code == 100) {
            Enter(text, Area::kBody);
            data_ = text == kXrecordMark;
        } else if (code == 102 && text.substr(0, 1) == "{") {
            outer_ = scope_;
            Enter(text, Area::kGroup);
        } else if (code == 101) {
            Enter(text, Area::kEmbedded);
        }
    }

    void Enter(std::string_view name, Area area) {
        // More scopes than the index holds only occur in broken files; they share the last one.
        if (out_.scopes.size() < 0xFFFF) out_.scopes.push_back({name, area});
        area_ = area;
        scope_ = static_cast<std::uint16_t>(out_.scopes.size() - 1);
    }

    RecordTags& out_;
    Area area_ = Area::kBody;
    std::uint16_t scope_ = 0, outer_ = 0;
    bool data_ = false;  // within an Xrecord's data
};

}  // namespace

void RecordTags::Read(const Source& source, std::size_t record) {
    constexpr std::size_t kUsualTags = 24;
    tags.clear();
    scopes.clear();
    tags.reserve(kUsualTags);
    scopes.reserve(4);
    Placer placer(*this);
    ForEachTag(source, source.records[record].begin, source.RecordEnd(record),
               [&placer](const Tag& tag) { placer.Add(tag); });
}

bool RecordTags::HasMarks() const {
    for (const PlacedTag& placed : tags)
        if (placed.tag.code == 100 && placed.area == Area::kBody) return true;
    return false;
}

int RecordTags::FindScope(std::string_view name, int n) const {
    for (std::size_t i = 0; i < scopes.size(); ++i)
        if (scopes[i].area == Area::kBody && scopes[i].name == name && n-- == 0)
            return static_cast<int>(i);
    return -1;
}

}  // namespace host::dxf
