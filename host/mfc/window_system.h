// All windows of the host: handles, focus, messages. One per process, for one thread.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/mfc/user_answers.h"
#include "host/mfc/window.h"
#include "host/mfc/window_driver.h"

namespace host {

// Handlers run inside nearly every call here and may destroy any window; so nothing keeps a Window
// across one, only its handle.
class WindowSystem {
public:
    static WindowSystem& Get();  // the only one

    // --- who shows, who answers, who reports ---
    // Null: no display. A new driver is told of the windows there are. Kept, not owned.
    void SetDriver(WindowDriver* driver);
    WindowDriver& Driver() const { return *m_driver; }
    // Null: nobody. Kept, not owned.
    void SetAnswers(UserAnswers* answers) { m_answers = answers; }
    UserAnswers* Answers() const { return m_answers; }
    // Where messages to whoever runs the host go; standard error by default.
    void SetReport(std::function<void(const std::wstring&)> report) {
        m_report = std::move(report);
    }
    void Report(const std::wstring& line) const { m_report(line); }

    // --- windows ---
    Window* Find(HWND handle) const;                // null for one that is gone
    Window& Make(WindowKind kind, Window* parent);  // known to nobody but the caller as yet
    // Makes a window that is complete known to the display.
    void Announce(const Window& window) { m_driver->Created(window); }
    // Owned windows first; then WM_DESTROY to it and its children, WM_NCDESTROY to the children and
    // to it. False when there is no such window, or it is being destroyed already.
    bool Destroy(HWND handle);
    // In the order in which they were made.
    std::vector<HWND> TopLevelWindows() const;

    bool Show(HWND handle, bool show);      // whether it was shown before
    bool Enable(HWND handle, bool enable);  // whether it was disabled before
    // The previous holder; null, and nothing changed, when the window cannot take it.
    HWND SetFocus(HWND handle);
    HWND Focus() const { return m_focus; }  // null: no window has it
    // Gives the focus to the control that had it last.
    void Activate(HWND handle);
    void Changed(const Window& window, WindowChange change) const {
        m_driver->Changed(window, change);
    }

    // --- messages ---
    // calls the window's procedure at once
    LRESULT Send(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);
    bool Post(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);  // false for no window
    // What a user did to a window; runs when its turn comes, unless the window is gone or disabled
    // by then.
    void PostInput(HWND handle, std::function<void()> input);
    void PostQuit(int code);  // WM_QUIT behind everything that waits
    // The next message of a window (null: of any) within a range (0, 0: all).
    bool Take(MSG& message, HWND handle, UINT first, UINT last, bool remove);
    LRESULT Dispatch(const MSG& message);  // to the window that it names
    // Handles everything that waits.
    void DispatchPending();
    // Lets the script or the display go on; false when neither can.
    bool WaitForInput();

    bool IsShiftDown() const { return m_isShiftDown; }  // as the driver or a script says
    void SetShiftDown(bool down) { m_isShiftDown = down; }

private:
    WindowSystem();
    void SendToChildren(HWND handle, UINT message);
    void Remove(HWND handle);     // from the list, at the end of its life
    void LoseFocus(HWND handle);  // gives it to the owner, or to nobody

    WindowDriver m_noDisplay;
    WindowDriver* m_driver = &m_noDisplay;
    UserAnswers* m_answers = nullptr;
    std::function<void(const std::wstring&)> m_report;
    std::map<std::uintptr_t, std::unique_ptr<Window>> m_windows;  // by handle, in order of making
    std::uintptr_t m_lastHandle = 0;
    HWND m_focus = nullptr;
    std::deque<MSG> m_queue;
    std::unordered_map<WPARAM, std::function<void()>> m_inputs;  // of the queue's input messages
    WPARAM m_lastInput = 0;
    bool m_isQuitting = false;
    int m_quitCode = 0;
    bool m_isShiftDown = false;
};

// Message behind PostInput: wParam is the number of the input.
constexpr UINT kInputMessage = WM_APP - 1;

// The part of a window's procedure that no object has overridden (window_procedures.cpp).
LRESULT DefaultProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);

// Selects exactly these rows, as a user does; rows count from 0.
void SelectListRows(HWND list, const std::vector<int>& rows);
// Tells the parent that a row was clicked twice; -1: beside the rows.
void DoubleClickListRow(HWND list, int row);
// Pulls a window to a size in pixels as far as it lets itself be pulled. The window may be gone
// afterwards.
void PullToSize(HWND window, int width, int height);
// Puts a text into an edit box, as a user does.
void TypeText(HWND edit, const std::wstring& text);
// Moves the focus to the next or previous control of a dialog.
void MoveDialogFocus(HWND dialog, bool backwards);

}  // namespace host
