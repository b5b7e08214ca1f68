#include "StdAfx.h"

#include "BoxTree.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

void SortIntoTiles(std::vector<CBoxTree::SBox>& boxes, size_t nFanOut) {
    using SBox = CBoxTree::SBox;
    std::sort(boxes.begin(), boxes.end(), [](const SBox& a, const SBox& b) {
        return a.m_dMinX + a.m_dMaxX < b.m_dMinX + b.m_dMaxX;
    });
    const double leaves = static_cast<double>(boxes.size()) / static_cast<double>(nFanOut);
    const size_t column = nFanOut * static_cast<size_t>(std::ceil(std::sqrt(leaves)));
    for (size_t first = 0; first < boxes.size(); first += column) {
        const size_t last = (std::min)(first + column, boxes.size());
        std::sort(boxes.begin() + first, boxes.begin() + last, [](const SBox& a, const SBox& b) {
            return a.m_dMinY + a.m_dMaxY < b.m_dMinY + b.m_dMaxY;
        });
    }
}

CBoxTree::SBox Unite(const CBoxTree::SBox& a, const CBoxTree::SBox& b) {
    return {(std::min)(a.m_dMinX, b.m_dMinX), (std::min)(a.m_dMinY, b.m_dMinY),
            (std::max)(a.m_dMaxX, b.m_dMaxX), (std::max)(a.m_dMaxY, b.m_dMaxY), 0};
}

std::vector<CBoxTree::SBox> GroupBoxes(const std::vector<CBoxTree::SBox>& boxes, size_t nFanOut) {
    std::vector<CBoxTree::SBox> groups;
    groups.reserve(boxes.size() / nFanOut + 1);
    for (size_t i = 0; i < boxes.size(); ++i) {
        if (i % nFanOut == 0) {
            groups.push_back(boxes[i]);
        } else {
            groups.back() = Unite(groups.back(), boxes[i]);
        }
    }
    return groups;
}

}  // namespace

CBoxTree::CBoxTree(std::vector<SBox> boxes) {
    if (boxes.empty()) {
        return;
    }
    SortIntoTiles(boxes, kFanOut);
    m_levels.push_back(std::move(boxes));
    while (m_levels.back().size() > kFanOut) {
        m_levels.push_back(GroupBoxes(m_levels.back(), kFanOut));
    }
}
