#include "StdAfx.h"

#include "BoxIndex.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace {

struct SKeyed {
    std::uint64_t m_nKey;
    int m_nItem;
};

// Spreads the bits of a number apart, a 0 before each.
std::uint64_t SpreadBits(std::uint32_t value) {
    std::uint64_t x = value;
    x = (x | (x << 16)) & 0x0000FFFF0000FFFFU;
    x = (x | (x << 8)) & 0x00FF00FF00FF00FFU;
    x = (x | (x << 4)) & 0x0F0F0F0F0F0F0F0FU;
    x = (x | (x << 2)) & 0x3333333333333333U;
    return (x | (x << 1)) & 0x5555555555555555U;
}

// A place between dMin and dMin + dSize on a scale of 32 bits.
std::uint32_t ToGrid(double value, double dMin, double dSize) {
    constexpr double kSteps = 4294967295.0;
    const double part = (value - dMin) / dSize;
    return part > 0.0 ? static_cast<std::uint32_t>((std::min)(part, 1.0) * kSteps) : 0;
}

double GetMiddleX(const SFlatBox& box) { return box.m_dMinX / 2 + box.m_dMaxX / 2; }
double GetMiddleY(const SFlatBox& box) { return box.m_dMinY / 2 + box.m_dMaxY / 2; }

// Sorts by key, least digit first; digits that are the same everywhere cost only the counting.
void SortByKey(std::vector<SKeyed>& keyed) {
    // So few are compared sooner than the counters are cleared.
    constexpr size_t kFew = 500;
    if (keyed.size() < kFew) {
        std::stable_sort(keyed.begin(), keyed.end(),
                         [](const SKeyed& a, const SKeyed& b) { return a.m_nKey < b.m_nKey; });
        return;
    }
    constexpr int kDigitBits = 11;
    constexpr std::uint64_t kDigitMask = (1U << kDigitBits) - 1;
    std::vector<SKeyed> other(keyed.size());
    for (int shift = 0; shift < 64; shift += kDigitBits) {
        std::array<size_t, kDigitMask + 1> ends = {};
        for (const SKeyed& entry : keyed) {
            ++ends[entry.m_nKey >> shift & kDigitMask];
        }
        if (ends[keyed.front().m_nKey >> shift & kDigitMask] == keyed.size()) {
            continue;
        }
        size_t sum = 0;
        for (size_t& end : ends) {
            sum += std::exchange(end, sum);
        }
        for (const SKeyed& entry : keyed) {
            other[ends[entry.m_nKey >> shift & kDigitMask]++] = entry;
        }
        keyed.swap(other);
    }
}

// Orders the items along the curve through their boxes' middles.
void SortAlongCurve(const std::vector<SFlatBox>& boxes, int* first, int* last) {
    SFlatBox extents = {GetMiddleX(boxes[*first]), GetMiddleY(boxes[*first]),
                        GetMiddleX(boxes[*first]), GetMiddleY(boxes[*first])};
    for (const int* item = first; item != last; ++item) {
        const double x = GetMiddleX(boxes[*item]);
        const double y = GetMiddleY(boxes[*item]);
        extents.Unite({x, y, x, y});
    }
    const double width = extents.m_dMaxX - extents.m_dMinX;
    const double height = extents.m_dMaxY - extents.m_dMinY;
    if (!(width > 0.0) && !(height > 0.0)) {
        return;
    }
    // One scale for both axes, or a flat drawing would be cut into slivers.
    const double size = (std::max)(width, height);
    std::vector<SKeyed> keyed;
    keyed.reserve(static_cast<size_t>(last - first));
    for (const int* item = first; item != last; ++item) {
        const std::uint64_t x = SpreadBits(ToGrid(GetMiddleX(boxes[*item]), extents.m_dMinX, size));
        const std::uint64_t y = SpreadBits(ToGrid(GetMiddleY(boxes[*item]), extents.m_dMinY, size));
        keyed.push_back({x | y << 1, *item});
    }
    SortByKey(keyed);
    // A far point can squeeze a whole drawing into one cell of the scale. Such a run is sorted by
    // its own extents.
    constexpr size_t kCrowd = 16;
    for (size_t from = 0; from < keyed.size();) {
        size_t to = from;
        while (to < keyed.size() && keyed[to].m_nKey == keyed[from].m_nKey) {
            first[to] = keyed[to].m_nItem;
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
int GetSizeClass(const SFlatBox& box) {
    const double size = (std::max)(box.m_dMaxX - box.m_dMinX, box.m_dMaxY - box.m_dMinY);
    int exponent = 0;
    std::frexp(size, &exponent);
    // Sizes below any tolerance belong together, points too.
    constexpr int kTiny = -36;
    return size > 0.0 ? (std::max)(exponent, kTiny) >> kClassBits : kTiny >> kClassBits;
}

}  // namespace

CBoxIndex::CBoxIndex(const std::vector<SFlatBox>& boxes) : m_places(boxes.size()) {
    std::vector<std::pair<int, std::vector<int>>> classes;
    for (size_t i = 0; i < boxes.size(); ++i) {
        const int size = GetSizeClass(boxes[i]);
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

void CBoxIndex::AddTree(const std::vector<SFlatBox>& boxes, std::vector<int> items) {
    SortAlongCurve(boxes, items.data(), items.data() + items.size());
    STree tree;
    std::vector<SFlatBox> level;
    level.reserve(items.size());
    for (size_t i = 0; i < items.size(); ++i) {
        level.push_back(boxes[items[i]]);
        m_places[items[i]] = {static_cast<std::uint32_t>(m_trees.size()),
                              static_cast<std::uint32_t>(i)};
    }
    tree.m_items = std::move(items);
    tree.m_levels.push_back(std::move(level));
    while (tree.m_levels.back().size() > kFanOut) {
        const std::vector<SFlatBox>& below = tree.m_levels.back();
        std::vector<SFlatBox> nodes;
        nodes.reserve(below.size() / kFanOut + 1);
        for (size_t i = 0; i < below.size(); ++i) {
            if (i % kFanOut == 0) {
                nodes.push_back(below[i]);
            } else {
                nodes.back().Unite(below[i]);
            }
        }
        tree.m_levels.push_back(std::move(nodes));
    }
    m_trees.push_back(std::move(tree));
}

void CBoxIndex::Grow(int item, const AcGePoint3d& pt) {
    STree& tree = m_trees[m_places[item].m_nTree];
    size_t index = m_places[item].m_nIndex;
    for (std::vector<SFlatBox>& level : tree.m_levels) {
        level[index].Unite({pt.x, pt.y, pt.x, pt.y});
        index /= kFanOut;
    }
}
