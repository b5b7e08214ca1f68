#include "StdAfx.h"
#include "EncircleParaSetDlg.h"

#include "DocumentLock.h"
#include "NumberFields.h"

IMPLEMENT_DYNAMIC(CEncircleParaSetDlg, CDialogEx)

BEGIN_MESSAGE_MAP(CEncircleParaSetDlg, CDialogEx)
END_MESSAGE_MAP()

namespace {

// The diagonal of what the drawing holds; 0 when it holds nothing.
double GetDrawingSize() {
    AcDbDatabase* const pDatabase = acdbHostApplicationServices()->workingDatabase();
    if (pDatabase == nullptr) {
        return 0.0;
    }
    const CDocumentLock lock(pDatabase);
    // What the drawing states of its extents may be older than what was drawn since; a host that
    // does not find them anew leaves the older ones.
    static_cast<void>(pDatabase->updateExt(true));
    const AcGePoint3d low = pDatabase->extmin();
    const AcGePoint3d high = pDatabase->extmax();
    return low.x <= high.x && low.y <= high.y ? low.distanceTo(high) : 0.0;
}

}  // namespace

CEncircleParaSetDlg::CEncircleParaSetDlg(CWnd* pParent) : CDialogEx(IDD, pParent) {}

void CEncircleParaSetDlg::DoDataExchange(CDataExchange* pDX) {
    CDialogEx::DoDataExchange(pDX);
    DDX_Radio(pDX, IDC_PARAMS_UPPER, m_values.m_nHalf);
    DDX_Check(pDX, IDC_PARAMS_EXCLUDE_DASHED, m_values.m_nExcludeDashed);
    DDX_Check(pDX, IDC_PARAMS_SIDES_VERTICAL, m_values.m_nSidesVertical);
    DDX_Text(pDX, IDC_PARAMS_POINT_TOL, m_values.m_dPointTol);
    DDX_Text(pDX, IDC_PARAMS_LINE_TOL, m_values.m_dLineTol);
    DDX_Text(pDX, IDC_PARAMS_HORVER_TOL, m_values.m_dHorVerTol);
    DDX_Text(pDX, IDC_PARAMS_ARC_PRECISION, m_values.m_dArcPrecision);
    DDX_Text(pDX, IDC_PARAMS_SIDE_LENGTH, m_values.m_dSideLength);
}

BOOL CEncircleParaSetDlg::OnInitDialog() {
    CDialogEx::OnInitDialog();
    m_values.ReadFrom(params);
    UpdateData(FALSE);
    return TRUE;
}

void CEncircleParaSetDlg::OnOK() {
    if (RefuseCommas(*this) || !UpdateData(TRUE)) {
        return;
    }
    if (const SValueField* const pFault = m_values.FindFault(GetDrawingSize())) {
        CString strText;
        strText.Format(pFault->m_bTolerance   ? _T("%s必须大于0且小于图形尺寸")
                       : pFault->m_bMayBeZero ? _T("%s不能小于0")
                       : m_values.*(pFault->m_pValue) > 0.0 ? _T("%s必须大于点公差")
                                                            : _T("%s必须大于0"),
                       pFault->m_pLabel);
        AfxMessageBox(strText);
        GotoDlgCtrl(GetDlgItem(pFault->m_nControl));
        return;
    }
    m_values.WriteTo(params);
    EndDialog(IDOK);
}
