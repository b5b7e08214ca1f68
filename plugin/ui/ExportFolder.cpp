#include "StdAfx.h"
#include "ExportFolder.h"

CString AskExportFolder(CWnd* pParent) {
    CFolderPickerDialog dialog(nullptr, 0, pParent);
    dialog.m_ofn.lpstrTitle = _T("请选择导出路径");
    return dialog.DoModal() == IDOK ? dialog.GetPathName() : CString();
}
