#include "host/dxf/merge.h"

#include <algorithm>
#include <vector>

#include "host/dxf/canonical_tag.h"
#include "host/dxf/entries.h"
#include "host/dxf/record_edits.h"
#include "host/dxf/tag_slots.h"

namespace host::dxf {

namespace {

constexpr std::string_view kReactorGroup = "{ACAD_REACTORS";
constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

// What stands between the braces of a group.
bool IsMember(Area area, int code) { return area == Area::kGroup && code != 102; }

}  // namespace

class RecordMerger::Work {
public:
    explicit Work(const Source& source) : source_(source), canonical_(source) {}

    void Run(std::size_t record, const RecordTags& file, const TagBuffer& before,
             const TagBuffer& after, bool copy, std::string& out) {
        file_ = &file;
        before_ = &before;
        after_ = &after;
        copy_ = copy;
        canonical_.SetStyle(after.style());
        recordEnd_ = source_.RecordEnd(record);
        edits_.Clear();
        slots_.Fill(file, before, after);
        Claim();
        Walk();
        RemoveGone();
        edits_.Apply(source_, source_.records[record].begin, recordEnd_, out);
    }

private:
    const Tag& FileTag(std::size_t index) const { return file_->tags[index].tag; }
    static std::size_t Index(std::int32_t number) { return static_cast<std::size_t>(number); }

    // Which tag of the record each written tag is. What the record keeps in another subclass than
    // usual is found by its value.
    void Claim() {
        claimed_.assign(file_->tags.size(), false);
        missing_.clear();
        for (std::size_t i = 0; i < slots_.slots.size(); ++i) {
            const TagSlot& slot = slots_.slots[i];
            if (slot.before == kNoTag && slot.after == kNoTag) continue;
            if (slot.file != kNoTag)
                claimed_[Index(slot.file)] = true;
            else if (slot.before != kNoTag && before_->tags()[Index(slot.before)].code != 100)
                missing_.push_back(i);
        }
        if (missing_.empty()) return;
        std::sort(missing_.begin(), missing_.end(), [this](std::size_t a, std::size_t b) {
            return slots_.ComesBefore(slots_.slots[a], slots_.slots[b]);
        });
        for (const std::size_t i : missing_) FindByValue(slots_.slots[i]);
    }

    void FindByValue(TagSlot& slot) {
        const OutTag& tag = before_->tags()[Index(slot.before)];
        for (std::size_t i = 0; i < file_->tags.size(); ++i) {
            if (claimed_[i] || FileTag(i).code != tag.code || file_->tags[i].area != Area::kBody ||
                !canonical_.IsLike(FileTag(i), *before_, tag))
                continue;
            slot.file = static_cast<std::int32_t>(i);
            claimed_[i] = true;
            return;
        }
    }

    // ---- What is to be there, in order

    void Walk() {
        std::size_t anchor = FileTag(0).end;
        std::uint16_t list = 0;
        std::string_view block;
        for (std::size_t i = 0; i < after_->tags().size(); ++i) {
            const OutTag& tag = after_->tags()[i];
            if (IsBlock(tag.area)) {
                const std::string_view name = after_->ScopeName(tag);
                if (name != block) MergeBlock(name, tag.area, anchor);
                block = name;
            } else if (tag.list != 0) {
                if (tag.list != list) MergeList(tag.list, anchor);
                list = tag.list;
            } else {
                MergeTag(slots_.slots[Index(slots_.ofAfter[i])], tag, anchor);
            }
        }
        for (std::size_t i = 0; i < after_->ListCount(); ++i) {
            const auto number = static_cast<std::uint16_t>(i + 1);
            if (after_->ListOf(number).first == after_->ListOf(number).last)
                MergeList(number, anchor);
        }
    }

    void MergeTag(const TagSlot& slot, const OutTag& tag, std::size_t& anchor) {
        const bool same = slot.before != kNoTag &&
                          before_->IsSameValue(before_->tags()[Index(slot.before)], *after_, tag);
        if (slot.file == kNoTag) {
            if (!same)
                edits_.Insert(anchor, [&](std::string& text) { after_->AppendTag(tag, text); });
            return;
        }
        const std::size_t place = Index(slot.file);
        const Tag& original = FileTag(place);
        if (!same && !canonical_.IsLike(original, *after_, tag))
            edits_.Replace(original.begin, original.end,
                           [&](std::string& text) { AppendNew(tag, original, text); });
        anchor = original.end;
    }

    // Bits of a flag group that this program does not know are the record's.
    void AppendNew(const OutTag& tag, const Tag& original, std::string& text) {
        OutTag whole = tag;
        if (tag.mask != 0)
            whole.number = (source_.Int(original) & ~tag.mask) | (tag.number & tag.mask);
        after_->AppendTag(whole, text);
    }

    // ---- Lists

    void MergeList(std::uint16_t number, std::size_t& anchor) {
        const TagBuffer::List& list = after_->ListOf(number);
        const bool known = number <= before_->ListCount();
        const bool same = known && IsSameList(before_->ListOf(number), list);
        FindOld(list, number);
        if (!same && list.entries && !copy_ && !old_.empty()) {
            const auto inList = [&](const TagBuffer&, const OutTag& tag) {
                return tag.list == number;
            };
            MergeEntries(list.extraCodes.front(), inList);
        } else if (!same) {
            for (const std::size_t i : old_) edits_.Remove(FileTag(i).begin, FileTag(i).end);
            edits_.Insert(old_.empty() ? anchor : FileTag(old_.front()).begin,
                          [&](std::string& text) {
                              for (std::size_t i = list.first; i < list.last; ++i)
                                  after_->AppendTag(after_->tags()[i], text);
                          });
        }
        if (!old_.empty()) anchor = FileTag(old_.back()).end;
    }

    bool IsSameList(const TagBuffer::List& a, const TagBuffer::List& b) const {
        if (a.last - a.first != b.last - b.first) return false;
        for (std::size_t i = 0; i < a.last - a.first; ++i)
            if (!IsSameTag(before_->tags()[a.first + i], after_->tags()[b.first + i])) return false;
        return true;
    }

    bool IsSameTag(const OutTag& before, const OutTag& after) const {
        return before.code == after.code && before_->IsSameValue(before, *after_, after);
    }

    // The record's tags of a list, into old_.
    void FindOld(const TagBuffer::List& list, std::uint16_t number) {
        old_.clear();
        codes_.assign(list.extraCodes.begin(), list.extraCodes.end());
        for (std::size_t i = list.first; i < list.last; ++i) {
            const OutTag& tag = after_->tags()[i];
            if (tag.list == number &&
                std::find(codes_.begin(), codes_.end(), tag.code) == codes_.end())
                codes_.push_back(tag.code);
        }
        const std::string_view scope = after_->ScopeName(list.scope);
        for (std::size_t i = 0; i < file_->tags.size(); ++i) {
            const PlacedTag& placed = file_->tags[i];
            if (placed.area != Area::kBody || claimed_[i] || placed.tag.code == 100 ||
                file_->ScopeName(placed) != scope)
                continue;
            if (list.rest ||
                std::find(codes_.begin(), codes_.end(), placed.tag.code) != codes_.end())
                old_.push_back(i);
        }
    }

    // An entry, of the file or written, and the tags that it is made of.
    template <class TagRef>
    struct Entries {
        std::vector<EntryParts> parts;
        std::vector<std::vector<TagRef>> tags;
        std::string& Add(bool first, TagRef tag) {
            if (first || parts.empty()) {
                parts.emplace_back();
                tags.emplace_back();
            }
            tags.back().push_back(tag);
            return parts.back().emplace_back();
        }
    };

    template <class Wanted>
    Entries<const OutTag*> EntriesOf(const TagBuffer& buffer, int first, Wanted wanted) const {
        Entries<const OutTag*> entries;
        for (const OutTag& tag : buffer.tags())
            if (wanted(buffer, tag))
                buffer.AppendValue(tag, tag.code, entries.Add(tag.code == first, &tag));
        return entries;
    }

    // The list whose tags in the record are old_, and which begins an entry with the code first.
    template <class Wanted>
    void MergeEntries(int first, Wanted wanted) {
        Entries<std::size_t> file;
        for (const std::size_t i : old_) {
            const TagBuffer& canonical = canonical_.Of(FileTag(i));
            const OutTag& tag = canonical.tags().front();
            canonical.AppendValue(tag, tag.code, file.Add(tag.code == first, i));
        }
        const auto before = EntriesOf(*before_, first, wanted);
        const auto after = EntriesOf(*after_, first, wanted);
        const EntryPlan plan = PlanEntries(file.parts, before.parts, after.parts);
        for (std::size_t e = 0; e < plan.fate.size(); ++e) {
            const std::size_t fate = plan.fate[e];
            if (fate == EntryPlan::kKeep) continue;
            for (std::size_t k = 0; k < file.tags[e].size(); ++k) {
                const Tag& tag = FileTag(file.tags[e][k]);
                if (fate == EntryPlan::kRemove || k >= after.tags[fate].size())
                    edits_.Remove(tag.begin, tag.end);
                else if (file.parts[e][k] != after.parts[fate][k])
                    // Who owns what the entry names is the file's affair.
                    edits_.Replace(tag.begin, tag.end, [&](std::string& text) {
                        after_->AppendTag(*after.tags[fate][k], tag.code, text);
                    });
            }
        }
        for (const EntryPlan::Insertion& insertion : plan.insertions)
            edits_.Insert(insertion.behind == EntryPlan::kFront
                              ? FileTag(old_.front()).begin
                              : FileTag(file.tags[insertion.behind].back()).end,
                          [&](std::string& text) {
                              for (const OutTag* tag : after.tags[insertion.entry])
                                  after_->AppendTag(*tag, text);
                          });
    }

    // ---- Groups of applications and extended data

    void MergeBlock(std::string_view name, Area area, std::size_t& anchor) {
        std::size_t begin = kNowhere, end = kNowhere;
        FindBlock(name, begin, end);
        if (!IsSameBlock(name) && !MergeReactors(name)) {
            const auto append = [&](std::string& text) {
                for (const OutTag& tag : after_->tags())
                    if (IsInBlock(*after_, tag, name)) after_->AppendTag(tag, text);
            };
            if (begin != kNowhere)
                edits_.Replace(begin, end, append);
            else
                edits_.Insert(area == Area::kXdata ? recordEnd_ : anchor, append);
        }
        if (end != kNowhere && area == Area::kGroup) anchor = end;
    }

    static bool IsInBlock(const TagBuffer& buffer, const OutTag& tag, std::string_view name) {
        return IsBlock(tag.area) && buffer.ScopeName(tag) == name;
    }

    static std::vector<const OutTag*> BlockOf(const TagBuffer& buffer, std::string_view name) {
        std::vector<const OutTag*> tags;
        for (const OutTag& tag : buffer.tags())
            if (IsInBlock(buffer, tag, name)) tags.push_back(&tag);
        return tags;
    }

    bool IsSameBlock(std::string_view name) const {
        const auto before = BlockOf(*before_, name), after = BlockOf(*after_, name);
        return std::equal(before.begin(), before.end(), after.begin(), after.end(),
                          [this](const OutTag* a, const OutTag* b) { return IsSameTag(*a, *b); });
    }

    void FindBlock(std::string_view name, std::size_t& begin, std::size_t& end) const {
        for (const PlacedTag& placed : file_->tags) {
            if (!IsBlock(placed.area) || file_->ScopeName(placed) != name) continue;
            if (begin == kNowhere) begin = placed.tag.begin;
            end = placed.tag.end;
        }
    }

    // Reactors are entries of one tag between the braces. False when they are to be replaced as a
    // whole.
    bool MergeReactors(std::string_view name) {
        if (copy_ || name != kReactorGroup) return false;
        old_.clear();
        for (std::size_t i = 0; i < file_->tags.size(); ++i)
            if (IsMember(file_->tags[i].area, FileTag(i).code) &&
                file_->ScopeName(file_->tags[i]) == name)
                old_.push_back(i);
        if (old_.empty()) return false;
        MergeEntries(330, [&](const TagBuffer& buffer, const OutTag& tag) {
            return IsMember(tag.area, tag.code) && buffer.ScopeName(tag) == name;
        });
        return true;
    }

    // ---- What is no longer there

    void RemoveGone() {
        for (const TagSlot& slot : slots_.slots) {
            if (slot.before == kNoTag || slot.after != kNoTag || slot.file == kNoTag) continue;
            edits_.Remove(FileTag(Index(slot.file)).begin, FileTag(Index(slot.file)).end);
        }
        std::string_view block;
        for (const OutTag& tag : before_->tags()) {
            const std::string_view name = before_->ScopeName(tag);
            if (!IsBlock(tag.area) || name == block) continue;
            block = name;
            if (BlockOf(*after_, name).empty()) RemoveBlock(name);
        }
    }

    // Reactors that were not understood keep their braces.
    void RemoveBlock(std::string_view name) {
        std::size_t begin = kNowhere, end = kNowhere, inFile = 0;
        FindBlock(name, begin, end);
        if (begin == kNowhere) return;
        for (const PlacedTag& placed : file_->tags)
            inFile += IsBlock(placed.area) && file_->ScopeName(placed) == name ? 1 : 0;
        if (inFile == BlockOf(*before_, name).size() || !MergeReactors(name))
            edits_.Remove(begin, end);
    }

    const Source& source_;
    const RecordTags* file_ = nullptr;
    const TagBuffer *before_ = nullptr, *after_ = nullptr;
    bool copy_ = false;
    std::size_t recordEnd_ = 0;
    TagSlots slots_;
    CanonicalTag canonical_;
    std::vector<char> claimed_;
    std::vector<std::size_t> missing_, old_;
    std::vector<int> codes_;
    RecordEdits edits_;
};

RecordMerger::RecordMerger(const Source& source) : work_(std::make_unique<Work>(source)) {}
RecordMerger::~RecordMerger() = default;

void RecordMerger::Merge(std::size_t record, const RecordTags& tags, const TagBuffer& before,
                         const TagBuffer& after, bool copy, std::string& out) {
    work_->Run(record, tags, before, after, copy, out);
}

}  // namespace host::dxf
