// Answers in place of a person: a script that presses buttons and fills in boxes.
#pragma once

#include <optional>
#include <string>

#include "host/mfc/window_driver.h"

namespace host {

// Implemented by the script runner, installed by WindowSystem::SetAnswers. Goes before the display.
class UserAnswers {
public:
    virtual ~UserAnswers() = default;

    // A message box is shown: the number of the button pressed (IDOK and so on).
    virtual int box(const BoxRequest& request) = 0;
    // A menu pops up: the item that is chosen, 0 for none.
    virtual int menu(const MenuRequest&) { return 0; }
    // A chooser is shown: the path, or nothing when it is cancelled.
    virtual std::optional<std::wstring> nextFile(const ChooserRequest& request) = 0;
    virtual std::optional<std::wstring> nextFolder(const ChooserRequest& request) = 0;

    // A modal dialog waits for its user: does the next thing of the script, by dialog_probe.h.
    // Called again and again until the dialog ends. False when the script has nothing left; the
    // dialog is then cancelled and a line in the log says so.
    virtual bool act() = 0;

    // A window was shown anew in the middle of a run (UpdateWindow).
    virtual void updated() {}
};

}  // namespace host
