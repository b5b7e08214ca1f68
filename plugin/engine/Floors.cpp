#include "StdAfx.h"

#include "Floors.h"

#include <limits>

namespace {

// One end in so many becomes an edge, both ends of a line counted.
constexpr size_t kEndsPerEdge = 8;
// Half the width of a narrow column, in near places: a line that ends in its middle spans what is
// beside it, and a probe in it cuts it no farther from its middle than three.
constexpr double kHalfGap = 1.25;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

}  // namespace

void CFloors::SHighest::Offer(int record, double height) {
    int place = kHighest;
    while (place > 0 && (m_record[place - 1] < 0 || m_height[place - 1] < height)) {
        --place;
    }
    if (place == kHighest) {
        return;
    }
    for (int i = kHighest - 1; i > place; --i) {
        m_record[i] = m_record[i - 1];
        m_height[i] = m_height[i - 1];
    }
    m_record[place] = record;
    m_height[place] = height;
}

void CFloors::Clear() {
    m_nCount = 0;
    m_filed.clear();
}

void CFloors::Build(const std::vector<SSight>& sights, const SCutPlaces& places) {
    m_pSights = &sights;
    m_pPlaces = &places;
    Clear();
    MakeColumns();
    if (m_nCount > 0) {
        MakeGuide();
        MakeFloors(FileSpanning());
        FileOpen();
    }
}

void CFloors::MakeColumns() {
    const std::vector<SSight>& sights = *m_pSights;
    std::vector<double> ends;
    double least = kInfinity;
    double most = -kInfinity;
    for (size_t i = 0; i < sights.size(); ++i) {
        least = (std::min)(least, sights[i].m_dFrom);
        most = (std::max)(most, sights[i].m_dTo);
        if (i % (2 * kEndsPerEdge) == 0) {
            ends.push_back(sights[i].m_dFrom);
        } else if (i % (2 * kEndsPerEdge) == kEndsPerEdge) {
            ends.push_back(sights[i].m_dTo);
        }
    }
    if (!(least < most)) {
        return;
    }
    ends.push_back(least);
    ends.push_back(most);
    std::sort(ends.begin(), ends.end());
    const double half = kHalfGap * m_pPlaces->m_dNear;
    m_edges.clear();
    m_cutAcross.clear();
    for (const double end : ends) {
        if (!m_edges.empty() && !(end - half > m_edges.back() + 2 * half)) {
            continue;
        }
        if (!m_edges.empty()) {
            m_cutAcross.push_back(0);  // the wide one before
        }
        m_edges.push_back(end - half);
        m_edges.push_back(end + half);
        m_cutAcross.push_back(m_pPlaces->HasAcross(end - half, end + half) ? 1 : 0);
    }
    // An end that was passed over lies just beyond the last.
    m_edges.back() = (std::max)(m_edges.back(), most + half);
    m_nCount = static_cast<int>(m_edges.size()) - 1;
    m_nLeaves = 1;
    while (m_nLeaves < m_nCount) {
        m_nLeaves *= 2;
    }
}

// Drawings are rarely even, but even steps take most of a search's steps away.
void CFloors::MakeGuide() {
    const int steps = m_nCount;
    m_dGuideStep = (m_edges.back() - m_edges.front()) / steps;
    m_guide.assign(static_cast<size_t>(steps) + 2, 0);
    size_t edge = 0;
    for (int i = 0; i < steps; ++i) {
        while (edge < m_edges.size() && m_edges[edge] < m_edges.front() + i * m_dGuideStep) {
            ++edge;
        }
        m_guide[i] = static_cast<int>(edge);
    }
    m_guide[steps] = m_guide[steps + 1] = static_cast<int>(m_edges.size());
}

// The edges below the place, or not above it.
int CFloors::CountEdges(double u, bool bOrEqual) const {
    const double step = (u - m_edges.front()) / m_dGuideStep;
    const int steps = m_nCount;
    const int at = step > 0.0 ? (step < steps ? static_cast<int>(step) : steps) : 0;
    // One step of room on either side for the rounding of the quotient.
    const auto first = m_edges.begin() + m_guide[(std::max)(at - 1, 0)];
    const auto last = m_edges.begin() + m_guide[(std::min)(at + 2, steps + 1)];
    return static_cast<int>(
        (bOrEqual ? std::upper_bound(first, last, u) : std::lower_bound(first, last, u)) -
        m_edges.begin());
}

int CFloors::FindColumn(double u) const {
    return (std::min)((std::max)(CountEdges(u, true) - 1, 0), m_nCount - 1);
}

// The least that a line stands clearly above between two places.
double CFloors::GetHeight(int record, double from, double to) const {
    const SSight& sight = (*m_pSights)[record];
    return (std::min)(sight.At(from), sight.At(to)) - sight.m_dMargin;
}

std::vector<CFloors::SHighest> CFloors::FileSpanning() const {
    std::vector<SHighest> nodes(2 * static_cast<size_t>(m_nLeaves));
    const double reach = m_pPlaces->m_dNear;
    for (size_t i = 0; i < m_pSights->size(); ++i) {
        const SSight& sight = (*m_pSights)[i];
        if (!sight.m_bClear) {
            continue;
        }
        const int record = static_cast<int>(i);
        const int first = CountEdges(sight.m_dFrom + reach, false);
        const int last = CountEdges(sight.m_dTo - reach, true) - 2;
        int width = 1;
        const auto offer = [&](int node) {
            const int column = node * width - m_nLeaves;
            nodes[node].Offer(record, GetHeight(record, m_edges[column], m_edges[column + width]));
        };
        for (int a = first + m_nLeaves, b = last + 1 + m_nLeaves; a < b;
             a /= 2, b /= 2, width *= 2) {
            if (a % 2 != 0) {
                offer(a++);
            }
            if (b % 2 != 0) {
                offer(--b);
            }
        }
    }
    return nodes;
}

void CFloors::MakeFloors(const std::vector<SHighest>& nodes) {
    m_proofs.assign(m_nCount, SProof());
    m_low.assign(2 * static_cast<size_t>(m_nLeaves), kInfinity);
    m_high.assign(2 * static_cast<size_t>(m_nLeaves), -kInfinity);
    for (int column = 0; column < m_nCount; ++column) {
        SHighest best;
        for (int node = column + m_nLeaves; node > 0; node /= 2) {
            for (const int record : nodes[node].m_record) {
                if (record >= 0) {
                    best.Offer(record, GetHeight(record, GetFrom(column), GetTo(column)));
                }
            }
        }
        const int leaf = column + m_nLeaves;
        m_low[leaf] = m_high[leaf] = Prove(column, best, m_proofs[column]);
    }
    for (int node = m_nLeaves - 1; node > 0; --node) {
        const size_t below = 2 * static_cast<size_t>(node);
        m_low[node] = (std::min)(m_low[below], m_low[below + 1]);
        m_high[node] = (std::max)(m_high[below], m_high[below + 1]);
    }
}

// The floor that the highest lines over a column make, and which of them do.
double CFloors::Prove(int column, const SHighest& best, SProof& proof) const {
    const double from = GetFrom(column);
    const double to = GetTo(column);
    for (int low = 0; low < kHighest && best.m_record[low] >= 0; ++low) {
        const SSight& sight = (*m_pSights)[best.m_record[low]];
        if (!m_pPlaces->HasAlong(sight, from, to)) {
            proof = {best.m_record[low], -1};
            return best.m_height[low];
        }
        for (int high = 0; high < low; ++high) {
            if (!m_pPlaces->HaveCommon((*m_pSights)[best.m_record[high]], sight, from, to)) {
                proof = {best.m_record[low], best.m_record[high]};
                return best.m_height[low];
            }
        }
    }
    return -kInfinity;
}

bool CFloors::IsClearlyAbove(int record, const SSight& sight, double from, double to) const {
    const SSight& other = (*m_pSights)[record];
    const double margin = sight.m_dMargin + other.m_dMargin;
    return other.At(from) - sight.At(from) > margin && other.At(to) - sight.At(to) > margin;
}

bool CFloors::IsCovered(int column, const SSight& sight, double from, double to) const {
    const SProof& proof = m_proofs[column];
    return proof.m_nFirst >= 0 && IsClearlyAbove(proof.m_nFirst, sight, from, to) &&
           (proof.m_nSecond < 0 || IsClearlyAbove(proof.m_nSecond, sight, from, to));
}

void CFloors::FileOpen() {
    struct SEntry {
        int m_nNode;
        int m_nRecord;
    };
    std::vector<SEntry> entries;
    m_starts.assign(2 * static_cast<size_t>(m_nLeaves) + 1, 0);
    for (size_t i = 0; i < m_pSights->size(); ++i) {
        Descend((*m_pSights)[i], [&](int node, int, int) {
            entries.push_back({node, static_cast<int>(i)});
            ++m_starts[node + 1];
        });
    }
    for (size_t i = 1; i < m_starts.size(); ++i) {
        m_starts[i] += m_starts[i - 1];
    }
    m_filed.resize(entries.size());
    std::vector<int> next(m_starts.begin(), m_starts.end() - 1);
    for (const SEntry& entry : entries) {
        m_filed[next[entry.m_nNode]++] = entry.m_nRecord;
    }
}

bool CFloors::Gather(int column, size_t nMost, std::vector<int>& records) const {
    records.clear();
    for (const int record : {m_proofs[column].m_nFirst, m_proofs[column].m_nSecond}) {
        if (record >= 0) {
            records.push_back(record);
        }
    }
    for (int node = column + m_nLeaves; node > 0; node /= 2) {
        const int first = m_starts[node];
        const int last = m_starts[node + 1];
        if (records.size() + static_cast<size_t>(last - first) > nMost) {
            return false;
        }
        records.insert(records.end(), m_filed.begin() + first, m_filed.begin() + last);
    }
    return true;
}
