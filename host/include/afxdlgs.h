// Choosers of files and folders.
#pragma once

#include "afxcmn.h"

// Paths come back as they were chosen; their parts may be set apart by '\' or '/'.
class CFileDialog : public CDialog {
    DECLARE_DYNAMIC(CFileDialog)
public:
    // bOpenFileDialog  FALSE: a file to save to; its user is asked before a file is overwritten
    // lpszDefExt       appended when the chosen name has no extension; without a point
    // lpszFilter       "SAT (*.sat)|*.sat||": names and patterns in turn
    explicit CFileDialog(BOOL bOpenFileDialog, LPCTSTR lpszDefExt = nullptr,
                         LPCTSTR lpszFileName = nullptr,
                         DWORD dwFlags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT,
                         LPCTSTR lpszFilter = nullptr, CWnd* pParentWnd = nullptr, DWORD dwSize = 0,
                         BOOL bVistaStyle = TRUE);

    INT_PTR DoModal() override;  // IDOK or IDCANCEL
    CString GetPathName() const { return m_path; }
    // as chosen
    CString GetFileName() const;   // with extension
    CString GetFileTitle() const;  // without
    CString GetFileExt() const;    // without the point
    // Without a separator at the end, except for a root.
    CString GetFolderPath() const;

    // Read by DoModal: title and first folder. Written: nothing, unlike in Windows.
    OPENFILENAME m_ofn = {};

protected:
    CString m_path;

private:
    BOOL m_bOpen;  // FALSE: to save
    CString m_defaultExtension;
    CString m_fileName;
    CString m_filter;
};

// The same for folders. Files are not shown.
class CFolderPickerDialog : public CFileDialog {
    DECLARE_DYNAMIC(CFolderPickerDialog)
public:
    explicit CFolderPickerDialog(LPCTSTR lpszFolder = nullptr, DWORD dwFlags = 0,
                                 CWnd* pParentWnd = nullptr, DWORD dwSize = 0,
                                 BOOL bHideEditBox = FALSE);
    INT_PTR DoModal() override;
    // Without a separator at the end, except for a root.
    CString GetFolderPath() const { return m_path; }

private:
    CString m_folder;
};
