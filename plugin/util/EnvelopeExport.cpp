#include "StdAfx.h"

#include "EnvelopeExport.h"

#include "CurrentLayerGuard.h"
#include "DocumentLock.h"
#include "EntityBox.h"
#include "EraseEntity.h"
#include "FileName.h"
#include "RevolveSolid.h"
#include "SatExport.h"

namespace {

E_ExportResult WriteAskedSat(const AcDbObjectId& solidId, const CString& strName) {
    const CString strPath = AskSatPath(strName);
    if (strPath.IsEmpty()) {
        return E_Export_Cancelled;
    }
    return WriteSat(strPath, solidId) ? E_Export_Done : E_Export_NotSaved;
}

CExportRun* s_pRun = nullptr;
// The last entity when kSolidLayer was emptied within the run; null before.
AcDbObjectId s_emptiedToId;

void EmptySolidLayer(const AcDbObjectId& layerId) {
    EraseOnLayer(layerId, s_emptiedToId);
    if (s_pRun != nullptr) {
        s_emptiedToId = GetLastEntity();
    }
}

}  // namespace

CExportRun::CExportRun() : m_pOuter(s_pRun) {
    s_pRun = this;
    s_emptiedToId.setNull();
}

CExportRun::~CExportRun() {
    s_pRun = m_pOuter;
    s_emptiedToId.setNull();
}

void ExportEnvelopeSolid(const AcDbObjectId& envelopeId, const AcGePoint3d& centre,
                         const SExportCleanUp& cleanUp, const std::vector<SToolFrame>& frames,
                         std::vector<CString>& failures) {
    const CDocumentLock lock;
    if (envelopeId.isNull()) {
        failures.push_back(_T("请先计算包络线"));
        return;
    }
    const CString strName = FindToolNumber(frames, GetEntityBox(envelopeId));
    const AcDbObjectId solidId =
        lock.IsOk() ? RevolveEnvelope(envelopeId, centre) : AcDbObjectId::kNull;
    if (solidId.isNull()) {
        failures.push_back(strName + _T("生成三维实体失败"));
    } else if (WriteAskedSat(solidId, strName) == E_Export_NotSaved) {
        failures.push_back(strName + _T("生成失败"));
    }
    if (cleanUp.m_bEnvelope) {
        EraseById(envelopeId);
    }
    if (cleanUp.m_bSolid && !solidId.isNull()) {
        EraseById(solidId);
    }
}

E_ExportResult ExportToolSolid(const AcDbObjectId& envelopeId, const AcGePoint3d& centre,
                               const CString& strName, const CString& strFolder) {
    const CCurrentLayerGuard guard(kSolidLayer);
    const AcDbObjectId solidId = RevolveEnvelope(envelopeId, centre);
    if (solidId.isNull()) {
        return E_Export_NoSolid;
    }
    E_ExportResult result = E_Export_Cancelled;
    if (strFolder.IsEmpty()) {
        result = WriteAskedSat(solidId, strName);
    } else {
        const CString strPath = strFolder + _T("\\") + strName + _T(".sat");
        // A name with a separator in it would land in another folder.
        const bool bWritten = IsFileName(strName) && WriteSat(strPath, solidId);
        result = bWritten ? E_Export_Done : E_Export_NotSaved;
    }
    if (result != E_Export_Cancelled) {
        EmptySolidLayer(guard.GetLayerId());
    }
    return result;
}
