// Answers to prompts from the mouse and the command line.
#pragma once

#include <functional>
#include <optional>

#include "apps/qzhost/desktop/CommandLine.h"
#include "apps/qzhost/view/DrawingView.h"
#include "apps/qzhost/view/PointAid.h"
#include "apps/qzhost/words/HostWords.h"
#include "host/ed/user_input.h"
#include "host/mfc/qt/qt_window_driver.h"

namespace app {

// While a prompt waits, the host's messages and Qt's events go on.
//
// Entities are picked one by one, or by a window whose corners are clicked where nothing lies, from
// left to right what is inside, from right to left what is touched too; with Shift they are taken
// out again. "all" takes everything, Enter or the right button ends, Escape cancels. Points are
// clicked, with object snap, ortho and polar, or typed.
class DesktopInput : public host::UserInput {
public:
    DesktopInput(DrawingView& view, CommandLine& line, host::QtWindowDriver& driver)
        : m_view(view), m_line(line), m_driver(driver) {}

    bool IsAsking() const { return m_kind != kNothing; }
    // An answer was given, and what asked has not gone on yet.
    bool IsAnswered() const { return IsAsking() && m_isDone; }
    // A text is asked that may hold blanks.
    bool TakesBlanks() const { return m_kind == kText && m_takesBlanks; }
    // Each returns false when nothing is asked that it could answer.
    bool Click(const AcGePoint3d& point, bool takesOut = false);
    bool Enter(const std::wstring& text);
    // With nothing asked a run that goes on may look for the key.
    bool Escape();
    // Takes everything, or nothing, into the set picked beforehand; with nothing asked only.
    void PickAllFirst();
    void ForgetPickFirst();
    // Shows the set picked beforehand as the document has it now.
    void ShowPickFirst();
    // Ends every prompt, as the program ends.
    void GiveUp();
    // Shows what a click at the pointer's place would give.
    void Hover(const AcGePoint3d& point);
    // The next point to snap to at the same place. False when no point is asked.
    bool CycleSnap();

    PointAid& Aid() { return m_aid; }

    // Called when a prompt begins and ends.
    std::function<void()> onChange;
    std::function<void()> onQueued;
    // The set picked beforehand is another one.
    std::function<void(const std::vector<AcDbObjectId>&)> onPicked;
    // A grip of it was clicked, with nothing asked.
    std::function<void(const AcGePoint3d&)> onGrip;
    // Outside of commands a selection was followed by a point: a tool and its centre.
    std::function<void(const std::vector<AcDbObjectId>&, const AcGePoint3d&)> onToolPicked;
    std::function<host::ClosingChoice(const std::vector<AcApDocument*>&)> onClosing;
    std::function<std::wstring(const AcApDocument&)> onNameForSaving;

    host::SelectionAnswer Select() override;
    host::Answer Point(const host::PointRequest& request) override;
    host::Answer Text(bool spacesAllowed) override;
    host::ClosingChoice Closing(const std::vector<AcApDocument*>& documents) override;
    std::wstring NameForSaving(const AcApDocument& document) override;
    void Print(const std::wstring& text) override {
        m_line.Output().Print(InLanguage(QString::fromStdWString(text)).toStdWString());
    }
    void UpdateDisplay() override { m_view.Refresh(); }
    void Queued() override {
        if (onQueued) onQueued();
    }

private:
    // Answers what is asked with Escape; false when nothing is.
    bool Cancel();
    enum Kind { kNothing, kSelection, kPoint, kText };
    void SayLine(const std::wstring& line);
    void Wait(Kind kind);
    void Done() { m_isDone = true; }
    void Pick(const AcGePoint3d& point, bool takesOut);
    void Add(const std::vector<AcDbObjectId>& ids);
    void TakeOut(const std::vector<AcDbObjectId>& ids);
    // Picking with nothing asked: the set that the next command takes.
    void SetPickFirst(std::vector<AcDbObjectId> ids);
    void EnterSelection(const std::wstring& text);
    void EnterPoint(const std::wstring& text);
    Aim AimAt(const AcGePoint3d& pointer);
    const AcGePoint3d* Base() const { return m_request == nullptr ? nullptr : m_request->base; }

    DrawingView& m_view;
    CommandLine& m_line;
    host::QtWindowDriver& m_driver;
    PointAid m_aid;
    Kind m_kind = kNothing;
    bool m_isDone = false;
    bool m_isOver = false;
    bool m_takesBlanks = false;
    bool m_takesOut = false;  // "r" was typed: what is picked leaves the selection
    bool m_isAll = false;     // everything, and nothing taken out again
    const host::PointRequest* m_request = nullptr;  // while a point is asked
    host::Answer m_answer;
    host::SelectionAnswer m_selection;
    std::vector<AcDbObjectId> m_picked;
    std::vector<AcDbObjectId> m_lastSelected;  // by the last selection that was asked
    std::optional<AcGePoint3d> m_corner;
    AcGePoint3d m_pointer;
};

}  // namespace app
