// A host without a display, a script in place of its user, and dialogs made from a line of text.
#pragma once

#include <gmock/gmock.h>

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "afxcmn.h"
#include "afxdialogex.h"
#include "afxdlgs.h"
#include "host/base/format.h"
#include "host/mfc/dialog_probe.h"
#include "host/mfc/host_frame.h"
#include "host/mfc/resources.h"

namespace test {

inline std::string Narrow(const std::wstring& text) { return host::Narrow(text); }
inline std::string Narrow(const CString& text) { return host::Narrow(text.GetString()); }

// Does its steps one after the other whenever a modal dialog waits; notes every box and chooser.
class Script : public host::UserAnswers {
public:
    std::deque<std::function<void()>> steps;
    std::deque<std::wstring> paths;  // "" cancels
    std::deque<int> buttons;         // of boxes; IDOK when there are none left
    std::vector<std::string> boxes;
    std::vector<host::ChooserRequest> choosers;

    int box(const host::BoxRequest& request) override {
        boxes.push_back(Narrow(request.text));
        if (buttons.empty()) return IDOK;
        const int button = buttons.front();
        buttons.pop_front();
        return button;
    }
    std::optional<std::wstring> nextFile(const host::ChooserRequest& request) override {
        choosers.push_back(request);
        if (paths.empty()) return {};
        const std::wstring path = paths.front();
        paths.pop_front();
        return path.empty() ? std::optional<std::wstring>() : path;
    }
    std::optional<std::wstring> nextFolder(const host::ChooserRequest& request) override {
        return nextFile(request);
    }
    bool act() override {
        if (steps.empty()) return false;
        const std::function<void()> step = steps.front();
        steps.pop_front();
        step();
        return true;
    }
};

// Leaves no window behind: each test begins with a fresh frame.
class HostTest : public ::testing::Test {
protected:
    HostTest() {
        System().SetAnswers(&script);
        System().SetReport([this](const std::wstring& line) { reports.push_back(Narrow(line)); });
        host::MakeHostWindows();
    }
    ~HostTest() override {
        EXPECT_TRUE(script.steps.empty()) << "steps that nobody asked for";
        host::CloseHostWindows();
        EXPECT_EQ(System().TopLevelWindows().size(), 0u) << "windows left";
        System().SetAnswers(nullptr);
        System().SetReport([](const std::wstring&) {});
    }

    static host::WindowSystem& System() { return host::WindowSystem::Get(); }

    // Makes the statements the body of dialog 100 of the program's own resources.
    void UseDialog(const std::string& statements,
                   const std::string& style = "WS_POPUP | WS_CAPTION | WS_SYSMENU");
    // The module's own script.
    static void UseModuleScript() {
        host::SetResourceScript(AfxGetInstanceHandle(), L"plugin/ui/res/QZEncircleLine.rc");
    }

    Script script;
    std::vector<std::string> reports;
};

}  // namespace test
