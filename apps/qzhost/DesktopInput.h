// Answers to prompts from the mouse and the command line.
#pragma once

#include <functional>
#include <optional>

#include "apps/qzhost/CommandLine.h"
#include "apps/qzhost/DrawingView.h"
#include "host/ed/user_input.h"
#include "host/mfc/qt/qt_window_driver.h"

namespace app {

// While a prompt waits, the host's messages and Qt's events go on.
//
// Entities are picked one by one, or by a window whose corners are clicked where nothing lies, from
// left to right what is inside, from right to left what is touched too. "all" takes everything,
// Enter or the right button ends, Escape cancels. Points are clicked or typed as x,y.
class DesktopInput : public host::UserInput {
public:
    DesktopInput(DrawingView& view, CommandLine& line, host::QtWindowDriver& driver)
        : m_view(view), m_line(line), m_driver(driver) {}

    bool IsAsking() const { return m_kind != kNothing; }
    // Each returns false when nothing is asked that it could answer.
    bool Click(const AcGePoint3d& point);
    bool Enter(const std::wstring& text);
    bool Escape();
    // Ends every prompt, as the program ends.
    void GiveUp();

    // Called when a prompt begins and ends.
    std::function<void()> onChange;

    host::SelectionAnswer Select() override;
    host::Answer Point(const AcGePoint3d* base) override;
    host::Answer Text(bool spacesAllowed) override;
    void Print(const std::wstring& text) override { m_line.Output().Print(text); }
    void UpdateDisplay() override { m_view.Refresh(); }

private:
    enum Kind { kNothing, kSelection, kPoint, kText };
    void Wait(Kind kind);
    void Done() { m_isDone = true; }
    void Pick(const AcGePoint3d& point);
    void Add(const std::vector<AcDbObjectId>& ids);

    DrawingView& m_view;
    CommandLine& m_line;
    host::QtWindowDriver& m_driver;
    Kind m_kind = kNothing;
    bool m_isDone = false;
    bool m_isOver = false;
    host::Answer m_answer;
    host::SelectionAnswer m_selection;
    std::vector<AcDbObjectId> m_picked;
    std::optional<AcGePoint3d> m_corner;
};

}  // namespace app
