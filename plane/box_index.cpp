#include "plane/box_index.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "plane/key_sort.h"

namespace plane {
namespace {

// Spreads the bits of a number apart, a 0 before each.
std::uint64_t SpreadBits(std::uint32_t value) {
    std::uint64_t x = value;
    x = (x | (x << 16)) & 0x0000FFFF0000FFFFU;
    x = (x | (x << 8)) & 0x00FF00FF00FF00FFU;
    x = (x | (x << 4)) & 0x0F0F0F0F0F0F0F0FU;
    x = (x | (x << 2)) & 0x3333333333333333U;
    return (x | (x << 1)) & 0x5555555555555555U;
}

// A place between least and least + size on a scale of 32 bits.
std::uint32_t ToGrid(double value, double least, double size) {
    constexpr double kSteps = 4294967295.0;
    const double part = (value - least) / size;
    return part > 0.0 ? static_cast<std::uint32_t>((std::min)(part, 1.0) * kSteps) : 0;
}

Point MiddleOf(const Box& box) {
    return {box.low.x / 2 + box.high.x / 2, box.low.y / 2 + box.high.y / 2};
}

// Orders the items along the curve through their boxes' middles.
void SortAlongCurve(const std::vector<Box>& boxes, int* first, int* last) {
    Box extents;
    for (const int* item = first; item != last; ++item)
        extents.Add(MiddleOf(boxes[static_cast<std::size_t>(*item)]));
    const double width = extents.Width(), height = extents.Height();
    if (!(width > 0.0) && !(height > 0.0)) {
        return;
    }
    // One scale for both axes, or a flat drawing would be cut into slivers.
    const double size = (std::max)(width, height);
    std::vector<Keyed> keyed;
    keyed.reserve(static_cast<std::size_t>(last - first));
    for (const int* item = first; item != last; ++item) {
        const Point middle = MiddleOf(boxes[static_cast<std::size_t>(*item)]);
        const std::uint64_t x = SpreadBits(ToGrid(middle.x, extents.low.x, size));
        const std::uint64_t y = SpreadBits(ToGrid(middle.y, extents.low.y, size));
        keyed.push_back({x | y << 1, *item});
    }
    SortByKey(keyed);
    // A far point can squeeze a whole drawing into one cell of the scale. Such a run is sorted by
    // its own extents.
    constexpr std::size_t kCrowd = 16;
    for (std::size_t from = 0; from < keyed.size();) {
        std::size_t to = from;
        while (to < keyed.size() && keyed[to].key == keyed[from].key) {
            first[to] = keyed[to].item;
            ++to;
        }
        if (to - from > kCrowd && to - from < keyed.size()) {
            SortAlongCurve(boxes, first + from, first + to);
        }
        from = to;
    }
}

constexpr int kClassBits = 3;  // a class spans a factor of eight

// Number of the size class; larger boxes have larger numbers.
int SizeClassOf(const Box& box) {
    const double size = (std::max)(box.Width(), box.Height());
    int exponent = 0;
    std::frexp(size, &exponent);
    // Sizes below any tolerance belong together, points too.
    constexpr int kTiny = -36;
    return size > 0.0 ? (std::max)(exponent, kTiny) >> kClassBits : kTiny >> kClassBits;
}

}  // namespace

BoxIndex::BoxIndex(const std::vector<Box>& boxes) : m_places(boxes.size()) {
    std::vector<std::pair<int, std::vector<int>>> classes;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        const int size = SizeClassOf(boxes[i]);
        auto found = std::find_if(classes.begin(), classes.end(),
                                  [&](const auto& entry) { return entry.first == size; });
        if (found == classes.end()) {
            found = classes.insert(found, {size, {}});
        }
        found->second.push_back(static_cast<int>(i));
    }
    std::sort(classes.begin(), classes.end(),
              [](const auto& a, const auto& b) { return a.first > b.first; });
    m_trees.reserve(classes.size());
    for (auto& entry : classes) {
        AddTree(boxes, std::move(entry.second));
    }
}

void BoxIndex::AddTree(const std::vector<Box>& boxes, std::vector<int> items) {
    SortAlongCurve(boxes, items.data(), items.data() + items.size());
    Tree tree;
    std::vector<Box> level;
    level.reserve(items.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        const auto item = static_cast<std::size_t>(items[i]);
        level.push_back(boxes[item]);
        m_places[item] = {static_cast<std::uint32_t>(m_trees.size()),
                          static_cast<std::uint32_t>(i)};
    }
    tree.items = std::move(items);
    tree.levels.push_back(std::move(level));
    while (tree.levels.back().size() > kFanOut) {
        const std::vector<Box>& below = tree.levels.back();
        std::vector<Box> nodes;
        nodes.reserve(below.size() / kFanOut + 1);
        for (std::size_t i = 0; i < below.size(); ++i) {
            if (i % kFanOut == 0) {
                nodes.push_back(below[i]);
            } else {
                nodes.back().Add(below[i]);
            }
        }
        tree.levels.push_back(std::move(nodes));
    }
    m_trees.push_back(std::move(tree));
}

void BoxIndex::Grow(int item, const Point& p) {
    const Place place = m_places[static_cast<std::size_t>(item)];
    std::size_t index = place.index;
    for (std::vector<Box>& level : m_trees[place.tree].levels) {
        level[index].Add(p);
        index /= kFanOut;
    }
}

}  // namespace plane
