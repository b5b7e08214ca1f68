// A module of somebody else that computes envelopes with the plug-in's engine. It sees the gathered
// headers of the exported classes, MFC and the SDK, and links the plug-in's module.
#include <afxwin.h>

#include <cmath>

#include "EncircleLine.h"
#include "EncircleTrace.h"
#include "ExactEnvelope.h"
#include "UnitRectInfo.h"
#include "arxHeaders.h"

namespace {

// What this module knows of a computation: its own record.
struct OtherTask {
    const ACHAR* name;
    void (CEncircleLine::*pipeline)(const AcDbObjectIdArray& ids, AcDbObjectId& outId);
    bool lowerHalf;
    bool verticalEnds;
};
const OtherTask kTasks[] = {
    {ACRX_T("live"), &CEncircleLine::GetEncircleLine3, false, false},
    {ACRX_T("live, lower"), &CEncircleLine::GetEncircleLine3, true, true},
    {ACRX_T("hatch"), &CEncircleLine::GetEncircleLineByHatch, false, false},
    {ACRX_T("first"), &CEncircleLine::GetEncircleLine, false, false},
    {ACRX_T("second"), &CEncircleLine::GetEncircleLine2, false, false},
    {ACRX_T("exact"), &CEncircleLine::GetEncircleLineExact, false, false},
};

AcDbObjectId AddLine(double x1, double y1, double x2, double y2) {
    AcDbObjectPointer<AcDbBlockTableRecord> space(
        acdbSymUtil()->blockModelSpaceId(acdbHostApplicationServices()->workingDatabase()),
        AcDb::kForWrite);
    AcDbObjectId id;
    auto* line = new AcDbLine(AcGePoint3d(x1, y1, 0), AcGePoint3d(x2, y2, 0));
    if (space.openStatus() != Acad::eOk || space->appendAcDbEntity(id, line) != Acad::eOk) {
        delete line;
        return id;
    }
    line->close();
    return id;
}

// A shaft with a step, mirrored below the axis; the step's edge inside is hidden.
AcDbObjectIdArray DrawShaft() {
    static const double kLines[][4] = {{0, 0, 0, 10},    {0, 10, 30, 10},   {30, 10, 30, 6},
                                       {30, 6, 50, 6},   {50, 6, 50, 0},    {10, 2, 20, 2},
                                       {0, 0, 0, -10},   {0, -10, 30, -10}, {30, -10, 30, -6},
                                       {30, -6, 50, -6}, {50, -6, 50, 0}};
    AcDbObjectIdArray ids;
    for (const auto& l : kLines) ids.append(AddLine(l[0], l[1], l[2], l[3]));
    return ids;
}

double Rounded(double value) { return std::round(value * 1e4) / 1e4 + 0.0; }

void Print(const AcDbObjectId& id) {
    AcDbObjectPointer<AcDbPolyline> envelope(id, AcDb::kForRead);
    if (envelope.openStatus() != Acad::eOk) {
        acutPrintf(ACRX_T(" none"));
        return;
    }
    for (unsigned int i = 0; i < envelope->numVerts(); ++i) {
        AcGePoint3d point;
        if (envelope->getPointAt(i, point) == Acad::eOk)
            acutPrintf(ACRX_T(" %.8g,%.8g"), Rounded(point.x), Rounded(point.y));
    }
    acutPrintf(envelope->isClosed() ? ACRX_T(" closed") : ACRX_T(" open"));
}

void ComputeEnvelopes() {
    const AcDbObjectIdArray ids = DrawShaft();
    for (const OtherTask& task : kTasks) {
        CEncircleCalInfo parameters;
        parameters.m_nHalfSide = task.lowerHalf ? 1 : 0;
        parameters.m_bSideLinesVertical = task.verticalEnds;
        parameters.m_midLineId = AddLine(-10, 0, 60, 0);
        AcDbObjectId envelope;
        CEncircleTrace trace;
        {
            const CEncircleTraceScope listen(trace);
            CEncircleLine engine(parameters);
            (engine.*task.pipeline)(ids, envelope);
        }
        acutPrintf(ACRX_T("\n%ls, %d left out:"), task.name,
                   static_cast<int>(trace.m_leftOut.size()));
        Print(envelope);
        for (const AcDbObjectId& used : {parameters.m_midLineId, envelope}) {
            AcDbObjectPointer<AcDbEntity> entity(used, AcDb::kForWrite);
            if (entity.openStatus() == Acad::eOk) entity->erase();
        }
    }
    acutPrintf(ACRX_T("\n"));
}

// The exact envelope of curves that stand in no drawing, about an axis of one's own.
void FindExact() {
    static const double kLines[][4] = {{10, 0, 7, 0}, {7, 0, 7, 30}, {7, 30, 10, 30}};
    SExactRequest request;
    for (const auto& l : kLines) {
        plane::Curve line;
        line.from = {l[0], l[1]};
        line.to = {l[2], l[3]};
        request.m_curves.push_back(line);
    }
    request.m_axisFrom.set(10, 0, 0);
    request.m_axisTo.set(10, 5, 0);
    const SExactResult found = CExactEnvelope(request).Find();
    acutPrintf(ACRX_T("\nupright axis, size %.6g:"), found.m_dSize);
    for (const SExactResult::SVertex& v : found.m_vertices)
        acutPrintf(ACRX_T(" %.8g,%.8g"), Rounded(v.m_dX), Rounded(v.m_dY));
    request.m_axisTo = request.m_axisFrom;
    acutPrintf(ACRX_T("\nno axis: %ls\n"),
               static_cast<const ACHAR*>(CExactEnvelope::Explain(CExactEnvelope(request).Find())));
}

// The records by themselves, as other modules keep them.
void UseRecords() {
    CLineInfo line(AddLine(0, 0, 40, 0));
    AcGeTol tolerance;
    tolerance.setEqualPoint(0.001);
    line.AddBreakPoint(AcGePoint3d(30, 0, 0), tolerance);
    line.AddBreakPoint(AcGePoint3d(10, 0, 0), tolerance);
    line.AddBreakPoint(AcGePoint3d(10, 5, 0), tolerance);
    line.Sort();
    const CLineInfo copy(line);
    CUnitRectInfo cell;
    cell.m_rect = CQZRect(copy.m_startPt, copy.m_endPt);
    for (const AcGePoint3d& point : copy.m_breakPts) cell.AddPoint(point, tolerance);
    cell.Sort(E_Dir_Left);
    acutPrintf(ACRX_T("\nrecords: width %.4g, %d points, first at %.4g\n"), cell.m_rect.GetWidth(),
               static_cast<int>(cell.m_points.size()), copy.m_breakPts.front().x);
    AcDbObjectPointer<AcDbEntity> entity(line.m_id, AcDb::kForWrite);
    if (entity.openStatus() == Acad::eOk) entity->erase();
}

}  // namespace

extern "C" AFX_EXT_API AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* id) {
    if (message == AcRx::kInitAppMsg) {
        acrxUnlockApplication(id);
        acedRegCmds->addCommand(ACRX_T("OTHER"), ACRX_T("OTHERENVELOPES"), ACRX_T("OTHERENVELOPES"),
                                ACRX_CMD_MODAL, &ComputeEnvelopes);
        acedRegCmds->addCommand(ACRX_T("OTHER"), ACRX_T("OTHEREXACT"), ACRX_T("OTHEREXACT"),
                                ACRX_CMD_MODAL, &FindExact);
        acedRegCmds->addCommand(ACRX_T("OTHER"), ACRX_T("OTHERRECORDS"), ACRX_T("OTHERRECORDS"),
                                ACRX_CMD_MODAL, &UseRecords);
    }
    return AcRx::kRetOK;
}
