// Asks for the name of a new task, or another one for a tool.
#pragma once

#include "res/resource.h"

// Modal; shows the name that the caller gives. OK with an empty name says so and keeps the dialog
// open; a name of blanks is a name.
class CInputNameDlg : public CDialogEx {
    DECLARE_DYNAMIC(CInputNameDlg)

public:
    explicit CInputNameDlg(CWnd* pParent = nullptr);
    enum { IDD = IDD_INPUT_NAME };

    CString m_strName;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    void OnOK() override;
    DECLARE_MESSAGE_MAP()
};
