#include "host/dxf/merge.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <vector>

#include "host/dxf/entries.h"

namespace host::dxf {

namespace {

// A tag by its place: subclass (its n-th occurrence in the record), code, n-th of that code there.
struct Key {
    std::string scope;
    int scopeOrdinal;
    int code;
    int ordinal;
    bool operator<(const Key& other) const {
        return std::tie(scope, scopeOrdinal, code, ordinal) <
               std::tie(other.scope, other.scopeOrdinal, other.code, other.ordinal);
    }
};

// Numbers scopes of equal name.
std::vector<int> ScopeOrdinals(const std::vector<std::string>& scopes) {
    std::vector<int> ordinals;
    for (std::size_t i = 0; i < scopes.size(); ++i)
        ordinals.push_back(static_cast<int>(std::count(
            scopes.begin(), scopes.begin() + static_cast<std::ptrdiff_t>(i), scopes[i])));
    return ordinals;
}

class KeyMaker {
public:
    explicit KeyMaker(const std::vector<std::string>& scopes)
        : scopes_(scopes), ordinals_(ScopeOrdinals(scopes)) {}
    Key operator()(std::uint16_t scope, int code) {
        const int ordinal = counts_[{scope, code}]++;
        return {scopes_[scope], ordinals_[scope], code, ordinal};
    }

private:
    const std::vector<std::string>& scopes_;
    std::vector<int> ordinals_;
    std::map<std::pair<std::uint16_t, int>, int> counts_;
};

constexpr std::string_view kReactorGroup = "{ACAD_REACTORS";

bool IsBlock(Area area) { return area == Area::kGroup || area == Area::kXdata; }

// The written side: single tags by key, blocks by scope name, lists by number.
struct Written {
    explicit Written(const TagBuffer& buffer) : buffer_(buffer) {
        KeyMaker key(buffer.scopes());
        lists.resize(buffer.ListCount());
        for (const OutTag& tag : buffer.tags()) {
            if (IsBlock(tag.area))
                blocks[buffer.scopes()[tag.scope]] += buffer.Bytes(tag);
            else if (tag.list != 0)
                lists[tag.list - std::size_t{1}] += buffer.Bytes(tag);
            else
                tags.emplace(key(tag.scope, tag.code), &tag);
        }
    }
    std::string_view Bytes(const OutTag& tag) const { return buffer_.Bytes(tag); }

    std::map<Key, const OutTag*> tags;
    std::map<std::string, std::string> blocks;
    std::vector<std::string> lists;

private:
    const TagBuffer& buffer_;
};

class Merger {
public:
    Merger(const Source& source, std::size_t record, const TagBuffer& before,
           const TagBuffer& after, bool copy)
        : source_(source),
          copy_(copy),
          original_(source, record),
          recordBegin_(source.records[record].begin),
          recordEnd_(source.RecordEnd(record)),
          beforeBuffer_(before),
          afterBuffer_(after),
          before_(before),
          after_(after),
          claimed_(original_.tags.size(), false) {
        std::vector<std::string> names;
        for (const Scope& scope : original_.scopes) names.emplace_back(scope.name);
        KeyMaker key(names);
        for (std::size_t i = 0; i < original_.tags.size(); ++i) {
            const PlacedTag& placed = original_.tags[i];
            if (!IsBlock(placed.area)) byKey_.emplace(key(placed.scope, placed.tag.code), i);
        }
    }

    std::string Run() {
        Claim();
        std::size_t anchor = original_.tags.front().tag.end;
        KeyMaker key(afterBuffer_.scopes());
        std::uint16_t list = 0;
        std::string block;
        for (const OutTag& tag : afterBuffer_.tags()) {
            if (IsBlock(tag.area)) {
                const std::string& name = afterBuffer_.scopes()[tag.scope];
                if (name != block) MergeBlock(name, tag.area, anchor);
                block = name;
            } else if (tag.list != 0) {
                if (tag.list != list) MergeList(tag.list, anchor);
                list = tag.list;
            } else {
                MergeTag(key(tag.scope, tag.code), tag, anchor);
            }
        }
        for (std::size_t i = 0; i < after_.lists.size(); ++i)
            if (after_.lists[i].empty()) MergeList(static_cast<std::uint16_t>(i + 1), anchor);
        RemoveGone();
        return Apply();
    }

private:
    // Which tag of the record each written tag is. What the record keeps in another subclass than
    // usual is found by its value.
    void Claim() {
        for (const auto& [key, tag] : before_.tags)
            if (const auto found = byKey_.find(key); found != byKey_.end())
                claimed_[found->second] = true;
        for (const auto& [key, tag] : after_.tags)
            if (const auto found = byKey_.find(key); found != byKey_.end())
                claimed_[found->second] = true;
        for (const auto& [key, tag] : before_.tags) {
            if (byKey_.count(key) != 0 || tag->code == 100) continue;
            for (std::size_t i = 0; i < original_.tags.size(); ++i)
                if (!claimed_[i] && original_.tags[i].tag.code == tag->code &&
                    original_.tags[i].area == Area::kBody && Canonical(i) == before_.Bytes(*tag)) {
                    byKey_.emplace(key, i);
                    claimed_[i] = true;
                    break;
                }
        }
    }

    // The tag of the record as this program would write it.
    std::string Canonical(std::size_t index) const {
        TagBuffer buffer(afterBuffer_.style());
        PutCanonical(original_.tags[index].tag, buffer);
        return buffer.TakeBytes();
    }

    std::string CanonicalValue(std::size_t index) const {
        TagBuffer buffer(afterBuffer_.style());
        PutCanonical(original_.tags[index].tag, buffer);
        return std::string(buffer.ValueBytes(buffer.tags().back()));
    }

    void PutCanonical(const Tag& tag, TagBuffer& buffer) const {
        switch (KindOf(tag.code)) {
            case ValueKind::kReal:
                buffer.PutReal(tag.code, source_.Real(tag));
                break;
            case ValueKind::kInt16:
            case ValueKind::kInt32:
            case ValueKind::kInt64:
            case ValueKind::kBool:
                buffer.PutInt(tag.code, source_.Int(tag));
                break;
            case ValueKind::kHandle:
                buffer.PutHandle(tag.code, source_.Handle(tag));
                break;
            default:
                buffer.PutText(tag.code, source_.codec->Encode(source_.codec->Decode(tag.value)));
                break;
        }
    }

    void MergeTag(const Key& key, const OutTag& tag, std::size_t& anchor) {
        const auto place = byKey_.find(key);
        const auto old = before_.tags.find(key);
        const std::string_view bytes = after_.Bytes(tag);
        const bool same = old != before_.tags.end() && before_.Bytes(*old->second) == bytes;
        if (place == byKey_.end()) {
            if (!same) Insert(anchor, std::string(bytes));
            return;
        }
        const Tag& original = original_.tags[place->second].tag;
        if (!same && Canonical(place->second) != bytes)
            Replace(original.begin, original.end, NewBytes(tag, original));
        anchor = original.end;
    }

    // Bits of a flag group that this program does not know are the record's.
    std::string NewBytes(const OutTag& tag, const Tag& original) const {
        if (tag.mask == 0) return std::string(after_.Bytes(tag));
        TagBuffer buffer(afterBuffer_.style());
        buffer.PutInt(tag.code, (source_.Int(original) & ~tag.mask) | (tag.bits & tag.mask));
        return buffer.TakeBytes();
    }

    void MergeList(std::uint16_t number, std::size_t& anchor) {
        const std::size_t index = number - std::size_t{1};
        const TagBuffer::List& list = afterBuffer_.ListOf(number);
        const bool known = index < before_.lists.size();
        const bool same = known && before_.lists[index] == after_.lists[index];
        std::size_t first = kNowhere;
        std::vector<std::size_t> old;
        for (std::size_t i = 0; i < original_.tags.size(); ++i)
            if (BelongsTo(list, number, i)) old.push_back(i);
        if (!old.empty()) first = original_.tags[old.front()].tag.begin;
        if (!same && list.entries && !copy_ && !old.empty()) {
            const auto inList = [&](const TagBuffer&, const OutTag& tag) {
                return tag.list == number;
            };
            MergeEntries(old, list.extraCodes.front(), inList);
        } else if (!same) {
            for (std::size_t i : old)
                Replace(original_.tags[i].tag.begin, original_.tags[i].tag.end, "");
            Insert(first == kNowhere ? anchor : first, after_.lists[index]);
        }
        if (!old.empty()) anchor = original_.tags[old.back()].tag.end;
    }

    bool BelongsTo(const TagBuffer::List& list, std::uint16_t number, std::size_t index) const {
        const PlacedTag& placed = original_.tags[index];
        if (placed.area != Area::kBody || claimed_[index] || placed.tag.code == 100) return false;
        const std::string& scope = afterBuffer_.scopes()[list.scope];
        if (original_.ScopeName(placed) != scope) return false;
        if (list.rest) return true;
        const int code = placed.tag.code;
        const auto& extra = list.extraCodes;
        if (std::find(extra.begin(), extra.end(), code) != extra.end()) return true;
        return std::any_of(
            afterBuffer_.tags().begin(), afterBuffer_.tags().end(),
            [&](const OutTag& tag) { return tag.list == number && tag.code == code; });
    }

    // An entry, of the file or written, and the tags that it is made of.
    template <class TagRef>
    struct Entries {
        std::vector<EntryParts> parts;
        std::vector<std::vector<TagRef>> tags;
        void Add(bool first, TagRef tag, std::string_view value) {
            if (first || parts.empty()) {
                parts.emplace_back();
                tags.emplace_back();
            }
            parts.back().emplace_back(value);
            tags.back().push_back(tag);
        }
    };

    template <class Wanted>
    Entries<const OutTag*> EntriesOf(const TagBuffer& buffer, int first, Wanted wanted) const {
        Entries<const OutTag*> entries;
        for (const OutTag& tag : buffer.tags())
            if (wanted(buffer, tag)) entries.Add(tag.code == first, &tag, buffer.ValueBytes(tag));
        return entries;
    }

    // The list whose tags in the record are old, and which begins an entry with the code first.
    template <class Wanted>
    void MergeEntries(const std::vector<std::size_t>& old, int first, Wanted wanted) {
        Entries<std::size_t> file;
        for (std::size_t i : old)
            file.Add(original_.tags[i].tag.code == first, i, CanonicalValue(i));
        const auto before = EntriesOf(beforeBuffer_, first, wanted);
        const auto after = EntriesOf(afterBuffer_, first, wanted);
        const EntryPlan plan = PlanEntries(file.parts, before.parts, after.parts);
        const auto bytes = [&](std::size_t entry) {
            std::string text;
            for (const OutTag* tag : after.tags[entry]) text += afterBuffer_.Bytes(*tag);
            return text;
        };
        for (std::size_t e = 0; e < plan.fate.size(); ++e) {
            const std::size_t fate = plan.fate[e];
            if (fate == EntryPlan::kKeep) continue;
            for (std::size_t k = 0; k < file.tags[e].size(); ++k) {
                const Tag& tag = original_.tags[file.tags[e][k]].tag;
                const bool other = fate != EntryPlan::kRemove && k < after.tags[fate].size();
                if (other && file.parts[e][k] == after.parts[fate][k]) continue;
                // Who owns what the entry names is the file's affair.
                TagBuffer value(afterBuffer_.style());
                if (other) value.PutValue(tag.code, after.parts[fate][k]);
                Replace(tag.begin, tag.end, value.TakeBytes());
            }
        }
        for (const EntryPlan::Insertion& insertion : plan.insertions)
            Insert(insertion.behind == EntryPlan::kFront
                       ? original_.tags[old.front()].tag.begin
                       : original_.tags[file.tags[insertion.behind].back()].tag.end,
                   bytes(insertion.entry));
    }

    // Reactors are entries of one tag between the braces. False when they are to be replaced as a
    // whole.
    bool MergeReactors(const std::string& name) {
        std::vector<std::size_t> old;
        for (std::size_t i = 0; i < original_.tags.size(); ++i)
            if (IsMember(original_.tags[i].area, original_.tags[i].tag.code) &&
                original_.ScopeName(original_.tags[i]) == name)
                old.push_back(i);
        if (copy_ || name != kReactorGroup || old.empty()) return false;
        MergeEntries(old, 330, [&](const TagBuffer& buffer, const OutTag& tag) {
            return IsMember(tag.area, tag.code) && buffer.scopes()[tag.scope] == name;
        });
        return true;
    }
    // Whether the record's block holds no more members than were read from it.
    bool IsAllUnderstood(const std::string& name) const {
        const auto members = [&](const auto& tags, const auto& nameOf, const auto& codeOf) {
            return std::count_if(tags.begin(), tags.end(), [&](const auto& tag) {
                return IsMember(tag.area, codeOf(tag)) && nameOf(tag) == name;
            });
        };
        return members(
                   original_.tags, [&](const PlacedTag& tag) { return original_.ScopeName(tag); },
                   [](const PlacedTag& tag) { return tag.tag.code; }) ==
               members(
                   beforeBuffer_.tags(),
                   [&](const OutTag& tag) { return beforeBuffer_.scopes()[tag.scope]; },
                   [](const OutTag& tag) { return tag.code; });
    }
    static bool IsMember(Area area, int code) { return area == Area::kGroup && code != 102; }

    void MergeBlock(const std::string& name, Area area, std::size_t& anchor) {
        const auto old = before_.blocks.find(name);
        const std::string& bytes = after_.blocks.at(name);
        std::size_t begin = kNowhere, end = kNowhere;
        FindBlock(name, begin, end);
        const bool same = old != before_.blocks.end() && old->second == bytes;
        if (!same && !MergeReactors(name)) {
            if (begin != kNowhere)
                Replace(begin, end, bytes);
            else
                Insert(area == Area::kXdata ? recordEnd_ : anchor, bytes);
        }
        if (end != kNowhere && area == Area::kGroup) anchor = end;
    }

    void FindBlock(const std::string& name, std::size_t& begin, std::size_t& end) const {
        for (const PlacedTag& placed : original_.tags) {
            if (!IsBlock(placed.area) || original_.ScopeName(placed) != name) continue;
            if (begin == kNowhere) begin = placed.tag.begin;
            end = placed.tag.end;
        }
    }

    void RemoveGone() {
        for (const auto& [key, tag] : before_.tags) {
            const auto place = byKey_.find(key);
            if (after_.tags.count(key) != 0 || place == byKey_.end()) continue;
            const Tag& original = original_.tags[place->second].tag;
            Replace(original.begin, original.end, "");
        }
        for (const auto& [name, bytes] : before_.blocks) {
            std::size_t begin = kNowhere, end = kNowhere;
            FindBlock(name, begin, end);
            if (after_.blocks.count(name) != 0 || begin == kNowhere) continue;
            if (IsAllUnderstood(name) || !MergeReactors(name)) Replace(begin, end, "");
        }
    }

    void Insert(std::size_t at, std::string bytes) { edits_.push_back({at, at, std::move(bytes)}); }
    void Replace(std::size_t begin, std::size_t end, std::string bytes) {
        edits_.push_back({begin, end, std::move(bytes)});
    }

    std::string Apply() {
        // At one place insertions come before the tag that stood there, in the order they were
        // made.
        std::stable_sort(edits_.begin(), edits_.end(), [](const Edit& a, const Edit& b) {
            return std::make_pair(a.begin, a.end != a.begin) <
                   std::make_pair(b.begin, b.end != b.begin);
        });
        std::string out;
        std::size_t at = recordBegin_;
        for (const Edit& edit : edits_) {
            if (edit.begin > at) out += source_.View(at, edit.begin);
            out += edit.bytes;
            at = (std::max)(at, edit.end);
        }
        return out += source_.View(at, recordEnd_);
    }

    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);
    struct Edit {
        std::size_t begin, end;
        std::string bytes;
    };

    const Source& source_;
    bool copy_;
    RecordTags original_;
    std::size_t recordBegin_, recordEnd_;
    const TagBuffer &beforeBuffer_, &afterBuffer_;
    Written before_, after_;
    std::vector<bool> claimed_;
    std::map<Key, std::size_t> byKey_;
    std::vector<Edit> edits_;
};

}  // namespace

std::string MergeRecord(const Source& source, std::size_t record, const TagBuffer& before,
                        const TagBuffer& after, bool copy) {
    return Merger(source, record, before, after, copy).Run();
}

}  // namespace host::dxf
