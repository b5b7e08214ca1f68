#include "StdAfx.h"

#include "EnvelopeExport.h"

#include "CurrentLayerGuard.h"
#include "DocumentLock.h"
#include "EntityBox.h"
#include "EraseEntity.h"
#include "FileName.h"
#include "RevolveSolid.h"
#include "SatExport.h"
#include "Tolerances.h"
#include "TolerantCompare.h"
#include "UnlockedLayer.h"

namespace {

bool IsThere(const AcDbObjectId& id) {
    return AcDbObjectPointer<AcDbEntity>(id, AcDb::kForRead).openStatus() == Acad::eOk;
}

// While the user is asked, the drawing may be closed.
E_ExportResult WriteAskedSat(const CDocumentLock& lock, const AcDbObjectId& solidId,
                             const CString& strName, CWnd* pParent) {
    const CString strPath = AskSatPath(strName, pParent);
    if (strPath.IsEmpty() || !lock.IsDrawingOpen()) {
        return E_Export_Cancelled;
    }
    return WriteSat(strPath, solidId) ? E_Export_Done : E_Export_NotSaved;
}

CExportRun* s_pRun = nullptr;
// The last entity when kSolidLayer was emptied within the run; null before.
AcDbObjectId s_emptiedToId;

// False when something stays on the layer.
bool EmptySolidLayer(const AcDbObjectId& layerId) {
    const bool bErased = EraseOnLayer(layerId, s_emptiedToId);
    if (s_pRun != nullptr && bErased) {
        s_emptiedToId = GetLastEntity();
    }
    return bErased;
}

E_ExportResult WriteNamedSat(const AcDbObjectId& solidId, const CString& strName,
                             const CString& strFolder) {
    const CString strPath = strFolder + _T("\\") + strName + _T(".sat");
    const bool bTaken = IsPathTaken(strPath);
    // A name with a separator in it would land in another folder.
    if (!IsFileName(strName) || !WriteSat(strPath, solidId)) {
        return E_Export_NotSaved;
    }
    if (bTaken) {
        acutPrintf(_T("\n已覆盖原有文件：%s\n"), strPath.GetString());
    }
    return E_Export_Done;
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

E_ExportResult ExportEnvelopeSolid(const AcDbObjectId& envelopeId, const AcGePoint3d& centre,
                                   const SExportCleanUp& cleanUp,
                                   const std::vector<SToolFrame>& frames, CWnd* pParent,
                                   std::vector<CString>& failures) {
    const CDocumentLock lock;
    if (!IsThere(envelopeId)) {
        failures.push_back(_T("请先计算包络线"));
        return E_Export_NoEnvelope;
    }
    const CUnlockedLayer current(GetCurrentLayer());
    const CString strName = FindToolNumber(frames, GetEntityBox(envelopeId));
    const AcDbObjectId solidId =
        lock.IsOk() ? RevolveEnvelope(envelopeId, centre) : AcDbObjectId::kNull;
    E_ExportResult result = E_Export_NoSolid;
    if (solidId.isNull()) {
        failures.push_back(strName + _T("生成三维实体失败"));
        acutPrintf(_T("\n%s：%s\n"), strName.GetString(),
                   GetExportReason(result, envelopeId, centre.y).GetString());
    } else {
        result = WriteAskedSat(lock, solidId, strName, pParent);
        if (result == E_Export_NotSaved) {
            failures.push_back(strName + _T("生成失败"));
        }
    }
    if (!lock.IsDrawingOpen()) {
        return E_Export_Cancelled;
    }
    bool bErased = !cleanUp.m_bEnvelope || EraseById(envelopeId);
    if (cleanUp.m_bSolid && !solidId.isNull()) {
        bErased = EraseById(solidId) && bErased;
    }
    if (!bErased) {
        failures.push_back(strName + _T("的包络线或三维实体无法删除"));
        result = result == E_Export_Done ? E_Export_Left : result;
    }
    return result;
}

E_ExportResult ExportToolSolid(const AcDbObjectId& envelopeId, const AcGePoint3d& centre,
                               const CString& strName, const CString& strFolder) {
    if (!IsThere(envelopeId)) {
        return E_Export_NoEnvelope;
    }
    const CDocumentLock lock;
    const CUnlockedLayer unlocked(kSolidLayer);
    const CCurrentLayerGuard guard(kSolidLayer);
    if (guard.GetLayerId().isNull()) {
        return E_Export_NoSolid;
    }
    const AcDbObjectId solidId = RevolveEnvelope(envelopeId, centre);
    if (solidId.isNull()) {
        return E_Export_NoSolid;
    }
    const E_ExportResult result = strFolder.IsEmpty()
                                      ? WriteAskedSat(lock, solidId, strName, nullptr)
                                      : WriteNamedSat(solidId, strName, strFolder);
    if (!lock.IsDrawingOpen()) {
        return E_Export_Cancelled;
    }
    const bool bErased = EmptySolidLayer(guard.GetLayerId());
    return bErased || result != E_Export_Done ? result : E_Export_Left;
}

CString GetExportReason(E_ExportResult result, const AcDbObjectId& envelopeId, double dAxis) {
    switch (result) {
        case E_Export_NoEnvelope:
            return _T("没有包络线（未计算或已删除）");
        case E_Export_NotSaved:
            return _T("文件无法写入");
        case E_Export_Left:
            return _T("文件已写入，但临时三维实体无法删除");
        case E_Export_NoSolid:
            break;
        default:
            return CString();
    }
    const AcDbObjectPointer<AcDbPolyline> pEnvelope(envelopeId, AcDb::kForRead);
    if (pEnvelope.openStatus() != Acad::eOk || !pEnvelope->isClosed()) {
        return _T("包络线未闭合，不能旋转成三维实体");
    }
    const CQZRect box = GetEntityBox(envelopeId);
    const bool bAcross =
        IsLessValue(box.min.y, dAxis, kAxisTol) && IsGreaterValue(box.max.y, dAxis, kAxisTol);
    return bAcross ? _T("包络线越过轴线，不能旋转成三维实体")
                   : _T("包络线自相交或面积为零，不能旋转成三维实体");
}
