#include "StdAfx.h"
#include "BatchTool.h"

#include "BatchSerial.h"
#include "DocumentLock.h"
#include "EncircleLayers.h"
#include "EraseEntity.h"
#include "FlushGraphics.h"
#include "LayerTools.h"
#include "RunLine.h"
#include "RunReport.h"
#include "ToolAxis.h"
#include "UnlockedLayer.h"

namespace {

constexpr const ACHAR* kDrawingLocked = _T("图形被其他命令占用，不能修改");

bool IsOnEnvelopeLayer(const AcDbObjectId& id) {
    const AcDbObjectPointer<AcDbEntity> pEntity(id, AcDb::kForRead);
    return pEntity.openStatus() == Acad::eOk &&
           GetLayerName(pEntity->layerId()).CompareNoCase(kEnvelopeLayer) == 0;
}

void HighlightEntity(const AcDbObjectId& id, bool bOn) {
    const AcDbObjectPointer<AcDbEntity> pEntity(id, AcDb::kForRead);
    if (pEntity.openStatus() == Acad::eOk) {
        // A screen effect: an entity that is not shown refuses it harmlessly.
        static_cast<void>(bOn ? pEntity->highlight() : pEntity->unhighlight());
    }
}

}  // namespace

BatchTool::BatchTool() : sourceIds(0, 8), serial(NextBatchSerial()) {}

void BatchTool::DropEnvelopesFromSource() {
    AcDbObjectIdArray kept(0, 8);
    for (int i = 0; i < sourceIds.length(); ++i) {
        if (IsOnEnvelopeLayer(sourceIds[i])) {
            EraseById(sourceIds[i]);
        } else {
            kept.append(sourceIds[i]);
        }
    }
    sourceIds = kept;
}

void BatchTool::EraseFormerEnvelope() {
    // Only what still is an envelope: the user may have moved the polyline to a layer of his own.
    if (!envelopeId.isNull() && IsOnEnvelopeLayer(envelopeId)) {
        EraseById(envelopeId);
    }
    envelopeId.setNull();
}

void BatchTool::computeEnvelope(const CEncircleCalInfo& params, EnvelopePipeline pPipeline) {
    const CDocumentLock lock;
    reason.Empty();
    if (lock.IsOk()) {
        const CUnlockedLayer unlocked(kEnvelopeLayer);
        DropEnvelopesFromSource();
        EraseFormerEnvelope();
        Compute(params, pPipeline);
        FlushGraphics();
        highlightEnvelope(true);
    } else {
        reason = kDrawingLocked;
    }
    execStatus = reason.IsEmpty() ? kBatchDone : kBatchFailed;
}

void BatchTool::Compute(const CEncircleCalInfo& params, EnvelopePipeline pPipeline) {
    const bool bExact = pPipeline == GetPipeline(E_Method_Exact);
    reason = GetParameterFault(params, bExact);
    if (!reason.IsEmpty()) {
        return;
    }
    CToolAxis axis(sourceIds, centre, bExact);
    CEncircleCalInfo info(params);
    info.m_midLineId = axis.GetId();
    CEncircleLine engine(info);
    CEncircleTrace trace;
    {
        const CEncircleTraceScope watched(trace);
        (engine.*pPipeline)(sourceIds, envelopeId);
    }
    if (envelopeId.isNull()) {
        reason = bExact ? GetExactRefusal(info, sourceIds) : CString();
        if (reason.IsEmpty()) {
            reason = GetNoEnvelopeReason(sourceIds, !info.m_midLineId.isNull());
        }
        const CString strLeftOut = GetLeftOutText(trace);
        if (!strLeftOut.IsEmpty()) {
            reason += _T("；") + strLeftOut;
        }
    } else {
        acutPrintf(_T("\n%s：%s\n"), name.GetString(),
                   GetEnvelopeLine(envelopeId, centre.y, info.m_midLineId, trace).GetString());
        if (!bExact) {
            TellEnvelopeCheck(info, sourceIds, envelopeId, name);
        }
    }
    if (!axis.Erase()) {
        reason = _T("临时轴线无法删除");
    }
}

bool BatchTool::hasEnvelope() const {
    return AcDbObjectPointer<AcDbEntity>(envelopeId, AcDb::kForRead).openStatus() == Acad::eOk;
}

E_ExportResult BatchTool::exportSolid(const CString& strFolder, CExportNames* pNames) {
    reason.Empty();
    if (envelopeId.isNull()) {
        reason = GetExportReason(E_Export_NoEnvelope, envelopeId, centre.y);
        return E_Export_NoEnvelope;
    }
    const CDocumentLock lock;
    if (!lock.IsOk()) {
        reason = kDrawingLocked;
        exportStatus = kBatchFailed;
        return E_Export_NotSaved;
    }
    const CString strFile = pNames == nullptr ? name : pNames->Take(name);
    const E_ExportResult result = ExportToolSolid(envelopeId, centre, strFile, strFolder);
    reason = GetExportReason(result, envelopeId, centre.y);
    if (result != E_Export_Cancelled) {
        exportStatus = result == E_Export_Done ? kBatchDone : kBatchFailed;
    }
    return result;
}

void BatchTool::highlightSource(bool bOn) const {
    for (int i = 0; i < sourceIds.length(); ++i) {
        HighlightEntity(sourceIds[i], bOn);
    }
}

void BatchTool::highlightEnvelope(bool bOn) const {
    if (!envelopeId.isNull()) {
        HighlightEntity(envelopeId, bOn);
    }
}

void BatchTool::deleteEnvelope() {
    const CDocumentLock lock;
    if (!lock.IsOk()) {
        return;
    }
    const CUnlockedLayer unlocked(kEnvelopeLayer);
    if (!envelopeId.isNull() && !EraseById(envelopeId)) {
        acutPrintf(_T("\n%s：包络线无法删除\n"), name.GetString());
        return;
    }
    envelopeId.setNull();
    execStatus = kBatchNotStarted;
}
