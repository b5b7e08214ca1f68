#include "StdAfx.h"
#include "BatchTool.h"

#include "AxisLine.h"
#include "BatchSerial.h"
#include "CurrentLayerGuard.h"
#include "DocumentLock.h"
#include "EncircleLayers.h"
#include "EntityBox.h"
#include "EraseEntity.h"
#include "EnvelopeExport.h"
#include "LayerTools.h"

namespace {

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
    if (!lock.IsOk()) {
        execStatus = kBatchFailed;
        return;
    }
    DropEnvelopesFromSource();
    EraseFormerEnvelope();
    {
        // The axis does not go on the user's layer: that may be locked, and it could not be erased.
        CCurrentLayerGuard layer(kEnvelopeLayer);
        const CAxisLine axis(GetEntitiesBox(sourceIds), centre.y);
        layer.Restore();
        CEncircleCalInfo info(params);
        info.m_midLineId = axis.GetId();
        CEncircleLine engine(info);
        (engine.*pPipeline)(sourceIds, envelopeId);
    }
    highlightEnvelope(true);
    execStatus = envelopeId.isNull() ? kBatchFailed : kBatchDone;
}

void BatchTool::exportSolid(const CString& strFolder) {
    if (envelopeId.isNull()) {
        return;
    }
    const CDocumentLock lock;
    if (!lock.IsOk()) {
        exportStatus = kBatchFailed;
        return;
    }
    const E_ExportResult result = ExportToolSolid(envelopeId, centre, name, strFolder);
    if (result != E_Export_Cancelled) {
        exportStatus = result == E_Export_Done ? kBatchDone : kBatchFailed;
    }
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
    EraseById(envelopeId);
    envelopeId.setNull();
    execStatus = kBatchNotStarted;
}
