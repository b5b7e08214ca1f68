#include "StdAfx.h"

#include "ArcIndex.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

constexpr double kTwoPi = 2 * 3.14159265358979323846;

// Stretches of a sixteenth of a turn leave their chord by under 2 % of the radius.
constexpr double kStretch = kTwoPi / 16;

// Widens boxes by a hair more than what lies on the arc, so that rounding in the sines loses none.
constexpr double kBoxMargin = 2 * kThroughArcTol;

void AddStretches(const SArc& arc, size_t index, std::vector<CBoxTree::SBox>& boxes) {
    double sweep = arc.m_dEndAngle - arc.m_dStartAngle;
    if (!(sweep > 0.0)) {
        sweep += kTwoPi;
    }
    const int count = static_cast<int>(std::ceil(sweep / kStretch));
    const double step = sweep / count;
    // What the arc rises above a stretch's chord, plus the rounding of coordinates far from 0.
    const double reach = arc.m_dRadius + std::fabs(arc.m_centre.x) + std::fabs(arc.m_centre.y);
    const double margin = arc.m_dRadius * (1.0 - std::cos(step / 2)) + kBoxMargin + 1e-12 * reach;
    for (int i = 0; i < count; ++i) {
        const double from = arc.m_dStartAngle + i * step;
        const double to = from + step;
        const double x1 = arc.m_centre.x + arc.m_dRadius * std::cos(from);
        const double y1 = arc.m_centre.y + arc.m_dRadius * std::sin(from);
        const double x2 = arc.m_centre.x + arc.m_dRadius * std::cos(to);
        const double y2 = arc.m_centre.y + arc.m_dRadius * std::sin(to);
        boxes.push_back({(std::min)(x1, x2) - margin, (std::min)(y1, y2) - margin,
                         (std::max)(x1, x2) + margin, (std::max)(y1, y2) + margin, index});
    }
}

// Sums of such coordinates do not overflow; angles that are not numbers fail too.
bool IsUsable(const SArc& arc) {
    constexpr double kHuge = 1e150;
    return std::fabs(arc.m_centre.x) < kHuge && std::fabs(arc.m_centre.y) < kHuge &&
           std::fabs(arc.m_dRadius) < kHuge && std::isfinite(arc.m_dStartAngle) &&
           std::isfinite(arc.m_dEndAngle);
}

std::vector<CBoxTree::SBox> GetBoxes(const std::vector<SArc>& arcs) {
    std::vector<CBoxTree::SBox> boxes;
    for (size_t i = 0; i < arcs.size(); ++i) {
        AddStretches(arcs[i], i, boxes);
    }
    return boxes;
}

std::vector<SArc> ReadArcs(const AcArray<AcDbObjectId>& ids, std::vector<AcDbObjectId>& read) {
    std::vector<SArc> arcs;
    for (int i = 0; i < ids.length(); ++i) {
        SArc arc;
        if (ReadArc(ids[i], arc) && IsUsable(arc)) {
            read.push_back(ids[i]);
            arcs.push_back(arc);
        }
    }
    return arcs;
}

}  // namespace

CArcIndex::CArcIndex(const AcArray<AcDbObjectId>& ids)
    : m_arcs(ReadArcs(ids, m_ids)), m_tree(GetBoxes(m_arcs)) {}

std::vector<size_t> CArcIndex::FindThrough(const AcGePoint3d& pt) const {
    std::vector<size_t> found;
    m_tree.ForEachAt(pt.x, pt.y, [&](size_t index) {
        if (GetDistanceToArc(m_arcs[index], pt) <= kThroughArcTol) {
            found.push_back(index);
        }
    });
    // Neighbouring stretches of one arc both hold their common end.
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

std::vector<size_t> CArcIndex::KeepAlong(const std::vector<size_t>& arcs,
                                         const AcGePoint3d& pt) const {
    std::vector<size_t> kept;
    std::copy_if(arcs.begin(), arcs.end(), std::back_inserter(kept),
                 [&](size_t index) { return ::IsPointOnArc(m_arcs[index], pt, kAlongArcTol); });
    return kept;
}
