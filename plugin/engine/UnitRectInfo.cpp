#include "StdAfx.h"

#include "UnitRectInfo.h"

#include <algorithm>

#include "SideOrder.h"
#include "TolerantCompare.h"

namespace {

// Points whose coordinates differ by less stand in one column (drawing units, strict).
constexpr double kColumnTol = 1e-6;

}  // namespace

CUnitRectInfo::CUnitRectInfo() : m_rect(true) {}
CUnitRectInfo::CUnitRectInfo(const CUnitRectInfo& other) = default;
CUnitRectInfo& CUnitRectInfo::operator=(const CUnitRectInfo& other) = default;
CUnitRectInfo::~CUnitRectInfo() = default;

void CUnitRectInfo::AddPoint(const AcGePoint3d& pt, const AcGeTol& tol) {
    const auto isSame = [&](const AcGePoint3d& other) { return other.isEqualTo(pt, tol); };
    if (std::none_of(m_points.begin(), m_points.end(), isSame)) {
        m_points.push_back(pt);
    }
}

void CUnitRectInfo::Sort(E_RemoveLine_Dir dir) {
    const SSideView view(dir);
    // Columns from left to right, rows from the top down.
    std::sort(m_points.begin(), m_points.end(), [&](const AcGePoint3d& p, const AcGePoint3d& q) {
        const double a = view.GetAcross(p), b = view.GetAcross(q);
        return view.m_bVertical ? a < b : a > b;
    });
    // "Equal within a tolerance" is no equivalence, so a sort may not compare by it: columns are
    // formed from neighbours of the sorted list first, then each is sorted by itself.
    for (auto first = m_points.begin(); first != m_points.end();) {
        auto last = first + 1;
        while (last != m_points.end() &&
               IsEqualValue(view.GetAcross(*(last - 1)), view.GetAcross(*last), kColumnTol)) {
            ++last;
        }
        std::sort(first, last, [&](const AcGePoint3d& p, const AcGePoint3d& q) {
            return view.GetTowards(p) > view.GetTowards(q);
        });
        first = last;
    }
}
