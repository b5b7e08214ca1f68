// Dialogs as a script drives them: by resource numbers, as a person would, so that what a person
// cannot do (a disabled button, a dialog behind a modal one) is refused.
//
// Every operation may run handlers; press returns only when they are done, and a handler that opens
// a modal dialog lets UserAnswers::act go on with the script meanwhile.
#pragma once

#include <string>
#include <vector>

#include "host/mfc/window_system.h"

namespace host {

struct ProbeResult {
    bool ok = true;
    std::wstring reason;  // why not
    explicit operator bool() const { return ok; }
};

struct LiveDialog {
    HWND handle;
    int id;  // of its template
    std::wstring title;
    bool isShown;
    bool isEnabled;
    bool isModal;
};

// Every dialog that exists, hidden ones included: what is left after the last close is a leak.
std::vector<LiveDialog> LiveDialogs();

// Clicks a push button, check box or radio button. A hidden button may be pressed too: hidden
// entries of a dialog can be tried out this way.
ProbeResult PressControl(int dialog, int control);
// Types into an edit box; "0" or "1" (or "2") for a check box, "1" for a radio button.
ProbeResult SetControl(int dialog, int control, const std::wstring& value);
// Text of an edit box, static text or push button; state of a check box or radio button; position
// of a progress bar.
ProbeResult GetControl(int dialog, int control, std::wstring& value);

ProbeResult ListHeaders(int dialog, int list, std::vector<std::wstring>& texts);
ProbeResult ListRows(int dialog, int list, std::vector<std::vector<std::wstring>>& rows);
// Rows count from 1; exactly these are selected afterwards.
ProbeResult SelectRows(int dialog, int list, const std::vector<int>& rows);
ProbeResult SelectedRows(int dialog, int list, std::vector<int>& rows);

// A double click on a row.
ProbeResult DoubleClickRow(int dialog, int list, int row);
// The right button on a row, which is selected by it unless it already was; the menu that comes is
// UserAnswers' to answer.
ProbeResult RightClickRow(int dialog, int list, int row);
// Scrolls until the row is shown.
ProbeResult ScrollToRow(int dialog, int list, int row);
// The row shown topmost.
ProbeResult TopRow(int dialog, int list, int& row);
// Pulls the frame of the dialog; refused when that is fixed.
ProbeResult ResizeDialog(int dialog, int width, int height);
// Place and size of a control in its dialog, in pixels.
ProbeResult PlaceOf(int dialog, int control, RECT& place);

// The close box in the caption; refused without one.
ProbeResult CloseDialog(int dialog);
// The Escape key.
ProbeResult CancelDialog(int dialog);
// Any key of the dialog keyboard: VK_RETURN, VK_TAB ...
ProbeResult TypeKey(int dialog, UINT key);

// A picture of all shown windows as PNG; refused without a display.
ProbeResult SaveScreenshot(const std::wstring& path);

}  // namespace host
