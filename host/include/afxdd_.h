// Data exchange between controls and members. Included by afxwin.h.
#pragma once

#include "cstringt.h"
#include "host_winuser.h"

class CWnd;

// One exchange, made by CWnd::UpdateData.
class CDataExchange {
public:
    // For code that exchanges by hand; the window must live as long as the object.
    CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate);

    BOOL m_bSaveAndValidate;           // TRUE: controls to members
    CWnd* m_pDlgWnd;                   // whose controls are meant
    HWND m_hWndLastControl = nullptr;  // the one that Fail puts the focus on
    BOOL m_bEditLastControl = FALSE;   // whether it is an edit box

    // The control an exchange is about to use; throws CNotSupportedException* when the dialog has
    // none of that number.
    HWND PrepareCtrl(int nIDC);
    // The same for an edit box, whose text Fail selects.
    HWND PrepareEditCtrl(int nIDC);
    // Puts the focus on the last control, selects the text of an edit box, and ends the exchange
    // with a CUserException*. Members exchanged before keep their new values.
    [[noreturn]] void Fail();
};

// Save: a text that is no number shows a message and fails. Blanks around the number are allowed,
// nothing else may follow it, and a zero must begin with the digit 0. Load: 15 significant digits.
void DDX_Text(CDataExchange* pDX, int nIDC, double& value);
// As for double, whole numbers of 32 bits.
void DDX_Text(CDataExchange* pDX, int nIDC, int& value);
// Any text passes.
void DDX_Text(CDataExchange* pDX, int nIDC, CString& value);
// 0, 1 or 2; any other value loads as 0.
void DDX_Check(CDataExchange* pDX, int nIDC, int& value);
// Index of the checked button in the group that begins at nIDC, -1 for none. The group ends before
// the next control with WS_GROUP; other controls in it are passed over.
void DDX_Radio(CDataExchange* pDX, int nIDC, int& value);
// Attaches the object to the control at the first call.
void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl);
