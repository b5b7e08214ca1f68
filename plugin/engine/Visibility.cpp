#include "StdAfx.h"

#include "Visibility.h"

#include <algorithm>
#include <cmath>

#include "EncircleWatch.h"
#include "LineBoxes.h"
#include "SideOrder.h"
#include "TolerantCompare.h"

namespace {

// Rounding of a point cut out of a line, relative to the coordinates in play; a safe bound.
constexpr double kRounding = 1e-15;
// A probe meets a line where one coordinate is the probe's own and the other has but that rounding;
// this much room is left around it.
constexpr double kCutRoom = 64.0;
// The share of the point tolerance that rounding may take where something is to be proven.
constexpr double kRoundingShare = 0.01;
// Places that may be the same are told apart by five times that.
constexpr double kNearShare = 0.05;
// A line is steady when its angle to the view is twice that of lines that count as parallel to it.
constexpr double kSteadyFactor = 2.0;
// Clearly above is this many point tolerances, square to the line: a piece that equals another
// within the tolerance, and so does not hide it, has its middle within one of the other's line.
constexpr double kClearTols = 1.35;
// Near an end with more places than this all is tested.
constexpr std::ptrdiff_t kMostAtEnd = 64;
// How many pieces more are told to a watch.
constexpr size_t kToldPieces = 4096;

double GetScale(const std::vector<CLineInfo>& lines, const CQZRect& extents) {
    double scale = 0.0;
    for (const CLineInfo& line : lines) {
        for (const AcGePoint3d& pt : {line.m_startPt, line.m_endPt}) {
            scale = (std::max)({scale, std::fabs(pt.x), std::fabs(pt.y)});
        }
    }
    return scale + extents.GetWidth() + extents.GetHeight();
}

// Whether all lines lie flat in the extents.
bool HoldsAll(const CQZRect& extents, const std::vector<CLineInfo>& lines) {
    return std::all_of(lines.begin(), lines.end(), [&](const CLineInfo& line) {
        const SFlatBox box = GetFlatBox(line);
        return extents.min.x <= box.low.x && extents.min.y <= box.low.y &&
               box.high.x <= extents.max.x && box.high.y <= extents.max.y &&
               line.m_startPt.z == 0.0 && line.m_endPt.z == 0.0;
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
      m_dRounding(kRounding * GetScale(lines, extents)) {
    const double tol = tolPoint.equalPoint();
    // A cut is the less certain the flatter the probe meets the line.
    m_places.m_dNear = kNearShare * tol;
    if (tolPoint.equalVector() > 0.0) {
        m_places.m_dNear = (std::min)(m_places.m_dNear, 4 * m_dRounding / tolPoint.equalVector());
    }
    m_places.m_dRounding = kCutRoom * m_dRounding;
    m_dTrim = (std::max)(tolHorVer.equalPoint() / 2 - 4 * m_dRounding, 0.0);
    m_bCanProve = tol > 0.0 && m_dRounding <= kRoundingShare * tol && m_dTrim > 4 * m_dRounding &&
                  extents.GetWidth() > 0.0 && extents.GetHeight() > 0.0 && HoldsAll(extents, lines);
}

std::vector<SSeenPiece> CVisibility::See(E_RemoveLine_Dir dir) { return SeeAll(dir, nullptr); }

std::vector<SSeenPiece> CVisibility::See(E_RemoveLine_Dir dir, const CProbeCuts& probes) {
    return SeeAll(dir, &probes);
}

std::vector<SSeenPiece> CVisibility::SeeAll(E_RemoveLine_Dir dir, const CProbeCuts* pProbes) {
    Prepare(dir, pProbes);
    Seen seen;
    size_t kept = 0;
    for (size_t i = 0; i < m_lines.size(); ++i) {
        CEncircleWatch::Step("visible", i, m_lines.size());
        SeeRecord(i, seen);
        // One record alone may have thousands of pieces.
        if (seen.size() > kept + kToldPieces) {
            kept = seen.size();
            CEncircleWatch::Keep(kept);
        }
    }
    return seen;
}

void CVisibility::Prepare(E_RemoveLine_Dir dir, const CProbeCuts* pProbes) {
    m_dir = dir;
    m_pProbes = pProbes;
    m_view = SSideView(dir);
    m_unsteady.clear();
    m_nColumn = -1;
    m_nCoverColumn = -1;
    m_nHider = static_cast<size_t>(-1);
    SetPlaces();
    m_sights.clear();
    m_sights.reserve(m_lines.size());
    for (size_t i = 0; i < m_lines.size(); ++i) {
        m_sights.push_back(MakeSight(i));
    }
    FindTightPlaces();
    m_across.emplace(m_places.m_across);
    if (m_bCanProve) {
        m_floors.Build(m_sights, m_places);
    }
}

void CVisibility::SetPlaces() {
    m_places.m_across.clear();
    m_places.m_along.clear();
    m_ownCuts.reset();
    m_hiderCuts.reset();
    if (m_pProbes == nullptr) {
        return;
    }
    m_ownCuts = std::make_unique<CStretchCuts>(*m_pProbes, m_view.m_bVertical);
    m_hiderCuts = std::make_unique<CStretchCuts>(*m_pProbes, m_view.m_bVertical);
    m_places.m_across = GetDistinct(m_pProbes->GetPlaces(m_view.m_bVertical), 0.0);
    m_places.m_along = GetDistinct(m_pProbes->GetPlaces(!m_view.m_bVertical), 0.0);
    if (m_view.m_dSign < 0.0) {
        std::reverse(m_places.m_along.begin(), m_places.m_along.end());
        for (double& place : m_places.m_along) {
            place = -place;
        }
    }
}

SSight CVisibility::MakeSight(size_t record) const {
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
    sight.m_dEndV = GetV(high);
    sight.m_bClear = m_bCanProve && length > 0.0 && du >= steady * length;
    sight.m_dSlope = du > 0.0 ? dv / du : 0.0;
    sight.m_dMargin =
        kClearTols * m_tolPoint.equalPoint() * AcGeVector2d(1.0, sight.m_dSlope).length();
    if (m_pProbes != nullptr) {
        sight.m_bCutAcross = m_pProbes->HasProbes(record, m_view.m_bVertical);
        // A line that is surely parallel to the probes across the view is never cut by them.
        sight.m_bCutAlong = m_pProbes->HasProbes(record, !m_view.m_bVertical) &&
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
    const std::vector<double> places = GetDistinct(m_places.m_across, 4 * m_dRounding);
    const double reach = m_places.m_dNear;
    const double tol = m_tolPoint.equalPoint() + reach;
    const double shortest = m_dTrim - 2 * reach;
    for (size_t i = 0; i < places.size(); ++i) {
        const bool bCrowded = i >= kCrowd && places[i] - places[i - kCrowd] <= tol;
        for (size_t j = i; !bCrowded && j > 0 && places[i] - places[j - 1] <= tol; --j) {
            const double mirror = 2 * places[i] - places[j - 1];
            // Shorter pieces are edge-on.
            if (places[i] > places[j - 1] && places[i] - places[j - 1] >= shortest) {
                const bool bProbe =
                    SCutPlaces::HasIn(places, mirror - 2 * reach, mirror + 2 * reach);
                m_tight.push_back({places[i], mirror, bProbe});
            }
        }
        if (bCrowded) {
            m_tight.push_back({places[i], places[i], true});
        }
    }
}

void CVisibility::SeeRecord(size_t record, Seen& seen) {
    const SSight& sight = m_sights[record];
    // Not wide enough for any piece to be more than edge-on.
    if (sight.m_dTo - sight.m_dFrom + 4 * m_dRounding < m_tolHorVer.equalPoint()) {
        return;
    }
    if (!sight.m_bCutAcross && !sight.m_bCutAlong) {
        SeeWhole(record, seen);
        return;
    }
    if (!sight.m_bClear) {
        SeeUnsteady(record, seen);
        return;
    }
    FindOpenStretches(sight);
    const size_t before = seen.size();
    for (const SStretch& stretch : m_open) {
        SeeStretch(record, stretch, seen);
    }
    // Found by rising u.
    if (GetU(m_lines[record].m_startPt) > GetU(m_lines[record].m_endPt)) {
        std::reverse(seen.begin() + static_cast<std::ptrdiff_t>(before), seen.end());
    }
}

void CVisibility::SeeWhole(size_t record, Seen& seen) {
    const CLineInfo& line = m_lines[record];
    if (IsEdgeOn(line.m_startPt, line.m_endPt)) {
        return;
    }
    SPiece piece = MakePiece(record, line.m_startPt, line.m_endPt);
    piece.m_bWhole = true;
    if (IsBelowFloor(piece)) {
        return;
    }
    if (!IsHidden(piece)) {
        seen.push_back({piece.m_from.x, piece.m_from.y, piece.m_to.x, piece.m_to.y,
                        static_cast<std::uint32_t>(record), true});
    }
}

// Every piece of a line that stands too steeply for proofs is tested; most are edge-on.
void CVisibility::SeeUnsteady(size_t record, Seen& seen) {
    const Chain chain = m_pProbes->GetChain(record, m_lines[record]);
    for (size_t i = 0; i + 1 < chain.size(); ++i) {
        if (IsEdgeOn(chain[i], chain[i + 1])) {
            continue;
        }
        SPiece piece = MakePiece(record, chain[i], chain[i + 1]);
        piece.m_nPiece = static_cast<int>(i);
        piece.m_bWhole = chain.size() == 2;
        if (!IsHidden(piece)) {
            seen.push_back({piece.m_from.x, piece.m_from.y, piece.m_to.x, piece.m_to.y,
                            static_cast<std::uint32_t>(record), piece.m_bWhole});
        }
    }
}

void CVisibility::SeeStretch(size_t record, const SStretch& stretch, Seen& seen) {
    const double from = stretch.m_dFrom - m_places.m_dNear;
    const double to = stretch.m_dTo + m_places.m_dNear;
    m_ownCuts->Find(record, m_lines[record], from, to);
    const size_t none = m_ownCuts->GetCount();
    size_t made = none;  // whose cut is the last that was made
    AcGePoint3d last;
    for (size_t i = 0; i + 1 < none; ++i) {
        if (IsSurelyHidden(record, (m_ownCuts->GetPlace(i) + m_ownCuts->GetPlace(i + 1)) / 2)) {
            continue;
        }
        const AcGePoint3d first = made == i ? last : m_ownCuts->GetPoint(i);
        last = m_ownCuts->GetPoint(i + 1);
        made = i + 1;
        if (IsEdgeOn(first, last)) {
            continue;
        }
        SPiece piece = MakePiece(record, first, last);
        piece.m_bWhole = m_ownCuts->IsWhole();
        if (from <= piece.m_dU && piece.m_dU <= to && !IsHidden(piece)) {
            seen.push_back({piece.m_from.x, piece.m_from.y, piece.m_to.x, piece.m_to.y,
                            static_cast<std::uint32_t>(record), piece.m_bWhole});
        }
    }
}

// Leaves in m_open the stretches in which the middle of a piece may be seen.
void CVisibility::FindOpenStretches(const SSight& own) {
    m_open.clear();
    m_floors.ForEachOpen(own, [&](int first, int last) { AddOpenColumns(own, first, last); });
    OpenTightPlaces(own);
    MergeOpenStretches();
}

void CVisibility::AddOpenColumns(const SSight& own, int first, int last) {
    for (int column = first; column <= last; ++column) {
        const double from = (std::max)(m_floors.GetFrom(column), own.m_dFrom + m_dTrim);
        const double to = (std::min)(m_floors.GetTo(column), own.m_dTo - m_dTrim);
        if (!(from < to) || (own.m_bCutAcross && m_floors.IsCutAcross(column)) ||
            m_floors.IsCovered(column, own, from, to)) {
            continue;
        }
        m_open.push_back({from, to});
    }
}

// Opens where the middle of a piece may stand over a cut of its hider.
void CVisibility::OpenTightPlaces(const SSight& own) {
    if (!own.m_bCutAcross) {
        return;
    }
    const double reach = m_places.m_dNear;
    OpenEnd(own, true);
    OpenEnd(own, false);
    const auto first = std::lower_bound(
        m_tight.begin(), m_tight.end(), own.m_dFrom - reach,
        [](const STightPlace& tight, double place) { return tight.m_dPlace < place; });
    for (auto tight = first; tight != m_tight.end() && tight->m_dPlace <= own.m_dTo + reach;
         ++tight) {
        const double v = own.At(tight->m_dMirror);
        const double slack = 2 * reach * (1.0 + std::fabs(own.m_dSlope));
        if (tight->m_bAlways ||
            (own.m_bCutAlong && SCutPlaces::HasIn(m_places.m_along, v - slack, v + slack))) {
            m_open.push_back({tight->m_dPlace - 2 * reach, tight->m_dPlace + 2 * reach});
        }
    }
}

// A line is not cut by probes within the tolerance of its ends when the point found for the end is
// another one close by. The piece whose middle stands over such a place begins at the end or at a
// cut before the place, and ends as far on the other side.
void CVisibility::OpenEnd(const SSight& own, bool bLow) {
    const double end = bLow ? own.m_dFrom : own.m_dTo;
    const double reach = 2 * m_tolPoint.equalPoint() + m_places.m_dNear;
    const double from = bLow ? end : end - reach;
    const double to = bLow ? end + reach : end;
    const std::vector<double>& across = m_places.m_across;
    const auto first = std::lower_bound(across.begin(), across.end(), from);
    const auto last = std::upper_bound(first, across.end(), to);
    for (auto place = first; place != last; ++place) {
        if (*place != end && (last - first > kMostAtEnd || MayBeMiddle(own, end, *place))) {
            m_open.push_back({from - m_places.m_dNear, to + m_places.m_dNear});
            return;
        }
    }
}

// Whether a piece may begin between the line's end and the place and have its middle over it.
bool CVisibility::MayBeMiddle(const SSight& own, double dEnd, double dPlace) const {
    const auto mayEnd = [&](double begin) {
        const double mirror = 2 * dPlace - begin;
        const double reach = 4 * m_places.m_dNear;
        const double v = own.At(mirror);
        const double slack = reach * (1.0 + std::fabs(own.m_dSlope));
        return m_places.HasAcross(mirror - reach, mirror + reach) ||
               std::fabs(mirror - own.m_dFrom) <= reach || std::fabs(mirror - own.m_dTo) <= reach ||
               (own.m_bCutAlong && SCutPlaces::HasIn(m_places.m_along, v - slack, v + slack));
    };
    if (mayEnd(dEnd)) {
        return true;
    }
    const double from = (std::min)(dEnd, dPlace) - m_places.m_dNear;
    const double to = (std::max)(dEnd, dPlace) + m_places.m_dNear;
    const std::vector<double>& across = m_places.m_across;
    for (auto cut = std::lower_bound(across.begin(), across.end(), from);
         cut != across.end() && *cut <= to; ++cut) {
        if (*cut != dPlace && mayEnd(*cut)) {
            return true;
        }
    }
    if (!own.m_bCutAlong) {
        return false;
    }
    const double a = own.At(from);
    const double b = own.At(to);
    const std::vector<double>& along = m_places.m_along;
    const auto first = std::lower_bound(along.begin(), along.end(), (std::min)(a, b));
    const auto last = std::upper_bound(first, along.end(), (std::max)(a, b));
    return last - first > kMostAtEnd || std::any_of(first, last, [&](double v) {
               return mayEnd(own.m_dFrom + (v - own.m_dV) / own.m_dSlope);
           });
}

// By rising place, and so far apart that no middle lies in two of them.
void CVisibility::MergeOpenStretches() {
    std::sort(m_open.begin(), m_open.end(),
              [](const SStretch& a, const SStretch& b) { return a.m_dFrom < b.m_dFrom; });
    size_t kept = 0;
    for (const SStretch& stretch : m_open) {
        if (kept > 0 && stretch.m_dFrom <= m_open[kept - 1].m_dTo + 4 * m_places.m_dNear) {
            m_open[kept - 1].m_dTo = (std::max)(m_open[kept - 1].m_dTo, stretch.m_dTo);
        } else {
            m_open[kept++] = stretch;
        }
    }
    m_open.resize(kept);
}

bool CVisibility::IsEdgeOn(const AcGePoint3d& from, const AcGePoint3d& to) const {
    return IsEqualValue(GetU(from), GetU(to), m_tolHorVer.equalPoint());
}
