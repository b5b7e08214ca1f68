// CWnd: what an object asks of its window; all of it goes by the handle.
#include "afxwin.h"
#include "host/mfc/window_system.h"

using host::Window;
using host::WindowSystem;

BOOL CWnd::ShowWindow(int nCmdShow) { return ::ShowWindow(m_hWnd, nCmdShow); }
BOOL CWnd::IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
BOOL CWnd::EnableWindow(BOOL bEnable) { return ::EnableWindow(m_hWnd, bEnable); }
BOOL CWnd::IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
void CWnd::UpdateWindow() { ::UpdateWindow(m_hWnd); }

void CWnd::Invalidate(BOOL) {
    if (const Window* const window = WindowSystem::Get().Find(m_hWnd))
        WindowSystem::Get().Changed(*window, host::WindowChange::kText);
}

DWORD CWnd::GetStyle() const {
    const Window* const window = WindowSystem::Get().Find(m_hWnd);
    return window == nullptr ? 0 : window->style;
}
DWORD CWnd::GetExStyle() const {
    const Window* const window = WindowSystem::Get().Find(m_hWnd);
    return window == nullptr ? 0 : window->exStyle;
}

CWnd* CWnd::SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }
CWnd* CWnd::GetFocus() { return FromHandle(::GetFocus()); }
CWnd* CWnd::GetActiveWindow() { return FromHandle(::GetActiveWindow()); }
BOOL CWnd::SetForegroundWindow() { return ::SetForegroundWindow(m_hWnd); }

void CWnd::BringWindowToTop() {
    if (const Window* const window = WindowSystem::Get().Find(m_hWnd))
        WindowSystem::Get().Changed(*window, host::WindowChange::kRaised);
}

void CWnd::CenterWindow(CWnd* pAlternateOwner) {
    const CWnd* const owner = pAlternateOwner != nullptr ? pAlternateOwner : GetOwner();
    const CWnd* const middle = owner != nullptr ? owner : AfxGetMainWnd();
    if (middle == nullptr) return;
    CRect area;
    CRect own;
    middle->GetWindowRect(area);
    GetWindowRect(own);
    const CPoint centre = area.CenterPoint();
    MoveWindow(centre.x - own.Width() / 2, centre.y - own.Height() / 2, own.Width(), own.Height());
}

void CWnd::MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint) {
    ::MoveWindow(m_hWnd, x, y, nWidth, nHeight, bRepaint);
}
void CWnd::MoveWindow(LPCRECT lpRect, BOOL bRepaint) {
    const CRect rect(*lpRect);
    MoveWindow(rect.left, rect.top, rect.Width(), rect.Height(), bRepaint);
}

BOOL CWnd::SetWindowPos(const CWnd*, int x, int y, int cx, int cy, UINT nFlags) {
    const Window* const window = WindowSystem::Get().Find(m_hWnd);
    if (window == nullptr) return FALSE;
    const CRect now(window->bounds);
    const bool keepsPlace = (nFlags & SWP_NOMOVE) != 0;
    const bool keepsSize = (nFlags & SWP_NOSIZE) != 0;
    MoveWindow(keepsPlace ? now.left : x, keepsPlace ? now.top : y, keepsSize ? now.Width() : cx,
               keepsSize ? now.Height() : cy);
    if (nFlags & SWP_SHOWWINDOW) ShowWindow(SW_SHOW);
    if (nFlags & SWP_HIDEWINDOW) ShowWindow(SW_HIDE);
    return TRUE;
}

void CWnd::GetWindowRect(LPRECT lpRect) const { ::GetWindowRect(m_hWnd, lpRect); }
void CWnd::GetClientRect(LPRECT lpRect) const { ::GetClientRect(m_hWnd, lpRect); }

void CWnd::ClientToScreen(LPRECT lpRect) const {
    CRect window;
    GetWindowRect(window);
    CRect moved(*lpRect);
    moved.OffsetRect(window.left, window.top);
    *lpRect = moved;
}
void CWnd::ScreenToClient(LPRECT lpRect) const {
    CRect window;
    GetWindowRect(window);
    CRect moved(*lpRect);
    moved.OffsetRect(-window.left, -window.top);
    *lpRect = moved;
}

CWnd* CWnd::GetParent() const { return FromHandle(::GetParent(m_hWnd)); }
CWnd* CWnd::GetOwner() const {
    const HWND owner = ::GetWindow(m_hWnd, GW_OWNER);
    return FromHandle(owner != nullptr ? owner : ::GetParent(m_hWnd));
}
CWnd* CWnd::GetTopLevelParent() const {
    Window* const window = WindowSystem::Get().Find(m_hWnd);
    return window == nullptr ? nullptr : FromHandle(window->TopLevel().handle);
}
CWnd* CWnd::GetDlgItem(int nID) const { return FromHandle(::GetDlgItem(m_hWnd, nID)); }
int CWnd::GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
CWnd* CWnd::GetNextDlgTabItem(CWnd* pWndCtl, BOOL bPrevious) const {
    return FromHandle(
        ::GetNextDlgTabItem(m_hWnd, pWndCtl == nullptr ? nullptr : pWndCtl->m_hWnd, bPrevious));
}

void CWnd::SetWindowText(LPCTSTR lpszString) { ::SetWindowText(m_hWnd, lpszString); }
void CWnd::GetWindowText(CString& rString) const {
    const int length = GetWindowTextLength();
    ::GetWindowText(m_hWnd, rString.GetBuffer(length), length + 1);
    rString.ReleaseBuffer(length);
}
int CWnd::GetWindowText(LPTSTR lpszStringBuf, int nMaxCount) const {
    return ::GetWindowText(m_hWnd, lpszStringBuf, nMaxCount);
}
int CWnd::GetWindowTextLength() const { return ::GetWindowTextLength(m_hWnd); }

void CWnd::SetDlgItemText(int nID, LPCTSTR lpszString) {
    ::SetWindowText(::GetDlgItem(m_hWnd, nID), lpszString);
}
int CWnd::GetDlgItemText(int nID, CString& rString) const {
    const CWnd* const item = GetDlgItem(nID);
    if (item == nullptr) {
        rString.Empty();
        return 0;
    }
    item->GetWindowText(rString);
    return rString.GetLength();
}

void CWnd::SetDlgItemInt(int nID, UINT nValue, BOOL bSigned) {
    CString text;
    text.Format(bSigned ? _T("%d") : _T("%u"), nValue);
    SetDlgItemText(nID, text);
}
UINT CWnd::GetDlgItemInt(int nID, BOOL* lpTrans, BOOL bSigned) const {
    CString text;
    GetDlgItemText(nID, text);
    text.Trim();
    const bool isNegative = bSigned && !text.IsEmpty() && text[0] == _T('-');
    const CString digits = isNegative ? text.Mid(1) : text;
    const bool isNumber = !digits.IsEmpty() && digits.SpanIncluding(_T("0123456789")) == digits;
    const std::int64_t value = isNumber ? _ttoi64(text) : 0;
    const bool fits = isNumber && (bSigned ? value >= INT32_MIN && value <= INT32_MAX
                                           : value <= static_cast<std::int64_t>(UINT32_MAX));
    if (lpTrans != nullptr) *lpTrans = fits;
    return fits ? static_cast<UINT>(value) : 0;
}

void CWnd::CheckDlgButton(int nIDButton, UINT nCheck) {
    ::SendMessage(::GetDlgItem(m_hWnd, nIDButton), BM_SETCHECK, nCheck, 0);
}
UINT CWnd::IsDlgButtonChecked(int nIDButton) const {
    return static_cast<UINT>(::SendMessage(::GetDlgItem(m_hWnd, nIDButton), BM_GETCHECK, 0, 0));
}
void CWnd::CheckRadioButton(int nIDFirst, int nIDLast, int nIDCheck) {
    for (int id = nIDFirst; id <= nIDLast; ++id) CheckDlgButton(id, id == nIDCheck);
}

void CWnd::SetFont(CFont* pFont, BOOL bRedraw) {
    SendMessage(WM_SETFONT, pFont == nullptr ? 0 : reinterpret_cast<WPARAM>(pFont->m_hObject),
                bRedraw);
}
CFont* CWnd::GetFont() const {
    return CFont::FromHandle(reinterpret_cast<HFONT>(SendMessage(WM_GETFONT)));
}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) const {
    return ::SendMessage(m_hWnd, message, wParam, lParam);
}
BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return ::PostMessage(m_hWnd, message, wParam, lParam);
}
int CWnd::MessageBox(LPCTSTR lpszText, LPCTSTR lpszCaption, UINT nType) {
    return ::MessageBox(m_hWnd, lpszText, lpszCaption, nType);
}
