// Finding points that were filed before and equal a new one within a tolerance.
#pragma once

#include <cmath>
#include <cstdint>
#include <vector>

#include "StdAfx.h"

// A list of points with the plain questions "is an equal one there, and which is the first". The
// answers are those of a walk along the list with isEqualTo(); a hash of cells a few tolerances
// wide makes them O(1) as long as the points themselves are not closer than the tolerance, since
// passes ask about every end of every line. Short lists are simply walked.
//
// Any finite points and any tolerance do; coordinates so far off that cells cannot be told apart
// only make it slow.
class CPointCells {
public:
    // Within that distance points are equal, in drawing units; the distance itself counts.
    explicit CPointCells(double dTol);

    // Forgets all points and keeps the storage.
    void Clear();
    // Files the point, whether or not an equal one is there; its index is the number of points
    // filed before.
    void Add(const AcGePoint3d& pt);
    // The lowest index of a point equal to pt, or -1.
    int FindFirst(const AcGePoint3d& pt) const;
    // Calls use(index) for every point equal to pt, in no particular order.
    template <class Use>
    void ForEachEqual(const AcGePoint3d& pt, Use use) const;

    const std::vector<AcGePoint3d>& GetPoints() const { return m_points; }  // by index

private:
    struct SCell {
        std::int64_t m_nIndex;  // number of the cell along one axis
        // 0, or the step to the neighbouring cell that may also hold equals: -1, 1, or 2 for both.
        int m_nSide;
    };

    SCell GetCell(double dCoordinate) const;                   // of one coordinate
    size_t GetBucket(std::int64_t nX, std::int64_t nY) const;  // of a cell; several may share one
    void File(int index);                                      // puts a point into its bucket
    void Rebuild();  // more buckets, as points become many
    template <class Use>
    void VisitBucket(std::int64_t nX, std::int64_t nY, const AcGePoint3d& pt, Use& use) const;

    static constexpr size_t kWalk = 12;  // points up to here are walked

    AcGeTol m_tol;
    double m_dCellSize;                 // a few tolerances
    double m_dReach;                    // equals are no farther apart in x
    std::vector<AcGePoint3d> m_points;  // in the order of filing
    std::vector<int> m_heads;  // first point of each bucket, or -1; empty while points are walked
    std::vector<int> m_next;   // the next point of the same bucket
};

template <class Use>
void CPointCells::VisitBucket(std::int64_t nX, std::int64_t nY, const AcGePoint3d& pt,
                              Use& use) const {
    // Cells that share a bucket by chance only cost the comparison.
    for (int i = m_heads[GetBucket(nX, nY)]; i >= 0; i = m_next[i]) {
        if (std::fabs(m_points[i].x - pt.x) <= m_dReach && m_points[i].isEqualTo(pt, m_tol)) {
            use(i);
        }
    }
}

template <class Use>
void CPointCells::ForEachEqual(const AcGePoint3d& pt, Use use) const {
    if (m_heads.empty()) {
        for (size_t i = 0; i < m_points.size(); ++i) {
            if (m_points[i].isEqualTo(pt, m_tol)) {
                use(static_cast<int>(i));
            }
        }
        return;
    }
    const SCell x = GetCell(pt.x);
    const SCell y = GetCell(pt.y);
    const int fromX = x.m_nSide == -1 || x.m_nSide == 2 ? -1 : 0;
    const int toX = x.m_nSide >= 1 ? 1 : 0;
    const int fromY = y.m_nSide == -1 || y.m_nSide == 2 ? -1 : 0;
    const int toY = y.m_nSide >= 1 ? 1 : 0;
    for (int dx = fromX; dx <= toX; ++dx) {
        for (int dy = fromY; dy <= toY; ++dy) {
            VisitBucket(x.m_nIndex + dx, y.m_nIndex + dy, pt, use);
        }
    }
}
