// Breaking along the view and removing what is hidden, in one.
#include "StdAfx.h"

#include "EncircleLine.h"

#include <algorithm>
#include <set>
#include <utility>

#include "EraseEntity.h"
#include "RemoveMarked.h"
#include "SideOrder.h"
#include "Visibility.h"

namespace {

using Lines = std::vector<CLineInfo>;
using Seen = std::vector<SSeenPiece>;

// Whether two records stand for one entity. Pieces are made in the order of their entities, so this
// is mostly one look at each.
bool ShareEntities(const Lines& lines) {
    std::vector<AcDbObjectId> ids;
    ids.reserve(lines.size());
    for (const CLineInfo& line : lines) {
        if (!line.m_id.isNull()) {
            ids.push_back(line.m_id);
        }
    }
    if (!std::is_sorted(ids.begin(), ids.end())) {
        std::sort(ids.begin(), ids.end());
    }
    return std::adjacent_find(ids.begin(), ids.end()) != ids.end();
}

// What a probing pass and the sides after it leave, without proofs about what is hidden.
bool CanSeeUnbroken(const Lines& lines, const CVisibility& visibility, bool bWithVertical,
                    const std::vector<E_RemoveLine_Dir>& dirs) {
    // Horizontal sides need the horizontal probes first.
    const bool bOrder = !bWithVertical || std::all_of(dirs.begin(), dirs.end(), IsVerticalSide);
    return bOrder && visibility.CanProve() && !ShareEntities(lines) &&
           std::all_of(lines.begin(), lines.end(), [](const CLineInfo& line) {
               return line.m_bValid && line.m_breakPts.empty();
           });
}

// Erases every line but the whole ones that all sides see.
void EraseOthers(const Lines& lines, const std::vector<Seen>& seen) {
    std::vector<size_t> sides(lines.size(), 0);
    for (const Seen& bySide : seen) {
        for (const SSeenPiece& piece : bySide) {
            sides[piece.m_nRecord] += piece.m_bWhole ? 1 : 0;
        }
    }
    std::vector<char> gone(lines.size(), 0);
    for (size_t i = 0; i < lines.size(); ++i) {
        gone[i] = sides[i] < seen.size();
    }
    EraseMarked(lines, gone);
}

// The records of one side: the whole ones first, then the pieces, both in order.
Lines ToLines(const Lines& lines, const Seen& seen, E_RemoveLine_Dir dir) {
    Lines visible;
    visible.reserve(seen.size());
    for (const bool bWhole : {true, false}) {
        for (const SSeenPiece& piece : seen) {
            if (piece.m_bWhole != bWhole) {
                continue;
            }
            CLineInfo line;
            if (bWhole) {
                line.m_id = lines[piece.m_nRecord].m_id;
            }
            line.m_startPt = piece.GetFrom();
            line.m_endPt = piece.GetTo();
            OrientForSide(dir, line.m_startPt, line.m_endPt);
            visible.push_back(std::move(line));
        }
    }
    return visible;
}

// Takes the pieces of broken lines out of the drawing.
void DropPieceEntities(const Lines& lines, std::vector<Lines>& visible) {
    std::set<AcDbObjectId> wholeIds;
    for (const CLineInfo& line : lines) {
        wholeIds.insert(line.m_id);
    }
    for (Lines& seen : visible) {
        for (CLineInfo& line : seen) {
            if (wholeIds.count(line.m_id) == 0) {
                EraseById(line.m_id);
                line.m_id = AcDbObjectId::kNull;
            }
        }
    }
}

}  // namespace

std::vector<std::vector<CLineInfo>> CEncircleLine::BreakAndSee(
    const std::vector<CLineInfo>& lines, bool bWithVertical, bool bShiftRight,
    const std::vector<E_RemoveLine_Dir>& dirs) {
    std::vector<Lines> visible;
    CVisibility visibility(lines, m_extents, m_calInfo.m_tolPoint, m_calInfo.m_tolHorVer);
    if (!CanSeeUnbroken(lines, visibility, bWithVertical, dirs)) {
        Lines copy = lines;
        BreakLines2(copy, bWithVertical, bShiftRight);
        for (const E_RemoveLine_Dir dir : dirs) {
            visible.push_back(RemoveLine2(dir, copy));
        }
        DropPieceEntities(lines, visible);
        return visible;
    }
    const CProbeCuts probes(lines, GetProbeSetup(bWithVertical, bShiftRight));
    std::vector<Seen> seen;
    for (const E_RemoveLine_Dir dir : dirs) {
        seen.push_back(visibility.See(dir, probes));
    }
    for (size_t i = 0; i < dirs.size(); ++i) {
        visible.push_back(ToLines(lines, seen[i], dirs[i]));
    }
    EraseOthers(lines, seen);
    return visible;
}
