// The two earlier pipelines, which other modules still call, and the passes that only they use.
#include "StdAfx.h"

#include "EncircleLine.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>

#include "AddEntity.h"
#include "CurrentLayerGuard.h"
#include "EncircleLayers.h"
#include "EncircleRun.h"
#include "EncircleTrace.h"
#include "EnvelopePolyline.h"
#include "EraseEntity.h"
#include "GrowingBoxes.h"
#include "HiddenPoint.h"
#include "LineBoxes.h"
#include "RemoveMarked.h"
#include "SegmentClass.h"
#include "SideChains.h"
#include "SideOrder.h"
#include "TolerantCompare.h"
#include "WorkingSet.h"

namespace {

using Lines = std::vector<CLineInfo>;

// GetEncircleLine2() works so far beside the picked entities, in drawing units.
constexpr double kSecondShift = 1000.0;

// Boxes that miss one another by less still overlap, and ends that differ by less along an axis are
// level, in drawing units.
constexpr double kBoxTol = 1e-6;
constexpr double kLevelTol = 1e-6;

void Shift(const AcDbObjectIdArray& ids, double dShift) {
    const AcGeMatrix3d shift = AcGeMatrix3d::translation(AcGeVector3d(dShift, 0.0, 0.0));
    for (int i = 0; i < ids.length(); ++i) {
        AcDbObjectPointer<AcDbEntity> entity(ids[i], AcDb::kForWrite);
        // What refuses to move cannot come to lie among the others either.
        if (entity.openStatus() == Acad::eOk && entity->transformBy(shift) != Acad::eOk) {
            CEncircleTrace::LeftOut(CEncircleTrace::E_LeftOut_Unopenable, ids[i]);
            static_cast<void>(entity->erase());
        }
    }
}

CQZRect GetBox(const CLineInfo& line) { return CQZRect(line.m_startPt, line.m_endPt); }

bool IsLevelOrUpright(const CLineInfo& line) {
    return IsEqualValue(line.m_startPt.x, line.m_endPt.x, kLevelTol) ||
           IsEqualValue(line.m_startPt.y, line.m_endPt.y, kLevelTol);
}

bool LieOnOneAnother(const CLineInfo& line, const CLineInfo& other, double tol) {
    return ClassifySegments(line.m_startPt, line.m_endPt, other.m_startPt, other.m_endPt, tol) ==
               E_Segment_Collinear &&
           GetBox(line).Overlaps(GetBox(other), kBoxTol);
}

// Makes the other one line that covers both.
void MergeInto(CLineInfo& other, const CLineInfo& line) {
    EraseById(line.m_id);
    EraseById(other.m_id);
    CQZRect box = GetBox(line);
    box.Extend(GetBox(other));
    other.m_startPt.set(box.min.x, box.min.y, 0.0);
    other.m_endPt.set(box.max.x, box.max.y, 0.0);
    other.m_id = AddLine(other.m_startPt, other.m_endPt, kByLayerColour, ACDB_MODEL_SPACE);
}

// Boxes that can hold what stands between the point and the viewer.
bool MayHide(const SFlatBox& box, const AcGePoint3d& pt, const SSideView& view) {
    const double across = view.GetAcross(pt);
    return view.GetFirstAcross(box) <= across && across <= view.GetLastAcross(box) &&
           view.GetNearest(box) >= view.GetTowards(pt);
}

void DrawStraight(const AcGePoint3dArray& pts, AcDbObjectId& outId) {
    const CCurrentLayerGuard layer(kEnvelopeLayer);
    if (pts.length() < 2 || layer.GetLayerId().isNull()) {
        return;
    }
    std::unique_ptr<AcDbPolyline> polyline = MakePolyline(layer.GetLayerId());
    if (polyline == nullptr) {
        return;
    }
    int vertex = 0;
    for (int i = 0; i < pts.length(); ++i) {
        AddVertex(polyline.get(), pts[i], 0.0, vertex);
    }
    AddEnvelope(std::move(polyline), outId);
}

}  // namespace

void CEncircleLine::GetEncircleLine(const AcDbObjectIdArray& ids, AcDbObjectId& outId) {
    RunEarlier(ids, 0.0, outId);
}

void CEncircleLine::GetEncircleLine2(const AcDbObjectIdArray& ids, AcDbObjectId& outId) {
    RunEarlier(ids, kSecondShift, outId);
}

void CEncircleLine::RunEarlier(const AcDbObjectIdArray& ids, double dShift, AcDbObjectId& outId) {
    CEncircleRun run(*this);
    if (!run.IsReady()) {
        return;
    }
    run.Watch([&] {
        const AcDbObjectIdArray clones = run.Clone(ids, m_calInfo.m_bExcludeDashed, true);
        if (dShift != 0.0) {
            Shift(clones, dShift);
        }
        Lines lines = MakeWorkingSet(PrepareLines(clones));
        CEncircleTrace::Count("working", lines.size());
        double axis = std::numeric_limits<double>::quiet_NaN();
        E_RemoveLine_Dir side = m_calInfo.m_nHalfSide != 0 ? E_Dir_Bottom : E_Dir_Top;
        if (GetMidLineAxisValue(axis)) {
            CreateTempLine(side, axis, lines);
        } else {
            side = E_Dir_None;
        }
        RemoveCrossLine(lines);
        CEncircleTrace::Count("after_cross", lines.size());
        BreakLines(lines);
        CEncircleTrace::Count("after_break", lines.size());
        UpdateLinePtByNearestPt(lines);
        RemoveShortLine(lines);
        CEncircleTrace::Count("after_short", lines.size());
        lines.erase(std::remove_if(lines.begin(), lines.end(),
                                   [](const CLineInfo& line) { return !line.m_bValid; }),
                    lines.end());

        SSideChains chains;
        FindEarlierChains(side, lines, chains);
        const AcGePoint3dArray points = CollectOutline(side, chains);
        CEncircleTrace::Count("points", static_cast<size_t>(points.length()));
        DrawStraight(points, outId);
    });
}

void CEncircleLine::FindEarlierChains(E_RemoveLine_Dir side, const std::vector<CLineInfo>& lines,
                                      SSideChains& chains) {
    std::vector<const Lines*> before;  // what the sides before have taken
    const auto see = [&](E_RemoveLine_Dir dir, Lines& chain) {
        chain = RemoveLine(dir, lines);
        MakeChain(dir, before, chain);
        before.push_back(&chain);
    };
    if (side != E_Dir_Bottom) {
        see(E_Dir_Top, chains.m_top);
    }
    if (side != E_Dir_Top) {
        see(E_Dir_Bottom, chains.m_bottom);
    }
    if (side != E_Dir_Right) {
        see(E_Dir_Left, chains.m_left);
    }
    if (side != E_Dir_Left) {
        see(E_Dir_Right, chains.m_right);
    }
}

std::vector<CLineInfo> CEncircleLine::RemoveLine(E_RemoveLine_Dir dir,
                                                 const std::vector<CLineInfo>& lines) {
    Lines oriented = lines;
    UpdateLineStartEndPt(dir, oriented);
    const CBoxIndex index(GetFlatBoxes(oriented));
    const double edgeOn = m_calInfo.m_tolHorVer.equalPoint();
    const SSideView view(dir);
    std::vector<char> hidden(oriented.size(), 0);
    for (size_t i = 0; i < oriented.size(); ++i) {
        const CLineInfo& line = oriented[i];
        const AcGePoint3d middle = GetMidPoint(line.m_startPt, line.m_endPt);
        const bool bEdgeOn =
            IsEqualValue(view.GetAcross(line.m_startPt), view.GetAcross(line.m_endPt), edgeOn);
        const auto hides = [&](int n) {
            const CLineInfo& other = oriented[n];
            return (line.m_id.isNull() || other.m_id != line.m_id) &&
                   !other.IsEqual(line, m_calInfo.m_tolPoint) &&
                   IsPtInLineSpecifiedDir(middle, other.m_startPt, other.m_endPt, dir);
        };
        hidden[i] =
            bEdgeOn ||
            index.Visit([&](const SFlatBox& box) { return MayHide(box, middle, view); }, hides);
    }
    EraseMarked(oriented, hidden);
    DeleteMarked(oriented, hidden);
    return oriented;
}

bool CEncircleLine::IsPtInLineSpecifiedDir(AcGePoint3d pt, AcGePoint3d lineStart,
                                           AcGePoint3d lineEnd, E_RemoveLine_Dir dir) {
    return IsBehindSegment(pt, lineStart, lineEnd, dir, m_calInfo.m_tolPoint, m_calInfo.m_tolLine);
}

void CEncircleLine::RemoveCrossLine(std::vector<CLineInfo>& lines) {
    const CBoxIndex index(GetFlatBoxes(lines));
    CGrowingBoxes merged;  // the lines that are longer than when they were indexed
    std::vector<char> gone(lines.size(), 0);
    for (size_t i = 0; i < lines.size(); ++i) {
        if (!lines[i].m_bValid || !IsLevelOrUpright(lines[i])) {
            continue;
        }
        size_t first = lines.size();
        const auto enter = [box = GetFlatBox(lines[i])](const SFlatBox& other) {
            return box.Meets(other, 4 * kBoxTol);
        };
        const auto use = [&](int n) {
            const auto j = static_cast<size_t>(n);
            if (j > i && j < first &&
                LieOnOneAnother(lines[i], lines[j], m_calInfo.m_tolHorVer.equalPoint())) {
                first = j;
            }
            return false;
        };
        index.Visit(enter, use);
        merged.Visit(enter, use);
        if (first < lines.size()) {
            MergeInto(lines[first], lines[i]);
            merged.Add(GetFlatBox(lines[first]), static_cast<int>(first));
            gone[i] = 1;
        }
    }
    DeleteMarked(lines, gone);
}
