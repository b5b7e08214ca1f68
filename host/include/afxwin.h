// MFC's window classes, as far as dialogs need them. Only declarations: code that uses no window
// links without the window library.
//
// Windows live in the host's own model (handles, texts, states, focus, messages); a display, when
// there is one, only shows it. So everything here works alike with and without one.
#pragma once

#include "afx.h"
#include "afxdd_.h"
#include "afxmsg_.h"
#include "atltypes.h"
#include "host_winuser.h"

class CDC;
class CDocument;
class CFont;
class CFrameWnd;
class CMDIFrameWnd;
class CView;
class CWinApp;
class CWnd;

struct __POSITION;
typedef __POSITION* POSITION;

// Thrown as pointers, as MFC does; the catcher calls Delete.
class CException : public CObject {
    DECLARE_DYNAMIC(CException)
public:
    virtual CString GetText() const = 0;  // what the user is told
    // Shows the text in a message box.
    int ReportError(UINT nType = MB_OK);
    void Delete() { delete this; }  // catchers call it; never delete by hand
};

// The user was told already: ends an operation quietly.
class CUserException : public CException {
    DECLARE_DYNAMIC(CUserException)
public:
    CString GetText() const override { return CString(); }
};

// A control that the exchange needs is not there; the text says which.
class CNotSupportedException : public CException {
    DECLARE_DYNAMIC(CNotSupportedException)
public:
    explicit CNotSupportedException(const CString& text) : m_text(text) {}
    CString GetText() const override { return m_text; }

private:
    CString m_text;
};

// A receiver of messages through a message map.
class CCmdTarget : public CObject {
    DECLARE_DYNAMIC(CCmdTarget)
public:
    // Calls the handler for a command or notification; FALSE when the maps of the class and its
    // bases hold none. The object may be gone afterwards.
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo);

protected:
    static const AFX_MSGMAP* GetThisMessageMap();
    // Of the object's class; made by the macros of afxmsg_.h.
    virtual const AFX_MSGMAP* GetMessageMap() const;
};

// A drawing tool with a handle. Of the original's kinds there are fonts alone: the host paints
// nothing itself.
class CGdiObject : public CObject {
    DECLARE_DYNAMIC(CGdiObject)
public:
    ~CGdiObject() override { DeleteObject(); }
    HGDIOBJ GetSafeHandle() const { return m_hObject; }  // null when nothing was created
    // Windows that still use it are shown in the font of the display.
    BOOL DeleteObject();

    HGDIOBJ m_hObject = nullptr;
};

// Fonts are kept by their description; letters are found by the display.
class CFont : public CGdiObject {
    DECLARE_DYNAMIC(CFont)
public:
    BOOL CreateFontIndirect(const LOGFONT* lpLogFont);
    // nPointSize in tenths of a point.
    BOOL CreatePointFont(int nPointSize, LPCTSTR lpszFaceName, CDC* pDC = nullptr);
    int GetLogFont(LOGFONT* pLogFont) const;  // bytes written; 0 without a font
    operator HFONT() const { return static_cast<HFONT>(m_hObject); }
    // The object of a handle; for a font that no CFont made one that the host keeps.
    static CFont* FromHandle(HFONT hFont);
};

// A window, or the object that stands for one. Painting, scrolling, menus, timers and the mouse are
// not carried out; what a dialog of controls needs is.
class CWnd : public CCmdTarget {
    DECLARE_DYNAMIC(CWnd)
public:
    HWND m_hWnd = nullptr;  // null before creation and after destruction

    CWnd() = default;
    // Destroys a window that is still there; overrides of derived classes are not called then.
    ~CWnd() override;

    // The object attached to a handle, else one that the host keeps as long as the window lives;
    // null for no window.
    static CWnd* FromHandle(HWND hWnd);
    // Only objects that were attached; null else.
    static CWnd* FromHandlePermanent(HWND hWnd);
    static CWnd* GetFocus();         // null when no window of the host has it
    static CWnd* GetActiveWindow();  // the top-level window in front
    // Unlike in Windows the object must not be null.
    HWND GetSafeHwnd() const { return m_hWnd; }
    // FALSE when the handle has an object already, or this object a window.
    BOOL Attach(HWND hWndNew);
    HWND Detach();  // the handle, which lives on
    // Attach and detach, with PreSubclassWindow called in between.
    BOOL SubclassWindow(HWND hWnd);
    BOOL SubclassDlgItem(UINT nID, CWnd* pParent);  // the same for a control by number
    HWND UnsubclassWindow();                        // the messages go their former way

    // WM_DESTROY, WM_NCDESTROY, PostNcDestroy: the object may be gone afterwards.
    virtual BOOL DestroyWindow();
    BOOL ShowWindow(int nCmdShow);           // TRUE when it was shown before
    BOOL IsWindowVisible() const;            // it and all that it lies in
    BOOL EnableWindow(BOOL bEnable = TRUE);  // TRUE when it was disabled before
    BOOL IsWindowEnabled() const;            // its own state only
    // Takes what the display waits for, so that the window shows its present state.
    void UpdateWindow();
    void Invalidate(BOOL bErase = TRUE);  // asks the display to show it again
    DWORD GetStyle() const;               // WS_ and the control's own bits
    DWORD GetExStyle() const;             // WS_EX_

    CWnd* SetFocus();            // the one that had it; null when none had
    BOOL SetForegroundWindow();  // brings the top-level window to the front
    void BringWindowToTop();     // likewise, without the focus
    // In the middle of its owner, else of the screen.
    void CenterWindow(CWnd* pAlternateOwner = nullptr);
    // In pixels of the parent, of the screen for a top-level window.
    void MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint = TRUE);
    void MoveWindow(LPCRECT lpRect, BOOL bRepaint = TRUE);
    // Of the flags SWP_NOMOVE, SWP_NOSIZE, SWP_SHOWWINDOW and SWP_HIDEWINDOW are looked at.
    BOOL SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags);
    void GetWindowRect(LPRECT lpRect) const;   // screen pixels
    void GetClientRect(LPRECT lpRect) const;   // from 0,0
    void ClientToScreen(LPRECT lpRect) const;  // moves a rectangle by the window's place
    void ScreenToClient(LPRECT lpRect) const;

    CWnd* GetParent() const;          // of a top-level window its owner
    CWnd* GetOwner() const;           // null without one
    CWnd* GetTopLevelParent() const;  // itself when it is one
    CWnd* GetDlgItem(int nID) const;  // a child by number; null for none
    int GetDlgCtrlID() const;         // 0 for a top-level window
    // The next control with WS_TABSTOP that shows and is enabled; around the end.
    CWnd* GetNextDlgTabItem(CWnd* pWndCtl, BOOL bPrevious = FALSE) const;

    // Title of a dialog, text of a control; sends what a change by the user would send for an edit
    // box.
    void SetWindowText(LPCTSTR lpszString);
    void GetWindowText(CString& rString) const;
    // Characters copied; what does not fit is cut.
    int GetWindowText(LPTSTR lpszStringBuf, int nMaxCount) const;
    int GetWindowTextLength() const;  // without the end mark
    // Of a child by number; nothing, and 0, when there is none.
    void SetDlgItemText(int nID, LPCTSTR lpszString);
    int GetDlgItemText(int nID, CString& rString) const;
    void SetDlgItemInt(int nID, UINT nValue, BOOL bSigned = TRUE);
    // lpTrans receives whether it was a number
    UINT GetDlgItemInt(int nID, BOOL* lpTrans = nullptr, BOOL bSigned = TRUE) const;
    void CheckDlgButton(int nIDButton, UINT nCheck);  // 0, 1 or 2
    UINT IsDlgButtonChecked(int nIDButton) const;
    // checks one of a range, and clears the others
    void CheckRadioButton(int nIDFirst, int nIDLast, int nIDCheck);
    // The font must outlive the window's use of it.
    void SetFont(CFont* pFont, BOOL bRedraw = TRUE);
    CFont* GetFont() const;  // null: the display's own

    // handled before it returns; 0 for no window
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    // handled by the message loop
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    // Shows a text and waits; the number of the button. Scripts answer it by its text.
    int MessageBox(LPCTSTR lpszText, LPCTSTR lpszCaption = nullptr, UINT nType = MB_OK);

    // Exchanges all controls with the members; FALSE when one failed. The controls' own
    // notifications are held back meanwhile.
    BOOL UpdateData(BOOL bSaveAndValidate = TRUE);

    // Sees posted messages before they are sent: keys of a dialog. TRUE: dealt with.
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    // The window is attached, and nothing was sent to it yet.
    virtual void PreSubclassWindow();

protected:
    // One DDX_ call for each control; called by UpdateData in both directions.
    virtual void DoDataExchange(CDataExchange* pDX);
    // Every message of the window comes here. The object may be gone afterwards.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // Looks through the maps; FALSE when no handler takes the message.
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    // What the window does by itself.
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // WM_COMMAND: to the control itself first, then through the maps.
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    // WM_NOTIFY, likewise.
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    // The last thing that happens to the object of a destroyed window: the place for delete this.
    virtual void PostNcDestroy();
    // The message that is being handled goes on to the window's own procedure.
    LRESULT Default();

    // Handlers of the usual messages; each does what the window would do by itself.
    afx_msg void OnDestroy();
    afx_msg void OnNcDestroy();
    afx_msg void OnClose();
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnContextMenu(CWnd* pWnd, CPoint pos);
    afx_msg void OnGetMinMaxInfo(MINMAXINFO* lpMMI);
    afx_msg void OnShowWindow(BOOL bShow, UINT nStatus);
    afx_msg void OnEnable(BOOL bEnable);
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg UINT OnGetDlgCode();
    DECLARE_MESSAGE_MAP()

private:
    friend LRESULT AfxCallWndProc(CWnd*, HWND, UINT, WPARAM, LPARAM);
};

// A menu that pops up.
class CMenu : public CObject {
    DECLARE_DYNAMIC(CMenu)
public:
    CMenu() = default;
    ~CMenu() override;

    BOOL CreatePopupMenu();
    BOOL DestroyMenu();
    // nIDNewItem  the command; of a separator any. A grayed item cannot be chosen.
    BOOL AppendMenu(UINT nFlags, UINT_PTR nIDNewItem = 0, LPCTSTR lpszNewItem = nullptr);
    // Shows it at a place of the screen. With TPM_RETURNCMD the command that was chosen, 0 for
    // none; else whether it was shown, the command being sent to the window.
    BOOL TrackPopupMenu(UINT nFlags, int x, int y, CWnd* pWnd, LPCRECT lpRect = nullptr);

    HMENU m_hMenu = nullptr;
};

class CButton : public CWnd {  // A push button, check box or radio button, by its style
    DECLARE_DYNAMIC(CButton)
public:
    int GetCheck() const;       // 0 off, 1 on, 2 between
    void SetCheck(int nCheck);  // sends nothing
    void Click();               // as by the user
};

// A line of text. Several lines, passwords and undo are not carried out.
class CEdit : public CWnd {
    DECLARE_DYNAMIC(CEdit)
public:
    // 0, -1 selects all.
    void SetSel(int nStartChar, int nEndChar, BOOL bNoScroll = FALSE);
    void GetSel(int& nStartChar, int& nEndChar) const;  // equal when nothing is selected
    BOOL SetReadOnly(BOOL bReadOnly = TRUE);            // users cannot change it; programs can
};

// A text or a frame beside controls. No pictures.
class CStatic : public CWnd {
    DECLARE_DYNAMIC(CStatic)
};

// A window made of a template in a module's resource script.
class CDialog : public CWnd {
    DECLARE_DYNAMIC(CDialog)
public:
    CDialog() = default;
    // For DoModal; the template is looked up then.
    explicit CDialog(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    ~CDialog() override;

    // Modeless. FALSE, with a line in the host's log that says why, when the current module has no
    // such template. The window is hidden unless the template says WS_VISIBLE.
    virtual BOOL Create(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    // Modal: runs its own message loop, its owner disabled meanwhile. The value given to EndDialog,
    // -1 when the dialog cannot be made.
    virtual INT_PTR DoModal();
    // Ends DoModal once the handler returns; a modeless dialog is only hidden.
    void EndDialog(int nResult);

    // All controls are there and have the members' values. TRUE: the first control gets the focus.
    virtual BOOL OnInitDialog();
    // Control that Enter presses when no other button has the focus.
    void SetDefID(UINT nID);
    DWORD GetDefID() const;    // its number, and DC_HASDEFID above
    void NextDlgCtrl() const;  // moves the focus as Tab does
    void PrevDlgCtrl() const;
    void GotoDlgCtrl(CWnd* pWndCtrl);  // to a control, its text selected

    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    // Enter: takes the values over and ends with IDOK, or stays when one is no value.
    virtual void OnOK();
    // Esc and the close box: ends with IDCANCEL.
    virtual void OnCancel();
    afx_msg LRESULT HandleInitDialog(WPARAM, LPARAM);
    DECLARE_MESSAGE_MAP()

    UINT m_nIDHelp = 0;
    UINT m_nIDTemplate = 0;
    CWnd* m_pParentWnd = nullptr;

private:
    void RunModalLoop();
    BOOL m_bModal = FALSE;    // made by DoModal
    BOOL m_bRunning = FALSE;  // until EndDialog or the end of the window
    INT_PTR m_nModalResult = 0;
};

// The host's main window, as a parent; nothing more can be asked of it.
class CFrameWnd : public CWnd {
    DECLARE_DYNAMIC(CFrameWnd)
};
class CMDIFrameWnd : public CFrameWnd {  // the same under the name that acedGetAcadFrame has
    DECLARE_DYNAMIC(CMDIFrameWnd)
};
class CView : public CWnd {  // the window of the drawing, to put the focus on
    DECLARE_DYNAMIC(CView)
};

// Here the one thread that the windows belong to.
class CWinThread : public CCmdTarget {
    DECLARE_DYNAMIC(CWinThread)
public:
    // As AfxPreTranslateMessage.
    virtual BOOL PreTranslateMessage(MSG* pMsg);

    CWnd* m_pMainWnd = nullptr;
};

class CWinApp : public CWinThread {
    DECLARE_DYNAMIC(CWinApp)
public:
    LPCTSTR m_pszAppName = nullptr;  // title of message boxes
};

CWinThread* AfxGetThread();

CWinApp* AfxGetApp();
CWnd* AfxGetMainWnd();
LPCTSTR AfxGetAppName();
// The module whose dialogs and texts are found; a module sets its own around the creation of a
// dialog.
HINSTANCE AfxGetResourceHandle();
void AfxSetResourceHandle(HINSTANCE hInstResource);
// The program itself, not the module that asks.
HINSTANCE AfxGetInstanceHandle();
// Lets the windows from the message's one upwards look at it first; TRUE: it is dealt with.
BOOL AfxPreTranslateMessage(MSG* pMsg);
// Shows the text with the host's name as title; the number of the button that was pressed.
int AfxMessageBox(LPCTSTR lpszText, UINT nType = MB_OK, UINT nIDHelp = 0);
int AfxMessageBox(UINT nIDPrompt, UINT nType = MB_OK, UINT nIDHelp = 0);
// Ends an exchange whose user was told.
[[noreturn]] void AfxThrowUserException();
