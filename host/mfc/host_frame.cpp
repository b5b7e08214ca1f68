#include "host/mfc/host_frame.h"

#include <memory>

#include "adscodes.h"
#include "host/mfc/window_system.h"
#include "rxmfcapi.h"

IMPLEMENT_DYNAMIC(CFrameWnd, CWnd)
IMPLEMENT_DYNAMIC(CMDIFrameWnd, CFrameWnd)
IMPLEMENT_DYNAMIC(CView, CWnd)
IMPLEMENT_DYNAMIC(CWinThread, CCmdTarget)
IMPLEMENT_DYNAMIC(CWinApp, CWinThread)

namespace {

// Where the frame lies until a display says otherwise.
constexpr RECT kFramePlace = {0, 0, 1280, 800};

struct HostWindows {
    CWinApp app;
    CMDIFrameWnd frame;
    CView view;
    bool isClosed = false;
    HostWindows() { app.m_pszAppName = host::kHostName; }
};

// Never destroyed: dialogs of static objects may end later.
HostWindows& All() {
    static HostWindows* const all = new HostWindows();
    return *all;
}

}  // namespace

void host::MakeHostWindows() {
    HostWindows& all = All();
    all.isClosed = false;
    if (all.frame.m_hWnd != nullptr) return;
    WindowSystem& system = WindowSystem::Get();
    Window& frame = system.Make(WindowKind::kFrame, nullptr);
    frame.style = WS_CAPTION | WS_VISIBLE;
    frame.text = kHostName;
    frame.bounds = kFramePlace;
    Window& view = system.Make(WindowKind::kView, &frame);
    view.style = WS_CHILD | WS_VISIBLE;
    view.bounds = kFramePlace;
    frame.savedFocus = view.handle;
    all.frame.Attach(frame.handle);
    all.view.Attach(view.handle);
    all.app.m_pMainWnd = &all.frame;
    system.Announce(frame);
}

void host::CloseHostWindows() {
    All().isClosed = true;
    All().frame.DestroyWindow();
}

void host::PointerLeft(HWND dialog) {
    WindowSystem& system = WindowSystem::Get();
    const Window* const window = system.Find(dialog);
    if (window == nullptr || window->isModal || !::IsChild(dialog, system.Focus())) return;
    if (system.Send(dialog, WM_ACAD_KEEPFOCUS, 0, 0) != 0) return;
    if (CView* const view = acedGetAcadDwgView()) view->SetFocus();
}

CMDIFrameWnd* acedGetAcadFrame() {
    if (All().isClosed) return nullptr;
    host::MakeHostWindows();
    return &All().frame;
}
CView* acedGetAcadDwgView() { return acedGetAcadFrame() == nullptr ? nullptr : &All().view; }
CDocument* acedGetAcadDoc() { return nullptr; }
CWinApp* acedGetAcadWinApp() { return &All().app; }

CWinApp* AfxGetApp() { return &All().app; }
CWinThread* AfxGetThread() { return AfxGetApp(); }
BOOL CWinThread::PreTranslateMessage(MSG* pMsg) { return AfxPreTranslateMessage(pMsg); }
CWnd* AfxGetMainWnd() { return acedGetAcadFrame(); }
LPCTSTR AfxGetAppName() { return All().app.m_pszAppName; }

int AfxMessageBox(LPCTSTR lpszText, UINT nType, UINT) {
    CWnd* const main = AfxGetMainWnd();
    return ::MessageBox(main == nullptr ? nullptr : main->m_hWnd, lpszText, AfxGetAppName(), nType);
}

int AfxMessageBox(UINT nIDPrompt, UINT nType, UINT nIDHelp) {
    CString text;
    text.LoadString(nIDPrompt);
    return AfxMessageBox(text.GetString(), nType, nIDHelp);
}
