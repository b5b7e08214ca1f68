// Message maps and the queue.
#include <algorithm>
#include <fstream>

#include "AcExtensionModule.h"
#include "mfc/support.h"
#include "rxmfcapi.h"
#include "support/scratch.h"

AC_IMPLEMENT_EXTENSION_MODULE(testModule);

namespace {

constexpr UINT kAsk = WM_USER + 50;

std::string g_log;

class CBaseDlg : public CDialogEx {
    DECLARE_DYNAMIC(CBaseDlg)
public:
    void OnOne() { g_log += "base1 "; }
    void OnTwo() { g_log += "base2 "; }
    LRESULT OnAsk(WPARAM w, LPARAM l) { return static_cast<LRESULT>(w) + l; }
    void OnRange(UINT id) { g_log += "range" + std::to_string(id) + " "; }
    DECLARE_MESSAGE_MAP()
};
IMPLEMENT_DYNAMIC(CBaseDlg, CDialogEx)
BEGIN_MESSAGE_MAP(CBaseDlg, CDialogEx)
ON_BN_CLICKED(1, &CBaseDlg::OnOne)
ON_BN_CLICKED(2, &CBaseDlg::OnTwo)
ON_MESSAGE(kAsk, &CBaseDlg::OnAsk)
ON_COMMAND_RANGE(10, 12, &CBaseDlg::OnRange)
END_MESSAGE_MAP()

class CDerivedDlg : public CBaseDlg {
    DECLARE_DYNAMIC(CDerivedDlg)
public:
    bool m_bDestroysOnSelect = false;

    void OnTwo() { g_log += "derived2 "; }
    void OnItemChanged(NMHDR* header, LRESULT* result) {
        const auto* const notice = reinterpret_cast<const NMLISTVIEW*>(header);
        g_log += std::to_string(notice->iItem) + ":" + std::to_string(notice->uOldState) + ">" +
                 std::to_string(notice->uNewState) + " ";
        *result = 17;
        if (m_bDestroysOnSelect) DestroyWindow();
    }
    void OnSize(UINT type, int cx, int cy) {
        CBaseDlg::OnSize(type, cx, cy);
        g_log += "size" + std::to_string(cx) + "x" + std::to_string(cy) + " ";
    }
    // Pumps within a handler: what waits runs before the rest of it.
    void OnPump() {
        g_log += "[";
        MSG msg;
        while (::PeekMessage(&msg, nullptr, 0, 0, PM_REMOVE)) {
            if (msg.message == WM_QUIT) {
                ::PostQuitMessage(static_cast<int>(msg.wParam));
                break;
            }
            if (!AfxPreTranslateMessage(&msg)) {
                ::TranslateMessage(&msg);
                ::DispatchMessage(&msg);
            }
        }
        g_log += "] ";
    }
    BOOL PreTranslateMessage(MSG* msg) override {
        if (msg->message == WM_APP) {
            g_log += "early ";
            return TRUE;
        }
        return CBaseDlg::PreTranslateMessage(msg);
    }
    DECLARE_MESSAGE_MAP()
};
IMPLEMENT_DYNAMIC(CDerivedDlg, CBaseDlg)
BEGIN_MESSAGE_MAP(CDerivedDlg, CBaseDlg)
ON_BN_CLICKED(2, &CDerivedDlg::OnTwo)
ON_BN_CLICKED(3, &CDerivedDlg::OnPump)
ON_NOTIFY(LVN_ITEMCHANGED, 4, &CDerivedDlg::OnItemChanged)
ON_WM_SIZE()
END_MESSAGE_MAP()

class Messages : public test::HostTest {
protected:
    Messages() {
        UseDialog(
            "PUSHBUTTON \"1\", 1, 1,1,20,12\nPUSHBUTTON \"2\", 2, 30,1,20,12\n"
            "PUSHBUTTON \"3\", 3, 60,1,20,12\n"
            "CONTROL \"\", 4, \"SysListView32\", LVS_REPORT | WS_TABSTOP, 1,20,100,50\n");
        EXPECT_TRUE(m_dialog.Create(100));
        m_dialog.ShowWindow(SW_SHOW);
        g_log.clear();
    }
    std::string Press(int id) {
        g_log.clear();
        EXPECT_TRUE(host::PressControl(100, id));
        return g_log;
    }
    CDerivedDlg m_dialog;
};

TEST_F(Messages, MapsAreInherited) {
    EXPECT_EQ(Press(1), "base1 ") << "the base's entry goes before CDialog's own for OK";
    EXPECT_EQ(Press(2), "derived2 ");
    EXPECT_EQ(m_dialog.SendMessage(kAsk, 40, 2), 42);
    g_log.clear();
    for (const UINT id : {9u, 10u, 12u, 13u}) m_dialog.SendMessage(WM_COMMAND, id);
    EXPECT_EQ(g_log, "range10 range12 ");
    g_log.clear();
    m_dialog.MoveWindow(0, 0, 300, 200);
    EXPECT_EQ(g_log, "size300x200 ");
    // A class of the same handlers, but without the derived entries.
    CBaseDlg base;
    ASSERT_TRUE(base.Create(100));
    base.ShowWindow(SW_SHOW);
    EXPECT_EQ(Press(2), "base2 ");
}

TEST_F(Messages, RunTimeClasses) {
    EXPECT_TRUE(m_dialog.IsKindOf(RUNTIME_CLASS(CBaseDlg)));
    EXPECT_TRUE(m_dialog.IsKindOf(RUNTIME_CLASS(CWnd)));
    EXPECT_FALSE(m_dialog.IsKindOf(RUNTIME_CLASS(CButton)));
    EXPECT_STREQ(m_dialog.GetRuntimeClass()->m_lpszClassName, "CDerivedDlg");
    EXPECT_TRUE(m_dialog.GetDlgItem(1)->IsKindOf(RUNTIME_CLASS(CButton)));
    EXPECT_TRUE(m_dialog.GetDlgItem(4)->IsKindOf(RUNTIME_CLASS(CListCtrl)));
    EXPECT_EQ(m_dialog.GetDlgItem(99), nullptr);
}

TEST_F(Messages, NotificationsCarryTheirRecord) {
    CListCtrl& list = *static_cast<CListCtrl*>(m_dialog.GetDlgItem(4));
    list.InsertColumn(0, L"c", LVCFMT_LEFT, 50);
    for (int i = 0; i < 3; ++i) list.InsertItem(i, L"x");
    g_log.clear();
    ASSERT_TRUE(host::SelectRows(100, 4, {1, 3}));
    EXPECT_EQ(g_log, "0:0>2 2:0>2 2:2>3 ");
    g_log.clear();
    ASSERT_TRUE(host::SelectRows(100, 4, {2}));
    EXPECT_EQ(g_log, "0:2>0 2:3>1 1:0>2 2:1>0 1:2>3 ");
    g_log.clear();
    ASSERT_TRUE(host::SelectRows(100, 4, {2}));
    EXPECT_EQ(g_log, "") << "nothing changed";
    list.DeleteItem(1);
    EXPECT_EQ(g_log, "1:3>0 ");
    NMLISTVIEW notice = {{list.m_hWnd, 4, LVN_ITEMCHANGED}, 8, 0, 1, 0, 0, {0, 0}, 0};
    EXPECT_EQ(m_dialog.SendMessage(WM_NOTIFY, 4, reinterpret_cast<LPARAM>(&notice)), 17);
}

// Run under the address sanitizer: the list is gone after the first of several notifications.
TEST_F(Messages, AListMayGoInItsOwnNotification) {
    CListCtrl& list = *static_cast<CListCtrl*>(m_dialog.GetDlgItem(4));
    for (int i = 0; i < 3; ++i) list.InsertItem(i, L"x");
    m_dialog.m_bDestroysOnSelect = true;
    EXPECT_TRUE(host::SelectRows(100, 4, {1, 2, 3}));
    EXPECT_EQ(g_log, "0:0>2 ");
    EXPECT_EQ(m_dialog.m_hWnd, nullptr);
}

TEST_F(Messages, PostedOnesWaitTheirTurn) {
    const HWND button = ::GetDlgItem(m_dialog.m_hWnd, 1);
    ::PostMessage(button, BM_CLICK, 0, 0);
    m_dialog.PostMessage(WM_COMMAND, 2);
    m_dialog.PostMessage(WM_APP);
    EXPECT_EQ(g_log, "");
    MSG msg;
    EXPECT_TRUE(::PeekMessage(&msg, m_dialog.m_hWnd, WM_COMMAND, WM_COMMAND, PM_NOREMOVE));
    EXPECT_EQ(msg.wParam, 2u);
    System().DispatchPending();
    EXPECT_EQ(g_log, "base1 derived2 early ");
    EXPECT_FALSE(::PeekMessage(&msg, nullptr, 0, 0, PM_REMOVE));
    EXPECT_FALSE(::PostMessage(reinterpret_cast<HWND>(9999999), WM_APP, 0, 0));
}

// A pump inside a handler lets other clicks in, itself included.
TEST_F(Messages, PumpsNest) {
    const HWND button = ::GetDlgItem(m_dialog.m_hWnd, 3);
    m_dialog.PostMessage(WM_COMMAND, 1);
    ::PostMessage(button, BM_CLICK, 0, 0);
    m_dialog.PostMessage(WM_COMMAND, 2);
    EXPECT_EQ(Press(3), "[base1 [derived2 ] ] ");
}

TEST_F(Messages, QuitComesLastAndIsPutBack) {
    ::PostQuitMessage(3);
    m_dialog.PostMessage(WM_COMMAND, 1);
    EXPECT_EQ(Press(3), "[base1 ] ");
    MSG msg;
    ASSERT_TRUE(::PeekMessage(&msg, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(msg.message, WM_QUIT);
    EXPECT_EQ(msg.wParam, 3u);
    EXPECT_FALSE(::PeekMessage(&msg, nullptr, 0, 0, PM_REMOVE));
    // It ends a modal loop and stays for the outer one.
    CDialogEx modal(100);
    script.steps = {[] { ::PostQuitMessage(4); }};
    EXPECT_EQ(modal.DoModal(), -1);
    EXPECT_FALSE(::GetMessage(&msg, nullptr, 0, 0));
    EXPECT_EQ(msg.wParam, 4u);
}

// What was meant for a window that has gone is not delivered to another.
TEST_F(Messages, WindowsThatAreGone) {
    CBaseDlg other;
    ASSERT_TRUE(other.Create(100));
    const HWND handle = other.m_hWnd;
    int inputs = 0;
    ::PostMessage(handle, WM_COMMAND, 2, 0);
    System().PostInput(handle, [&] { ++inputs; });
    System().PostInput(m_dialog.m_hWnd, [&] { ++inputs; });
    other.DestroyWindow();
    System().DispatchPending();
    EXPECT_EQ(g_log, "");
    EXPECT_EQ(inputs, 1);
    EXPECT_EQ(::SendMessage(handle, WM_COMMAND, 2, 0), 0);
    EXPECT_FALSE(::DestroyWindow(handle));
    EXPECT_EQ(CWnd::FromHandle(handle), nullptr);
    // A user cannot reach a window behind a modal one, even with a click from before.
    m_dialog.EnableWindow(FALSE);
    System().PostInput(m_dialog.m_hWnd, [&] { ++inputs; });
    System().DispatchPending();
    EXPECT_EQ(inputs, 1);
    m_dialog.EnableWindow(TRUE);
}

TEST_F(Messages, TextsOfTheModule) {
    const std::string path = test::ScratchFolder() + "texts.rc";
    std::ofstream(path) << "STRINGTABLE\nBEGIN\n 7 \"seven %d\"\nEND\n";
    host::SetResourceScript(AfxGetInstanceHandle(), host::Widen(path));
    const CAcModuleResourceOverride resources;
    CString text(_T("before"));
    EXPECT_TRUE(text.LoadString(7));
    EXPECT_EQ(text, _T("seven %d"));
    EXPECT_FALSE(text.LoadString(8));
    EXPECT_EQ(text, _T("seven %d"));
    AfxMessageBox(7u);
    EXPECT_EQ(script.boxes, std::vector<std::string>{"seven %d"});
    std::remove(path.c_str());
}

TEST_F(Messages, ResourcesOfTheModule) {
    const HINSTANCE before = AfxGetResourceHandle();
    AfxSetResourceHandle(reinterpret_cast<HINSTANCE>(1));
    {
        const CAcModuleResourceOverride resources;
        // The object lies in this program, so its resources are the module's.
        EXPECT_EQ(AfxGetResourceHandle(), AfxGetInstanceHandle());
        CDialogEx dialog;
        EXPECT_TRUE(dialog.Create(100));
    }
    EXPECT_EQ(AfxGetResourceHandle(), reinterpret_cast<HINSTANCE>(1));
    EXPECT_FALSE(CDialogEx().Create(100));
    EXPECT_EQ(reports.size(), 1u);
    AfxSetResourceHandle(before);
    // Without another place the script lies in res/ beside the module.
    host::SetResourceScript(AfxGetInstanceHandle(), L"");
    EXPECT_FALSE(CDialogEx().Create(100));
    std::string report = reports.back();
    std::replace(report.begin(), report.end(), '\\', '/');
    EXPECT_THAT(report, ::testing::HasSubstr("/bin/res/mfc_tests.rc: the resource script"));
    HMODULE module = nullptr;
    EXPECT_TRUE(
        ::GetModuleHandleEx(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                            reinterpret_cast<LPCTSTR>(&g_log), &module));
    EXPECT_EQ(module, AfxGetInstanceHandle());
    wchar_t path[MAX_PATH];
    EXPECT_GT(::GetModuleFileName(module, path, MAX_PATH), 0u);
    EXPECT_NE(std::wstring(path).find(L"mfc_tests"), std::wstring::npos);
}

}  // namespace
