#include "StdAfx.h"

#include "UnitRectInfo.h"

#include <algorithm>

#include "TolerantCompare.h"

namespace {

// Points whose coordinates differ by less stand in one column (drawing units, strict).
constexpr double kColumnTol = 1e-6;

bool IsAscending(double a, double b) { return a < b; }
bool IsDescending(double a, double b) { return a > b; }

struct SOrder {
    double AcGePoint3d::*m_pPrimary;
    bool (*m_pIsBefore)(double, double);
    double AcGePoint3d::*m_pSecondary;
    bool (*m_pIsNearer)(double, double);
};

const SOrder kBottomOrder = {&AcGePoint3d::x, IsAscending, &AcGePoint3d::y, IsAscending};
const SOrder kTopOrder = {&AcGePoint3d::x, IsAscending, &AcGePoint3d::y, IsDescending};
const SOrder kRightOrder = {&AcGePoint3d::y, IsDescending, &AcGePoint3d::x, IsDescending};
const SOrder kLeftOrder = {&AcGePoint3d::y, IsDescending, &AcGePoint3d::x, IsAscending};

const SOrder& GetOrder(E_RemoveLine_Dir dir) {
    switch (dir) {
        case E_Dir_Bottom:
            return kBottomOrder;
        case E_Dir_Top:
            return kTopOrder;
        case E_Dir_Right:
            return kRightOrder;
        default:
            return kLeftOrder;
    }
}

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
    const SOrder& order = GetOrder(dir);
    const auto primary = [&](const AcGePoint3d& p) { return p.*order.m_pPrimary; };
    const auto secondary = [&](const AcGePoint3d& p) { return p.*order.m_pSecondary; };
    std::sort(m_points.begin(), m_points.end(), [&](const AcGePoint3d& p, const AcGePoint3d& q) {
        return order.m_pIsBefore(primary(p), primary(q));
    });
    // "Equal within a tolerance" is no equivalence, so a sort may not compare by it: columns are
    // formed from neighbours of the sorted list first, then each is sorted by itself.
    for (auto first = m_points.begin(); first != m_points.end();) {
        auto last = first + 1;
        while (last != m_points.end() &&
               IsEqualValue(primary(*(last - 1)), primary(*last), kColumnTol)) {
            ++last;
        }
        std::sort(first, last, [&](const AcGePoint3d& p, const AcGePoint3d& q) {
            return order.m_pIsNearer(secondary(p), secondary(q));
        });
        first = last;
    }
}
