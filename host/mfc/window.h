// The host's model of windows: what a display shows and what messages act on.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "afxwin.h"

namespace host {

enum class WindowKind { kDialog, kButton, kEdit, kStatic, kProgress, kList, kFrame, kView };

// What a display has to show anew.
enum class WindowChange {
    kText,     // title or contents
    kCheck,    // state of a button
    kShown,    // shown or hidden
    kEnabled,  // takes input, or not
    kBounds,   // place or size
    kFont,
    kFocus,      // the window got it
    kColumns,    // of a list
    kRows,       // of a list, with their selection
    kSelection,  // of an edit box
    kProgress,
    kRaised  // brought to the front
};

struct ListColumn {
    std::wstring text;
    int format;  // LVCFMT_LEFT: the only one that is shown
    int width;   // pixels
};
struct ListRow {
    std::vector<std::wstring> texts;  // shorter than the columns: the rest is empty
    UINT state = 0;                   // LVIS_ bits
    DWORD_PTR data = 0;
};
struct ListState {
    std::vector<ListColumn> columns;
    std::vector<ListRow> rows;
    DWORD extendedStyle = 0;  // LVS_EX_ bits
    int top = 0;              // the row shown topmost
};

struct ProgressState {
    int low = 0;
    int high = 100;
    int position = 0;  // within low and high
    int step = 10;
};

struct Window {
    Window();
    ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    HWND handle = nullptr;  // never used again
    WindowKind kind = WindowKind::kDialog;
    int id = 0;       // of a control its number, of a dialog that of its template
    DWORD style = 0;  // WS_VISIBLE and WS_DISABLED are the present state
    DWORD exStyle = 0;
    std::wstring text;
    // Pixels; of a child in its parent's client area, else on the screen. Unlike in Windows the
    // rectangle of a top-level window is its client area: the frame around it is the display's.
    RECT bounds = {};
    Window* parent = nullptr;       // of a child
    HWND owner = nullptr;           // of a top-level window
    std::vector<Window*> children;  // in the order of the template, which is the tab order
    CWnd* object = nullptr;         // the attached object
    std::unique_ptr<CWnd> stand;    // object made for FromHandle when none was attached
    HFONT font = nullptr;
    bool isDestroying = false;

    // Dialog
    HWND savedFocus = nullptr;  // control that gets the focus when the dialog is activated
    UINT defaultId = 0;         // 0: none
    bool isModal = false;
    // Button
    int check = BST_UNCHECKED;
    // Edit box
    int selectionStart = 0;
    int selectionEnd = 0;
    std::unique_ptr<ListState> list;  // of lists alone
    ProgressState progress;           // of progress bars

    bool Has(DWORD bits) const { return (style & bits) == bits; }  // all of these bits
    UINT ButtonType() const { return style & BS_TYPEMASK; }
    bool IsRadio() const;  // told by the style, as Windows does
    bool IsCheckBox() const;
    bool IsPushButton() const;
    Window& TopLevel();  // the dialog that it lies in, or itself
    const Window& TopLevel() const { return const_cast<Window*>(this)->TopLevel(); }
    // Neither it nor anything it lies in is hidden (disabled).
    bool IsShown() const;
    bool IsUsable() const;
};

}  // namespace host
