#pragma once

#include "StdAfx.h"

// Hides a dialog while the user picks in the drawing, and gives the drawing the focus: keys would
// go to the dialog otherwise, where Enter presses its button again and Esc closes it. At its end
// the dialog is shown again with the focus where it was, unless it is gone by then, and the command
// line shows that it waits for a command.
class CHideScope {
public:
    explicit CHideScope(const CWnd& window);
    ~CHideScope();
    CHideScope(const CHideScope&) = delete;
    CHideScope& operator=(const CHideScope&) = delete;

private:
    HWND m_hWnd;
    HWND m_hFocus;
};
