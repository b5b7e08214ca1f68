// Line breaking: ends every segment where another meets it, so that no piece is partly visible.
#include "StdAfx.h"

#include "EncircleLine.h"

#include <cmath>

#include "BoxIndex.h"
#include "EncircleWatch.h"
#include "LineSplitter.h"
#include "Meetings.h"
#include "ProbeCuts.h"

void CEncircleLine::BreakLines(std::vector<CLineInfo>& lines) {
    AddMeetingPoints(lines, m_calInfo.m_tolPoint);
    CLineSplitter::SplitAll(lines);
}

void CEncircleLine::BreakLines2(std::vector<CLineInfo>& lines, bool bWithVertical,
                                bool bShiftRight) {
    const CProbeCuts probes(lines, GetProbeSetup(bWithVertical, bShiftRight));
    size_t pieces = lines.size();
    for (size_t i = 0; i < lines.size(); ++i) {
        probes.Cut(i, lines[i]);
        pieces += lines[i].m_breakPts.size();
        CEncircleWatch::Keep(pieces);
    }
    CLineSplitter::SplitAll(lines);
}

SProbeSetup CEncircleLine::GetProbeSetup(bool bWithVertical, bool bShiftRight) const {
    return {m_extents, bShiftRight ? m_calInfo.m_dSideLength : -m_calInfo.m_dSideLength,
            bWithVertical, m_calInfo.m_tolPoint};
}

void CEncircleLine::CalBreakPoint(CLineInfo& line, const AcGePoint3dArray& points, bool bVertical,
                                  double dHalfLength) {
    const int start = GetBreakIndex(points, line.m_startPt, m_calInfo.m_tolPoint);
    const int end = GetBreakIndex(points, line.m_endPt, m_calInfo.m_tolPoint);
    if (start < 0 || end < 0) {
        return;
    }
    CProbeRow row(points.asArrayPtr(), bVertical, dHalfLength, m_calInfo.m_tolPoint);
    row.Cut((std::min)(start, end) + 1, (std::max)(start, end), line);
}

void CEncircleLine::AddBreakPoint(AcGePoint3d pt, std::vector<AcGePoint3d>& pts, AcGeTol tol) {
    for (const AcGePoint3d& other : pts) {
        if (other.isEqualTo(pt, tol)) {
            return;
        }
    }
    pts.push_back(pt);
}

int CEncircleLine::GetBreakIndex(const AcGePoint3dArray& pts, AcGePoint3d pt, AcGeTol tol) {
    for (int i = 0; i < pts.length(); ++i) {
        if (pts[i].isEqualTo(pt, tol)) {
            return i;
        }
    }
    return -1;
}

bool CEncircleLine::SplitLine(CLineInfo& line, AcDbObjectIdArray& newIds) {
    newIds.removeAll();
    if (!CLineSplitter::IsBroken(line)) {
        return false;
    }
    std::vector<CLineInfo> pieces;
    CLineSplitter().Split(line, pieces);
    for (const CLineInfo& piece : pieces) {
        newIds.append(piece.m_id);
    }
    return true;
}
