#include "StdAfx.h"

#include "Visibility.h"

#include <algorithm>
#include <cmath>

#include "HiddenPoint.h"
#include "LineBoxes.h"
#include "SideOrder.h"
#include "TolerantCompare.h"

namespace {

// Rounding of a point cut out of a line, relative to the coordinates in play; a safe bound.
constexpr double kRounding = 1e-15;
// The share of the point tolerance that rounding may take where something is to be proven.
constexpr double kRoundingShare = 0.01;
// Places that may be the same are told apart by five times that.
constexpr double kNearShare = 0.05;
// A line is steady when its angle to the view is twice that of lines that count as parallel to it.
constexpr double kSteadyFactor = 2.0;
// Clearly above is this many point tolerances, square to both lines: a piece that equals another
// within the tolerance, and so does not hide it, is never clearly above it.
constexpr double kClearTols = 4.0;
// A line with more lines above it than this is broken and tested piece by piece, as is one whose
// open stretches have become as many.
constexpr size_t kMostLooks = 4096;
constexpr size_t kMostStretches = 256;
// With more candidates than this each piece asks the index itself.
constexpr size_t kMostNear = 24;

double GetScale(const std::vector<CLineInfo>& lines, const CQZRect& extents) {
    double scale = 0.0;
    for (const CLineInfo& line : lines) {
        for (const AcGePoint3d& pt : {line.m_startPt, line.m_endPt}) {
            scale = (std::max)({scale, std::fabs(pt.x), std::fabs(pt.y)});
        }
    }
    return scale + extents.GetWidth() + extents.GetHeight();
}

bool HoldsAll(const CQZRect& extents, const std::vector<CLineInfo>& lines) {
    return std::all_of(lines.begin(), lines.end(), [&](const CLineInfo& line) {
        const SFlatBox box = GetFlatBox(line);
        return extents.min.x <= box.m_dMinX && extents.min.y <= box.m_dMinY &&
               box.m_dMaxX <= extents.max.x && box.m_dMaxY <= extents.max.y;
    });
}

// Of rising values those that exceed the one before by more than that.
std::vector<double> GetDistinct(std::vector<double> values, double dMore) {
    size_t kept = 0;
    for (const double value : values) {
        if (kept == 0 || value - values[kept - 1] > dMore) {
            values[kept++] = value;
        }
    }
    values.resize(kept);
    return values;
}

}  // namespace

CVisibility::CVisibility(const std::vector<CLineInfo>& lines, const CQZRect& extents,
                         const AcGeTol& tolPoint, const AcGeTol& tolHorVer)
    : m_lines(lines),
      m_extents(extents),
      m_tolPoint(tolPoint),
      m_tolHorVer(tolHorVer),
      m_index(GetFlatBoxes(lines)),
      m_dRounding(kRounding * GetScale(lines, extents)) {
    const double tol = tolPoint.equalPoint();
    // A cut is the less certain the flatter the probe meets the line.
    m_dNear = kNearShare * tol;
    if (tolPoint.equalVector() > 0.0) {
        m_dNear = (std::min)(m_dNear, 4 * m_dRounding / tolPoint.equalVector());
    }
    m_dTrim = (std::max)(tolHorVer.equalPoint() / 2 - 4 * m_dRounding, 0.0);
    m_bCanProve = tol > 0.0 && m_dRounding <= kRoundingShare * tol && m_dTrim > 4 * m_dRounding &&
                  extents.GetWidth() > 0.0 && extents.GetHeight() > 0.0 && HoldsAll(extents, lines);
}

std::vector<SSeenPiece> CVisibility::See(E_RemoveLine_Dir dir) {
    Prepare(dir, nullptr);
    std::vector<SSeenPiece> seen;
    for (size_t i = 0; i < m_lines.size(); ++i) {
        SeeRecord(i, seen);
    }
    return seen;
}

std::vector<SSeenPiece> CVisibility::See(E_RemoveLine_Dir dir, const CProbeCuts& probes) {
    Prepare(dir, &probes);
    std::vector<SSeenPiece> seen;
    for (size_t i = 0; i < m_lines.size(); ++i) {
        SeeRecord(i, seen);
    }
    return seen;
}

void CVisibility::Prepare(E_RemoveLine_Dir dir, const CProbeCuts* pProbes) {
    m_dir = dir;
    m_pProbes = pProbes;
    m_bVertical = IsVerticalSide(dir);
    m_dSign = dir == E_Dir_Top || dir == E_Dir_Right ? 1.0 : -1.0;
    m_placesAcross.clear();
    m_placesAlong.clear();
    if (pProbes != nullptr) {
        m_placesAcross = GetDistinct(pProbes->GetPlaces(m_bVertical), 0.0);
        m_placesAlong = GetDistinct(pProbes->GetPlaces(!m_bVertical), 0.0);
        if (m_dSign < 0.0) {
            std::reverse(m_placesAlong.begin(), m_placesAlong.end());
            for (double& place : m_placesAlong) {
                place = -place;
            }
        }
    }
    m_chainOf.assign(m_lines.size(), -1);
    m_chains.clear();
    m_sights.clear();
    m_sights.reserve(m_lines.size());
    for (size_t i = 0; i < m_lines.size(); ++i) {
        m_sights.push_back(MakeSight(i));
    }
    FindTightPlaces();
}

CVisibility::SSight CVisibility::MakeSight(size_t record) const {
    const CLineInfo& line = m_lines[record];
    const bool bRising = GetU(line.m_startPt) <= GetU(line.m_endPt);
    const AcGePoint3d& low = bRising ? line.m_startPt : line.m_endPt;
    const AcGePoint3d& high = bRising ? line.m_endPt : line.m_startPt;
    const double du = GetU(high) - GetU(low);
    const double dv = GetV(high) - GetV(low);
    const double length = AcGeVector2d(du, dv).length();
    const double steady = (std::max)(kSteadyFactor * m_tolPoint.equalVector(),
                                     m_dRounding / (kRoundingShare * m_tolPoint.equalPoint()));
    SSight sight = {};
    sight.m_dFrom = GetU(low);
    sight.m_dTo = GetU(high);
    sight.m_dV = GetV(low);
    sight.m_bClear = m_bCanProve && length > 0.0 && du >= steady * length;
    sight.m_dSlope = du > 0.0 ? dv / du : 0.0;
    sight.m_dMargin =
        kClearTols * m_tolPoint.equalPoint() * AcGeVector2d(1.0, sight.m_dSlope).length();
    if (m_pProbes != nullptr) {
        sight.m_bCutAcross = m_pProbes->HasProbes(record, m_bVertical);
        // A line that is surely parallel to the probes across the view is never cut by them.
        sight.m_bCutAlong = m_pProbes->HasProbes(record, !m_bVertical) &&
                            !(std::fabs(dv) < m_tolPoint.equalVector() / kSteadyFactor * length);
        if (sight.m_bCutAlong && std::fabs(dv) < steady * length) {
            sight.m_bClear = false;
        }
    }
    return sight;
}

// A probe cuts nothing where a kept cut is within the point tolerance, and it is the one before it
// that refused it, since cuts are made by rising place. The piece whose middle stands over it then
// begins at that cut and ends as far on the other side.
void CVisibility::FindTightPlaces() {
    constexpr size_t kCrowd = 8;
    m_tight.clear();
    // Probes at one place but for rounding are one.
    const std::vector<double> places = GetDistinct(m_placesAcross, 4 * m_dRounding);
    const double tol = m_tolPoint.equalPoint() + m_dNear;
    const double shortest = m_dTrim - 2 * m_dNear;
    for (size_t i = 0; i < places.size(); ++i) {
        const bool bCrowded = i >= kCrowd && places[i] - places[i - kCrowd] <= tol;
        for (size_t j = i; !bCrowded && j > 0 && places[i] - places[j - 1] <= tol; --j) {
            const double mirror = 2 * places[i] - places[j - 1];
            // Shorter pieces are edge-on.
            if (places[i] > places[j - 1] && places[i] - places[j - 1] >= shortest) {
                const bool bProbe = HasPlaceIn(places, mirror - 2 * m_dNear, mirror + 2 * m_dNear);
                m_tight.push_back({places[i], mirror, bProbe});
            }
        }
        if (bCrowded) {
            m_tight.push_back({places[i], places[i], true});
        }
    }
}

bool CVisibility::HasPlaceIn(const std::vector<double>& places, double dFrom, double dTo) const {
    const auto found = std::lower_bound(places.begin(), places.end(), dFrom);
    return found != places.end() && *found <= dTo;
}

void CVisibility::SeeRecord(size_t record, std::vector<SSeenPiece>& seen) {
    const SSight& sight = m_sights[record];
    // Not wide enough for any piece to be more than edge-on.
    if (sight.m_dTo - sight.m_dFrom + 4 * m_dRounding < m_tolHorVer.equalPoint()) {
        return;
    }
    const bool bCut = sight.m_bCutAcross || sight.m_bCutAlong;
    const bool bProve = bCut && sight.m_bClear;
    bool bNearOnly = false;
    if (bProve) {
        bNearOnly = FindOpenStretches(record);
        DropEmptyStretches(sight);
        OpenTightPlaces(sight);
        if (m_open.empty()) {
            return;
        }
    }
    std::vector<AcGePoint3d> chain = {m_lines[record].m_startPt, m_lines[record].m_endPt};
    if (bCut) {
        chain = MakeChain(record);
    }
    for (size_t i = 0; i + 1 < chain.size(); ++i) {
        const SSeenPiece place = {record, static_cast<int>(i), chain.size() == 2, chain[i],
                                  chain[i + 1]};
        if (IsEdgeOn(place.m_from, place.m_to)) {
            continue;
        }
        const SPiece piece = MakePiece(place);
        if ((!bProve || IsOpen(piece.m_dU)) && !IsHidden(piece, bNearOnly)) {
            seen.push_back(place);
        }
    }
}

// Leaves in m_open the stretches that no line clearly covers, and in m_near the other lines that
// may hide something. The result tells whether m_near holds them all.
bool CVisibility::FindOpenStretches(size_t record) {
    const SSight& own = m_sights[record];
    m_near.clear();
    m_open.assign(1, {own.m_dFrom + m_dTrim, own.m_dTo - m_dTrim});
    size_t looks = 0;
    const double lowest = (std::min)(own.m_dV, own.At(own.m_dTo)) - own.m_dMargin;
    const double from = own.m_dFrom - m_dNear;
    const double to = own.m_dTo + m_dNear;
    const auto isAbove = [&](const SFlatBox& box) {
        const bool bOver = m_bVertical ? box.m_dMinX <= to && from <= box.m_dMaxX
                                       : box.m_dMinY <= to && from <= box.m_dMaxY;
        const double top = m_bVertical ? (m_dSign > 0.0 ? box.m_dMaxY : -box.m_dMinY)
                                       : (m_dSign > 0.0 ? box.m_dMaxX : -box.m_dMinX);
        return bOver && top >= lowest;
    };
    const bool bStopped = m_index.Visit(isAbove, [&](int item) {
        const size_t other = static_cast<size_t>(item);
        if (other == record) {
            return false;
        }
        const CLineInfo& line = m_lines[other];
        const bool bSameEntity = !line.m_id.isNull() && line.m_id == m_lines[record].m_id;
        if (bSameEntity || Cover(own, m_sights[other])) {
            m_near.push_back(other);
        }
        return m_open.empty() || m_open.size() > kMostStretches || ++looks > kMostLooks;
    });
    return !bStopped && m_near.size() <= kMostNear;
}

// Subtracts from m_open what the other line surely hides; true when it may hide more than that.
bool CVisibility::Cover(const SSight& own, const SSight& other) {
    if (!other.m_bClear) {
        return true;
    }
    double from = (std::max)(own.m_dFrom, other.m_dFrom + m_dNear);
    double to = (std::min)(own.m_dTo, other.m_dTo - m_dNear);
    if (!(from < to)) {
        return true;
    }
    const double margin = own.m_dMargin + other.m_dMargin;
    const double gapFrom = other.At(from) - own.At(from);
    const double gapTo = other.At(to) - own.At(to);
    if (gapFrom < -margin && gapTo < -margin) {
        return false;
    }
    const bool bWhole = gapFrom > margin && gapTo > margin;
    if (!bWhole) {
        if (!(gapFrom > margin) && !(gapTo > margin)) {
            return true;
        }
        const double turn = from + (margin - gapFrom) / (gapTo - gapFrom) * (to - from);
        (gapFrom > margin ? to : from) = turn;
        if (!(from < to)) {
            return true;
        }
    }
    if (other.m_bCutAlong) {
        const double a = other.At(from);
        const double b = other.At(to);
        const double slack = m_dNear * (1.0 + std::fabs(other.m_dSlope));
        if (HasPlaceIn(m_placesAlong, (std::min)(a, b) - slack, (std::max)(a, b) + slack)) {
            return true;
        }
    }
    Subtract(from, to);
    return true;
}

void CVisibility::Subtract(double dFrom, double dTo) {
    const size_t count = m_open.size();
    for (size_t i = 0; i < count; ++i) {
        SStretch& stretch = m_open[i];
        if (dTo <= stretch.m_dFrom || stretch.m_dTo <= dFrom) {
            continue;
        }
        const SStretch rest = {dTo, stretch.m_dTo};
        stretch.m_dTo = (std::min)(stretch.m_dTo, dFrom);
        if (rest.m_dFrom < rest.m_dTo) {
            m_open.push_back(rest);
        }
    }
    m_open.erase(
        std::remove_if(m_open.begin(), m_open.end(),
                       [](const SStretch& stretch) { return !(stretch.m_dFrom < stretch.m_dTo); }),
        m_open.end());
}

// Drops stretches that are left over for want of certainty and in which no middle can lie.
// Crossings and corners leave them everywhere, so that nearly every line would have to be broken.
void CVisibility::DropEmptyStretches(const SSight& own) {
    if (!(4 * m_dNear < m_dTrim)) {
        return;
    }
    const auto isEmpty = [&](const SStretch& stretch) {
        // Between two covers that meet at a probe's place: the line is cut there as well.
        if (own.m_bCutAcross && stretch.m_dTo - stretch.m_dFrom <= 3 * m_dNear &&
            HasPlaceIn(m_placesAcross, stretch.m_dFrom, stretch.m_dTo)) {
            return true;
        }
        // Beside a cover that starts from the line's own end, where the lines are close.
        const bool bFrom = stretch.m_dFrom <= own.m_dFrom + m_dTrim;
        const bool bTo = stretch.m_dTo >= own.m_dTo - m_dTrim;
        return bFrom != bTo && IsEmptyEnd(own, bFrom ? own.m_dFrom : own.m_dTo,
                                          bFrom ? stretch.m_dTo : stretch.m_dFrom);
    };
    m_open.erase(std::remove_if(m_open.begin(), m_open.end(), isEmpty), m_open.end());
}

// Whether the outermost piece reaches so far inwards that its middle lies beyond dReach.
bool CVisibility::IsEmptyEnd(const SSight& own, double dEnd, double dReach) const {
    const double inwards = dReach > dEnd ? 1.0 : -1.0;
    const double from = dEnd + inwards * 2 * m_dNear;
    const double to = 2 * dReach - dEnd + inwards * 2 * m_dNear;
    if (to <= own.m_dFrom || own.m_dTo <= to ||
        (own.m_bCutAcross &&
         HasPlaceIn(m_placesAcross, (std::min)(from, to), (std::max)(from, to)))) {
        return false;
    }
    const double vFrom = own.At(from);
    const double vTo = own.At(to);
    return !own.m_bCutAlong ||
           !HasPlaceIn(m_placesAlong, (std::min)(vFrom, vTo), (std::max)(vFrom, vTo));
}

// Opens again where the middle of a piece may stand over a cut of its hider.
void CVisibility::OpenTightPlaces(const SSight& own) {
    if (!own.m_bCutAcross) {
        return;
    }
    OpenEnd(own.m_dFrom, own.m_dTo);
    OpenEnd(own.m_dTo, own.m_dFrom);
    const auto first = std::lower_bound(
        m_tight.begin(), m_tight.end(), own.m_dFrom - m_dNear,
        [](const STightPlace& tight, double place) { return tight.m_dPlace < place; });
    for (auto tight = first; tight != m_tight.end() && tight->m_dPlace <= own.m_dTo + m_dNear;
         ++tight) {
        const double v = own.At(tight->m_dMirror);
        const double slack = 2 * m_dNear * (1.0 + std::fabs(own.m_dSlope));
        if (tight->m_bAlways ||
            (own.m_bCutAlong && HasPlaceIn(m_placesAlong, v - slack, v + slack))) {
            m_open.push_back({tight->m_dPlace - 2 * m_dNear, tight->m_dPlace + 2 * m_dNear});
        }
    }
}

// A line is not cut by probes within the tolerance of its ends when the point found for the end is
// another one close by.
void CVisibility::OpenEnd(double dEnd, double dInner) {
    const double reach = 2 * m_tolPoint.equalPoint() + m_dNear;
    const double from = dEnd < dInner ? dEnd : dEnd - reach;
    const double to = dEnd < dInner ? dEnd + reach : dEnd;
    const auto first = std::lower_bound(m_placesAcross.begin(), m_placesAcross.end(), from);
    for (auto place = first; place != m_placesAcross.end() && *place <= to; ++place) {
        if (*place != dEnd) {
            m_open.push_back({from - m_dNear, to + m_dNear});
            return;
        }
    }
}

bool CVisibility::IsOpen(double u) const {
    return std::any_of(m_open.begin(), m_open.end(), [&](const SStretch& stretch) {
        return stretch.m_dFrom - m_dNear <= u && u <= stretch.m_dTo + m_dNear;
    });
}

bool CVisibility::IsEdgeOn(const AcGePoint3d& from, const AcGePoint3d& to) const {
    return IsEqualValue(GetU(from), GetU(to), m_tolHorVer.equalPoint());
}
