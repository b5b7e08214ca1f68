// A spatial index over the boxes of the working segments.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "StdAfx.h"

// A box in the XY plane.
struct SFlatBox {
    double m_dMinX;  // drawing units
    double m_dMinY;
    double m_dMaxX;  // not below the least
    double m_dMaxY;

    static SFlatBox Of(const AcGePoint3d& p, const AcGePoint3d& q) {  // of two points in any order
        return {(std::min)(p.x, q.x), (std::min)(p.y, q.y), (std::max)(p.x, q.x),
                (std::max)(p.y, q.y)};
    }
    void Unite(const SFlatBox& other) {  // grows to hold the other
        m_dMinX = (std::min)(m_dMinX, other.m_dMinX);
        m_dMinY = (std::min)(m_dMinY, other.m_dMinY);
        m_dMaxX = (std::max)(m_dMaxX, other.m_dMaxX);
        m_dMaxY = (std::max)(m_dMaxY, other.m_dMaxY);
    }
    SFlatBox Padded(double pad) const {  // wider on all four sides
        return {m_dMinX - pad, m_dMinY - pad, m_dMaxX + pad, m_dMaxY + pad};
    }
    bool Holds(const SFlatBox& other) const {  // the border counts
        return m_dMinX <= other.m_dMinX && other.m_dMaxX <= m_dMaxX && m_dMinY <= other.m_dMinY &&
               other.m_dMaxY <= m_dMaxY;
    }
    // The gap between the boxes is not above pad on either axis.
    bool Touches(const SFlatBox& other, double pad) const {
        return m_dMinX <= other.m_dMaxX + pad && other.m_dMinX <= m_dMaxX + pad &&
               m_dMinY <= other.m_dMaxY + pad && other.m_dMinY <= m_dMaxY + pad;
    }
};

// Trees of boxes packed along a space-filling curve, eight neighbours to a node (packed R-trees:
// Kamel and Faloutsos 1993; order by interleaved bits: Morton 1966). Boxes of one size class, a
// factor of eight in the longer side, share a tree: a few lines across the whole drawing would
// otherwise widen the nodes of all the small pieces near them, and every question would look at
// every such node.
//
// cost     built in O(n); questions O(log n + found) where boxes of like size seldom overlap. A
//          drawing that lies in one spot beside a far point is sorted again by its own extents, so
//          uneven drawings cost no more.
// limits   finite coordinates, fewer than 2^31 boxes
class CBoxIndex {
public:
    explicit CBoxIndex(const std::vector<SFlatBox>& boxes);

    // Calls use(item) for the items whose box passes enter(box), the large size classes first,
    // until a use() returns true; that is the result. enter() must accept any box that holds a box
    // it accepts.
    template <class Enter, class Use>
    bool Visit(const Enter& enter, const Use& use) const;

    // Calls use(item, item) once for every two items whose boxes touch within pad, in an order that
    // keeps neighbours together. mayMeet(item, box) may refuse pairs of a larger item and
    // everything within a box; it is asked for small boxes under large items only.
    template <class MayMeet, class Use>
    void ForEachPair(double pad, const MayMeet& mayMeet, const Use& use) const;
    template <class Use>
    void ForEachPair(double pad, const Use& use) const {
        ForEachPair(
            pad, [](int, const SFlatBox&) { return true; }, use);
    }

    // Widens an item's box so that it holds the point.
    void Grow(int item, const AcGePoint3d& pt);

private:
    static constexpr size_t kFanOut = 8;  // boxes of a node

    struct STree {
        std::vector<int> m_items;                     // in the order of the curve
        std::vector<std::vector<SFlatBox>> m_levels;  // the items' boxes first, the roots last
        size_t Top() const { return m_levels.size() - 1; }
    };
    struct SPlace {
        std::uint32_t m_nTree;   // which of the trees holds the item
        std::uint32_t m_nIndex;  // and where among its boxes
    };

    // Packs one size class.
    void AddTree(const std::vector<SFlatBox>& boxes, std::vector<int> items);

    // Goes down from a node's first child on.
    template <class Enter, class Use>
    static bool VisitNodes(const STree& tree, size_t level, size_t first, const Enter& enter,
                           const Use& use);
    // Pairs between two nodes of one tree; a == b: within one.
    template <class Use>
    static void JoinWithin(const STree& tree, size_t level, size_t a, size_t b, double pad,
                           const Use& use);
    // Pairs between a node of a tree of larger boxes and one of smaller ones.
    template <class MayMeet, class Use>
    static void JoinTrees(const STree& large, size_t levelA, size_t a, const STree& little,
                          size_t levelB, size_t b, double pad, const MayMeet& mayMeet,
                          const Use& use);

    // behind the last child of a node
    static size_t LastChild(const STree& tree, size_t level, size_t node) {
        return (std::min)((node + 1) * kFanOut, tree.m_levels[level - 1].size());
    }

    std::vector<STree> m_trees;    // from the largest boxes to the smallest, none empty
    std::vector<SPlace> m_places;  // of each item
};

template <class Enter, class Use>
bool CBoxIndex::VisitNodes(const STree& tree, size_t level, size_t first, const Enter& enter,
                           const Use& use) {
    const std::vector<SFlatBox>& boxes = tree.m_levels[level];
    const size_t last = (std::min)(first + kFanOut, boxes.size());
    for (size_t i = first; i < last; ++i) {
        // No box below it can be wanted either.
        if (!enter(boxes[i])) {
            continue;
        }
        if (level == 0 ? use(tree.m_items[i])
                       : VisitNodes(tree, level - 1, i * kFanOut, enter, use)) {
            return true;
        }
    }
    return false;
}

template <class Enter, class Use>
bool CBoxIndex::Visit(const Enter& enter, const Use& use) const {
    return std::any_of(m_trees.begin(), m_trees.end(), [&](const STree& tree) {
        return VisitNodes(tree, tree.Top(), 0, enter, use);
    });
}

template <class Use>
void CBoxIndex::JoinWithin(const STree& tree, size_t level, size_t a, size_t b, double pad,
                           const Use& use) {
    // Two leaves that touch.
    if (level == 0) {
        if (a != b) {
            use(tree.m_items[a], tree.m_items[b]);
        }
        return;
    }
    const std::vector<SFlatBox>& below = tree.m_levels[level - 1];
    const SFlatBox& other = tree.m_levels[level][b];
    for (size_t i = a * kFanOut; i < LastChild(tree, level, a); ++i) {
        if (a != b && !below[i].Touches(other, pad)) {
            continue;
        }
        for (size_t j = a == b ? i : b * kFanOut; j < LastChild(tree, level, b); ++j) {
            if (i == j ? level > 1 : below[i].Touches(below[j], pad)) {
                JoinWithin(tree, level - 1, i, j, pad, use);
            }
        }
    }
}

template <class MayMeet, class Use>
void CBoxIndex::JoinTrees(const STree& large, size_t levelA, size_t a, const STree& little,
                          size_t levelB, size_t b, double pad, const MayMeet& mayMeet,
                          const Use& use) {
    const SFlatBox& boxA = large.m_levels[levelA][a];
    const SFlatBox& boxB = little.m_levels[levelB][b];
    // Nothing in the one touches anything in the other.
    if (!boxA.Touches(boxB, pad)) {
        return;
    }
    // The higher node is opened, so that both shrink alike.
    if (levelA > 0 && levelA >= levelB) {
        for (size_t i = a * kFanOut; i < LastChild(large, levelA, a); ++i) {
            JoinTrees(large, levelA - 1, i, little, levelB, b, pad, mayMeet, use);
        }
    } else if (levelA == 0 && !mayMeet(large.m_items[a], boxB)) {
        return;
    } else if (levelB > 0) {
        for (size_t j = b * kFanOut; j < LastChild(little, levelB, b); ++j) {
            JoinTrees(large, levelA, a, little, levelB - 1, j, pad, mayMeet, use);
        }
    } else {
        use(large.m_items[a], little.m_items[b]);
    }
}

template <class MayMeet, class Use>
void CBoxIndex::ForEachPair(double pad, const MayMeet& mayMeet, const Use& use) const {
    for (size_t t = 0; t < m_trees.size(); ++t) {
        const STree& large = m_trees[t];
        const std::vector<SFlatBox>& roots = large.m_levels.back();
        for (size_t a = 0; a < roots.size(); ++a) {
            for (size_t b = a; b < roots.size(); ++b) {
                if (roots[a].Touches(roots[b], pad)) {
                    JoinWithin(large, large.Top(), a, b, pad, use);
                }
            }
            for (size_t s = t + 1; s < m_trees.size(); ++s) {
                const STree& little = m_trees[s];
                for (size_t b = 0; b < little.m_levels.back().size(); ++b) {
                    JoinTrees(large, large.Top(), a, little, little.Top(), b, pad, mayMeet, use);
                }
            }
        }
    }
}
