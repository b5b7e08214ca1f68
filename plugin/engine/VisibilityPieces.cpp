// What Visibility.cpp leaves in doubt: whether one piece of a line is hidden by a piece of another.
#include "StdAfx.h"

#include "Visibility.h"

#include <algorithm>
#include <cmath>

#include "HiddenPoint.h"
#include "LineBoxes.h"
#include "SideOrder.h"
#include "TolerantCompare.h"

namespace {

// Where more lines than this reach above a floor, an index tells sooner which stand over a middle.
constexpr size_t kMostGathered = 64;
// What hides a middle stands at most one tolerance below it; the lines gathered reach up to the
// floor within kClearTols of Visibility.cpp. So much is left between the two, in tolerances.
constexpr double kFloorTols = 0.25;
// Pieces are tested by rising place, so a hider is cut that many tolerances ahead.
constexpr double kAheadTols = 32.0;
// Room for the rounding of a height that is compared.
constexpr double kHeightRoom = 16.0;

}  // namespace

CVisibility::SPiece CVisibility::MakePiece(size_t record, const AcGePoint3d& from,
                                           const AcGePoint3d& to) const {
    SPiece piece = {record, 0, false, from, to, GetMidPoint(from, to), 0.0, 0.0};
    OrientForSide(m_dir, piece.m_from, piece.m_to);
    piece.m_dU = GetU(piece.m_middle);
    piece.m_dV = GetV(piece.m_middle);
    return piece;
}

void CVisibility::EnterColumn(int column) {
    if (column != m_nColumn) {
        m_nColumn = column;
        m_bAllGathered = m_floors.Gather(column, kMostGathered, m_gathered);
    }
}

// The lines over the column that pass clearly above the record somewhere in it.
void CVisibility::FindCovers(size_t record, int column) {
    EnterColumn(column);
    m_nCoverRecord = record;
    m_nCoverColumn = column;
    m_covers.clear();
    const SSight& own = m_sights[record];
    for (const int item : m_gathered) {
        const SSight& other = m_sights[static_cast<size_t>(item)];
        const double from = (std::max)({m_floors.GetFrom(column), own.m_dFrom, other.m_dFrom});
        const double to = (std::min)({m_floors.GetTo(column), own.m_dTo, other.m_dTo});
        if (static_cast<size_t>(item) != record && other.m_bClear && from < to &&
            (std::max)(other.At(from) - own.At(from), other.At(to) - own.At(to)) >
                other.m_dMargin) {
            m_covers.push_back({static_cast<size_t>(item), CPlaceCursor(m_places.m_along)});
        }
    }
}

// Whether a line passes clearly above a steady one where that has the middle of a piece, and no cut
// of it can stand over the middle. The place is known but for the slack of the line's cuts.
bool CVisibility::IsSurelyHidden(size_t record, double u) {
    if (!m_floors.HasColumns()) {
        return false;
    }
    if (record != m_nCoverRecord || m_nCoverColumn < 0 ||
        !(m_floors.GetFrom(m_nCoverColumn) <= u && u < m_floors.GetTo(m_nCoverColumn))) {
        FindCovers(record, m_floors.FindColumn(u));
    }
    const SSight& own = m_sights[record];
    const double slack = own.m_bCutAlong ? m_places.GetSlack(own) : 0.0;
    const double reach = m_places.m_dNear + slack;
    for (SCover& cover : m_covers) {
        const SSight& other = m_sights[cover.m_nRecord];
        if (!(other.m_dFrom + reach < u && u < other.m_dTo - reach)) {
            continue;
        }
        const double slopes = 1.0 + std::fabs(own.m_dSlope) + std::fabs(other.m_dSlope);
        const double v = other.At(u);
        if (!(v - own.At(u) > other.m_dMargin + (kHeightRoom * m_dRounding + 2 * slack) * slopes)) {
            continue;
        }
        const double high = m_places.m_dRounding * (1.0 + std::fabs(other.m_dSlope)) +
                            slack * std::fabs(other.m_dSlope);
        if ((!other.m_bCutAcross || !m_across->HasIn(u - reach, u + reach)) &&
            (!other.m_bCutAlong || !cover.m_along.HasIn(v - high, v + high))) {
            return true;
        }
    }
    return false;
}

// Whether the lines that make the floor are sure to hide the piece. Lines that share an entity do
// not hide one another, so it can be told for a breaking pass only, which has none.
bool CVisibility::IsBelowFloor(const SPiece& piece) const {
    if (!m_bCanProve || m_pProbes == nullptr || !m_floors.HasColumns()) {
        return false;
    }
    const double u = piece.m_dU;
    return piece.m_dV + kHeightRoom * m_dRounding < m_floors.GetFloor(m_floors.FindColumn(u)) &&
           !m_places.HasAcross(u - m_places.m_dNear, u + m_places.m_dNear);
}

bool CVisibility::IsHidden(const SPiece& piece) {
    if (!m_bCanProve || !m_floors.HasColumns()) {
        return IsHiddenByIndexed(piece);
    }
    const int column = m_floors.FindColumn(piece.m_dU);
    EnterColumn(column);
    const bool bOwn = !m_sights[piece.m_nRecord].m_bClear;
    for (const int item : m_gathered) {
        const size_t other = static_cast<size_t>(item);
        if ((other != piece.m_nRecord || bOwn) && Hides(other, piece)) {
            return true;
        }
    }
    // Above the floor nothing else can hide it.
    const bool bAll = m_bAllGathered && piece.m_dV + kFloorTols * m_tolPoint.equalPoint() >=
                                            m_floors.GetFloor(column);
    return !bAll && IsHiddenByIndexed(piece);
}

bool CVisibility::IsHiddenByIndexed(const SPiece& piece) {
    if (m_index == nullptr) {
        m_index = std::make_unique<CBoxIndex>(GetFlatBoxes(m_lines));
    }
    // A piece of its own line can hide one only where that stands steeply enough for rounding.
    const bool bOwn = !m_sights[piece.m_nRecord].m_bClear;
    const double lowest = piece.m_dV - m_tolPoint.equalPoint() - 8 * m_dRounding;
    const auto isOver = [&](const SFlatBox& box) {
        const double from = m_view.GetFirstAcross(box) - m_places.m_dNear;
        const double to = m_view.GetLastAcross(box) + m_places.m_dNear;
        return from <= piece.m_dU && piece.m_dU <= to && m_view.GetNearest(box) >= lowest;
    };
    return m_index->Visit(isOver, [&](int item) {
        const size_t other = static_cast<size_t>(item);
        return (other != piece.m_nRecord || bOwn) && Hides(other, piece);
    });
}

// Whether a piece of the record hides the piece.
bool CVisibility::Hides(size_t record, const SPiece& piece) {
    const SSight& sight = m_sights[record];
    const double reach = m_places.m_dNear;
    if (piece.m_dU < sight.m_dFrom - reach || piece.m_dU > sight.m_dTo + reach) {
        return false;
    }
    if (sight.m_bClear) {
        const double gap = sight.At(piece.m_dU) - piece.m_dV;
        const double room = kHeightRoom * m_dRounding * (1.0 + std::fabs(sight.m_dSlope));
        if (gap < -m_tolPoint.equalPoint() - room) {
            return false;
        }
        const bool bInside = sight.m_dFrom + reach < piece.m_dU && piece.m_dU < sight.m_dTo - reach;
        if (bInside && gap > sight.m_dMargin && !IsSameEntity(record, true, piece) &&
            !IsCutNear(sight, piece)) {
            return true;
        }
    }
    return HidesByPieces(record, piece);
}

// Whether a cut of the line may stand over the middle of the piece.
bool CVisibility::IsCutNear(const SSight& sight, const SPiece& piece) const {
    const double u = piece.m_dU;
    return (sight.m_bCutAcross && m_places.HasAcross(u - m_places.m_dNear, u + m_places.m_dNear)) ||
           m_places.HasAlong(sight, u, u);
}

// Records of one entity, or a piece and itself, do not hide each other. Pieces have entities of
// their own, so only whole records can share one.
bool CVisibility::IsSameEntity(size_t record, bool bWhole, const SPiece& piece) const {
    const AcDbObjectId& id = m_lines[record].m_id;
    return bWhole && piece.m_bWhole && !id.isNull() && id == m_lines[piece.m_nRecord].m_id;
}

bool CVisibility::HidesByPieces(size_t record, const SPiece& piece) {
    const SSight& sight = m_sights[record];
    const CLineInfo& line = m_lines[record];
    if (!sight.m_bCutAcross && !sight.m_bCutAlong) {
        return !IsSameEntity(record, true, piece) &&
               HidesByPiece(line.m_startPt, line.m_endPt, piece);
    }
    if (!sight.m_bClear) {
        const Chain& chain = GetUnsteadyChain(record);
        return HidesByChain(chain, record, chain.size() == 2, piece);
    }
    CutHider(record, piece.m_dU);
    return HidesByChain(m_hiderCuts->GetChain(), record, m_hiderCuts->IsWhole(), piece);
}

// Cuts the line around the place, unless that was done with the pieces before.
void CVisibility::CutHider(size_t record, double u) {
    const double reach = 2 * m_places.m_dNear;
    if (record == m_nHider && m_dHiderFrom <= u - reach && u + reach <= m_dHiderTo) {
        return;
    }
    m_nHider = record;
    m_dHiderFrom = u - reach;
    m_dHiderTo = u + kAheadTols * m_tolPoint.equalPoint();
    m_hiderCuts->Cut(record, m_lines[record], m_dHiderFrom, m_dHiderTo);
}

bool CVisibility::HidesByChain(const Chain& chain, size_t record, bool bWhole,
                               const SPiece& piece) const {
    for (size_t i = 0; i + 1 < chain.size(); ++i) {
        const bool bItself = record == piece.m_nRecord && static_cast<int>(i) == piece.m_nPiece;
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
    return !IsSameSegment(start, end, piece.m_from, piece.m_to, m_tolPoint) &&
           IsHiddenBySegment(piece.m_middle, start, end, m_dir, m_extents, m_tolPoint);
}

const CVisibility::Chain& CVisibility::GetUnsteadyChain(size_t record) {
    const auto known = m_unsteady.find(record);
    return known != m_unsteady.end()
               ? known->second
               : m_unsteady.emplace(record, m_pProbes->GetChain(record, m_lines[record]))
                     .first->second;
}
