#include "StdAfx.h"

#include "Twins.h"

#include <cstdint>
#include <cstring>

namespace {

std::uint64_t Mix(std::uint64_t hash, double value) {
    std::uint64_t bits = 0;
    const double positive = value + 0.0;  // both zeros are one
    std::memcpy(&bits, &positive, sizeof bits);
    hash = (hash ^ bits) * 0x9E3779B97F4A7C15U;
    return hash ^ (hash >> 29);
}

size_t GetHash(const CLineInfo& line) {
    std::uint64_t hash = 0;
    for (const AcGePoint3d& pt : {line.m_startPt, line.m_endPt}) {
        hash = Mix(Mix(hash, pt.x), pt.y);
    }
    return static_cast<size_t>(hash ^ (hash >> 41));
}

bool AreTwins(const CLineInfo& a, const CLineInfo& b) {
    return IsSamePlace(a.m_startPt, b.m_startPt) && IsSamePlace(a.m_endPt, b.m_endPt);
}

}  // namespace

CTwins::CTwins(const std::vector<CLineInfo>& lines) : m_groups(lines.size()) {
    size_t size = 64;
    while (size < 2 * lines.size()) {
        size *= 2;
    }
    std::vector<int> slots(size, -1);  // a group's first record
    m_starts.assign(1, 0);
    for (size_t i = 0; i < lines.size(); ++i) {
        size_t slot = GetHash(lines[i]) & (size - 1);
        while (slots[slot] >= 0 && !AreTwins(lines[slots[slot]], lines[i])) {
            slot = (slot + 1) & (size - 1);
        }
        if (slots[slot] < 0) {
            slots[slot] = static_cast<int>(i);
            m_groups[i] = m_starts.size() - 1;
            m_starts.push_back(0);
        } else {
            m_groups[i] = m_groups[slots[slot]];
        }
        ++m_starts[m_groups[i] + 1];
    }
    for (size_t i = 1; i < m_starts.size(); ++i) {
        m_starts[i] += m_starts[i - 1];
    }
    m_members.resize(lines.size());
    std::vector<size_t> next(m_starts.begin(), m_starts.end() - 1);
    for (size_t i = 0; i < lines.size(); ++i) {
        m_members[next[m_groups[i]]++] = static_cast<int>(i);
    }
}
