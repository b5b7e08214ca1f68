#include "host/dxf/tag_slots.h"

#include <map>
#include <tuple>
#include <utility>

namespace host::dxf {

namespace {

constexpr std::size_t kFirstTable = 256;  // a power of two, as every later size

std::uint32_t KeyOf(std::uint16_t place, int code) {
    return static_cast<std::uint32_t>(place) << 16 | static_cast<std::uint16_t>(code);
}
int CodeOf(std::uint32_t key) { return static_cast<std::int16_t>(key & 0xFFFF); }

}  // namespace

// Numbers of subclasses by name and by how often that name came before on the same side. Comparing
// all with all is quickest for the few that records have; one that means harm may have thousands.
template <class NameOf>
void TagSlots::Unify(std::size_t count, NameOf nameOf, std::vector<std::uint16_t>& numbers) {
    constexpr std::size_t kFew = 32;
    numbers.clear();
    if (count + places_.size() > kFew) {
        std::map<std::string_view, int> counts;
        std::map<std::pair<std::string_view, int>, std::size_t> known;
        for (std::size_t i = 0; i < places_.size(); ++i)
            known.emplace(std::make_pair(places_[i].name, places_[i].ordinal), i);
        for (std::size_t i = 0; i < count; ++i) {
            const Place place{nameOf(i), counts[nameOf(i)]++};
            const auto [found, isNew] =
                known.emplace(std::make_pair(place.name, place.ordinal), places_.size());
            if (isNew) places_.push_back(place);
            numbers.push_back(static_cast<std::uint16_t>(found->second));
        }
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        Place place{nameOf(i), 0};
        for (std::size_t k = 0; k < i; ++k) place.ordinal += nameOf(k) == place.name ? 1 : 0;
        std::size_t at = 0;
        while (at < places_.size() &&
               (places_[at].ordinal != place.ordinal || places_[at].name != place.name))
            ++at;
        if (at == places_.size()) places_.push_back(place);
        numbers.push_back(static_cast<std::uint16_t>(at));
    }
}

TagSlots::Chain& TagSlots::ChainOf(std::uint16_t place, int code) {
    if (used_ * 2 >= table_.size()) Grow();
    const std::uint32_t key = KeyOf(place, code);
    const std::size_t mask = table_.size() - 1;
    for (std::size_t at = key * 2654435769U & mask;; at = (at + 1) & mask) {
        Chain& chain = table_[at];
        if (chain.stamp == stamp_ && chain.key == key) return chain;
        if (chain.stamp == stamp_) continue;
        chain = {key, stamp_, kNoTag, kNoTag, kNoTag, kNoTag};
        ++used_;
        return chain;
    }
}

void TagSlots::Grow() {
    const std::vector<Chain> old = std::move(table_);
    table_.assign(old.empty() ? kFirstTable : old.size() * 2, Chain());
    if (old.empty()) return;
    const std::size_t mask = table_.size() - 1;
    for (const Chain& chain : old) {
        if (chain.stamp != stamp_) continue;
        std::size_t at = chain.key * 2654435769U & mask;
        while (table_[at].stamp == stamp_) at = (at + 1) & mask;
        table_[at] = chain;
    }
}

std::int32_t TagSlots::Append(Chain& chain) {
    const auto number = static_cast<std::int32_t>(slots.size());
    TagSlot& slot = slots.emplace_back();
    slot.key = chain.key;
    if (chain.last == kNoTag) {
        chain.first = number;
    } else {
        slot.ordinal = slots[static_cast<std::size_t>(chain.last)].ordinal + 1;
        slots[static_cast<std::size_t>(chain.last)].next = number;
    }
    chain.last = number;
    return number;
}

// The slot behind the one where a side stands in its chain.
std::int32_t TagSlots::Step(Chain& chain, std::int32_t& at) {
    const std::int32_t next = at == kNoTag ? chain.first : slots[static_cast<std::size_t>(at)].next;
    at = next != kNoTag ? next : Append(chain);
    return at;
}

void TagSlots::Fill(const RecordTags& file, const TagBuffer& before, const TagBuffer& after) {
    ++stamp_;
    used_ = 0;
    slots.clear();
    places_.clear();
    ofAfter.clear();
    Unify(
        file.scopes.size(), [&](std::size_t i) { return file.scopes[i].name; }, numbers_);
    for (std::size_t i = 0; i < file.tags.size(); ++i) {
        const PlacedTag& placed = file.tags[i];
        if (IsBlock(placed.area)) continue;
        const std::int32_t slot = Append(ChainOf(numbers_[placed.scope], placed.tag.code));
        slots[static_cast<std::size_t>(slot)].file = static_cast<std::int32_t>(i);
    }
    Unify(
        before.ScopeCount(), [&](std::size_t i) { return before.ScopeName(i); }, numbers_);
    for (std::size_t i = 0; i < before.tags().size(); ++i) {
        const OutTag& tag = before.tags()[i];
        if (IsBlock(tag.area) || tag.list != 0) continue;
        Chain& chain = ChainOf(numbers_[tag.scope], tag.code);
        const std::int32_t slot = Step(chain, chain.before);
        slots[static_cast<std::size_t>(slot)].before = static_cast<std::int32_t>(i);
    }
    Unify(
        after.ScopeCount(), [&](std::size_t i) { return after.ScopeName(i); }, numbers_);
    for (std::size_t i = 0; i < after.tags().size(); ++i) {
        const OutTag& tag = after.tags()[i];
        ofAfter.push_back(kNoTag);
        if (IsBlock(tag.area) || tag.list != 0) continue;
        Chain& chain = ChainOf(numbers_[tag.scope], tag.code);
        const std::int32_t slot = Step(chain, chain.after);
        slots[static_cast<std::size_t>(slot)].after = static_cast<std::int32_t>(i);
        ofAfter.back() = slot;
    }
}

bool TagSlots::ComesBefore(const TagSlot& a, const TagSlot& b) const {
    const Place &pa = places_[a.key >> 16], &pb = places_[b.key >> 16];
    return std::make_tuple(pa.name, pa.ordinal, CodeOf(a.key), a.ordinal) <
           std::make_tuple(pb.name, pb.ordinal, CodeOf(b.key), b.ordinal);
}

}  // namespace host::dxf
