// Where answers to prompts come from and where the host's words go: a person at a window, or a
// script. One interface, so that commands do not know which.
#pragma once

#include <string>
#include <vector>

#include "dbid.h"
#include "gepnt3d.h"

namespace host {

// An answer to "select objects".
struct SelectionAnswer {
    enum Kind {
        kEnter,      // Enter at once: nothing selected
        kEscape,     // Esc
        kAll,        // everything that can be picked
        kWindow,     // what lies inside the rectangle of the two corners
        kCrossing,   // what lies inside or touches it
        kEntities,   // the named ones, as if picked one by one
        kUnanswered  // nobody is there to answer
    };
    Kind kind = kUnanswered;
    AcGePoint3d corner1;  // UCS
    AcGePoint3d corner2;
    std::vector<AcDbObjectId> entities;
};

// An answer to a prompt for a point or a text.
struct Answer {
    enum Kind { kGiven, kEnter, kEscape, kUnanswered };
    Kind kind = kUnanswered;
    AcGePoint3d point;  // UCS
    std::wstring text;
};

class UserInput {
public:
    virtual ~UserInput() = default;

    // Each is called with the prompt already shown.
    virtual SelectionAnswer Select() = 0;
    virtual Answer Point(const AcGePoint3d* base) = 0;
    virtual Answer Text(bool spacesAllowed) = 0;

    // What the host or a command writes on the command line, as it comes; '\n' begins a new line.
    virtual void Print(const std::wstring& text) = 0;

    // Something on the screen changed: drawing, highlight or view.
    virtual void UpdateDisplay() {}
};

}  // namespace host
