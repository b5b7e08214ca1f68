#include "StdAfx.h"

#include "PointCells.h"

#include <algorithm>
#include <cmath>

namespace {

// Cells are this many tolerances wide: a point in a cell's middle has its equals in that cell, and
// points that are no equals of one another cannot crowd it.
constexpr double kCellTols = 8.0;
// Equals lie within 1/8 of a cell; the rest is room for the rounding of the quotient.
constexpr double kBorder = 0.2;
// Points farther apart along an axis are no equals, whatever the rounding of their distance.
constexpr double kReachFactor = 1.001;
constexpr double kLeastReach = 1e-150;
// So many cells in a row, as a power of two, lie in a row in the table, too.
constexpr int kGroupBits = 3;
constexpr std::uint64_t kGroupMask = (1U << kGroupBits) - 1;
// Below this many drawing units cells gain nothing, and a tolerance of 0 gives a size too.
constexpr double kMinCellSize = 1e-9;
// From here on the quotient's fraction is rounded away, and the cells on both sides are looked at.
constexpr double kFractionLost = 1e14;
// The largest quotient that is turned into a cell number, with room for the steps to neighbours.
constexpr double kMaxQuotient = 9e18;

}  // namespace

CPointCells::CPointCells(double dTol)
    : m_dCellSize((std::max)(kCellTols * dTol, kMinCellSize)),
      m_dReach(dTol * kReachFactor + kLeastReach) {
    m_tol.setEqualPoint(dTol);
}

void CPointCells::Clear() {
    m_points.clear();
    m_heads.clear();
    m_next.clear();
}

CPointCells::SCell CPointCells::GetCell(double dCoordinate) const {
    const double quotient =
        (std::min)((std::max)(dCoordinate / m_dCellSize, -kMaxQuotient), kMaxQuotient);
    const double cell = std::floor(quotient);
    const double fraction = quotient - cell;
    const int side = std::fabs(quotient) > kFractionLost ? 2
                     : fraction < kBorder                ? -1
                     : fraction > 1.0 - kBorder          ? 1
                                                         : 0;
    return {static_cast<std::int64_t>(cell), side};
}

size_t CPointCells::GetBucket(std::int64_t nX, std::int64_t nY) const {
    // Odd multipliers spread the groups over the table (Knuth's multiplicative hashing); the cells
    // of a group lie side by side, since the next question is mostly about a place close by.
    const std::uint64_t mixed = static_cast<std::uint64_t>(nX >> kGroupBits) * 0x9E3779B97F4A7C15U +
                                static_cast<std::uint64_t>(nY) * 0xC2B2AE3D27D4EB4FU;
    const std::uint64_t group = (mixed ^ (mixed >> 29)) * 0xBF58476D1CE4E5B9U >> 20;
    return static_cast<size_t>(group << kGroupBits |
                               (static_cast<std::uint64_t>(nX) & kGroupMask)) &
           (m_heads.size() - 1);
}

void CPointCells::File(int index) {
    const AcGePoint3d& pt = m_points[index];
    const size_t bucket = GetBucket(GetCell(pt.x).m_nIndex, GetCell(pt.y).m_nIndex);
    m_next.push_back(m_heads[bucket]);
    m_heads[bucket] = index;
}

void CPointCells::Rebuild() {
    m_heads.assign((std::max)(m_heads.size() * 4, size_t(64)), -1);
    m_next.clear();
    for (size_t i = 0; i < m_points.size(); ++i) {
        File(static_cast<int>(i));
    }
}

void CPointCells::Add(const AcGePoint3d& pt) {
    m_points.push_back(pt);
    if (m_points.size() <= kWalk) {
        return;
    }
    if (m_points.size() * 2 > m_heads.size()) {
        Rebuild();
    } else {
        File(static_cast<int>(m_points.size()) - 1);
    }
}

int CPointCells::FindFirst(const AcGePoint3d& pt) const {
    int first = -1;
    ForEachEqual(pt, [&](int index) {
        if (first < 0 || index < first) {
            first = index;
        }
    });
    return first;
}
