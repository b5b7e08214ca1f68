#include "StdAfx.h"

#include "GrowingBoxes.h"

#include <utility>

namespace {

// So many boxes are looked through one by one as fast as an index is asked.
constexpr size_t kFreshBoxes = 64;

}  // namespace

void CGrowingBoxes::Add(const SFlatBox& box, int item) {
    m_fresh.m_boxes.push_back(box);
    m_fresh.m_items.push_back(item);
    if (m_fresh.m_boxes.size() < kFreshBoxes) {
        return;
    }
    SSet all = std::move(m_fresh);
    m_fresh = SSet();
    while (!m_levels.empty() && m_levels.back().m_set.m_boxes.size() <= all.m_boxes.size()) {
        const SSet& last = m_levels.back().m_set;
        all.m_boxes.insert(all.m_boxes.end(), last.m_boxes.begin(), last.m_boxes.end());
        all.m_items.insert(all.m_items.end(), last.m_items.begin(), last.m_items.end());
        m_levels.pop_back();
    }
    CBoxIndex index(all.m_boxes);
    m_levels.push_back({std::move(all), std::move(index)});
}
