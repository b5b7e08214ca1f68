// A packed tree over boxes that do not change.
#pragma once

#include <cstddef>
#include <vector>

// Finds the boxes that hold a point in O(log n + found) where boxes seldom overlap. Built once in
// O(n log n): boxes are sorted into columns by x, in each by y, and eight neighbours at a time get
// a common box (sort-tile-recursive packing; Leutenegger, Lopez and Edgington 1997).
class CBoxTree {
public:
    struct SBox {
        double m_dMinX;
        double m_dMinY;
        double m_dMaxX;
        double m_dMaxY;
        size_t m_nItem;  // what the caller filed under the box

        bool Holds(double x, double y) const {
            return m_dMinX <= x && x <= m_dMaxX && m_dMinY <= y && y <= m_dMaxY;
        }
    };

    // The coordinates must be finite.
    explicit CBoxTree(std::vector<SBox> boxes);

    // Calls use(item) for every box that holds the point, borders included, in no particular order.
    template <class Use>
    void ForEachAt(double x, double y, Use use) const {
        if (!m_levels.empty()) {
            Visit(m_levels.size() - 1, 0, m_levels.back().size(), x, y, use);
        }
    }

private:
    static constexpr size_t kFanOut = 8;

    template <class Use>
    void Visit(size_t level, size_t first, size_t last, double x, double y, Use& use) const {
        const std::vector<SBox>& boxes = m_levels[level];
        for (size_t i = first; i < last && i < boxes.size(); ++i) {
            if (!boxes[i].Holds(x, y)) {
                continue;
            }
            if (level == 0) {
                use(boxes[i].m_nItem);
            } else {
                Visit(level - 1, i * kFanOut, (i + 1) * kFanOut, x, y, use);
            }
        }
    }

    std::vector<std::vector<SBox>> m_levels;  // the boxes themselves first, the roots last
};
