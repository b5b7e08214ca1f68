#include "StdAfx.h"

#include "NearBoxes.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace {

// Cell numbers beyond this lose their last digit when 1 is added.
constexpr double kMaxCell = 1e15;

double GetFlatDistance(double x1, double y1, double x2, double y2) {
    return AcGeVector2d(x1 - x2, y1 - y2).length();
}

}  // namespace

size_t CNearBoxes::SCellHash::operator()(const SCell& cell) const {
    size_t hash = 0;
    for (const double value : cell) {
        hash = hash * 1000003U ^ std::hash<double>()(value);
    }
    return hash;
}

bool CNearBoxes::IsNear(const CQZRect& a, const CQZRect& b) const {
    return GetFlatDistance(a.min.x, a.min.y, b.min.x, b.min.y) < m_dThreshold &&
           GetFlatDistance(a.min.x, a.max.y, b.min.x, b.max.y) < m_dThreshold &&
           GetFlatDistance(a.max.x, a.min.y, b.max.x, b.min.y) < m_dThreshold &&
           GetFlatDistance(a.max.x, a.max.y, b.max.x, b.max.y) < m_dThreshold;
}

bool CNearBoxes::IsNearAny(const std::vector<CQZRect>& boxes, const CQZRect& box) const {
    return std::any_of(boxes.begin(), boxes.end(),
                       [&](const CQZRect& other) { return IsNear(other, box); });
}

bool CNearBoxes::IsNearInCells(const SCell& cell, const CQZRect& box) const {
    constexpr int kNeighbours = 81;  // 3 in each of the four bounds
    for (int n = 0; n < kNeighbours; ++n) {
        const int second = n / 3 % 3;
        const int third = n / 9 % 3;
        const int fourth = n / 27;
        const SCell other = {cell[0] + n % 3 - 1, cell[1] + second - 1, cell[2] + third - 1,
                             cell[3] + fourth - 1};
        const auto found = m_cells.find(other);
        if (found != m_cells.end() && IsNearAny(found->second, box)) {
            return true;
        }
    }
    return false;
}

bool CNearBoxes::IsNearOrKeep(const CQZRect& box) {
    if (!(m_dThreshold > 0.0)) {
        return false;
    }
    const SCell cell = {std::floor(box.min.x / m_dThreshold), std::floor(box.min.y / m_dThreshold),
                        std::floor(box.max.x / m_dThreshold), std::floor(box.max.y / m_dThreshold)};
    const bool bCounted = std::all_of(cell.begin(), cell.end(),
                                      [](double value) { return std::fabs(value) < kMaxCell; });
    if (IsNearAny(m_outside, box) || (bCounted && IsNearInCells(cell, box))) {
        return true;
    }
    if (bCounted) {
        m_cells[cell].push_back(box);
        return false;
    }
    for (const auto& kept : m_cells) {
        if (IsNearAny(kept.second, box)) {
            return true;
        }
    }
    m_outside.push_back(box);
    return false;
}
