// The engine with its passes open to tests.
#pragma once

#include "plugin/engine/EncircleLine.h"

namespace test {

class EngineProbe : public CEncircleLine {
public:
    explicit EngineProbe(const CEncircleCalInfo& info = CEncircleCalInfo()) : CEncircleLine(info) {}

    using CEncircleLine::AddBreakPoint;
    using CEncircleLine::AddPolyLinePt;
    using CEncircleLine::BreakAndSee;
    using CEncircleLine::BreakLines;
    using CEncircleLine::BreakLines2;
    using CEncircleLine::CalBreakPoint;
    using CEncircleLine::ConnectBreakLine;
    using CEncircleLine::ConvertCurveToLine;
    using CEncircleLine::ConvertToLines;
    using CEncircleLine::CreateTempLine;
    using CEncircleLine::DeleteCloneEnts;
    using CEncircleLine::DrawPolyLine;
    using CEncircleLine::GetAllArc;
    using CEncircleLine::GetBreakIndex;
    using CEncircleLine::GetLineInfoPt;
    using CEncircleLine::GetMidLineAxisValue;
    using CEncircleLine::IsPointOnArc;
    using CEncircleLine::IsPtExist;
    using CEncircleLine::IsPtInLineSpecifiedDir;
    using CEncircleLine::IsPtInLineSpecifiedDir2;
    using CEncircleLine::RemoveCrossLine;
    using CEncircleLine::RemoveDashedIds;
    using CEncircleLine::RemoveDimLineIds;
    using CEncircleLine::RemoveIdsInLayer;
    using CEncircleLine::RemoveLine;
    using CEncircleLine::RemoveLine2;
    using CEncircleLine::RemoveLineByWalter;
    using CEncircleLine::RemoveLineInExcludeDir;
    using CEncircleLine::RemoveLineInOtherDir;
    using CEncircleLine::RemoveRepeatLine2;
    using CEncircleLine::RemoveShortLine;
    using CEncircleLine::SetLayersShow;
    using CEncircleLine::SetLineLayerAndType;
    using CEncircleLine::SortLineInfos;
    using CEncircleLine::SplitLine;
    using CEncircleLine::TraceOutline;
    using CEncircleLine::UpdateLinePtByNearestPt;
    using CEncircleLine::UpdateLineStartEndPt;

    using CEncircleLine::m_calInfo;
    using CEncircleLine::m_cloneIds;
    using CEncircleLine::m_extents;
};

}  // namespace test
