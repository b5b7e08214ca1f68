// Where answers to prompts come from and where the host's words go: a person at a window, or a
// script. One interface, so that commands do not know which.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "dbid.h"
#include "gepnt3d.h"
#include "host/ed/outline.h"

class AcApDocument;

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
    enum Kind { kGiven, kEnter, kEscape, kUnanswered, kKeyword, kNumber };
    Kind kind = kUnanswered;
    AcGePoint3d point;    // UCS
    std::wstring text;    // as typed; kKeyword: the whole keyword in capitals
    double number = 0.0;  // kNumber
};

// What a prompt for a point takes, and how it looks meanwhile.
struct PointRequest {
    // A line is drawn from here to the pointer, and "@" counts from here; null: from the last
    // point.
    const AcGePoint3d* base = nullptr;
    // Words that answer in place of a point. The capitals of each may be typed alone: "eXit".
    std::vector<std::wstring> keywords;
    // A number by itself is an answer as well.
    bool takesNumber = false;
    // Any other text without blanks is one too: it comes as a keyword.
    bool takesText = false;
    // What the drawing would get, were the answer where the pointer is; may be empty.
    std::function<std::vector<Piece>(const AcGePoint3d&)> drag;
};

// What to do with a drawing that has changes and is about to be closed.
enum class ClosingChoice { kSave, kDiscard, kStay };

class UserInput {
public:
    virtual ~UserInput() = default;

    // Each is called with the prompt already shown.
    virtual SelectionAnswer Select() = 0;
    virtual Answer Point(const PointRequest& request) = 0;
    virtual Answer Text(bool spacesAllowed) = 0;

    // What the host or a command writes on the command line, as it comes; '\n' begins a new line.
    virtual void Print(const std::wstring& text) = 0;

    // Asked once before these drawings, which have changes, are closed. A script closes them.
    virtual ClosingChoice Closing(const std::vector<AcApDocument*>&) {
        return ClosingChoice::kDiscard;
    }
    // Where to save a drawing that has no file yet; empty: nowhere.
    virtual std::wstring NameForSaving(const AcApDocument&) { return {}; }

    // Keystrokes were queued for an idle document; somebody should call Session::RunQueued soon.
    virtual void Queued() {}

    // Something on the screen changed: drawing, highlight or view.
    virtual void UpdateDisplay() {}
};

}  // namespace host
