// Finding boxes that were kept before and are nearly the same.
#pragma once

#include <array>
#include <unordered_map>
#include <vector>

#include "QZRect.h"

// Remembers boxes and tells whether a new one is nearly one of them: all four pairs of like corners
// closer than the threshold (drawing units, strict). The answer is that of a walk over all kept
// boxes; a hash of cells as wide as the threshold, in the four bounds, makes it O(1), since
// drawings with tens of thousands of small polylines occur.
class CNearBoxes {
public:
    explicit CNearBoxes(double dThreshold) : m_dThreshold(dThreshold) {}

    // True when a kept box is nearly the same; otherwise the box is kept. Nothing is near when the
    // threshold is not positive.
    bool IsNearOrKeep(const CQZRect& box);

private:
    using SCell = std::array<double, 4>;
    struct SCellHash {
        size_t operator()(const SCell& cell) const;
    };

    bool IsNear(const CQZRect& a, const CQZRect& b) const;  // the plain comparison
    // with any of these
    bool IsNearAny(const std::vector<CQZRect>& boxes, const CQZRect& box) const;
    // looks into the cell and its neighbours
    bool IsNearInCells(const SCell& cell, const CQZRect& box) const;

    double m_dThreshold;  // drawing units
    std::unordered_map<SCell, std::vector<CQZRect>, SCellHash> m_cells;
    std::vector<CQZRect> m_outside;  // so far off that cells cannot be counted in a double
};
