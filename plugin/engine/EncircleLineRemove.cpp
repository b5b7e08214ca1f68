// Directional removal: throws away what a side cannot see, and what lies beyond the axis.
#include "StdAfx.h"

#include "EncircleLine.h"

#include <algorithm>

#include "AddEntity.h"
#include "HiddenPoint.h"
#include "LineBoxes.h"
#include "RemoveMarked.h"
#include "SegmentClass.h"
#include "SideOrder.h"
#include "Tolerances.h"
#include "TolerantCompare.h"
#include "Visibility.h"

namespace {

using Lines = std::vector<CLineInfo>;

// The axis line reaches so far beyond the drawing, in drawing units: the box is widened first, then
// the line goes past it by its overhang.
constexpr double kAxisWidening = 50.0;

// Boxes that miss one another by less still hold one another, in drawing units.
constexpr double kBoxTol = 1e-6;

CQZRect GetBox(const CLineInfo& line) { return CQZRect(line.m_startPt, line.m_endPt); }

// Whether a line lies wholly on the side of the axis that is not kept.
bool IsBeyondAxis(const CLineInfo& line, E_RemoveLine_Dir dir, double dAxis, double tol) {
    const SSideView view(dir);
    const double start = view.GetAlong(line.m_startPt);
    const double end = view.GetAlong(line.m_endPt);
    return view.m_dSign > 0.0
               ? IsAtOrBelowValue(start, dAxis, tol) && IsAtOrBelowValue(end, dAxis, tol)
               : IsAtOrAboveValue(start, dAxis, tol) && IsAtOrAboveValue(end, dAxis, tol);
}

// Whether another side's line already stands for this one.
bool IsHeldBy(const CLineInfo& other, const CLineInfo& line, const CEncircleCalInfo& info) {
    if (line.IsEqual(other, info.m_tolLine)) {
        return true;
    }
    const CQZRect box = GetBox(line);
    const CQZRect otherBox = GetBox(other);
    return (ClassifySegments(line.m_startPt, line.m_endPt, other.m_startPt, other.m_endPt,
                             info.m_tolLine.equalPoint()) == E_Segment_Collinear &&
            otherBox.Contains(box, kBoxTol)) ||
           box.Overlaps(otherBox, -info.m_tolPoint.equalPoint());
}

Lines ToLines(const Lines& lines, const std::vector<SSeenPiece>& seen, E_RemoveLine_Dir dir) {
    Lines visible;
    visible.reserve(seen.size());
    for (const SSeenPiece& piece : seen) {
        visible.push_back(lines[piece.m_nRecord]);
        OrientForSide(dir, visible.back().m_startPt, visible.back().m_endPt);
    }
    return visible;
}

}  // namespace

std::vector<CLineInfo> CEncircleLine::RemoveLine2(E_RemoveLine_Dir dir,
                                                  const std::vector<CLineInfo>& lines) {
    CVisibility visibility(lines, m_extents, m_calInfo.m_tolPoint, m_calInfo.m_tolHorVer);
    const std::vector<SSeenPiece> seen = visibility.See(dir);
    std::vector<char> hidden(lines.size(), 1);
    for (const SSeenPiece& piece : seen) {
        hidden[piece.m_nRecord] = 0;
    }
    EraseMarked(lines, hidden);
    return ToLines(lines, seen, dir);
}

bool CEncircleLine::IsPtInLineSpecifiedDir2(AcGePoint3d pt, AcGePoint3d lineStart,
                                            AcGePoint3d lineEnd, E_RemoveLine_Dir dir) {
    return IsHiddenBySegment(pt, lineStart, lineEnd, dir, m_extents, m_calInfo.m_tolPoint);
}

AcDbObjectId CEncircleLine::CreateTempLine(E_RemoveLine_Dir dir, double dAxis,
                                           std::vector<CLineInfo>& lines) {
    CQZRect box;
    for (const CLineInfo& line : lines) {
        box.Extend(GetBox(line));
    }
    box.WidenHorizontally(kAxisWidening);
    CLineInfo axis;
    if (IsVerticalSide(dir)) {
        axis.m_startPt.set(box.min.x - kAxisOverhang, dAxis, 0.0);
        axis.m_endPt.set(box.max.x + kAxisOverhang, dAxis, 0.0);
    } else {
        axis.m_startPt.set(dAxis, box.max.y + kAxisOverhang, 0.0);
        axis.m_endPt.set(dAxis, box.min.y - kAxisOverhang, 0.0);
    }
    axis.m_id = AddLine(axis.m_startPt, axis.m_endPt, kByLayerColour, ACDB_MODEL_SPACE);
    axis.m_bValid = false;
    lines.push_back(axis);
    return axis.m_id;
}

void CEncircleLine::RemoveLineInExcludeDir(E_RemoveLine_Dir dir, double dAxis,
                                           std::vector<CLineInfo>& lines) {
    if (dir == E_Dir_None) {
        return;
    }
    std::vector<char> beyond(lines.size(), 0);
    for (size_t i = 0; i < lines.size(); ++i) {
        beyond[i] = lines[i].m_bValid &&
                    IsBeyondAxis(lines[i], dir, dAxis, m_calInfo.m_tolPoint.equalPoint());
    }
    EraseMarked(lines, beyond);
    DeleteMarked(lines, beyond);
}

void CEncircleLine::RemoveLineInOtherDir(const std::vector<CLineInfo>& otherLines,
                                         std::vector<CLineInfo>& lines) {
    // Whatever holds a line lies no farther from it than the widest of the tolerances.
    const double pad = m_calInfo.m_tolLine.equalPoint() + 4 * kBoxTol;
    std::vector<char> held(lines.size(), 0);
    // A side sees many more pieces than the ends that are then looked at: the few are indexed, and
    // most of the many lie far from all of them.
    const CBoxIndex index(GetFlatBoxes(lines));
    for (const CLineInfo& other : otherLines) {
        const SFlatBox box = GetFlatBox(other).Padded(pad);
        index.Visit([&](const SFlatBox& own) { return own.Meets(box, 0.0); },
                    [&](int i) {
                        held[i] = held[i] != 0 || IsHeldBy(other, lines[i], m_calInfo);
                        return false;
                    });
    }
    EraseMarked(lines, held);
    DeleteMarked(lines, held);
}
