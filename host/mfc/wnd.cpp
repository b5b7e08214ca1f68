// CWnd: handles, message routing and the default handlers.
#include "afxcmn.h"
#include "afxwin.h"
#include "host/mfc/call_window.h"
#include "host/mfc/map_look_up.h"
#include "host/mfc/window_system.h"

IMPLEMENT_DYNAMIC(CWnd, CCmdTarget)

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
ON_WM_DESTROY()
ON_WM_NCDESTROY()
END_MESSAGE_MAP()

using host::Window;
using host::WindowKind;
using host::WindowSystem;

namespace {

MSG g_current = {};          // the message that is being handled
HWND g_lockedOut = nullptr;  // dialog whose controls' notifications are held back

// Puts a value back at the end of a scope.
template <class T>
class Restore {
public:
    Restore(T& place, const T& value) : m_place(place), m_before(place) { place = value; }
    ~Restore() { m_place = m_before; }
    Restore(const Restore&) = delete;
    Restore& operator=(const Restore&) = delete;

private:
    T& m_place;
    T m_before;
};

Window* Find(HWND handle) { return WindowSystem::Get().Find(handle); }

// So that a cast to the class of the control, which MFC's users are used to, is a right one.
std::unique_ptr<CWnd> MakeStandIn(const Window& window) {
    switch (window.kind) {
        case WindowKind::kButton:
            return std::make_unique<CButton>();
        case WindowKind::kEdit:
            return std::make_unique<CEdit>();
        case WindowKind::kStatic:
            return std::make_unique<CStatic>();
        case WindowKind::kProgress:
            return std::make_unique<CProgressCtrl>();
        case WindowKind::kList:
            return std::make_unique<CListCtrl>();
        default:
            return std::make_unique<CWnd>();
    }
}

}  // namespace

LRESULT AfxCallWndProc(CWnd* pWnd, HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam) {
    const Restore<MSG> current(g_current, MSG{hWnd, nMsg, wParam, lParam, 0, {0, 0}});
    try {
        return pWnd->WindowProc(nMsg, wParam, lParam);
    } catch (CException* exception) {
        exception->ReportError();
        exception->Delete();
        return 0;
    }
}

CWnd::~CWnd() {
    const HWND handle = Detach();
    if (handle != nullptr) WindowSystem::Get().Destroy(handle);
}

CWnd* CWnd::FromHandle(HWND hWnd) {
    Window* const window = Find(hWnd);
    if (window == nullptr) return nullptr;
    if (window->object != nullptr) return window->object;
    if (!window->stand) {
        window->stand = MakeStandIn(*window);
        window->stand->m_hWnd = hWnd;
    }
    return window->stand.get();
}

CWnd* host::WindowOfHandle(HWND hWnd) { return CWnd::FromHandle(hWnd); }

CWnd* CWnd::FromHandlePermanent(HWND hWnd) {
    const Window* const window = Find(hWnd);
    return window == nullptr ? nullptr : window->object;
}

BOOL CWnd::Attach(HWND hWndNew) {
    Window* const window = Find(hWndNew);
    if (window == nullptr || window->object != nullptr || m_hWnd != nullptr) return FALSE;
    window->object = this;
    m_hWnd = hWndNew;
    return TRUE;
}

HWND CWnd::Detach() {
    const HWND handle = m_hWnd;
    Window* const window = Find(handle);
    if (window != nullptr && window->object == this) window->object = nullptr;
    m_hWnd = nullptr;
    return handle;
}

BOOL CWnd::SubclassWindow(HWND hWnd) {
    if (!Attach(hWnd)) return FALSE;
    PreSubclassWindow();
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT nID, CWnd* pParent) {
    const HWND handle = ::GetDlgItem(pParent->m_hWnd, static_cast<int>(nID));
    return handle != nullptr && SubclassWindow(handle);
}

HWND CWnd::UnsubclassWindow() { return Detach(); }
void CWnd::PreSubclassWindow() {}

BOOL CWnd::DestroyWindow() { return WindowSystem::Get().Destroy(m_hWnd); }

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    // The handler may delete this object, so a message that was handled ends here.
    LRESULT result = 0;
    if (OnWndMsg(message, wParam, lParam, &result)) return result;
    return DefWindowProc(message, wParam, lParam);
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    if (message == WM_COMMAND) return OnCommand(wParam, lParam);
    if (message == WM_NOTIFY) return OnNotify(wParam, lParam, pResult);
    const AFX_MSGMAP_ENTRY* const entry = host::FindEntry(GetMessageMap(), message, 0, 0);
    if (entry == nullptr) return FALSE;
    *pResult = entry->pfn(this, wParam, lParam);
    return TRUE;
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    return host::DefaultProcedure(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default() {
    return DefWindowProc(g_current.message, g_current.wParam, g_current.lParam);
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM) {
    if (g_lockedOut != nullptr && g_lockedOut == m_hWnd) return TRUE;
    const UINT id = LOWORD(wParam);
    return id != 0 && OnCmdMsg(id, HIWORD(wParam), nullptr, nullptr);
}

BOOL CWnd::OnNotify(WPARAM, LPARAM lParam, LRESULT* pResult) {
    NMHDR* const header = reinterpret_cast<NMHDR*>(lParam);
    AFX_NOTIFY notify = {pResult, header};
    return OnCmdMsg(static_cast<UINT>(header->idFrom), MAKELONG(header->code, WM_NOTIFY), &notify,
                    nullptr);
}

BOOL CWnd::UpdateData(BOOL bSaveAndValidate) {
    if (Find(m_hWnd) == nullptr) return FALSE;
    const Restore<HWND> lock(g_lockedOut, m_hWnd);
    CDataExchange exchange(this, bSaveAndValidate);
    try {
        DoDataExchange(&exchange);
        return TRUE;
    } catch (CUserException* exception) {
        exception->Delete();  // the user was told
    } catch (CException* exception) {
        exception->ReportError(MB_ICONEXCLAMATION);
        exception->Delete();
    }
    return FALSE;
}

void CWnd::DoDataExchange(CDataExchange*) {}

BOOL CWnd::PreTranslateMessage(MSG*) { return FALSE; }

BOOL AfxPreTranslateMessage(MSG* pMsg) {
    HWND handle = pMsg->hwnd;
    while (const Window* const window = Find(handle)) {
        const HWND parent = window->parent == nullptr ? nullptr : window->parent->handle;
        CWnd* const object = window->object;
        if (object != nullptr && object->PreTranslateMessage(pMsg)) return TRUE;
        handle = parent;
    }
    return FALSE;
}

void CWnd::PostNcDestroy() {}

void CWnd::OnDestroy() { Default(); }
void CWnd::OnNcDestroy() {
    CWinApp* const app = AfxGetApp();
    if (app->m_pMainWnd == this) app->m_pMainWnd = nullptr;
    Default();
    Detach();
    PostNcDestroy();
}
void CWnd::OnClose() { Default(); }
void CWnd::OnSize(UINT, int, int) { Default(); }
void CWnd::OnContextMenu(CWnd*, CPoint) { Default(); }
void CWnd::OnGetMinMaxInfo(MINMAXINFO*) { Default(); }
void CWnd::OnShowWindow(BOOL, UINT) { Default(); }
void CWnd::OnEnable(BOOL) { Default(); }
void CWnd::OnKeyDown(UINT, UINT, UINT) { Default(); }
void CWnd::OnSetFocus(CWnd*) { Default(); }
void CWnd::OnKillFocus(CWnd*) { Default(); }
UINT CWnd::OnGetDlgCode() { return static_cast<UINT>(Default()); }
