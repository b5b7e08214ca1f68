#include "StdAfx.h"

#include "StretchCuts.h"

#include <algorithm>
#include <cmath>

namespace {

// Probes farther apart than the tolerance by this share of it do not refuse one another.
constexpr double kApartShare = 1.01;
// At this many times the tolerance for directions a line is surely not parallel to a probe.
constexpr double kSteadyFactor = 2.0;

}  // namespace

CStretchCuts::SRow CStretchCuts::MakeRow(size_t record, const CLineInfo& line,
                                         bool bVertical) const {
    const CProbeRow probes = m_probes.GetRow(bVertical);
    const auto [first, last] = m_probes.GetRange(record, bVertical);
    SRow row = {probes, first, last, 1.0, HUGE_VAL};
    if (first < last) {
        row.m_dShare = probes.GetShare(line);
        // A line that may be parallel to the probes may meet none of them.
        if (row.m_dShare >= kSteadyFactor * m_probes.GetTol().equalVector()) {
            row.m_dDoubt = probes.GetDoubt(first, last, line);
        }
    }
    return row;
}

// The first probe from which on all is known: the one before is too far off to refuse it.
int CStretchCuts::GoBack(const SRow& row, int index) const {
    const double apart = kApartShare * m_probes.GetTol().equalPoint() * row.m_dShare;
    while (index > row.m_nFirst &&
           !(row.m_probes.GetPlaceOf(index) - row.m_probes.GetPlaceOf(index - 1) > apart)) {
        --index;
    }
    return index;
}

// The cuts from the last one at or before from to the first one beyond to.
void CStretchCuts::CutAcross(const SRow& row, double from, double to) {
    const double refused = m_probes.GetTol().equalPoint() * row.m_dShare * (1.0 - row.m_dDoubt);
    const int inside = row.m_probes.FindPlace(row.m_nFirst, row.m_nLast, from);
    for (int before = inside - 1;; before -= 1 + (inside - before)) {
        const int start = GoBack(row, (std::max)(before, row.m_nFirst));
        m_across.clear();
        for (int k = start; k < row.m_nLast; ++k) {
            if (!m_across.empty()) {
                const double last = GetU(m_across.back());
                if (last > to) {
                    break;
                }
                if (row.m_probes.GetPlaceOf(k) < last + refused) {
                    continue;
                }
            }
            AcGePoint3d pt;
            if (row.m_probes.Meet(k, m_segment, pt) &&
                (m_across.empty() || !m_across.back().isEqualTo(pt, m_probes.GetTol()))) {
                m_across.push_back(pt);
            }
        }
        // Probes that pass the line by may have left none before the stretch.
        if (start <= row.m_nFirst || (!m_across.empty() && GetU(m_across.front()) <= from)) {
            return;
        }
    }
}

bool CStretchCuts::HasAcrossIn(double from, double to) const {
    const auto cut =
        std::lower_bound(m_across.begin(), m_across.end(), from,
                         [&](const AcGePoint3d& pt, double place) { return GetU(pt) < place; });
    return cut != m_across.end() && GetU(*cut) <= to;
}

// Whether a cut of the other direction refuses the point; reach is the tolerance in u.
bool CStretchCuts::HasAcrossAt(const AcGePoint3d& pt, double reach) const {
    const double u = GetU(pt);
    auto cut = std::lower_bound(
        m_across.begin(), m_across.end(), u - reach,
        [&](const AcGePoint3d& other, double place) { return GetU(other) < place; });
    for (; cut != m_across.end() && GetU(*cut) <= u + reach; ++cut) {
        if (cut->isEqualTo(pt, m_probes.GetTol())) {
            return true;
        }
    }
    return false;
}

// Whether the probe's cut, at the place u, is kept behind that of the refuser; -1 for none. Only
// where rounding or an end of the line is in play it is made to be asked.
bool CStretchCuts::IsNewAlong(const SRow& row, int probe, int refuser, double u) const {
    const double tol = m_probes.GetTol().equalPoint();
    const double w = row.m_probes.GetPlaceOf(probe);
    // The place is off by the same rounding.
    const double reach = (kApartShare + (std::min)(row.m_dDoubt, 1.0)) * tol;
    const bool bInside = (std::min)(GetW(m_low), GetW(m_high)) + tol < w &&
                         w < (std::max)(GetW(m_low), GetW(m_high)) - tol;
    const bool bClear = refuser < 0 || w - row.m_probes.GetPlaceOf(refuser) >
                                           tol * row.m_dShare * (1.0 + row.m_dDoubt);
    if (row.m_dDoubt < HUGE_VAL && bInside && bClear && !HasAcrossIn(u - reach, u + reach)) {
        return true;
    }
    AcGePoint3d pt;
    if (!row.m_probes.Meet(probe, m_segment, pt) || HasAcrossAt(pt, reach)) {
        return false;
    }
    return refuser < 0 ||
           !row.m_probes.GetCrossing(refuser, m_segment).isEqualTo(pt, m_probes.GetTol());
}

void CStretchCuts::CutAlong(const SRow& row, int first, double top) {
    m_along.clear();
    const double refused = m_probes.GetTol().equalPoint() * row.m_dShare * (1.0 - row.m_dDoubt);
    int refuser = -1;
    for (int k = first; k < row.m_nLast;) {
        const double place = row.m_probes.GetPlaceOf(k);
        if (place > top) {
            return;
        }
        const double u = GetPlaceAt(place);
        if (!IsNewAlong(row, k, refuser, u)) {
            ++k;
            continue;
        }
        // Where nothing is sure the order of cuts is that of their points.
        const bool bSure = row.m_dDoubt < HUGE_VAL;
        m_along.push_back({bSure ? u : GetU(row.m_probes.GetCrossing(k, m_segment)), k});
        refuser = k;
        k = bSure ? row.m_probes.SkipTo(k, row.m_nLast, place + refused) : k + 1;
    }
}

// The cuts from the last one across at or before from to the first one beyond to, or to the ends
// of the line.
void CStretchCuts::Join(double from, double to) {
    auto first =
        std::upper_bound(m_across.begin(), m_across.end(), from,
                         [&](double place, const AcGePoint3d& pt) { return place < GetU(pt); });
    auto last =
        std::upper_bound(first, m_across.end(), to,
                         [&](double place, const AcGePoint3d& pt) { return place < GetU(pt); });
    const bool bFromEnd = first == m_across.begin();
    const bool bToEnd = last == m_across.end();
    m_fixed.clear();
    m_cuts.clear();
    const auto addFixed = [&](const AcGePoint3d& pt) {
        m_fixed.push_back(pt);
        m_cuts.push_back({GetU(pt), -static_cast<int>(m_fixed.size())});
    };
    const AcGePoint3d end = bToEnd ? m_high : *last;
    addFixed(bFromEnd ? m_low : first[-1]);
    const double begin = GetPlace(0);
    if (!m_bRising) {
        std::reverse(m_along.begin(), m_along.end());
    }
    for (const SCut& cut : m_along) {
        if ((!bFromEnd && cut.m_dPlace <= begin) || (!bToEnd && cut.m_dPlace >= GetU(end))) {
            continue;
        }
        while (first != last && GetU(*first) < cut.m_dPlace) {
            addFixed(*first++);
        }
        m_cuts.push_back(cut);
    }
    for (; first != last; ++first) {
        addFixed(*first);
    }
    addFixed(end);
    m_bWhole = bFromEnd && bToEnd && m_cuts.size() == 2;
}

AcGePoint3d CStretchCuts::GetPoint(size_t cut) const {
    const int from = m_cuts[cut].m_nFrom;
    return from < 0 ? m_fixed[static_cast<size_t>(-1 - from)]
                    : m_probes.GetRow(!m_bVertical).GetCrossing(from, m_segment);
}

void CStretchCuts::Find(size_t record, const CLineInfo& line, double from, double to) {
    const bool bForward = GetU(line.m_startPt) <= GetU(line.m_endPt);
    m_low = bForward ? line.m_startPt : line.m_endPt;
    m_high = bForward ? line.m_endPt : line.m_startPt;
    m_bRising = GetW(m_low) <= GetW(m_high);
    m_dRun = (GetU(m_high) - GetU(m_low)) / (GetW(m_high) - GetW(m_low));
    m_segment.set(line.m_startPt, line.m_endPt);
    const SRow across = MakeRow(record, line, m_bVertical);
    const SRow along = MakeRow(record, line, !m_bVertical);
    CutAcross(across, from, to);
    m_along.clear();
    if (along.m_nFirst < along.m_nLast) {
        const double tol = m_probes.GetTol().equalPoint();
        const AcGePoint3d& begin =
            m_across.empty() || GetU(m_across.front()) > from ? m_low : m_across.front();
        const AcGePoint3d& end =
            m_across.empty() || GetU(m_across.back()) <= to ? m_high : m_across.back();
        const double bottom = (std::min)(GetW(begin), GetW(end)) - 2 * tol;
        const double top = (std::max)(GetW(begin), GetW(end)) + 2 * tol;
        const int inside = along.m_probes.FindPlace(along.m_nFirst, along.m_nLast, bottom);
        const int start = GoBack(along, inside);
        if (start < inside) {
            // Cuts of the other direction decide about the run before the stretch, too.
            const double u = GetPlaceAt(along.m_probes.GetPlaceOf(start));
            CutAcross(across, (std::min)(from, u - 4 * tol), (std::max)(to, u + 4 * tol));
        }
        CutAlong(along, start, top);
    }
    Join(from, to);
}

void CStretchCuts::Cut(size_t record, const CLineInfo& line, double from, double to) {
    Find(record, line, from, to);
    m_chain.clear();
    for (size_t i = 0; i < GetCount(); ++i) {
        m_chain.push_back(GetPoint(i));
    }
}
