// CDialog: creation, the modal loop, OK and Cancel.
#include "afxdialogex.h"
#include "host/mfc/dialog_builder.h"
#include "host/mfc/resources.h"
#include "host/mfc/window_system.h"

IMPLEMENT_DYNAMIC(CDialog, CWnd)
IMPLEMENT_DYNAMIC(CDialogEx, CDialog)

BEGIN_MESSAGE_MAP(CDialog, CWnd)
ON_COMMAND(IDOK, &CDialog::OnOK)
ON_COMMAND(IDCANCEL, &CDialog::OnCancel)
ON_MESSAGE(WM_INITDIALOG, &CDialog::HandleInitDialog)
END_MESSAGE_MAP()

BEGIN_MESSAGE_MAP(CDialogEx, CDialog)
END_MESSAGE_MAP()

using host::Window;
using host::WindowSystem;

namespace {

WindowSystem& System() { return WindowSystem::Get(); }

// The top-level window that a dialog belongs to: that of the parent, else the main one.
HWND OwnerOf(CWnd* parent) {
    CWnd* const from = parent != nullptr && parent->m_hWnd != nullptr ? parent : AfxGetMainWnd();
    Window* const window = from == nullptr ? nullptr : System().Find(from->m_hWnd);
    return window == nullptr ? nullptr : window->TopLevel().handle;
}

HWND Build(UINT id, CWnd& object, HWND owner, bool isModal) {
    std::wstring reason;
    const host::DialogTemplate* const dialog =
        host::FindDialog(AfxGetResourceHandle(), static_cast<int>(id), reason);
    const HWND handle =
        dialog == nullptr ? nullptr : host::BuildDialog(*dialog, object, owner, isModal, reason);
    if (!reason.empty())
        System().Report(L"Dialog " + std::to_wstring(id) + L" cannot be made: " + reason);
    return handle;
}

}  // namespace

CDialog::CDialog(UINT nIDTemplate, CWnd* pParentWnd)
    : m_nIDHelp(nIDTemplate), m_nIDTemplate(nIDTemplate), m_pParentWnd(pParentWnd) {}

CDialog::~CDialog() = default;

BOOL CDialog::Create(UINT nIDTemplate, CWnd* pParentWnd) {
    if (m_hWnd != nullptr) return FALSE;
    m_nIDTemplate = nIDTemplate;
    m_bModal = FALSE;
    // The object may be gone when the window was destroyed as it was made.
    return Build(nIDTemplate, *this, OwnerOf(pParentWnd), false) != nullptr;
}

INT_PTR CDialog::DoModal() {
    const HWND owner = OwnerOf(m_pParentWnd);
    const HWND focus = System().Focus();
    const bool disables = ::IsWindowEnabled(owner) != FALSE;
    m_bModal = TRUE;
    m_bRunning = TRUE;
    m_nModalResult = -1;
    if (disables) ::EnableWindow(owner, FALSE);
    if (Build(m_nIDTemplate, *this, owner, true) != nullptr) RunModalLoop();
    m_bRunning = FALSE;
    // The owner first, so that the focus finds a way back to it.
    if (disables) ::EnableWindow(owner, TRUE);
    DestroyWindow();
    if (::IsWindow(focus)) ::SetFocus(focus);
    return m_nModalResult;
}

void CDialog::RunModalLoop() {
    if (!m_bRunning) return;
    ShowWindow(SW_SHOW);
    while (m_bRunning && m_hWnd != nullptr) {
        MSG msg;
        if (::PeekMessage(&msg, nullptr, 0, 0, PM_REMOVE)) {
            if (msg.message == WM_QUIT) {
                ::PostQuitMessage(static_cast<int>(msg.wParam));
                m_nModalResult = -1;
                return;
            }
            if (!AfxPreTranslateMessage(&msg)) {
                ::TranslateMessage(&msg);
                ::DispatchMessage(&msg);
            }
        } else if (!System().WaitForInput()) {
            System().Report(L"Dialog " + std::to_wstring(m_nIDTemplate) +
                            L" was still open when there was no input left; it is cancelled.");
            m_nModalResult = IDCANCEL;
            return;
        }
    }
    // Destroyed from elsewhere: counts as cancelled.
    if (m_bRunning) m_nModalResult = IDCANCEL;
}

void CDialog::EndDialog(int nResult) {
    if (m_bModal) {
        m_nModalResult = nResult;
        m_bRunning = FALSE;
    }
    ShowWindow(SW_HIDE);
}

LRESULT CDialog::HandleInitDialog(WPARAM, LPARAM) {
    Default();
    return OnInitDialog();
}

BOOL CDialog::OnInitDialog() {
    if (!UpdateData(FALSE)) {
        EndDialog(-1);
        return FALSE;
    }
    return TRUE;
}

void CDialog::OnOK() {
    if (UpdateData(TRUE)) EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }

BOOL CDialog::PreTranslateMessage(MSG* pMsg) {
    return CWnd::PreTranslateMessage(pMsg) || ::IsDialogMessage(m_hWnd, pMsg);
}

void CDialog::SetDefID(UINT nID) { SendMessage(DM_SETDEFID, nID); }
DWORD CDialog::GetDefID() const { return static_cast<DWORD>(SendMessage(DM_GETDEFID)); }
void CDialog::NextDlgCtrl() const { host::MoveDialogFocus(m_hWnd, false); }
void CDialog::PrevDlgCtrl() const { host::MoveDialogFocus(m_hWnd, true); }
void CDialog::GotoDlgCtrl(CWnd* pWndCtrl) { pWndCtrl->SetFocus(); }
