// How high a side sees down.
#pragma once

#include <vector>

#include "Sight.h"

// Columns across the view, each with a floor: what lies clearly below it is hidden.
//
// A middle is hidden by a steady line that stands clearly above it, unless it stands exactly over a
// cut of that line, since neither of the two pieces there hides it. So a column's floor is the
// height of one line that spans the column and has no cut in it, or of the lower of two that have
// no cut in common. The highest three lines that span each node of a segment tree over the columns
// are kept; of those above a column the best three are tried.
//
// Columns begin and end at ends of lines. Around each such place stands a narrow column, so that
// lines that end there span the wide ones on either side.
//
// What is not hidden by that is filed with the nodes of the tree, so that a line that is open
// nearly everywhere costs no more than a few entries.
//
// cost     O(n log n + cuts of the highest lines), memory O(n)
class CFloors {
public:
    // The sights and places must outlive what is asked afterwards.
    void Build(const std::vector<SSight>& sights, const SCutPlaces& places);
    // Without columns nothing is known to be hidden.
    void Clear();

    bool HasColumns() const { return m_nCount > 0; }
    // The column that holds the place; the first or the last for one beyond all.
    int FindColumn(double u) const;
    double GetFrom(int column) const { return m_edges[column]; }
    double GetTo(int column) const { return m_edges[column + 1]; }
    double GetFloor(int column) const { return m_low[m_nLeaves + column]; }
    // A narrow column with a probe along the view in it: lines are cut there.
    bool IsCutAcross(int column) const { return m_cutAcross[column] != 0; }
    // Whether the lines that make the column's floor clearly cover the line between two places.
    bool IsCovered(int column, const SSight& sight, double from, double to) const;

    // Calls use(first, last) for runs of columns, from left to right, in which the line is not
    // clearly below the floor.
    template <class Use>
    void ForEachOpen(const SSight& sight, const Use& use) const {
        Descend(sight, [&](int, int first, int last) { use(first, last); });
    }
    // The records that are not clearly below the column's floor, first those that make it. False
    // when there are more than nMost.
    bool Gather(int column, size_t nMost, std::vector<int>& records) const;

private:
    static constexpr int kHighest = 3;

    struct SHighest {
        int m_record[kHighest] = {-1, -1, -1};
        double m_height[kHighest] = {};
        void Offer(int record, double height);
    };
    // The lines that make a floor; the second is -1 when the first has no cut in the column.
    struct SProof {
        int m_nFirst = -1;
        int m_nSecond = -1;
    };

    void MakeColumns();
    void MakeGuide();
    std::vector<SHighest> FileSpanning() const;
    void MakeFloors(const std::vector<SHighest>& nodes);
    double Prove(int column, const SHighest& best, SProof& proof) const;
    void FileOpen();
    double GetHeight(int record, double from, double to) const;
    int CountEdges(double u, bool bOrEqual) const;
    bool IsClearlyAbove(int record, const SSight& sight, double from, double to) const;
    template <class Use>
    void Descend(const SSight& sight, const Use& use) const;
    template <class Use>
    void DescendFrom(int node, int first, int last, int from, int to, const SSight& sight,
                     const Use& use) const;

    const std::vector<SSight>* m_pSights = nullptr;  // of the run; not owned
    const SCutPlaces* m_pPlaces = nullptr;           // likewise
    int m_nCount = 0;                                // columns
    int m_nLeaves = 0;                               // of the tree: a power of two
    std::vector<double> m_edges;                     // of the columns, rising; one more than these
    std::vector<char> m_cutAcross;                   // of each column: something crosses it
    std::vector<int> m_guide;                        // edges below each of as many equal steps
    double m_dGuideStep = 0.0;
    std::vector<SProof> m_proofs;  // who made the floor of a column
    std::vector<double> m_low;     // of a tree's node the lowest floor, the leaves at m_nLeaves
    std::vector<double> m_high;    // and the highest
    std::vector<int> m_starts;     // of each node's records in m_filed
    std::vector<int> m_filed;
};

template <class Use>
void CFloors::Descend(const SSight& sight, const Use& use) const {
    // What lies as near as that counts as above the column.
    const double reach = m_pPlaces->m_dNear;
    const int from = (std::max)(CountEdges(sight.m_dFrom - reach, true) - 1, 0);
    const int to = (std::min)(CountEdges(sight.m_dTo + reach, false) - 1, m_nCount - 1);
    if (from > to) {
        return;
    }
    // The lowest node that holds both.
    // Leaves are numbered behind the inner nodes.
    int a = from + m_nLeaves;
    int b = to + m_nLeaves;
    int width = 1;
    for (; a != b; a /= 2, b /= 2) {
        width *= 2;
    }
    const int first = a * width - m_nLeaves;
    DescendFrom(a, first, first + width - 1, from, to, sight, use);
}

template <class Use>
void CFloors::DescendFrom(int node, int first, int last, int from, int to, const SSight& sight,
                          const Use& use) const {
    // to < first) || Beside what was asked for.
    if (last < from || to < first) {
        return;
    }
    // The part of the node that the segment covers.
    const double left = (std::max)(m_edges[(std::max)(first, from)], sight.m_dFrom);
    const double right = (std::min)(m_edges[(std::min)(last, to) + 1], sight.m_dTo);
    if (sight.GetTop(left, right) + sight.m_dMargin < m_low[node]) {
        return;
    }
    const bool bInside = from <= first && last <= to;
    if (first == last ||
        (bInside && sight.GetBottom(left, right) - sight.m_dMargin >= m_high[node])) {
        use(node, first, last);
        return;
    }
    const int middle = (first + last) / 2;
    DescendFrom(2 * node, first, middle, from, to, sight, use);
    DescendFrom(2 * node + 1, middle + 1, last, from, to, sight, use);
}
