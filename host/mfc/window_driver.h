// What shows the windows: a display, or nothing at all.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/mfc/window.h"

namespace host {

struct BoxRequest {
    std::wstring text;
    std::wstring title;  // of the box
    UINT type = MB_OK;   // MB_ bits
};

// Name and pattern, as shown in a chooser: {"SAT (*.sat)", "*.sat"}.
typedef std::pair<std::wstring, std::wstring> FileFilter;

struct ChooserRequest {
    bool isSave = false;  // a file to be written
    std::wstring title;
    std::wstring start;  // file name or folder to begin with
    std::vector<FileFilter> filters;
    bool asksBeforeOverwriting = false;
};

struct MenuItem {
    int id;  // 0: a line between groups
    std::wstring text;
    bool isEnabled;
};
struct MenuRequest {
    std::vector<MenuItem> items;
    POINT place = {0, 0};  // on the screen
};

// A driver follows the model: it is told what changed and posts what the user does (PostInput of
// window_system.h); it never calls a handler itself. Windows are named to it by reference for the
// length of the call only. The default does nothing, which is the driver without a display.
class WindowDriver {
public:
    virtual ~WindowDriver() = default;

    // A top-level window was built, children included; it may be hidden.
    virtual void Created(const Window&) {}
    // A top-level window is about to go, with its children.
    virtual void Destroyed(const Window&) {}
    virtual void Changed(const Window&, WindowChange) {}

    // Something was put into an empty queue.
    virtual void Posted() {}
    // Takes the input that waits into the queue and shows what has changed, without waiting.
    virtual void Poll() {}
    // Sleeps until there may be input; false when none can come.
    virtual bool Wait() { return false; }

    // The button that was pressed. Without a display the first one that the type offers.
    virtual int ShowBox(const BoxRequest& request);
    // The item that was chosen; 0 for none, as without a display.
    virtual int ShowMenu(const MenuRequest&) { return 0; }
    // The path; nothing when the user cancelled.
    virtual std::optional<std::wstring> ChooseFile(const ChooserRequest&) { return {}; }
    virtual std::optional<std::wstring> ChooseFolder(const ChooserRequest&) { return {}; }

    // Writes a picture of all shown windows as PNG; false and a reason when it cannot.
    virtual bool Capture(const std::wstring& path, std::wstring& reason);
};

}  // namespace host
