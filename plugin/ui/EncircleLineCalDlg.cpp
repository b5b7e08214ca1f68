#include "StdAfx.h"
#include "EncircleLineCalDlg.h"

#include <vector>

#include "AxisLine.h"
#include "DocumentLock.h"
#include "DrawingVisibility.h"
#include "EncircleLayers.h"
#include "EncircleLine.h"
#include "EntityBox.h"
#include "EnvelopeAxis.h"
#include "EnvelopeExport.h"
#include "EraseEntity.h"
#include "LayerTools.h"
#include "ModuleDialogs.h"
#include "PickedTool.h"
#include "ToolFrame.h"
#include "rxmfcapi.h"

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
AcDbObjectIdArray EraseEnvelopes(const AcDbObjectIdArray& ids) {
    AcDbObjectIdArray kept;
    for (int i = 0; i < ids.length(); ++i) {
        if (IsEnvelope(ids[i])) {
            EraseById(ids[i]);
        } else {
            kept.append(ids[i]);
        }
    }
    return kept;
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

// Hides a dialog for its own life and shows it again, unless the window is gone by then.
class CHideScope {
public:
    explicit CHideScope(CWnd& window) : m_hWnd(window.GetSafeHwnd()), m_window(window) {
        m_window.ShowWindow(SW_HIDE);
        if (CWnd* const pView = acedGetAcadDwgView()) {
            pView->SetFocus();
        }
    }
    ~CHideScope() {
        if (::IsWindow(m_hWnd)) {
            m_window.ShowWindow(SW_SHOW);
        }
    }
    CHideScope(const CHideScope&) = delete;
    CHideScope& operator=(const CHideScope&) = delete;

private:
    HWND m_hWnd;
    CWnd& m_window;
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
    ForgetCalDialog(this);
    delete this;
}

void CEncircleLineCalDlg::OnByHatch() { RunEnvelope(E_Algorithm_Hatch); }
void CEncircleLineCalDlg::OnSelectTool() { RunEnvelope(E_Algorithm_Live); }

void CEncircleLineCalDlg::RunEnvelope(E_Algorithm algorithm) {
    if (!UpdateData(TRUE) || acDocManager->curDocument() == nullptr) {
        return;
    }
    const CHideScope hidden(*this);
    {
        const CDocumentLock lock;
        if (!lock.IsOk()) {
            return;
        }
        ShowHiddenEntities();
    }
    const HWND hWnd = GetSafeHwnd();
    const AcDbObjectIdArray ids = SelectEntities(_T("\n请选择需要计算轮廓的对象"));
    AcGePoint3d centre;
    if (ids.isEmpty() || !PickPoint(_T("\n请选择中心点"), centre)) {
        return;
    }
    // The prompts let other windows act: this one, and its object, may be gone.
    if (::IsWindow(hWnd)) {
        m_centre = centre;
        Compute(algorithm, ids);
    }
}

void CEncircleLineCalDlg::Compute(E_Algorithm algorithm, const AcDbObjectIdArray& ids) {
    const CDocumentLock lock;
    if (!lock.IsOk()) {
        return;
    }
    const bool bLive = algorithm == E_Algorithm_Live;
    const AcDbObjectIdArray sourceIds = bLive ? EraseEnvelopes(ids) : ids;
    // A run that finds nothing must not show an earlier envelope as its own.
    m_resultId.setNull();
    const CAxisLine axis(GetEntitiesBox(sourceIds), m_centre.y);
    CEncircleCalInfo info;
    m_values.WriteTo(info);
    info.m_midLineId = axis.GetId();
    CEncircleLine engine(info);
    if (!bLive) {
        engine.GetEncircleLineByHatch(sourceIds, m_resultId);
        return;
    }
    engine.GetEncircleLine3(sourceIds, m_resultId);
    const AcDbObjectPointer<AcDbEntity> pResult(m_resultId, AcDb::kForRead);
    if (pResult.openStatus() == Acad::eOk) {
        // A screen effect only.
        static_cast<void>(pResult->highlight());
    }
}

void CEncircleLineCalDlg::OnExport() {
    if (acDocManager->curDocument() == nullptr) {
        return;
    }
    const AcDbObjectIdArray ids = SelectEntities(_T("\n请选择包络线"), _T("LWPOLYLINE"));
    if (ids.isEmpty()) {
        return;
    }
    const std::vector<SToolFrame> frames = CollectToolFrames();
    std::vector<CString> failures;
    for (int i = 0; i < ids.length(); ++i) {
        if (!IsEnvelope(ids[i])) {
            continue;
        }
        if (!UpdateData(TRUE)) {
            return;
        }
        ExportOne(ids[i], frames, failures);
    }
    AfxMessageBox(failures.empty() ? CString(_T("导出成功")) : JoinLines(failures));
}

void CEncircleLineCalDlg::ExportOne(const AcDbObjectId& id, const std::vector<SToolFrame>& frames,
                                    std::vector<CString>& failures) {
    m_resultId = id;
    if (!GetEnvelopeAxisPoint(id, m_centre)) {
        // Without a horizontal edge there is no axis to revolve about.
        failures.push_back(FindToolNumber(frames, GetEntityBox(id)) + _T("生成三维实体失败"));
        return;
    }
    SExportCleanUp cleanUp;
    cleanUp.m_bEnvelope = m_nDeleteEnvelope == 1;
    cleanUp.m_bSolid = m_nDeleteSolid == 1;
    ExportEnvelopeSolid(id, m_centre, cleanUp, frames, failures);
}
