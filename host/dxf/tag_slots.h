// Which tag of a record, of what was read from it and of what it is to be, are the same tag.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "host/dxf/tag_buffer.h"

namespace host::dxf {

constexpr std::int32_t kNoTag = -1;

// One tag by its place: subclass (its n-th occurrence in the record), group code, n-th of that code
// there. Numbers of tags, kNoTag where a side has none.
struct TagSlot {
    std::int32_t file = kNoTag, before = kNoTag, after = kNoTag;
    std::int32_t next = kNoTag;  // slot of the next tag of that code in that subclass
    std::uint32_t key = 0;       // subclass and code in one number
    std::int32_t ordinal = 0;    // which of the tags of that key
};

// Groups of an application and extended data are compared as blocks and have no slots; the tags of
// lists that were written have none either.
inline bool IsBlock(Area area) { return area == Area::kGroup || area == Area::kXdata; }

// Reused from record to record. All three sides are walked once, in step; O(tags).
class TagSlots {
public:
    // Forgets the record before; the arguments must outlive the slots' use.
    void Fill(const RecordTags& file, const TagBuffer& before, const TagBuffer& after);

    std::vector<TagSlot> slots;         // in the order of the file, new ones behind
    std::vector<std::int32_t> ofAfter;  // by tag of after: its slot, kNoTag for blocks and lists

    // For a stable order of slots: by name of the subclass, its occurrence, code, occurrence.
    bool ComesBefore(const TagSlot& a, const TagSlot& b) const;

private:
    // A subclass mark that stands for the same in all three.
    struct Place {
        std::string_view name;  // of the subclass
        int ordinal;            // which of that name
    };
    // All slots of one code in one subclass, and how far each side has come among them.
    struct Chain {
        std::uint32_t key = 0, stamp = 0;  // of another record when the stamp differs
        std::int32_t first = kNoTag, last = kNoTag, before = kNoTag, after = kNoTag;
    };

    // numbers one side's subclasses
    template <class NameOf>
    void Unify(std::size_t count, NameOf nameOf, std::vector<std::uint16_t>& numbers);
    Chain& ChainOf(std::uint16_t place, int code);  // of a code in a subclass; made when it is new
    std::int32_t Append(Chain& chain);              // a slot at the end of a chain
    std::int32_t Step(Chain& chain, std::int32_t& at);  // the next slot for one side
    void Grow();                                        // the table of chains, when it fills up

    std::vector<Place> places_;
    std::vector<std::uint16_t> numbers_;
    std::vector<Chain> table_;  // a hash of keys
    std::uint32_t stamp_ = 0;
    std::size_t used_ = 0;
};

}  // namespace host::dxf
