// A spatial index over boxes.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "plane/box.h"

namespace plane {

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
class BoxIndex {
public:
    explicit BoxIndex(const std::vector<Box>& boxes);

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
            pad, [](int, const Box&) { return true; }, use);
    }

    // Widens an item's box so that it holds the point.
    void Grow(int item, const Point& p);

private:
    static constexpr std::size_t kFanOut = 8;  // boxes of a node

    struct Tree {
        std::vector<int> items;                // in the order of the curve
        std::vector<std::vector<Box>> levels;  // the items' boxes first, the roots last
        std::size_t Top() const { return levels.size() - 1; }
    };
    struct Place {
        std::uint32_t tree;   // which of the trees holds the item
        std::uint32_t index;  // and where among its boxes
    };

    // Packs one size class.
    void AddTree(const std::vector<Box>& boxes, std::vector<int> items);

    // Goes down from a node's first child on.
    template <class Enter, class Use>
    static bool VisitNodes(const Tree& tree, std::size_t level, std::size_t first,
                           const Enter& enter, const Use& use);
    // Pairs between two nodes of one tree; a == b: within one.
    template <class Use>
    static void JoinWithin(const Tree& tree, std::size_t level, std::size_t a, std::size_t b,
                           double pad, const Use& use);
    // Pairs between a node of a tree of larger boxes and one of smaller ones.
    template <class MayMeet, class Use>
    static void JoinTrees(const Tree& large, std::size_t levelA, std::size_t a, const Tree& little,
                          std::size_t levelB, std::size_t b, double pad, const MayMeet& mayMeet,
                          const Use& use);

    // behind the last child of a node
    static std::size_t LastChild(const Tree& tree, std::size_t level, std::size_t node) {
        return (std::min)((node + 1) * kFanOut, tree.levels[level - 1].size());
    }

    std::vector<Tree> m_trees;    // from the largest boxes to the smallest, none empty
    std::vector<Place> m_places;  // of each item
};

template <class Enter, class Use>
bool BoxIndex::VisitNodes(const Tree& tree, std::size_t level, std::size_t first,
                          const Enter& enter, const Use& use) {
    const std::vector<Box>& boxes = tree.levels[level];
    const std::size_t last = (std::min)(first + kFanOut, boxes.size());
    for (std::size_t i = first; i < last; ++i) {
        // No box below it can be wanted either.
        if (!enter(boxes[i])) {
            continue;
        }
        if (level == 0 ? use(tree.items[i])
                       : VisitNodes(tree, level - 1, i * kFanOut, enter, use)) {
            return true;
        }
    }
    return false;
}

template <class Enter, class Use>
bool BoxIndex::Visit(const Enter& enter, const Use& use) const {
    return std::any_of(m_trees.begin(), m_trees.end(), [&](const Tree& tree) {
        return VisitNodes(tree, tree.Top(), 0, enter, use);
    });
}

template <class Use>
void BoxIndex::JoinWithin(const Tree& tree, std::size_t level, std::size_t a, std::size_t b,
                          double pad, const Use& use) {
    // Two leaves that touch.
    if (level == 0) {
        if (a != b) {
            use(tree.items[a], tree.items[b]);
        }
        return;
    }
    const std::vector<Box>& below = tree.levels[level - 1];
    const Box& other = tree.levels[level][b];
    for (std::size_t i = a * kFanOut; i < LastChild(tree, level, a); ++i) {
        if (a != b && !below[i].Meets(other, pad)) {
            continue;
        }
        for (std::size_t j = a == b ? i : b * kFanOut; j < LastChild(tree, level, b); ++j) {
            if (i == j ? level > 1 : below[i].Meets(below[j], pad)) {
                JoinWithin(tree, level - 1, i, j, pad, use);
            }
        }
    }
}

template <class MayMeet, class Use>
void BoxIndex::JoinTrees(const Tree& large, std::size_t levelA, std::size_t a, const Tree& little,
                         std::size_t levelB, std::size_t b, double pad, const MayMeet& mayMeet,
                         const Use& use) {
    const Box& boxA = large.levels[levelA][a];
    const Box& boxB = little.levels[levelB][b];
    // Nothing in the one touches anything in the other.
    if (!boxA.Meets(boxB, pad)) {
        return;
    }
    // The higher node is opened, so that both shrink alike.
    if (levelA > 0 && levelA >= levelB) {
        for (std::size_t i = a * kFanOut; i < LastChild(large, levelA, a); ++i) {
            JoinTrees(large, levelA - 1, i, little, levelB, b, pad, mayMeet, use);
        }
    } else if (levelA == 0 && !mayMeet(large.items[a], boxB)) {
        return;
    } else if (levelB > 0) {
        for (std::size_t j = b * kFanOut; j < LastChild(little, levelB, b); ++j) {
            JoinTrees(large, levelA, a, little, levelB - 1, j, pad, mayMeet, use);
        }
    } else {
        use(large.items[a], little.items[b]);
    }
}

template <class MayMeet, class Use>
void BoxIndex::ForEachPair(double pad, const MayMeet& mayMeet, const Use& use) const {
    for (std::size_t t = 0; t < m_trees.size(); ++t) {
        const Tree& large = m_trees[t];
        const std::vector<Box>& roots = large.levels.back();
        for (std::size_t a = 0; a < roots.size(); ++a) {
            for (std::size_t b = a; b < roots.size(); ++b) {
                if (roots[a].Meets(roots[b], pad)) {
                    JoinWithin(large, large.Top(), a, b, pad, use);
                }
            }
            for (std::size_t s = t + 1; s < m_trees.size(); ++s) {
                const Tree& little = m_trees[s];
                for (std::size_t b = 0; b < little.levels.back().size(); ++b) {
                    JoinTrees(large, large.Top(), a, little, little.Top(), b, pad, mayMeet, use);
                }
            }
        }
    }
}

}  // namespace plane
