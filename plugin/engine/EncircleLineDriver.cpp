// The live pipeline: which pass runs when.
#include "StdAfx.h"

#include "EncircleLine.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "EncircleLayers.h"
#include "EncircleRun.h"
#include "EncircleTrace.h"
#include "LayerTools.h"
#include "LineSplitter.h"
#include "Meetings.h"
#include "SideChains.h"
#include "WorkingSet.h"

namespace {

using Lines = std::vector<CLineInfo>;

// From here on the records stand for themselves. Their entities lie on the scratch layer, and go
// with it at the end of the run; the pieces of the passes get none, since a drawing can have a
// hundred for each line that was picked.
void LeaveEntities(Lines& lines) {
    for (CLineInfo& line : lines) {
        line.m_id.setNull();
    }
}

// Drops the records that no pass has kept and grows the box by the others.
void SweepInvalid(Lines& lines, CQZRect& extents) {
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [](const CLineInfo& line) { return !line.m_bValid; }),
                lines.end());
    for (const CLineInfo& line : lines) {
        extents.Extend(line.m_startPt);
        extents.Extend(line.m_endPt);
    }
}

// Where a side's chain is kept, and what the trace calls its passes; a pass without a name does not
// run for that side.
struct SSide {
    Lines SSideChains::*m_pChain;
    const char* m_pVisible;
    const char* m_pOther;
    const char* m_pWalter;
    const char* m_pConnected;
};

const SSide& GetSide(E_RemoveLine_Dir dir) {
    static const SSide kSides[] = {
        {&SSideChains::m_bottom, "bottom_visible", "bottom_other", nullptr, "bottom_chain"},
        {&SSideChains::m_top, "top_visible", nullptr, nullptr, "top_chain"},
        {&SSideChains::m_right, "right_visible", "right_other", "right_walter", "right_chain"},
        {&SSideChains::m_left, "left_visible", "left_other", "left_walter", "left_chain"}};
    return kSides[dir];
}

// How an outline goes round the drawing: the chains in order, each read forward or backward.
struct SChainStep {
    Lines SSideChains::*m_pChain;
    bool m_bForward;
    bool m_bUnused;  // the third argument of GetLineInfoPt()
};

const std::vector<SChainStep>& GetOutlineOrder(E_RemoveLine_Dir side) {
    static const std::vector<SChainStep> kTop = {{&SSideChains::m_left, false, false},
                                                 {&SSideChains::m_top, true, true},
                                                 {&SSideChains::m_right, true, false}};
    static const std::vector<SChainStep> kBottom = {{&SSideChains::m_left, true, false},
                                                    {&SSideChains::m_bottom, true, true},
                                                    {&SSideChains::m_right, false, false}};
    static const std::vector<SChainStep> kRight = {{&SSideChains::m_top, true, true},
                                                   {&SSideChains::m_right, true, false},
                                                   {&SSideChains::m_bottom, false, true}};
    static const std::vector<SChainStep> kLeft = {{&SSideChains::m_top, false, true},
                                                  {&SSideChains::m_left, true, false},
                                                  {&SSideChains::m_bottom, true, true}};
    static const std::vector<SChainStep> kAround = {{&SSideChains::m_left, false, false},
                                                    {&SSideChains::m_top, true, true},
                                                    {&SSideChains::m_right, true, false},
                                                    {&SSideChains::m_bottom, false, true}};
    switch (side) {
        case E_Dir_Top:
            return kTop;
        case E_Dir_Bottom:
            return kBottom;
        case E_Dir_Right:
            return kRight;
        case E_Dir_Left:
            return kLeft;
        default:
            return kAround;
    }
}

CLineInfo MakeVerticalEnd(const AcGePoint3d& corner, double dAxis) {
    CLineInfo line;
    line.m_startPt = corner;
    line.m_endPt.set(corner.x, dAxis, 0.0);
    return line;
}

}  // namespace

void CEncircleLine::GetEncircleLine3(const AcDbObjectIdArray& ids, AcDbObjectId& outId) {
    CEncircleRun run(*this);
    if (!run.IsReady()) {
        return;
    }
    run.Watch([&] {
        const AcDbObjectIdArray lineIds = PrepareLines(run.Clone(ids, m_calInfo.m_bExcludeDashed));
        Lines lines = MakeWorkingSet(lineIds);
        CEncircleTrace::Count("working", lines.size());

        double axis = std::numeric_limits<double>::quiet_NaN();
        E_RemoveLine_Dir side = m_calInfo.m_nHalfSide != 0 ? E_Dir_Bottom : E_Dir_Top;
        if (GetMidLineAxisValue(axis)) {
            CreateTempLine(side, axis, lines);
        } else {
            side = E_Dir_None;
        }
        LeaveEntities(lines);
        AddMeetingPoints(lines, m_calInfo.m_tolPoint);
        CLineSplitter::SplitRecords(lines);
        CEncircleTrace::Count("after_break", lines.size());
        RemoveLineInExcludeDir(side, axis, lines);
        CEncircleTrace::Count("after_exclude", lines.size());
        RemoveRepeatLine2(lines);
        CEncircleTrace::Count("after_repeat", lines.size());
        UpdateLinePtByNearestPt(lines);
        CEncircleTrace::Count("after_nearest", lines.size());
        RemoveShortLine(lines);
        CEncircleTrace::Count("after_short", lines.size());
        SweepInvalid(lines, m_extents);
        CEncircleTrace::Count("after_sweep", lines.size());

        SSideChains chains;
        FindChains(side, lines, chains);
        if (m_calInfo.m_bSideLinesVertical) {
            AddVerticalEnds(side, std::isnan(axis) ? 0.0 : axis, chains);
        }
        const AcGePoint3dArray points = CollectOutline(side, chains);
        CEncircleTrace::Count("points", static_cast<size_t>(points.length()));
        DrawPolyLine(ids, points, axis, outId);
    });
}

AcDbObjectIdArray CEncircleLine::PrepareLines(const AcDbObjectIdArray& cloneIds, bool bKeepArcs) {
    AcDbObjectIdArray lineIds;
    if (bKeepArcs) {
        ConvertAllButArcs(cloneIds, lineIds);
    } else {
        ConvertToLines(cloneIds, lineIds);
    }
    CEncircleTrace::Count("after_convert", static_cast<size_t>(lineIds.length()));
    lineIds.remove(m_calInfo.m_midLineId);
    SetLayersShow(false);
    ShowLayer(FindLayer(kScratchLayer), true);
    SetLineLayerAndType(lineIds, kScratchLayer);
    RemoveDashedIds(lineIds);
    CEncircleTrace::Count("after_dashed", static_cast<size_t>(lineIds.length()));
    return lineIds;
}

void CEncircleLine::FindChains(E_RemoveLine_Dir side, const std::vector<CLineInfo>& lines,
                               SSideChains& chains) {
    std::vector<E_RemoveLine_Dir> dirs;
    if (side != E_Dir_Bottom) {
        dirs.push_back(E_Dir_Top);
    }
    if (side != E_Dir_Top) {
        dirs.push_back(E_Dir_Bottom);
    }
    std::vector<const Lines*> before;  // what the sides before have taken
    const auto see = [&](bool bWithVertical, bool bShiftRight) {
        std::vector<Lines> seen = BreakAndSee(lines, bWithVertical, bShiftRight, dirs);
        for (size_t i = 0; i < dirs.size(); ++i) {
            Lines& chain = chains.*GetSide(dirs[i]).m_pChain;
            chain = std::move(seen[i]);
            MakeChain(dirs[i], before, chain);
            before.push_back(&chain);
        }
    };
    see(true, true);
    if (m_calInfo.m_bSideLinesVertical) {
        return;  // the ends are not searched
    }
    if (side != E_Dir_Right) {
        dirs = {E_Dir_Left};
        see(false, true);
    }
    if (side != E_Dir_Left) {
        dirs = {E_Dir_Right};
        see(false, false);
    }
}

void CEncircleLine::MakeChain(E_RemoveLine_Dir dir,
                              const std::vector<const std::vector<CLineInfo>*>& before,
                              std::vector<CLineInfo>& chain) {
    const SSide& names = GetSide(dir);
    CEncircleTrace::Count(names.m_pVisible, chain.size());
    if (names.m_pOther != nullptr) {
        for (const Lines* pOther : before) {
            RemoveLineInOtherDir(*pOther, chain);
        }
        CEncircleTrace::Count(names.m_pOther, chain.size());
    }
    if (names.m_pWalter != nullptr) {
        RemoveLineByWalter(chain, dir);
        CEncircleTrace::Count(names.m_pWalter, chain.size());
    }
    ConnectBreakLine(dir, chain);
    CEncircleTrace::Count(names.m_pConnected, chain.size());
}

void CEncircleLine::AddVerticalEnds(E_RemoveLine_Dir side, double dAxis, SSideChains& chains) {
    Lines copy = side == E_Dir_Bottom ? chains.m_bottom : chains.m_top;
    if (copy.empty()) {
        return;
    }
    UpdateLineStartEndPt(side, copy);
    SortLineInfos(copy, true);
    chains.m_left.push_back(MakeVerticalEnd(copy.front().m_startPt, dAxis));
    chains.m_right.push_back(MakeVerticalEnd(copy.back().m_endPt, dAxis));
    chains.m_bVerticalEnds = true;
}

AcGePoint3dArray CEncircleLine::CollectOutline(E_RemoveLine_Dir side, const SSideChains& chains) {
    AcGePoint3dArray points;
    for (const SChainStep& step : GetOutlineOrder(side)) {
        const Lines& chain = chains.*step.m_pChain;
        // A vertical end runs down to the axis whatever the half; read towards the chain, the
        // outline begins on the axis and keeps the corner.
        const bool bFromAxis = chains.m_bVerticalEnds && step.m_pChain == &SSideChains::m_left;
        GetLineInfoPt(chain, step.m_bForward && !bFromAxis, step.m_bUnused, points);
    }
    return points;
}
