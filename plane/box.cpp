#include "plane/box.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace plane {
namespace {

// Boxes that a node of the tree holds before it is split: fewer make more nodes than comparisons.
constexpr std::size_t kLeafSize = 6;

bool IsSound(const Box& box) { return !box.IsEmpty() && IsFinite(box.low) && IsFinite(box.high); }

}  // namespace

double Box::Size() const { return IsEmpty() ? 0.0 : (std::max)(Width(), Height()); }

void Box::Add(const Point& p) {
    low = {(std::min)(low.x, p.x), (std::min)(low.y, p.y)};
    high = {(std::max)(high.x, p.x), (std::max)(high.y, p.y)};
}

void Box::Add(const Box& other) {
    if (other.IsEmpty()) return;
    Add(other.low);
    Add(other.high);
}

bool Box::Contains(const Box& other) const {
    return other.low.x >= low.x && other.low.y >= low.y && other.high.x <= high.x &&
           other.high.y <= high.y;
}

bool Box::Contains(const Point& p) const {
    return p.x >= low.x && p.y >= low.y && p.x <= high.x && p.y <= high.y;
}

bool Box::Meets(const Box& other, double margin) const {
    return low.x - margin <= other.high.x && other.low.x - margin <= high.x &&
           low.y - margin <= other.high.y && other.low.y - margin <= high.y;
}

BoxIndex::BoxIndex(const std::vector<Box>& boxes) : m_boxes(boxes) {
    for (std::size_t i = 0; i < m_boxes.size(); ++i)
        if (IsSound(m_boxes[i])) m_order.push_back(i);
    if (!m_order.empty()) Split();
}

void BoxIndex::Split() {
    m_nodes.reserve(m_order.size());
    m_nodes.push_back({Box(), 0, m_order.size(), 0});
    // Nodes are appended while the list is walked: no recursion, whatever the input.
    for (std::size_t n = 0; n < m_nodes.size(); ++n) {
        const std::size_t begin = m_nodes[n].begin, end = m_nodes[n].end;
        Box box, middles;
        for (std::size_t k = begin; k < end; ++k) {
            box.Add(m_boxes[m_order[k]]);
            middles.Add(m_boxes[m_order[k]].Middle());
        }
        m_nodes[n].box = box;
        if (end - begin <= kLeafSize) continue;
        double Point::*const side = middles.Width() >= middles.Height() ? &Point::x : &Point::y;
        const std::size_t half = begin + (end - begin) / 2;
        const auto at = [this](std::size_t k) {
            return m_order.begin() + static_cast<std::ptrdiff_t>(k);
        };
        // Ties by number, so that the tree is the same wherever it is built.
        std::nth_element(at(begin), at(half), at(end), [&](std::size_t a, std::size_t b) {
            const double ca = m_boxes[a].Middle().*side, cb = m_boxes[b].Middle().*side;
            return ca < cb || (ca == cb && a < b);
        });
        m_nodes[n].first = m_nodes.size();
        m_nodes.push_back({Box(), begin, half, 0});
        m_nodes.push_back({Box(), half, end, 0});
    }
}

void BoxIndex::AppendMeeting(const Box& box, double margin, std::vector<std::size_t>& found) const {
    if (m_nodes.empty()) return;
    // Halving keeps the tree below 64 levels; each leaves one node waiting.
    std::size_t waiting[128];
    std::size_t count = 0;
    waiting[count++] = 0;
    while (count > 0) {
        const Node& node = m_nodes[waiting[--count]];
        if (!node.box.Meets(box, margin)) continue;
        if (node.first != 0) {
            waiting[count++] = node.first + 1;
            waiting[count++] = node.first;
            continue;
        }
        for (std::size_t k = node.begin; k < node.end; ++k)
            if (m_boxes[m_order[k]].Meets(box, margin)) found.push_back(m_order[k]);
    }
}

void ForEachMeetingPair(const std::vector<Box>& boxes, double margin,
                        const std::function<bool(std::size_t, std::size_t)>& use) {
    const BoxIndex index(boxes);
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        found.clear();
        if (IsSound(boxes[i])) index.AppendMeeting(boxes[i], margin, found);
        std::sort(found.begin(), found.end());
        for (const std::size_t j : found)
            if (j > i && !use(i, j)) return;
    }
}

}  // namespace plane
