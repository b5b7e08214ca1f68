#include "StdAfx.h"

#include "ArcIndex.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "plane/point.h"

namespace {

// Stretches of a sixteenth of a turn leave their chord by under 2 % of the radius.
constexpr double kStretch = plane::kHalfTurn / 8;

// Widens boxes by a hair more than what lies on the arc, so that rounding in the sines loses none.
constexpr double kBoxMargin = 2 * kThroughArcTol;

int CountStretches(const SArc& arc) {
    return static_cast<int>(std::ceil(GetSweep(arc) / kStretch));
}

// The box of one of an arc's stretches.
SFlatBox GetStretchBox(const SArc& arc, int index) {
    const double step = GetSweep(arc) / CountStretches(arc);
    const auto at = [&](int n) {
        const double angle = arc.m_dStartAngle + n * step;
        return AcGePoint3d(arc.m_centre.x + arc.m_dRadius * std::cos(angle),
                           arc.m_centre.y + arc.m_dRadius * std::sin(angle), 0.0);
    };
    // What the arc rises above the stretch's chord, plus the rounding of coordinates far from 0.
    const double reach = arc.m_dRadius + std::fabs(arc.m_centre.x) + std::fabs(arc.m_centre.y);
    const double rise = arc.m_dRadius * (1.0 - std::cos(step / 2));
    return GetFlatBox(at(index), at(index + 1)).Padded(rise + kBoxMargin + 1e-12 * reach);
}

// Sums of such coordinates do not overflow; angles that are not numbers fail too.
bool IsUsable(const SArc& arc) {
    constexpr double kHuge = 1e150;
    return std::fabs(arc.m_centre.x) < kHuge && std::fabs(arc.m_centre.y) < kHuge &&
           std::fabs(arc.m_dRadius) < kHuge && std::isfinite(arc.m_dStartAngle) &&
           std::isfinite(arc.m_dEndAngle);
}

std::vector<SFlatBox> GetStretchBoxes(const std::vector<SArc>& arcs,
                                      std::vector<size_t>& stretchArcs) {
    std::vector<SFlatBox> boxes;
    for (size_t i = 0; i < arcs.size(); ++i) {
        const int count = CountStretches(arcs[i]);
        for (int n = 0; n < count; ++n) {
            boxes.push_back(GetStretchBox(arcs[i], n));
            stretchArcs.push_back(i);
        }
    }
    return boxes;
}

std::vector<SArc> ReadArcs(const AcDbObjectIdArray& ids, std::vector<AcDbObjectId>& read) {
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

CArcIndex::CArcIndex(const AcDbObjectIdArray& ids)
    : m_arcs(ReadArcs(ids, m_ids)), m_boxes(GetStretchBoxes(m_arcs, m_stretchArcs)) {}

std::vector<size_t> CArcIndex::FindThrough(const AcGePoint3d& pt) const {
    std::vector<size_t> found;
    const SFlatBox at = GetFlatBox(pt, pt);
    m_boxes.Visit([&](const SFlatBox& box) { return box.Contains(at); },
                  [&](int stretch) {
                      const size_t index = m_stretchArcs[static_cast<size_t>(stretch)];
                      if (GetDistanceToArc(m_arcs[index], pt) <= kThroughArcTol) {
                          found.push_back(index);
                      }
                      return false;  // all of them count
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
