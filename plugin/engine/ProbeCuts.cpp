#include "StdAfx.h"

#include "ProbeCuts.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

// Rounding of a point cut out of a line, relative to the coordinates in play; a safe bound.
constexpr double kRounding = 1e-15;
// The part of the tolerance that is room for rounding where probes are skipped: the point would
// fall deep inside another's tolerance.
constexpr double kRoundingShare = 0.01;
// Two cuts are off, and so is the line's slope.
constexpr double kDoubtFactor = 16.0;

double GetLargest(const AcGePoint3d& pt) { return (std::max)(std::fabs(pt.x), std::fabs(pt.y)); }

// The order in which a stable sort by less leaves the numbers 0 .. count - 1.
template <class Less>
std::vector<int> SortedNumbers(std::vector<int> numbers, const Less& less) {
    std::stable_sort(numbers.begin(), numbers.end(), less);
    return numbers;
}

std::vector<int> Invert(const std::vector<int>& order) {
    std::vector<int> ranks(order.size());
    for (size_t i = 0; i < order.size(); ++i) {
        ranks[order[i]] = static_cast<int>(i);
    }
    return ranks;
}

std::vector<AcGePoint3d> Arrange(const std::vector<AcGePoint3d>& points,
                                 const std::vector<int>& order) {
    std::vector<AcGePoint3d> arranged;
    arranged.reserve(order.size());
    for (const int index : order) {
        arranged.push_back(points[index]);
    }
    return arranged;
}

}  // namespace

AcGeLineSeg3d CProbeRow::GetProbe(const AcGePoint3d& pt) const {
    const AcGeVector3d half =
        m_bVertical ? AcGeVector3d(0, m_dHalfLength, 0) : AcGeVector3d(m_dHalfLength, 0, 0);
    return AcGeLineSeg3d(pt - half, pt + half);
}

int CProbeRow::SkipTo(int index, int last, double dPlace) const {
    // Most often the next point or a few further on: doubling steps first, then halving.
    int step = 1;
    int from = index;
    while (from + step < last && GetPlace(m_pPoints[from + step]) < dPlace) {
        from += step;
        step *= 2;
    }
    const AcGePoint3d* const found = std::lower_bound(
        m_pPoints + from + 1, m_pPoints + (std::min)(from + step, last), dPlace,
        [this](const AcGePoint3d& pt, double place) { return GetPlace(pt) < place; });
    return static_cast<int>(found - m_pPoints);
}

int CProbeRow::FindPlace(int first, int last, double dPlace) const {
    const AcGePoint3d* const found = std::lower_bound(
        m_pPoints + first, m_pPoints + last, dPlace,
        [this](const AcGePoint3d& pt, double place) { return GetPlace(pt) < place; });
    return static_cast<int>(found - m_pPoints);
}

double CProbeRow::GetShare(const CLineInfo& line) const {
    const double length = line.m_startPt.distanceTo(line.m_endPt);
    return length > 0.0 ? std::fabs(GetPlace(line.m_endPt) - GetPlace(line.m_startPt)) / length
                        : 0.0;
}

double CProbeRow::GetDoubt(int first, int last, const CLineInfo& line) const {
    const double rounding =
        kRounding *
        (GetLargest(line.m_startPt) + line.m_startPt.distanceTo(line.m_endPt) +
         GetLargest(m_pPoints[first]) + GetLargest(m_pPoints[last - 1]) + m_dHalfLength);
    const double step = m_tol.equalPoint() * GetShare(line);
    return rounding < kRoundingShare * step ? kDoubtFactor * rounding / step : HUGE_VAL;
}

void CProbeRow::Cut(int first, int last, CLineInfo& line) const {
    if (first >= last) {
        return;
    }
    const AcGeLineSeg3d segment(line.m_startPt, line.m_endPt);
    const double tol = m_tol.equalPoint();
    // How far probes on either side of a kept point are sure to fall on it.
    const double share = GetShare(line);
    const bool bSkip = IsSure(first, last, line);
    AcGeTol tolRounding;
    tolRounding.setEqualPoint(kRoundingShare * tol);
    CPointCells kept(tol);
    for (const AcGePoint3d& pt : line.m_breakPts) {
        kept.Add(pt);
    }
    for (int k = first; k < last;) {
        AcGePoint3d pt;
        if (!Meet(k, segment, pt)) {
            ++k;
            continue;
        }
        int same = kept.FindFirst(pt);
        if (same < 0) {
            same = static_cast<int>(kept.GetPoints().size());
            kept.Add(pt);
        }
        // A break point that was there before may lie beside the line.
        const AcGePoint3d& refuser = kept.GetPoints()[same];
        k = bSkip && IsOnBoundedSegment(segment, refuser, tolRounding)
                ? SkipTo(k, last, GetPlace(refuser) + kSureShare * tol * share)
                : k + 1;
    }
    line.m_breakPts = kept.GetPoints();
}

CProbeCuts::CProbeCuts(const std::vector<CLineInfo>& lines, const SProbeSetup& setup)
    : m_points(setup.m_tolPoint.equalPoint()),
      m_dHalfHeight(setup.m_extents.GetHeight()),
      m_dHalfWidth(setup.m_extents.GetWidth()),
      m_tol(setup.m_tolPoint) {
    Collect(lines, setup);
    const std::vector<AcGePoint3d>& points = m_points.GetPoints();
    std::vector<int> order(points.size());
    std::iota(order.begin(), order.end(), 0);
    if (setup.m_bWithVertical) {
        order = SortedNumbers(std::move(order),
                              [&](int a, int b) { return points[a].x < points[b].x; });
        m_byX = Arrange(points, order);
        m_rankByX = Invert(order);
    }
    // The list sorted by x is the one that is sorted by y, so equal heights stay in order of x.
    order =
        SortedNumbers(std::move(order), [&](int a, int b) { return points[a].y < points[b].y; });
    m_byY = Arrange(points, order);
    m_rankByY = Invert(order);
    FindRanges(lines, setup);
}

namespace {

CQZRect GetMoved(const SProbeSetup& setup) {
    CQZRect moved(setup.m_extents);
    moved.min.x += setup.m_dShift;
    moved.max.x += setup.m_dShift;
    return moved;
}

}  // namespace

void CProbeCuts::Collect(const std::vector<CLineInfo>& lines, const SProbeSetup& setup) {
    const CQZRect moved = GetMoved(setup);
    for (const CLineInfo& line : lines) {
        for (const AcGePoint3d& pt : {line.m_startPt, line.m_endPt}) {
            if ((setup.m_bWithVertical || !moved.Contains(CQZRect(pt, pt), 0.0)) &&
                m_points.FindFirst(pt) < 0) {
                m_points.Add(pt);
            }
        }
    }
}

void CProbeCuts::FindRanges(const std::vector<CLineInfo>& lines, const SProbeSetup& setup) {
    m_ranges.resize(lines.size());
    // A point deep inside the moved box equals none of those outside.
    CQZRect inner = GetMoved(setup);
    inner.Widen(-2 * m_tol.equalPoint());
    const auto isOut = [&](const AcGePoint3d& pt) {
        return setup.m_bWithVertical || !(inner.min.x < pt.x && pt.x < inner.max.x &&
                                          inner.min.y < pt.y && pt.y < inner.max.y);
    };
    std::vector<int> starts;
    std::vector<int> ends;
    for (size_t i = 0; i < lines.size(); ++i) {
        if (!isOut(lines[i].m_startPt) || !isOut(lines[i].m_endPt)) {
            continue;
        }
        starts.clear();
        ends.clear();
        m_points.ForEachEqual(lines[i].m_startPt, [&](int index) { starts.push_back(index); });
        m_points.ForEachEqual(lines[i].m_endPt, [&](int index) { ends.push_back(index); });
        if (!starts.empty() && !ends.empty()) {
            m_ranges[i] = {FindRange(m_rankByX, starts, ends), FindRange(m_rankByY, starts, ends)};
        }
    }
}

CProbeCuts::SRange CProbeCuts::FindRange(const std::vector<int>& ranks,
                                         const std::vector<int>& starts,
                                         const std::vector<int>& ends) const {
    if (ranks.empty()) {
        return {};
    }
    // Of several equal points the first in the sorted list counts.
    const auto lowest = [&](const std::vector<int>& indices) {
        int low = ranks[indices.front()];
        for (const int index : indices) {
            low = (std::min)(low, ranks[index]);
        }
        return low;
    };
    const int start = lowest(starts);
    const int end = lowest(ends);
    return {(std::min)(start, end) + 1, (std::max)(start, end)};
}

void CProbeCuts::Cut(size_t index, CLineInfo& line) const {
    for (const bool bVertical : {true, false}) {
        const auto [first, last] = GetRange(index, bVertical);
        GetRow(bVertical).Cut(first, last, line);
    }
}

std::vector<AcGePoint3d> CProbeCuts::GetChain(size_t index, CLineInfo line) const {
    Cut(index, line);
    line.Sort();
    std::vector<AcGePoint3d> chain;
    chain.reserve(line.m_breakPts.size() + 2);
    chain.push_back(line.m_startPt);
    chain.insert(chain.end(), line.m_breakPts.begin(), line.m_breakPts.end());
    chain.push_back(line.m_endPt);
    return chain;
}

std::vector<double> CProbeCuts::GetPlaces(bool bVertical) const {
    std::vector<double> places;
    places.reserve(m_byY.size());
    for (const AcGePoint3d& pt : bVertical ? m_byX : m_byY) {
        places.push_back(bVertical ? pt.x : pt.y);
    }
    return places;
}
