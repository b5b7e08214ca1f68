// What Visibility.cpp leaves in doubt: whether one piece of a line is hidden by a piece of another.
#include "StdAfx.h"

#include "Visibility.h"

#include <algorithm>
#include <cmath>

#include "HiddenPoint.h"
#include "SideOrder.h"
#include "TolerantCompare.h"

CVisibility::SPiece CVisibility::MakePiece(const SSeenPiece& place) const {
    SPiece piece = {place, GetMidPoint(place.m_from, place.m_to), 0.0, 0.0};
    OrientForSide(m_dir, piece.m_place.m_from, piece.m_place.m_to);
    piece.m_dU = GetU(piece.m_middle);
    piece.m_dV = GetV(piece.m_middle);
    return piece;
}

// bNearOnly: m_near holds all that may hide it.
bool CVisibility::IsHidden(const SPiece& piece, bool bNearOnly) {
    // A piece of its own line can hide one only where that stands steeply enough for rounding.
    const size_t own = piece.m_place.m_nRecord;
    const bool bOwn = !m_sights[own].m_bClear;
    if (bNearOnly) {
        return std::any_of(m_near.begin(), m_near.end(),
                           [&](size_t other) { return Hides(other, piece); });
    }
    const double lowest = piece.m_dV - m_tolPoint.equalPoint() - 8 * m_dRounding;
    const auto isOver = [&](const SFlatBox& box) {
        const double from = (m_bVertical ? box.m_dMinX : box.m_dMinY) - m_dNear;
        const double to = (m_bVertical ? box.m_dMaxX : box.m_dMaxY) + m_dNear;
        const double top = m_bVertical ? (m_dSign > 0.0 ? box.m_dMaxY : -box.m_dMinY)
                                       : (m_dSign > 0.0 ? box.m_dMaxX : -box.m_dMinX);
        return from <= piece.m_dU && piece.m_dU <= to && top >= lowest;
    };
    return m_index.Visit(isOver, [&](int item) {
        const size_t other = static_cast<size_t>(item);
        return (other != own || bOwn) && Hides(other, piece);
    });
}

// Whether a piece of the record hides the piece.
bool CVisibility::Hides(size_t record, const SPiece& piece) {
    const SSight& sight = m_sights[record];
    if (piece.m_dU < sight.m_dFrom - m_dNear || piece.m_dU > sight.m_dTo + m_dNear) {
        return false;
    }
    if (sight.m_bClear) {
        const double gap = sight.At(piece.m_dU) - piece.m_dV;
        if (gap < -sight.m_dMargin) {
            return false;
        }
        const bool bInside =
            sight.m_dFrom + m_dNear < piece.m_dU && piece.m_dU < sight.m_dTo - m_dNear;
        if (bInside && gap > sight.m_dMargin && !IsSameEntity(record, true, piece) &&
            !IsCutNear(sight, piece)) {
            return true;
        }
    }
    return HidesByPieces(record, piece);
}

// Whether a cut of the line may stand over the middle of the piece.
bool CVisibility::IsCutNear(const SSight& sight, const SPiece& piece) const {
    if (sight.m_bCutAcross &&
        HasPlaceIn(m_placesAcross, piece.m_dU - m_dNear, piece.m_dU + m_dNear)) {
        return true;
    }
    const double slack = m_dNear * (1.0 + std::fabs(sight.m_dSlope));
    const double v = sight.At(piece.m_dU);
    return sight.m_bCutAlong && HasPlaceIn(m_placesAlong, v - slack, v + slack);
}

// Records of one entity, or a piece and itself, do not hide each other. Pieces have entities of
// their own, so only whole records can share one.
bool CVisibility::IsSameEntity(size_t record, bool bWhole, const SPiece& piece) const {
    const AcDbObjectId& id = m_lines[record].m_id;
    return bWhole && piece.m_place.m_bWhole && !id.isNull() &&
           id == m_lines[piece.m_place.m_nRecord].m_id;
}

bool CVisibility::HidesByPieces(size_t record, const SPiece& piece) {
    const SSight& sight = m_sights[record];
    if (!sight.m_bCutAcross && !sight.m_bCutAlong) {
        const CLineInfo& line = m_lines[record];
        return !IsSameEntity(record, true, piece) &&
               HidesByPiece(line.m_startPt, line.m_endPt, piece);
    }
    const std::vector<AcGePoint3d>& chain = GetChain(record);
    size_t first = 0;
    size_t last = chain.size() - 1;
    if (sight.m_bClear) {
        // The chain runs steadily across the view: only the pieces around the middle count.
        const double sign = GetU(chain.front()) < GetU(chain.back()) ? 1.0 : -1.0;
        const auto found =
            std::lower_bound(chain.begin(), chain.end(), sign * piece.m_dU,
                             [&](const AcGePoint3d& pt, double u) { return sign * GetU(pt) < u; });
        const size_t at = static_cast<size_t>(found - chain.begin());
        constexpr size_t kAround = 3;  // the middle may stand over a cut, and ends may come double
        first = at > kAround ? at - kAround : 0;
        last = (std::min)(at + kAround, last);
    }
    const bool bWhole = chain.size() == 2;
    for (size_t i = first; i < last; ++i) {
        const bool bItself =
            record == piece.m_place.m_nRecord && static_cast<int>(i) == piece.m_place.m_nPiece;
        if (!bItself && !IsSameEntity(record, bWhole, piece) &&
            HidesByPiece(chain[i], chain[i + 1], piece)) {
            return true;
        }
    }
    return false;
}

bool CVisibility::HidesByPiece(const AcGePoint3d& from, const AcGePoint3d& to,
                               const SPiece& piece) const {
    AcGePoint3d start = from;
    AcGePoint3d end = to;
    OrientForSide(m_dir, start, end);
    return !IsSameSegment(start, end, piece.m_place.m_from, piece.m_place.m_to, m_tolPoint) &&
           IsHiddenBySegment(piece.m_middle, start, end, m_dir, m_extents, m_tolPoint);
}

const std::vector<AcGePoint3d>& CVisibility::GetChain(size_t record) {
    if (m_chainOf[record] < 0) {
        m_chainOf[record] = static_cast<int>(m_chains.size());
        m_chains.push_back(MakeChain(record));
    }
    return m_chains[m_chainOf[record]];
}

std::vector<AcGePoint3d> CVisibility::MakeChain(size_t record) const {
    CLineInfo line = m_lines[record];
    m_pProbes->Cut(record, line);
    line.Sort();
    std::vector<AcGePoint3d> chain;
    chain.reserve(line.m_breakPts.size() + 2);
    chain.push_back(line.m_startPt);
    chain.insert(chain.end(), line.m_breakPts.begin(), line.m_breakPts.end());
    chain.push_back(line.m_endPt);
    return chain;
}
