#include "StdAfx.h"
#include "InputNameDlg.h"

IMPLEMENT_DYNAMIC(CInputNameDlg, CDialogEx)

BEGIN_MESSAGE_MAP(CInputNameDlg, CDialogEx)
END_MESSAGE_MAP()

CInputNameDlg::CInputNameDlg(CWnd* pParent) : CDialogEx(IDD, pParent) {}

void CInputNameDlg::DoDataExchange(CDataExchange* pDX) {
    CDialogEx::DoDataExchange(pDX);
    DDX_Text(pDX, IDC_INPUT_NAME_EDIT, m_strName);
}

void CInputNameDlg::OnOK() {
    if (!UpdateData(TRUE)) {
        return;
    }
    if (m_strName.IsEmpty()) {
        AfxMessageBox(_T("名称不能为空"));
        return;
    }
    EndDialog(IDOK);
}
