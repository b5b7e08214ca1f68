#include "host/dxf/entries.h"

#include <map>

namespace host::dxf {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

// Gives each of several equal values once, in order.
template <class Value>
class Shelf {
public:
    void Put(const Value& value, std::size_t index) { places_[value].push_back(index); }
    std::size_t Take(const Value& value) {
        const auto found = places_.find(value);
        if (found == places_.end() || found->second.taken == found->second.indices.size())
            return kNone;
        return found->second.indices[found->second.taken++];
    }

private:
    struct Places {
        std::vector<std::size_t> indices;
        std::size_t taken = 0;
        void push_back(std::size_t index) { indices.push_back(index); }
    };
    std::map<Value, Places> places_;
};

// For each wanted entry the one of the offered that equals it, or kNone; each is given once.
std::vector<std::size_t> Match(const std::vector<EntryParts>& wanted,
                               const std::vector<EntryParts>& offered) {
    Shelf<EntryParts> shelf;
    for (std::size_t i = 0; i < offered.size(); ++i) shelf.Put(offered[i], i);
    std::vector<std::size_t> matches;
    for (const EntryParts& parts : wanted) matches.push_back(shelf.Take(parts));
    return matches;
}

class Planner {
public:
    Planner(const std::vector<EntryParts>& file, const std::vector<EntryParts>& before,
            const std::vector<EntryParts>& after)
        : before_(before), after_(after), inFile_(Match(before, file)), old_(Match(after, before)) {
        plan_.fate.assign(file.size(), EntryPlan::kKeep);
    }

    EntryPlan Run() {
        std::vector<bool> used(before_.size(), false);
        for (std::size_t b : old_)
            if (b != kNone) used[b] = true;
        std::vector<std::size_t> gone;
        for (std::size_t b = 0; b < before_.size(); ++b)
            if (!used[b] && inFile_[b] != kNone) gone.push_back(b);
        for (std::size_t b : gone) plan_.fate[inFile_[b]] = EntryPlan::kRemove;
        replaced_.assign(after_.size(), kNone);
        ReplaceBy(gone, [](const EntryParts& parts) { return parts.front(); });
        ReplaceBy(gone, [](const EntryParts& parts) { return parts.back(); });
        Insert();
        return std::move(plan_);
    }

private:
    // New entries take the places of those gone ones with which they share a value.
    template <class Part>
    void ReplaceBy(const std::vector<std::size_t>& gone, Part part) {
        Shelf<std::string> shelf;
        for (std::size_t b : gone)
            if (plan_.fate[inFile_[b]] == EntryPlan::kRemove) shelf.Put(part(before_[b]), b);
        for (std::size_t a = 0; a < after_.size(); ++a) {
            if (old_[a] != kNone || replaced_[a] != kNone) continue;
            const std::size_t b = shelf.Take(part(after_[a]));
            if (b == kNone) continue;
            plan_.fate[inFile_[b]] = a;
            replaced_[a] = inFile_[b];
        }
    }

    std::size_t PlaceOf(std::size_t a) const {
        return old_[a] != kNone ? inFile_[old_[a]] : replaced_[a];
    }

    void Insert() {
        std::size_t last = 0;  // behind the last entry that has a place
        for (std::size_t a = 0; a < after_.size(); ++a)
            if (PlaceOf(a) != kNone) last = a + 1;
        std::size_t behind = EntryPlan::kFront;
        for (std::size_t a = 0; a < after_.size(); ++a) {
            if (a == last) behind = plan_.fate.empty() ? EntryPlan::kFront : plan_.fate.size() - 1;
            if (PlaceOf(a) != kNone)
                behind = PlaceOf(a);
            else if (old_[a] == kNone)
                plan_.insertions.push_back({behind, a});
        }
    }

    const std::vector<EntryParts>&before_, &after_;
    std::vector<std::size_t> inFile_;    // by entry of before
    std::vector<std::size_t> old_;       // by entry of after: its entry of before
    std::vector<std::size_t> replaced_;  // by entry of after: the entry of the file it replaces
    EntryPlan plan_;
};

}  // namespace

EntryPlan PlanEntries(const std::vector<EntryParts>& file, const std::vector<EntryParts>& before,
                      const std::vector<EntryParts>& after) {
    return Planner(file, before, after).Run();
}

}  // namespace host::dxf
