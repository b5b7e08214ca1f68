#include "StdAfx.h"
#include "EncircleLineCalDlg.h"

#include <vector>

#include "DocumentLock.h"
#include "DrawingVisibility.h"
#include "EncircleLayers.h"
#include "EncircleLine.h"
#include "EntityBox.h"
#include "EnvelopeAxis.h"
#include "EnvelopeMethod.h"
#include "EraseEntity.h"
#include "FlushGraphics.h"
#include "HideScope.h"
#include "LayerState.h"
#include "LayerTools.h"
#include "ModuleDialogs.h"
#include "NumberFields.h"
#include "PickedTool.h"
#include "RunLine.h"
#include "RunReport.h"
#include "RunWatch.h"
#include "ToolAxis.h"
#include "ToolFrame.h"
#include "UnlockedLayer.h"

IMPLEMENT_DYNAMIC(CEncircleLineCalDlg, CDialogEx)

BEGIN_MESSAGE_MAP(CEncircleLineCalDlg, CDialogEx)
ON_MESSAGE(WM_ACAD_KEEPFOCUS, &CEncircleLineCalDlg::OnAcadKeepFocus)
ON_BN_CLICKED(IDC_CAL_BY_HATCH, &CEncircleLineCalDlg::OnByHatch)
ON_BN_CLICKED(IDC_CAL_SELECT_TOOL, &CEncircleLineCalDlg::OnSelectTool)
ON_BN_CLICKED(IDC_CAL_EXPORT, &CEncircleLineCalDlg::OnExport)
END_MESSAGE_MAP()

namespace {

bool IsEnvelope(const AcDbObjectId& id) {
    const AcDbObjectPointer<AcDbEntity> pEntity(id, AcDb::kForRead);
    return pEntity.openStatus() == Acad::eOk &&
           GetLayerName(pEntity->layerId()).CompareNoCase(kEnvelopeLayer) == 0;
}

// Envelopes of earlier runs are neither an input nor left behind.
struct SPicked {
    AcDbObjectIdArray m_sources;
    AcDbObjectIdArray m_envelopes;
};

SPicked TellEnvelopes(const AcDbObjectIdArray& ids) {
    SPicked picked;
    for (int i = 0; i < ids.length(); ++i) {
        (IsEnvelope(ids[i]) ? picked.m_envelopes : picked.m_sources).append(ids[i]);
    }
    return picked;
}

void EraseAll(const AcDbObjectIdArray& ids) {
    for (int i = 0; i < ids.length(); ++i) {
        EraseById(ids[i]);
    }
}

CString JoinLines(const std::vector<CString>& lines) {
    CString strText;
    for (const CString& line : lines) {
        if (!strText.IsEmpty()) {
            strText += _T("\n");
        }
        strText += line;
    }
    return strText;
}

bool HasVertices(const AcDbObjectId& id) {
    const AcDbObjectPointer<AcDbPolyline> pPolyline(id, AcDb::kForRead);
    return pPolyline.openStatus() == Acad::eOk && pPolyline->numVerts() > 0;
}

// What a prompt or a chooser leaves to go on with: it lets other windows act, so the dialog may be
// gone, and its object with it, or another drawing the current one.
class CStillThere {
public:
    explicit CStillThere(const CWnd& window)
        : m_hWnd(window.GetSafeHwnd()),
          m_pDatabase(acdbHostApplicationServices()->workingDatabase()) {}
    bool IsTrue() const {
        return ::IsWindow(m_hWnd) &&
               acdbHostApplicationServices()->workingDatabase() == m_pDatabase;
    }

private:
    HWND m_hWnd;
    AcDbDatabase* m_pDatabase;
};

}  // namespace

CEncircleLineCalDlg::CEncircleLineCalDlg(CWnd* pParent) : CDialogEx(IDD, pParent) {}

void CEncircleLineCalDlg::DoDataExchange(CDataExchange* pDX) {
    CDialogEx::DoDataExchange(pDX);
    DDX_Radio(pDX, IDC_CAL_UPPER, m_values.m_nHalf);
    DDX_Check(pDX, IDC_CAL_EXCLUDE_DASHED, m_values.m_nExcludeDashed);
    DDX_Check(pDX, IDC_CAL_DELETE_ENVELOPE, m_nDeleteEnvelope);
    DDX_Check(pDX, IDC_CAL_DELETE_SOLID, m_nDeleteSolid);
    DDX_Check(pDX, IDC_CAL_SIDES_VERTICAL, m_values.m_nSidesVertical);
    DDX_Text(pDX, IDC_CAL_POINT_TOL, m_values.m_dPointTol);
    DDX_Text(pDX, IDC_CAL_LINE_TOL, m_values.m_dLineTol);
    DDX_Text(pDX, IDC_CAL_HORVER_TOL, m_values.m_dHorVerTol);
    DDX_Text(pDX, IDC_CAL_ARC_PRECISION, m_values.m_dArcPrecision);
    DDX_Text(pDX, IDC_CAL_SIDE_LENGTH, m_values.m_dSideLength);
}

BOOL CEncircleLineCalDlg::OnInitDialog() {
    CDialogEx::OnInitDialog();
    UpdateData(FALSE);
    return TRUE;
}

LRESULT CEncircleLineCalDlg::OnAcadKeepFocus(WPARAM, LPARAM) { return TRUE; }

// Enter must neither close nor hide a modeless window.
void CEncircleLineCalDlg::OnOK() {}
void CEncircleLineCalDlg::OnCancel() { DestroyWindow(); }

void CEncircleLineCalDlg::PostNcDestroy() {
    CDialogEx::PostNcDestroy();
    if (ForgetCalDialog(this)) {
        delete this;
    }
}

void CEncircleLineCalDlg::OnByHatch() { RunEnvelope(E_Algorithm_Hatch); }
void CEncircleLineCalDlg::OnSelectTool() { RunEnvelope(E_Algorithm_Live); }

void CEncircleLineCalDlg::RunEnvelope(E_Algorithm algorithm) {
    if (RefuseCommas(*this) || !UpdateData(TRUE) || acDocManager->curDocument() == nullptr) {
        return;
    }
    const CStillThere still(*this);
    const CHideScope hidden(*this);
    {
        const CDocumentLock lock;
        if (!lock.IsOk()) {
            return;
        }
        ShowHiddenEntities();
    }
    const AcDbObjectIdArray ids = SelectEntities(_T("\n请选择需要计算轮廓的对象"));
    AcGePoint3d centre;
    if (ids.isEmpty() || !PickCentre(_T("\n请选择中心点"), centre) || !still.IsTrue()) {
        return;
    }
    m_centre = centre;
    Compute(algorithm, ids);
}

void CEncircleLineCalDlg::Compute(E_Algorithm algorithm, const AcDbObjectIdArray& ids) {
    const bool bLive = algorithm == E_Algorithm_Live;
    CEncircleCalInfo info;
    m_values.WriteTo(info);
    const bool bExact = bLive && GetEnvelopeMethod() == E_Method_Exact;
    const CString strFault = GetParameterFault(info, bExact);
    if (!strFault.IsEmpty()) {
        m_resultId.setNull();
        acutPrintf(_T("\n未生成包络线：%s\n"), strFault.GetString());
        return;
    }
    const CDocumentLock lock(acdbHostApplicationServices()->workingDatabase(), _T("QZENVELOPE"));
    if (!lock.IsOk()) {
        return;
    }
    const CLayerState envelopeLayer(kEnvelopeLayer);
    const CUnlockedLayer unlocked(kEnvelopeLayer);
    SPicked picked;
    if (bLive) {
        picked = TellEnvelopes(ids);
    } else {
        picked.m_sources = ids;
    }
    // A run that finds nothing must not show an earlier envelope as its own.
    m_resultId.setNull();
    CRunWatch watch;
    {
        const CEncircleWatchScope scope(watch);
        RunEngine(algorithm, info, picked.m_sources, watch);
    }
    if (watch.IsStopped()) {
        envelopeLayer.Restore();
        acutPrintf(_T("\n已取消计算，图形未改变\n"));
    } else {
        EraseAll(picked.m_envelopes);
    }
    FlushGraphics();
    const AcDbObjectPointer<AcDbEntity> pResult(m_resultId, AcDb::kForRead);
    if (bLive && pResult.openStatus() == Acad::eOk) {
        // A screen effect only.
        static_cast<void>(pResult->highlight());
    }
}

void CEncircleLineCalDlg::RunEngine(E_Algorithm algorithm, CEncircleCalInfo info,
                                    const AcDbObjectIdArray& sourceIds, const CRunWatch& watch) {
    const bool bLive = algorithm == E_Algorithm_Live;
    const bool bExact = bLive && GetEnvelopeMethod() == E_Method_Exact;
    CToolAxis axis(sourceIds, m_centre, bExact);
    info.m_midLineId = axis.GetId();
    const EnvelopePipeline pPipeline =
        bLive ? GetPipeline(GetEnvelopeMethod()) : &CEncircleLine::GetEncircleLineByHatch;
    CEncircleLine engine(info);
    CEncircleTrace trace;
    {
        const CEncircleTraceScope watched(trace);
        (engine.*pPipeline)(sourceIds, m_resultId);
    }
    if (!watch.IsStopped()) {
        TellRun(info, sourceIds, trace, bExact);
    }
    if (!axis.Erase()) {
        acutPrintf(_T("\n临时轴线无法删除\n"));
    }
}

void CEncircleLineCalDlg::TellRun(const CEncircleCalInfo& info, const AcDbObjectIdArray& sourceIds,
                                  const CEncircleTrace& trace, bool bExact) const {
    if (!m_resultId.isNull()) {
        acutPrintf(_T("\n%s\n"),
                   GetEnvelopeLine(m_resultId, m_centre.y, info.m_midLineId, trace).GetString());
        if (!bExact) {
            TellEnvelopeCheck(info, sourceIds, m_resultId, CString());
        }
    } else {
        CString strReason = bExact ? GetExactRefusal(info, sourceIds) : CString();
        if (strReason.IsEmpty()) {
            strReason = GetNoEnvelopeReason(sourceIds, !info.m_midLineId.isNull());
        }
        const CString strLeftOut = GetLeftOutText(trace);
        acutPrintf(_T("\n未生成包络线：%s%s%s\n"), strReason.GetString(),
                   strLeftOut.IsEmpty() ? _T("") : _T("；"), strLeftOut.GetString());
    }
}

void CEncircleLineCalDlg::OnExport() {
    if (acDocManager->curDocument() == nullptr) {
        return;
    }
    const CStillThere still(*this);
    AcDbObjectIdArray ids;
    {
        const CHideScope hidden(*this);
        ids = SelectEntities(_T("\n请选择包络线"), _T("LWPOLYLINE"));
    }
    if (ids.isEmpty() || !still.IsTrue()) {
        return;
    }
    const std::vector<SToolFrame> frames = CollectToolFrames();
    std::vector<CString> failures;
    int nDone = 0;
    int nCancelled = 0;
    for (int i = 0; i < ids.length() && still.IsTrue(); ++i) {
        if (!IsEnvelope(ids[i]) || !HasVertices(ids[i])) {
            continue;
        }
        if (RefuseCommas(*this) || !UpdateData(TRUE)) {
            return;
        }
        const E_ExportResult result = ExportOne(ids[i], frames, failures);
        nDone += result == E_Export_Done ? 1 : 0;
        nCancelled += result == E_Export_Cancelled ? 1 : 0;
    }
    if (!failures.empty()) {
        AfxMessageBox(JoinLines(failures));
    } else if (nDone > 0 || nCancelled == 0) {
        AfxMessageBox(_T("导出成功"));
    }
}

// The object may be gone when this returns: the user was asked for a file.
E_ExportResult CEncircleLineCalDlg::ExportOne(const AcDbObjectId& id,
                                              const std::vector<SToolFrame>& frames,
                                              std::vector<CString>& failures) {
    m_resultId = id;
    AcGeVector3d along;
    if (!GetEnvelopeAxis(id, m_centre, along)) {
        // Without a horizontal edge there is no axis to revolve about.
        failures.push_back(FindToolNumber(frames, GetEntityBox(id)) + _T("生成三维实体失败"));
        acutPrintf(_T("\n包络线没有水平边，无法确定轴线\n"));
        return E_Export_NoSolid;
    }
    SExportCleanUp cleanUp;
    cleanUp.m_bEnvelope = m_nDeleteEnvelope == 1;
    cleanUp.m_bSolid = m_nDeleteSolid == 1;
    const AcGePoint3d centre = m_centre;
    const CDocumentLock lock(id.database(), _T("QZEXPORT"));
    const CUnlockedLayer unlocked(kEnvelopeLayer);
    return ExportEnvelopeSolid(id, centre, cleanUp, frames, this, failures);
}
