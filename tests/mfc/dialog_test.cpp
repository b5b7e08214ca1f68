// The life of dialogs: making, modal loop, ends of every kind, keys.
#include <memory>

#include "adscodes.h"
#include "mfc/support.h"
#include "rxmfcapi.h"

namespace {

std::vector<std::string>& Log() {
    static std::vector<std::string> log;
    return log;
}
std::vector<std::string> TakeLog() { return std::exchange(Log(), {}); }
typedef std::vector<std::string> Lines;

// Notes what happens to it; buttons: 11 deletes the object, 12 destroys the window, 13 opens a
// modal dialog, 14 ends with 99, 15 closes the host's frame.
class CLoggedDlg : public CDialogEx {
    DECLARE_DYNAMIC(CLoggedDlg)
public:
    explicit CLoggedDlg(CWnd* pParent = nullptr) : CDialogEx(100, pParent) {}
    bool m_bDeletes = false;  // in PostNcDestroy, as modeless dialogs do
    bool m_bDestroysOnCancel = false;
    bool m_bEndsAtOnce = false;
    bool m_bSetsFocus = false;
    INT_PTR m_nInner = 0;

    void OnOK() override {
        Log().push_back("OnOK");
        CDialogEx::OnOK();
    }
    void OnCancel() override {
        Log().push_back("OnCancel");
        if (m_bDestroysOnCancel) {
            DestroyWindow();
        } else {
            CDialogEx::OnCancel();
        }
    }
    BOOL OnInitDialog() override {
        CDialogEx::OnInitDialog();
        Log().push_back("OnInitDialog");
        if (m_bEndsAtOnce) EndDialog(5);
        if (!m_bSetsFocus) return TRUE;
        GetDlgItem(12)->SetFocus();
        return FALSE;
    }
    void PostNcDestroy() override {
        CDialogEx::PostNcDestroy();
        Log().push_back(m_hWnd == nullptr ? "PostNcDestroy" : "PostNcDestroy with a window");
        if (m_bDeletes) delete this;
    }
    void OnDestroy() {
        Log().push_back(::IsWindow(::GetDlgItem(m_hWnd, 11)) ? "OnDestroy" : "OnDestroy too late");
        DestroyWindow();  // under way already: nothing more happens
        CDialogEx::OnDestroy();
    }
    void OnDeleteThis() { delete this; }
    void OnDestroyWindow() { DestroyWindow(); }
    void OnInner() {
        CLoggedDlg inner(this);
        const HWND own = m_hWnd;
        m_nInner = inner.DoModal();
        Log().push_back(::IsWindowEnabled(own) ? "enabled again" : "still disabled");
    }
    void OnEnd() { EndDialog(99); }
    void OnCloseHost() { host::CloseHostWindows(); }
    LRESULT OnKeepFocus(WPARAM, LPARAM) { return m_bSetsFocus; }
    DECLARE_MESSAGE_MAP()
};

IMPLEMENT_DYNAMIC(CLoggedDlg, CDialogEx)

BEGIN_MESSAGE_MAP(CLoggedDlg, CDialogEx)
ON_WM_DESTROY()
ON_MESSAGE(WM_ACAD_KEEPFOCUS, &CLoggedDlg::OnKeepFocus)
ON_BN_CLICKED(11, &CLoggedDlg::OnDeleteThis)
ON_BN_CLICKED(12, &CLoggedDlg::OnDestroyWindow)
ON_BN_CLICKED(13, &CLoggedDlg::OnInner)
ON_BN_CLICKED(14, &CLoggedDlg::OnEnd)
ON_BN_CLICKED(15, &CLoggedDlg::OnCloseHost)
END_MESSAGE_MAP()

constexpr const char* kButtons =
    "EDITTEXT 20, 1,1,50,12\n"
    "PUSHBUTTON \"delete\", 11, 1,20,50,12\nPUSHBUTTON \"destroy\", 12, 60,20,50,12\n"
    "PUSHBUTTON \"inner\", 13, 1,40,50,12\nPUSHBUTTON \"end\", 14, 60,40,50,12\n"
    "PUSHBUTTON \"close host\", 15, 120,40,50,12\n";

class Dialogs : public test::HostTest {
protected:
    Dialogs() {
        UseDialog(kButtons);
        TakeLog();
    }
    // A modeless dialog that deletes itself.
    CLoggedDlg* MakeModeless() {
        auto* const dialog = new CLoggedDlg();
        dialog->m_bDeletes = true;
        EXPECT_TRUE(dialog->Create(100));
        TakeLog();
        return dialog;
    }
};

TEST_F(Dialogs, ModelessFromCreateToDelete) {
    CLoggedDlg* const dialog = new CLoggedDlg(acedGetAcadFrame());
    dialog->m_bDeletes = dialog->m_bDestroysOnCancel = true;
    ASSERT_TRUE(dialog->Create(100, acedGetAcadFrame()));
    EXPECT_EQ(TakeLog(), Lines{"OnInitDialog"});
    EXPECT_FALSE(dialog->IsWindowVisible());
    EXPECT_FALSE(dialog->ShowWindow(SW_SHOW));
    EXPECT_TRUE(dialog->ShowWindow(SW_SHOW));
    EXPECT_TRUE(acedGetAcadFrame()->IsWindowEnabled());
    const HWND handle = dialog->m_hWnd;
    ASSERT_TRUE(host::CloseDialog(100));
    EXPECT_EQ(TakeLog(), (Lines{"OnCancel", "OnDestroy", "PostNcDestroy"}));
    EXPECT_FALSE(::IsWindow(handle));
}

// Without the override the window is only hidden: it lives on and can be shown again.
TEST_F(Dialogs, EndDialogOnlyHidesAModelessOne) {
    CLoggedDlg* const dialog = MakeModeless();
    dialog->ShowWindow(SW_SHOW);
    ASSERT_TRUE(host::CancelDialog(100));
    EXPECT_EQ(TakeLog(), Lines{"OnCancel"});
    EXPECT_TRUE(::IsWindow(dialog->m_hWnd));
    EXPECT_FALSE(dialog->IsWindowVisible());
    EXPECT_FALSE(host::PressControl(100, 14)) << "nobody can press a hidden dialog's button";
    dialog->ShowWindow(SW_SHOW);
    EXPECT_TRUE(host::PressControl(100, 14));
    EXPECT_FALSE(dialog->IsWindowVisible());
    ASSERT_EQ(host::LiveDialogs().size(), 1u);
    EXPECT_FALSE(host::LiveDialogs()[0].isShown);
    dialog->DestroyWindow();
    EXPECT_TRUE(host::LiveDialogs().empty());
}

struct EndCase {
    const char* name;
    std::function<void()> act;
    INT_PTR result;
    Lines log;
};

TEST_F(Dialogs, ModalEnds) {
    const EndCase cases[] = {
        {"Enter presses OK even without such a button",
         [] { host::TypeKey(100, VK_RETURN); },
         IDOK,
         {"OnOK"}},
        {"Escape", [] { host::CancelDialog(100); }, IDCANCEL, {"OnCancel"}},
        {"close box", [] { host::CloseDialog(100); }, IDCANCEL, {"OnCancel"}},
        {"EndDialog in a handler", [] { host::PressControl(100, 14); }, 99, {}},
        {"destroyed by its handler",
         [] { host::PressControl(100, 12); },
         IDCANCEL,
         {"OnDestroy", "PostNcDestroy"}},
        {"destroyed with the frame",
         [] { host::PressControl(100, 15); },
         IDCANCEL,
         {"OnDestroy", "PostNcDestroy"}},
    };
    for (const EndCase& c : cases) {
        SCOPED_TRACE(c.name);
        host::MakeHostWindows();
        acedGetAcadDwgView()->SetFocus();
        const HWND focus = ::GetFocus();
        CLoggedDlg dialog;
        script.steps = {[&] {
                            EXPECT_EQ(TakeLog(), Lines{"OnInitDialog"});
                            EXPECT_FALSE(acedGetAcadFrame()->IsWindowEnabled());
                            EXPECT_TRUE(host::LiveDialogs().at(0).isModal);
                            EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), 20);
                        },
                        c.act};
        EXPECT_EQ(dialog.DoModal(), c.result);
        Lines expected = c.log;
        if (expected.size() < 2) {
            expected.push_back("OnDestroy");
            expected.push_back("PostNcDestroy");
        }
        EXPECT_EQ(TakeLog(), expected);
        EXPECT_EQ(dialog.m_hWnd, nullptr);
        if (acedGetAcadFrame() != nullptr) {
            EXPECT_TRUE(acedGetAcadFrame()->IsWindowEnabled());
            EXPECT_EQ(::GetFocus(), focus) << "the focus goes back";
        }
    }
}

TEST_F(Dialogs, ModalFailures) {
    CLoggedDlg dialog;
    dialog.m_bEndsAtOnce = true;
    EXPECT_EQ(dialog.DoModal(), 5) << "ended while it was made: no loop";
    CDialogEx missing(4711);
    EXPECT_EQ(missing.DoModal(), -1);
    EXPECT_EQ(reports.size(), 1u);
    EXPECT_TRUE(acedGetAcadFrame()->IsWindowEnabled());
    // A script that ends too early does not hang.
    TakeLog();
    reports.clear();
    CLoggedDlg open;
    EXPECT_EQ(open.DoModal(), IDCANCEL);
    EXPECT_EQ(reports, Lines{"Dialog 100 was still open when there was no input left; it is "
                             "cancelled."});
    UseDialog("CONTROL \"\", 1, \"MyGrid\", 0, 1, 1, 10, 10");
    reports.clear();
    EXPECT_FALSE(CDialogEx().Create(100));
    EXPECT_EQ(reports, Lines{"Dialog 100 cannot be made: line 7: there is no window class mygrid"});
    EXPECT_TRUE(host::LiveDialogs().empty());
}

TEST_F(Dialogs, ModalWithinModal) {
    CLoggedDlg outer;
    script.steps = {[] { EXPECT_TRUE(host::PressControl(100, 13)); },
                    // The younger dialog of the same number is the one in front.
                    [&] {
                        const auto live = host::LiveDialogs();
                        ASSERT_EQ(live.size(), 2u);
                        EXPECT_FALSE(live[0].isEnabled);
                        EXPECT_TRUE(live[1].isEnabled);
                        EXPECT_TRUE(host::PressControl(100, 14));
                    },
                    [] { EXPECT_TRUE(host::CancelDialog(100)); }};
    EXPECT_EQ(outer.DoModal(), IDCANCEL);
    EXPECT_EQ(outer.m_nInner, 99);
    EXPECT_THAT(TakeLog(), ::testing::Contains("enabled again"));
}

// Run under the address sanitizer: nothing may touch the object behind its handler.
TEST_F(Dialogs, DeletedInTheirOwnHandlers) {
    for (const int button : {11, 12}) {
        CLoggedDlg* const dialog = MakeModeless();
        dialog->m_bDeletes = button == 12;
        dialog->ShowWindow(SW_SHOW);
        EXPECT_TRUE(host::PressControl(100, button));
        EXPECT_TRUE(host::LiveDialogs().empty());
    }
    // By the frame that they belong to, from a handler of one of them.
    MakeModeless()->ShowWindow(SW_SHOW);
    MakeModeless()->ShowWindow(SW_SHOW);
    EXPECT_TRUE(host::PressControl(100, 15));
    EXPECT_EQ(TakeLog(), (Lines{"OnDestroy", "PostNcDestroy", "OnDestroy", "PostNcDestroy"}));
    EXPECT_EQ(acedGetAcadFrame(), nullptr);
    EXPECT_EQ(acedGetAcadDwgView(), nullptr);
    // A host that has ended can still be asked.
    CLoggedDlg late;
    EXPECT_TRUE(late.Create(100));
}

// A dialog on the stack takes its window with it.
TEST_F(Dialogs, AnObjectThatEndsDestroysItsWindow) {
    HWND handle = nullptr;
    {
        CLoggedDlg dialog;
        ASSERT_TRUE(dialog.Create(100));
        handle = dialog.m_hWnd;
    }
    EXPECT_FALSE(::IsWindow(handle));
}

TEST_F(Dialogs, FocusAtTheStart) {
    CLoggedDlg* const usual = MakeModeless();
    usual->ShowWindow(SW_SHOW);
    EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), 20);
    usual->DestroyWindow();
    CLoggedDlg* const own = new CLoggedDlg();
    own->m_bDeletes = own->m_bSetsFocus = true;
    ASSERT_TRUE(own->Create(100));
    own->ShowWindow(SW_SHOW);
    EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), 12) << "OnInitDialog answered FALSE";
    // Hiding gives the keys to the drawing; showing again to the same control.
    own->ShowWindow(SW_HIDE);
    EXPECT_EQ(CWnd::GetFocus(), acedGetAcadDwgView());
    own->ShowWindow(SW_SHOW);
    EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), 12);
    own->DestroyWindow();
}

TEST_F(Dialogs, KeepFocusIsAsked) {
    for (const bool keeps : {false, true}) {
        CLoggedDlg* const dialog = MakeModeless();
        dialog->ShowWindow(SW_SHOW);
        dialog->m_bSetsFocus = keeps;  // the answer
        host::PointerLeft(dialog->m_hWnd);
        EXPECT_EQ(CWnd::GetFocus() == acedGetAcadDwgView(), !keeps);
        dialog->DestroyWindow();
    }
}

struct KeyCase {
    const char* name;
    std::vector<UINT> keys;  // VK_SHIFT before a key: with it
    int focus;
};

TEST_F(Dialogs, KeysMoveTheFocus) {
    UseDialog(
        "EDITTEXT 20, 1,1,50,12\n"
        "CONTROL \"a\", 21, \"Button\", BS_AUTORADIOBUTTON | WS_GROUP | WS_TABSTOP, 1,20,20,12\n"
        "CONTROL \"b\", 22, \"Button\", BS_AUTORADIOBUTTON, 30,20,20,12\n"
        "CONTROL \"c\", 23, \"Button\", BS_AUTORADIOBUTTON | WS_DISABLED, 60,20,20,12\n"
        "EDITTEXT 24, 1,40,50,12, WS_DISABLED | WS_GROUP\nEDITTEXT 25, 1,60,50,12\n"
        "PUSHBUTTON \"hidden\", 26, 1,80,20,12, NOT WS_VISIBLE\n");
    const KeyCase cases[] = {
        {"tab", {VK_TAB}, 21},
        {"tab skips what is disabled", {VK_TAB, VK_TAB}, 25},
        {"tab goes round", {VK_TAB, VK_TAB, VK_TAB}, 20},
        {"back", {VK_SHIFT, VK_TAB}, 25},
        {"arrow in a group", {VK_TAB, VK_DOWN}, 22},
        {"arrow goes round", {VK_TAB, VK_RIGHT, VK_RIGHT}, 21},
        {"back to the checked one", {VK_TAB, VK_DOWN, VK_TAB, VK_SHIFT, VK_TAB}, 22},
    };
    for (const KeyCase& c : cases) {
        SCOPED_TRACE(c.name);
        CDialogEx dialog;
        ASSERT_TRUE(dialog.Create(100));
        dialog.ShowWindow(SW_SHOW);
        for (const UINT key : c.keys) {
            if (key == VK_SHIFT) {
                System().SetShiftDown(true);
                continue;
            }
            ASSERT_TRUE(host::TypeKey(100, key));
            System().SetShiftDown(false);
        }
        EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), c.focus);
        // An arrow checks what it reaches.
        if (c.focus == 22) {
            EXPECT_EQ(dialog.IsDlgButtonChecked(22), 1u);
        }
    }
}

TEST_F(Dialogs, ReturnPressesTheButtonWithTheFocusElseTheDefaultOne) {
    UseDialog(
        "EDITTEXT 20, 1,1,50,12\nPUSHBUTTON \"x\", 14, 1,20,50,12\n"
        "DEFPUSHBUTTON \"ok\", IDOK, 1,40,50,12\nPUSHBUTTON \"no\", IDCANCEL, 1,60,50,12\n");
    for (const auto& [focus, result] : {std::pair(20, IDOK), {14, 99}, {IDCANCEL, IDCANCEL}}) {
        CLoggedDlg dialog;
        script.steps = {[focus = focus] {
            ::SetFocus(::GetDlgItem(host::LiveDialogs().at(0).handle, focus));
            host::TypeKey(100, VK_RETURN);
        }};
        EXPECT_EQ(dialog.DoModal(), result);
    }
    // A disabled Cancel button blocks Escape and the close box; a disabled default one Enter.
    CLoggedDlg dialog;
    script.steps = {[] {
        const HWND handle = host::LiveDialogs().at(0).handle;
        ::EnableWindow(::GetDlgItem(handle, IDCANCEL), FALSE);
        ::EnableWindow(::GetDlgItem(handle, IDOK), FALSE);
        host::CancelDialog(100);
        host::CloseDialog(100);
        host::TypeKey(100, VK_RETURN);
        EXPECT_EQ(host::LiveDialogs().size(), 1u);
        host::PressControl(100, 14);
    }};
    EXPECT_EQ(dialog.DoModal(), 99);
}

TEST_F(Dialogs, CentredOnTheirOwner) {
    CLoggedDlg* const dialog = MakeModeless();
    CRect frame;
    CRect own;
    acedGetAcadFrame()->GetWindowRect(frame);
    dialog->GetWindowRect(own);
    EXPECT_EQ(own.CenterPoint(), frame.CenterPoint());
    dialog->MoveWindow(3, 4, own.Width(), own.Height());
    dialog->CenterWindow();
    CRect again;
    dialog->GetWindowRect(again);
    EXPECT_EQ(again, own);
    dialog->DestroyWindow();
}

}  // namespace
