// The Windows functions, on the host's windows.
#include <algorithm>
#include <climits>

#include "host/mfc/window_system.h"

using host::Window;
using host::WindowChange;
using host::WindowKind;
using host::WindowSystem;

namespace {

WindowSystem& System() { return WindowSystem::Get(); }
Window* Find(HWND handle) { return System().Find(handle); }

}  // namespace

BOOL IsWindow(HWND hWnd) { return Find(hWnd) != nullptr; }
BOOL IsWindowVisible(HWND hWnd) {
    const Window* const window = Find(hWnd);
    return window != nullptr && window->IsShown();
}
BOOL IsWindowEnabled(HWND hWnd) {
    const Window* const window = Find(hWnd);
    return window != nullptr && !window->Has(WS_DISABLED);
}
BOOL IsChild(HWND hWndParent, HWND hWnd) {
    const Window* at = Find(hWnd);
    while (at != nullptr && at->parent != nullptr && at->parent->handle != hWndParent)
        at = at->parent;
    return at != nullptr && at->parent != nullptr;
}
BOOL DestroyWindow(HWND hWnd) { return System().Destroy(hWnd); }
BOOL ShowWindow(HWND hWnd, int nCmdShow) { return System().Show(hWnd, nCmdShow != SW_HIDE); }
BOOL EnableWindow(HWND hWnd, BOOL bEnable) { return System().Enable(hWnd, bEnable != FALSE); }

BOOL UpdateWindow(HWND hWnd) {
    if (Find(hWnd) == nullptr) return FALSE;
    if (host::UserAnswers* const answers = System().Answers()) answers->updated();
    System().Driver().Poll();
    return TRUE;
}

BOOL MoveWindow(HWND hWnd, int x, int y, int width, int height, BOOL) {
    Window* const window = Find(hWnd);
    if (window == nullptr) return FALSE;
    const CRect before(window->bounds);
    window->bounds = CRect(x, y, x + width, y + height);
    System().Changed(*window, WindowChange::kBounds);
    if (before.Width() != width || before.Height() != height)
        System().Send(hWnd, WM_SIZE, 0, MAKELPARAM(width, height));
    return TRUE;
}

void host::PullToSize(HWND handle, int width, int height) {
    const Window* window = Find(handle);
    if (window == nullptr) return;
    MINMAXINFO limits = {};
    limits.ptMaxTrackSize = {SHRT_MAX, SHRT_MAX};
    System().Send(handle, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
    window = Find(handle);
    if (window == nullptr) return;
    const auto limit = [](int wanted, LONG least, LONG most) {
        return (std::max)(static_cast<int>(least), (std::min)(wanted, static_cast<int>(most)));
    };
    ::MoveWindow(handle, window->bounds.left, window->bounds.top,
                 limit(width, limits.ptMinTrackSize.x, limits.ptMaxTrackSize.x),
                 limit(height, limits.ptMinTrackSize.y, limits.ptMaxTrackSize.y), TRUE);
}

HWND SetFocus(HWND hWnd) { return System().SetFocus(hWnd); }
HWND GetFocus() { return System().Focus(); }
HWND GetActiveWindow() {
    Window* const focus = Find(System().Focus());
    return focus == nullptr ? nullptr : focus->TopLevel().handle;
}
BOOL SetForegroundWindow(HWND hWnd) {
    System().Activate(hWnd);
    return IsWindow(hWnd);
}

HWND GetParent(HWND hWnd) {
    const Window* const window = Find(hWnd);
    if (window == nullptr) return nullptr;
    return window->parent != nullptr ? window->parent->handle : window->owner;
}

HWND GetWindow(HWND hWnd, UINT uCmd) {
    const Window* const window = Find(hWnd);
    if (window == nullptr) return nullptr;
    if (uCmd == GW_OWNER) return window->owner;
    if (uCmd == GW_CHILD)
        return window->children.empty() ? nullptr : window->children.front()->handle;
    if (uCmd != GW_HWNDNEXT || window->parent == nullptr) return nullptr;
    const auto& siblings = window->parent->children;
    for (std::size_t i = 0; i + 1 < siblings.size(); ++i)
        if (siblings[i] == window) return siblings[i + 1]->handle;
    return nullptr;
}

HWND GetDlgItem(HWND hDlg, int nIDDlgItem) {
    const Window* const dialog = Find(hDlg);
    if (dialog == nullptr) return nullptr;
    for (const Window* const child : dialog->children)
        if (child->id == nIDDlgItem) return child->handle;
    return nullptr;
}
int GetDlgCtrlID(HWND hWnd) {
    const Window* const window = Find(hWnd);
    return window == nullptr ? 0 : window->id;
}

BOOL GetClientRect(HWND hWnd, LPRECT lpRect) {
    const Window* const window = Find(hWnd);
    if (window == nullptr) return FALSE;
    const CRect bounds(window->bounds);
    CRect client(0, 0, bounds.Width(), bounds.Height());
    // A border takes a pixel of each side, a sunken edge two.
    if (window->parent != nullptr) {
        const int border = (window->exStyle & WS_EX_CLIENTEDGE) ? 2
                           : window->Has(WS_BORDER)             ? 1
                                                                : 0;
        client.right -= 2 * border;
        client.bottom -= 2 * border;
    }
    *lpRect = client;
    return TRUE;
}

BOOL GetWindowRect(HWND hWnd, LPRECT lpRect) {
    const Window* window = Find(hWnd);
    if (window == nullptr) return FALSE;
    CRect rect(window->bounds);
    while ((window = window->parent) != nullptr)
        rect.OffsetRect(window->bounds.left, window->bounds.top);
    *lpRect = rect;
    return TRUE;
}

int GetWindowTextLength(HWND hWnd) {
    return static_cast<int>(SendMessage(hWnd, WM_GETTEXTLENGTH, 0, 0));
}
int GetWindowText(HWND hWnd, LPTSTR lpString, int nMaxCount) {
    if (nMaxCount <= 0) return 0;
    lpString[0] = 0;
    return static_cast<int>(SendMessage(hWnd, WM_GETTEXT, static_cast<WPARAM>(nMaxCount),
                                        reinterpret_cast<LPARAM>(lpString)));
}
BOOL SetWindowText(HWND hWnd, LPCTSTR lpString) {
    return SendMessage(hWnd, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(lpString)) != 0;
}

LRESULT SendMessage(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam) {
    return System().Send(hWnd, Msg, wParam, lParam);
}
BOOL PostMessage(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam) {
    return System().Post(hWnd, Msg, wParam, lParam);
}
void PostQuitMessage(int nExitCode) { System().PostQuit(nExitCode); }

BOOL PeekMessage(LPMSG lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax, UINT wRemoveMsg) {
    return System().Take(*lpMsg, hWnd, wMsgFilterMin, wMsgFilterMax, (wRemoveMsg & PM_REMOVE) != 0);
}
BOOL GetMessage(LPMSG lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax) {
    while (!PeekMessage(lpMsg, hWnd, wMsgFilterMin, wMsgFilterMax, PM_REMOVE))
        if (!System().WaitForInput()) return FALSE;
    return lpMsg->message != WM_QUIT;
}
BOOL TranslateMessage(const MSG*) { return FALSE; }
LRESULT DispatchMessage(const MSG* lpMsg) { return System().Dispatch(*lpMsg); }

SHORT GetKeyState(int nVirtKey) {
    return nVirtKey == VK_SHIFT && System().IsShiftDown() ? SHRT_MIN : 0;
}

int MessageBox(HWND, LPCTSTR lpText, LPCTSTR lpCaption, UINT uType) {
    host::BoxRequest request;
    request.text = lpText == nullptr ? L"" : lpText;
    request.title = lpCaption == nullptr ? AfxGetAppName() : lpCaption;
    request.type = uType;
    host::UserAnswers* const answers = System().Answers();
    return answers != nullptr ? answers->box(request) : System().Driver().ShowBox(request);
}
