#include "StdAfx.h"

#include "SatExport.h"

#include "rxmfcapi.h"

CString AskSatPath(const CString& strDefaultName, CWnd* pParent) {
    // The dialog keeps the pointer, so the text outlives it.
    const CString strTitle = _T("请选择保存三维文件路径(文件名称只能英文)");
    CFileDialog dialog(FALSE, _T("sat"), strDefaultName, OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT,
                       _T("SAT (*.sat)|*.sat||"),
                       pParent != nullptr ? pParent : acedGetAcadFrame());
    dialog.m_ofn.lpstrTitle = strTitle;
    return dialog.DoModal() == IDOK ? dialog.GetPathName() : CString();
}
