// Records that are the same to the last bit.
#pragma once

#include <vector>

#include "LineInfo.h"

// Groups of records with equal start and equal end. A line that is drawn thousands of times would
// otherwise be compared with itself millions of times; whatever is asked of two records is asked of
// their groups once. A drawing without twins has as many groups as records.
class CTwins {
public:
    // O(n).
    explicit CTwins(const std::vector<CLineInfo>& lines);

    size_t GetCount() const { return m_starts.size() - 1; }
    size_t GetGroup(size_t record) const { return m_groups[record]; }
    // The group's records, rising; a record is never alone with an empty list.
    const int* begin(size_t group) const { return m_members.data() + m_starts[group]; }
    const int* end(size_t group) const { return m_members.data() + m_starts[group + 1]; }
    int GetFirst(size_t group) const { return *begin(group); }

private:
    std::vector<size_t> m_groups;  // of each record; groups are numbered by their first records
    std::vector<size_t> m_starts;  // of each group in m_members, and the end
    std::vector<int> m_members;
};
