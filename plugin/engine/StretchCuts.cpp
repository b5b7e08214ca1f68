#include "StdAfx.h"

#include "StretchCuts.h"

#include <algorithm>
#include <cmath>

namespace {

// Probes farther apart than the tolerance by this share of it do not refuse one another.
constexpr double kApartShare = 1.01;

}  // namespace

CStretchCuts::SRow CStretchCuts::MakeRow(size_t record, const CLineInfo& line,
                                         bool bVertical) const {
    const CProbeRow probes = m_probes.GetRow(bVertical);
    const auto [first, last] = m_probes.GetRange(record, bVertical);
    SRow row = {probes, first, last, 1.0, false};
    if (first < last) {
        row.m_dShare = probes.GetShare(line);
        row.m_bSure = probes.IsSure(first, last, line);
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

// Whether a cut at the place is sure to fall on one that is kept, so that it need not be made.
bool CStretchCuts::IsRefused(const SRow& row, double dPlace, double dRefuser) const {
    return row.m_bSure && dPlace < dRefuser + CProbeRow::kSureShare *
                                                  m_probes.GetTol().equalPoint() * row.m_dShare;
}

// The cuts from the last one at or before from to the first one beyond to.
void CStretchCuts::CutAcross(const SRow& row, const AcGeLineSeg3d& segment, double from,
                             double to) {
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
                if (IsRefused(row, row.m_probes.GetPlaceOf(k), last)) {
                    continue;
                }
            }
            AcGePoint3d pt;
            if (row.m_probes.Meet(k, segment, pt) &&
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

void CStretchCuts::CutAlong(const SRow& row, const AcGeLineSeg3d& segment, int first, double top) {
    m_along.clear();
    const double tol = m_probes.GetTol().equalPoint();
    const double length = segment.length();
    const double share = std::fabs(GetU(segment.endPoint()) - GetU(segment.startPoint())) / length;
    const double reach = kApartShare * tol * share + tol * 1e-3;
    double refuser = -HUGE_VAL;
    for (int k = first; k < row.m_nLast && row.m_probes.GetPlaceOf(k) <= top; ++k) {
        if (IsRefused(row, row.m_probes.GetPlaceOf(k), refuser)) {
            continue;
        }
        AcGePoint3d pt;
        if (!row.m_probes.Meet(k, segment, pt) ||
            (!m_along.empty() && m_along.back().isEqualTo(pt, m_probes.GetTol())) ||
            HasAcrossAt(pt, reach)) {
            continue;
        }
        m_along.push_back(pt);
        refuser = GetW(pt);
    }
}

// The chain from the last cut across at or before from to the first one beyond to, or to the ends
// of the line.
void CStretchCuts::Join(const AcGePoint3d& low, const AcGePoint3d& high, double from, double to) {
    auto first =
        std::upper_bound(m_across.begin(), m_across.end(), from,
                         [&](double place, const AcGePoint3d& pt) { return place < GetU(pt); });
    auto last =
        std::upper_bound(first, m_across.end(), to,
                         [&](double place, const AcGePoint3d& pt) { return place < GetU(pt); });
    const bool bFromEnd = first == m_across.begin();
    const bool bToEnd = last == m_across.end();
    const AcGePoint3d begin = bFromEnd ? low : first[-1];
    const AcGePoint3d end = bToEnd ? high : *last;
    if (!m_bRising) {
        std::reverse(m_along.begin(), m_along.end());
    }
    m_chain.clear();
    m_chain.push_back(begin);
    for (const AcGePoint3d& pt : m_along) {
        if ((!bFromEnd && GetU(pt) <= GetU(begin)) || (!bToEnd && GetU(pt) >= GetU(end))) {
            continue;
        }
        while (first != last && GetU(*first) < GetU(pt)) {
            m_chain.push_back(*first++);
        }
        m_chain.push_back(pt);
    }
    m_chain.insert(m_chain.end(), first, last);
    m_chain.push_back(end);
    m_bWhole = bFromEnd && bToEnd && m_chain.size() == 2;
}

void CStretchCuts::Cut(size_t record, const CLineInfo& line, double from, double to) {
    const bool bForward = GetU(line.m_startPt) <= GetU(line.m_endPt);
    const AcGePoint3d& low = bForward ? line.m_startPt : line.m_endPt;
    const AcGePoint3d& high = bForward ? line.m_endPt : line.m_startPt;
    m_bRising = GetW(low) <= GetW(high);
    const AcGeLineSeg3d segment(line.m_startPt, line.m_endPt);
    const SRow across = MakeRow(record, line, m_bVertical);
    const SRow along = MakeRow(record, line, !m_bVertical);
    CutAcross(across, segment, from, to);
    m_along.clear();
    if (along.m_nFirst < along.m_nLast) {
        const double tol = m_probes.GetTol().equalPoint();
        const AcGePoint3d& begin =
            m_across.empty() || GetU(m_across.front()) > from ? low : m_across.front();
        const AcGePoint3d& end =
            m_across.empty() || GetU(m_across.back()) <= to ? high : m_across.back();
        const double bottom = (std::min)(GetW(begin), GetW(end)) - 2 * tol;
        const double top = (std::max)(GetW(begin), GetW(end)) + 2 * tol;
        const int inside = along.m_probes.FindPlace(along.m_nFirst, along.m_nLast, bottom);
        const int start = GoBack(along, inside);
        if (start < inside) {
            // Cuts of the other direction decide about the run before the stretch, too.
            const double slope = (GetU(high) - GetU(low)) / (GetW(high) - GetW(low));
            const double u = GetU(low) + (along.m_probes.GetPlaceOf(start) - GetW(low)) * slope;
            CutAcross(across, segment, (std::min)(from, u - 4 * tol), (std::max)(to, u + 4 * tol));
        }
        CutAlong(along, segment, start, top);
    }
    Join(low, high, from, to);
}
