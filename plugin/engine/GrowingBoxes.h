// A spatial index that boxes can be added to.
#pragma once

#include <vector>

#include "BoxIndex.h"

// Boxes in indices whose sizes at least double from one to the next, so that each box is indexed
// again only a few times (logarithmic method: Bentley and Saxe, 1980).
//
// cost     adding O(log^2 n) each in the long run; questions O(log^2 n + found)
class CGrowingBoxes {
public:
    // An item may be added more than once, with other boxes; it is then found by each of them.
    void Add(const SFlatBox& box, int item);

    // Calls use(item) for the items whose box passes enter(box), in no order, until one is true;
    // that is the result. enter() must accept any box that holds a box it accepts.
    template <class Enter, class Use>
    bool Visit(const Enter& enter, const Use& use) const {
        for (size_t i = 0; i < m_fresh.m_boxes.size(); ++i) {
            if (enter(m_fresh.m_boxes[i]) && use(m_fresh.m_items[i])) {
                return true;
            }
        }
        return std::any_of(m_levels.begin(), m_levels.end(), [&](const SLevel& level) {
            return level.m_index.Visit(enter, [&](int n) { return use(level.m_set.m_items[n]); });
        });
    }

private:
    struct SSet {
        std::vector<SFlatBox> m_boxes;
        std::vector<int> m_items;
    };
    struct SLevel {
        SSet m_set;
        CBoxIndex m_index;
    };

    SSet m_fresh;  // not indexed yet
    std::vector<SLevel> m_levels;
};
