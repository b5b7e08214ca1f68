// Keys and focus while a dialog works or hides, its fields with commas, and its frame.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "StdAfx.h"

#include "DialogLayout.h"
#include "HideScope.h"
#include "ModuleDialogs.h"
#include "NumberFields.h"
#include "RunWatch.h"
#include "host/base/format.h"
#include "host/ed/editor_services.h"
#include "host/mfc/dialog_probe.h"
#include "host/mfc/host_frame.h"
#include "host/mfc/resources.h"
#include "host/mfc/window_system.h"
#include "res/resource.h"
#include "rxmfcapi.h"
#include "support/scripted_input.h"

namespace {

class DialogKeys : public ::testing::Test, public host::UserAnswers {
protected:
    DialogKeys() {
        host::WindowSystem::Get().SetAnswers(this);
        host::MakeHostWindows();
        host::SetResourceScript(AfxGetInstanceHandle(), L"plugin/ui/res/QZEncircleLine.rc");
        host::Session::Get().New();
    }
    ~DialogKeys() override {
        host::Session::Get().CloseAll();
        host::CloseHostWindows();
        host::WindowSystem::Get().SetAnswers(nullptr);
    }

    int box(const host::BoxRequest& request) override {
        boxes.push_back(host::Narrow(request.text));
        return IDOK;
    }
    std::optional<std::wstring> nextFile(const host::ChooserRequest&) override { return {}; }
    std::optional<std::wstring> nextFolder(const host::ChooserRequest&) override { return {}; }
    bool act() override { return false; }

    static CDialog& OpenDialog() {
        ShowCalDialog();
        return *static_cast<CDialog*>(CWnd::FromHandlePermanent(host::LiveDialogs().at(0).handle));
    }
    static void Press(WPARAM key) {
        ::PostMessage(acedGetAcadFrame()->GetSafeHwnd(), WM_KEYDOWN, key, 0);
    }
    // The keys that wait, in their order; the queue is empty afterwards.
    static std::string WaitingKeys() {
        std::string keys;
        MSG msg;
        while (::PeekMessage(&msg, nullptr, WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE)) {
            if (msg.message != WM_KEYDOWN) return keys + "quit";
            keys += static_cast<char>(msg.wParam);
        }
        return keys;
    }

    test::ScriptedInput input;
    std::vector<std::string> boxes;
};

TEST_F(DialogKeys, EscapeAloneStopsARunAndOtherKeysAreKept) {
    for (const bool isStopped : {false, true}) {
        SCOPED_TRACE(isStopped);
        {
            CRunWatch watch;
            EXPECT_TRUE(watch.MayGoOn("pass", 0, 9));
            Press('A');
            if (isStopped) Press(VK_ESCAPE);
            Press('B');
            EXPECT_EQ(!isStopped, watch.MayGoOn("pass", 1, 9));
            EXPECT_EQ(!isStopped, watch.MayBreak(9, 9)) << "stopped is stopped";
            EXPECT_EQ(isStopped, watch.IsStopped());
            EXPECT_EQ("", WaitingKeys()) << "they wait for the end of the run";
        }
        EXPECT_EQ("AB", WaitingKeys());
    }
}

// The host's own loop has to hear that it is to end.
TEST_F(DialogKeys, AProgramThatEndsStopsARun) {
    CRunWatch watch;
    ::PostQuitMessage(3);
    EXPECT_FALSE(watch.MayGoOn("pass", 0, 9));
    EXPECT_EQ("quit", WaitingKeys());
}

TEST_F(DialogKeys, AHiddenDialogGivesTheFocusAwayAndTakesItBack) {
    CDialog& dialog = OpenDialog();
    const HWND window = dialog.GetSafeHwnd(), field = ::GetDlgItem(window, IDC_CAL_ARC_PRECISION);
    ASSERT_NE(nullptr, field);
    ::SetFocus(field);
    const unsigned posts = host::PromptPosts();
    {
        const CHideScope hidden(dialog);
        EXPECT_FALSE(::IsWindowVisible(window));
        EXPECT_EQ(acedGetAcadDwgView()->GetSafeHwnd(), ::GetFocus());
    }
    EXPECT_TRUE(::IsWindowVisible(window));
    EXPECT_EQ(field, ::GetFocus());
    {
        const CHideScope hidden(dialog);
        ::DestroyWindow(window);
    }
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(posts + 2, host::PromptPosts());
}

TEST_F(DialogKeys, CommasAreRefusedWithTheFieldNamed) {
    CDialog& dialog = OpenDialog();
    const struct {
        int field;
        const ACHAR* text;
        const char* box;
    } rows[] = {
        {IDC_CAL_POINT_TOL, _T("0,001"), "点公差：小数点请用“.”"},
        {IDC_CAL_SIDE_LENGTH, _T("1．5"), "左右识别长度：小数点请用“.”"},
        {IDC_CAL_ARC_PRECISION, _T("0。5"), "圆弧离散精度：小数点请用“.”"},
        {IDC_CAL_LINE_TOL, _T("1e-3"), ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.box);
        CString before;
        dialog.GetDlgItemText(row.field, before);
        dialog.SetDlgItemText(row.field, row.text);
        boxes.clear();
        const bool isRefused = row.box[0] != 0;
        EXPECT_EQ(isRefused, RefuseCommas(dialog));
        EXPECT_EQ(isRefused ? std::vector<std::string>{row.box} : std::vector<std::string>(),
                  boxes);
        if (isRefused) {
            EXPECT_EQ(dialog.GetDlgItem(row.field)->GetSafeHwnd(), ::GetFocus());
        }
        dialog.SetDlgItemText(row.field, before);
    }
}

TEST_F(DialogKeys, ControlsFollowTheFrameAndComeBack) {
    CDialog& dialog = OpenDialog();
    CDialogLayout layout;
    MINMAXINFO info = {};
    layout.Limit(info);
    EXPECT_EQ(0, info.ptMinTrackSize.x) << "nothing is known before the start";
    constexpr int kNone = 9999;
    layout.Start(dialog, {{IDC_CAL_POINT_TOL, true, false, false},
                          {IDC_CAL_LINE_TOL, false, true, true},
                          {kNone, true, true, true}});
    layout.Limit(info);
    CRect window, client;
    dialog.GetWindowRect(&window);
    dialog.GetClientRect(&client);
    EXPECT_EQ(window.Width(), info.ptMinTrackSize.x);
    EXPECT_EQ(window.Height(), info.ptMinTrackSize.y);
    const auto placeOf = [&dialog](int control) {
        CRect rect;
        dialog.GetDlgItem(control)->GetWindowRect(&rect);
        return rect;
    };
    const CRect moved = placeOf(IDC_CAL_POINT_TOL), grown = placeOf(IDC_CAL_LINE_TOL);
    layout.Resize(dialog, client.Width() + 30, client.Height() + 20);
    EXPECT_EQ(moved.left + 30, placeOf(IDC_CAL_POINT_TOL).left);
    EXPECT_EQ(moved.top, placeOf(IDC_CAL_POINT_TOL).top);
    EXPECT_EQ(grown.Width() + 30, placeOf(IDC_CAL_LINE_TOL).Width());
    EXPECT_EQ(grown.Height() + 20, placeOf(IDC_CAL_LINE_TOL).Height());
    layout.Resize(dialog, client.Width(), client.Height());
    EXPECT_TRUE(moved == placeOf(IDC_CAL_POINT_TOL) && grown == placeOf(IDC_CAL_LINE_TOL));
}

}  // namespace
