// Lists whose entries stand for themselves: what a dictionary names, the members of a group. A
// change touches the entries that it changes; the others stay as they came, understood or not.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace host::dxf {

// The values of an entry's tags, each as this program writes it.
using EntryParts = std::vector<std::string>;

struct EntryPlan {
    static constexpr std::size_t kKeep = static_cast<std::size_t>(-1);
    static constexpr std::size_t kRemove = static_cast<std::size_t>(-2);
    static constexpr std::size_t kFront = static_cast<std::size_t>(-1);
    struct Insertion {
        std::size_t behind;  // entry of the file, or kFront
        std::size_t entry;   // entry of after
    };
    std::vector<std::size_t> fate;  // by entry of the file: kKeep, kRemove or what replaces it
    std::vector<Insertion> insertions;
};

// How a file's entries become those of after.
//
// file    all entries as they stand, before  those of them that this program understood, in order,
// after   those that are to be there now
// result  what is equal in before and after is kept; an entry that shares its first or its last
//         value with one that is gone takes its place; others go behind the entry before them, the
//         last ones to the end. Entries of the file that before does not have are kept.
// cost    O(n log n)
EntryPlan PlanEntries(const std::vector<EntryParts>& file, const std::vector<EntryParts>& before,
                      const std::vector<EntryParts>& after);

}  // namespace host::dxf
