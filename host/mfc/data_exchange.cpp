// Exchange of values between controls and members.
#include <cfloat>
#include <climits>

#include "afxwin.h"
#include "host/base/plain_number.h"

IMPLEMENT_DYNAMIC(CException, CObject)
IMPLEMENT_DYNAMIC(CUserException, CException)
IMPLEMENT_DYNAMIC(CNotSupportedException, CException)

namespace {

constexpr int kLongestNumber = 399;  // letters of an edit box that count for a number

const TCHAR* SkipBlanks(const TCHAR* text) {
    while (*text == _T(' ') || *text == _T('\t')) ++text;
    return text;
}

// Whether the text is one decimal number and nothing else; value is unchanged if not. Words such
// as inf, hexadecimal digits and what no double can hold are no numbers here.
bool ParseReal(const TCHAR* text, double& value) {
    text = SkipBlanks(text);
    const TCHAR first = *text;
    const wchar_t* end = text;
    double number = 0.0;
    if (!host::ReadNumber(end, number)) return false;
    // A zero that is meant begins with its digit.
    if (number == 0.0 && first != _T('0')) return false;
    if (*SkipBlanks(end) != 0) return false;
    value = number;
    return true;
}

bool ParseInteger(const TCHAR* text, int& value) {
    text = SkipBlanks(text);
    const bool isNegative = *text == _T('-');
    if (isNegative || *text == _T('+')) ++text;
    const TCHAR* const begin = text;
    std::int64_t number = 0;
    for (; *text >= _T('0') && *text <= _T('9'); ++text)
        if (number <= INT_MAX) number = 10 * number + (*text - _T('0'));
    if (text == begin || *SkipBlanks(text) != 0) return false;
    if (isNegative) number = -number;
    if (number < INT_MIN || number > INT_MAX) return false;
    value = static_cast<int>(number);
    return true;
}

CString TextOf(HWND control) {
    CString text;
    CWnd::FromHandle(control)->GetWindowText(text);
    return text;
}

// A text that is there already is not set again, so that nothing flickers and no change is told.
void SetTextOf(HWND control, const CString& text) {
    if (TextOf(control) != text) ::SetWindowText(control, text);
}

[[noreturn]] void FailWith(CDataExchange& exchange, LPCTSTR message) {
    AfxMessageBox(message, MB_OK | MB_ICONEXCLAMATION);
    exchange.Fail();
}

}  // namespace

int CException::ReportError(UINT nType) {
    const CString text = GetText();
    return text.IsEmpty() ? 0 : AfxMessageBox(text, nType);
}

void AfxThrowUserException() { throw new CUserException(); }

CDataExchange::CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate)
    : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd) {}

HWND CDataExchange::PrepareCtrl(int nIDC) {
    const HWND control = ::GetDlgItem(m_pDlgWnd->m_hWnd, nIDC);
    if (control == nullptr) {
        CString text;
        text.Format(_T("The dialog %d has no control %d."), m_pDlgWnd->GetDlgCtrlID(), nIDC);
        throw new CNotSupportedException(text);
    }
    m_hWndLastControl = control;
    m_bEditLastControl = FALSE;
    return control;
}

HWND CDataExchange::PrepareEditCtrl(int nIDC) {
    const HWND control = PrepareCtrl(nIDC);
    m_bEditLastControl = TRUE;
    return control;
}

void CDataExchange::Fail() {
    if (m_bSaveAndValidate && m_hWndLastControl != nullptr) {
        ::SetFocus(m_hWndLastControl);
        if (m_bEditLastControl) ::SendMessage(m_hWndLastControl, EM_SETSEL, 0, -1);
    }
    AfxThrowUserException();
}

void DDX_Text(CDataExchange* pDX, int nIDC, double& value) {
    const HWND control = pDX->PrepareEditCtrl(nIDC);
    if (!pDX->m_bSaveAndValidate) {
        CString text;
        text.Format(_T("%.*g"), DBL_DIG, value);
        SetTextOf(control, text);
    } else if (!ParseReal(TextOf(control).Left(kLongestNumber), value)) {
        FailWith(*pDX, _T("Please enter a number."));
    }
}

void DDX_Text(CDataExchange* pDX, int nIDC, int& value) {
    const HWND control = pDX->PrepareEditCtrl(nIDC);
    if (!pDX->m_bSaveAndValidate) {
        CString text;
        text.Format(_T("%d"), value);
        SetTextOf(control, text);
    } else if (!ParseInteger(TextOf(control).Left(kLongestNumber), value)) {
        FailWith(*pDX, _T("Please enter an integer."));
    }
}

void DDX_Text(CDataExchange* pDX, int nIDC, CString& value) {
    const HWND control = pDX->PrepareEditCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        value = TextOf(control);
    } else {
        SetTextOf(control, value);
    }
}

void DDX_Check(CDataExchange* pDX, int nIDC, int& value) {
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        value = static_cast<int>(::SendMessage(control, BM_GETCHECK, 0, 0));
        return;
    }
    if (value < BST_UNCHECKED || value > BST_INDETERMINATE) value = BST_UNCHECKED;
    ::SendMessage(control, BM_SETCHECK, static_cast<WPARAM>(value), 0);
}

void DDX_Radio(CDataExchange* pDX, int nIDC, int& value) {
    HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) value = -1;
    int index = 0;
    do {
        if (::SendMessage(control, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) {
            if (!pDX->m_bSaveAndValidate) {
                ::SendMessage(control, BM_SETCHECK, index == value, 0);
            } else if (::SendMessage(control, BM_GETCHECK, 0, 0) != 0) {
                value = index;
            }
            ++index;
        }
        control = ::GetWindow(control, GW_HWNDNEXT);
    } while (control != nullptr && !(CWnd::FromHandle(control)->GetStyle() & WS_GROUP));
}

void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl) {
    if (rControl.m_hWnd != nullptr) return;
    if (rControl.SubclassWindow(pDX->PrepareCtrl(nIDC))) return;
    CString text;
    text.Format(_T("The control %d has an object already."), nIDC);
    throw new CNotSupportedException(text);
}
