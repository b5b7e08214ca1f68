// Buttons, edit boxes and progress bars: calls put as messages.
#include "afxcmn.h"
#include "afxdialogex.h"

IMPLEMENT_DYNAMIC(CButton, CWnd)
IMPLEMENT_DYNAMIC(CEdit, CWnd)
IMPLEMENT_DYNAMIC(CStatic, CWnd)
IMPLEMENT_DYNAMIC(CProgressCtrl, CWnd)

int CButton::GetCheck() const { return static_cast<int>(SendMessage(BM_GETCHECK)); }
void CButton::SetCheck(int nCheck) { SendMessage(BM_SETCHECK, static_cast<WPARAM>(nCheck)); }
void CButton::Click() { SendMessage(BM_CLICK); }

void CEdit::SetSel(int nStartChar, int nEndChar, BOOL) {
    SendMessage(EM_SETSEL, static_cast<WPARAM>(nStartChar), nEndChar);
}
void CEdit::GetSel(int& nStartChar, int& nEndChar) const {
    DWORD start = 0;
    DWORD end = 0;
    SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    nStartChar = static_cast<int>(start);
    nEndChar = static_cast<int>(end);
}
BOOL CEdit::SetReadOnly(BOOL bReadOnly) {
    return SendMessage(EM_SETREADONLY, static_cast<WPARAM>(bReadOnly)) != 0;
}

void CProgressCtrl::SetRange(short nLower, short nUpper) {
    SendMessage(PBM_SETRANGE, 0, MAKELPARAM(nLower, nUpper));
}
void CProgressCtrl::SetRange32(int nLower, int nUpper) {
    SendMessage(PBM_SETRANGE32, static_cast<WPARAM>(nLower), nUpper);
}
void CProgressCtrl::GetRange(int& nLower, int& nUpper) const {
    nLower = static_cast<int>(SendMessage(PBM_GETRANGE, TRUE));
    nUpper = static_cast<int>(SendMessage(PBM_GETRANGE, FALSE));
}
int CProgressCtrl::SetPos(int nPos) {
    return static_cast<int>(SendMessage(PBM_SETPOS, static_cast<WPARAM>(nPos)));
}
int CProgressCtrl::OffsetPos(int nPos) {
    return static_cast<int>(SendMessage(PBM_DELTAPOS, static_cast<WPARAM>(nPos)));
}
int CProgressCtrl::GetPos() const { return static_cast<int>(SendMessage(PBM_GETPOS)); }
int CProgressCtrl::SetStep(int nStep) {
    return static_cast<int>(SendMessage(PBM_SETSTEP, static_cast<WPARAM>(nStep)));
}
int CProgressCtrl::StepIt() { return static_cast<int>(SendMessage(PBM_STEPIT)); }
