// The host's own windows: the frame that dialogs belong to and the view of the drawing.
#pragma once

#include "afxwin.h"

namespace host {

// The name that message boxes carry as title.
constexpr const wchar_t* kHostName = L"QZHost";

// Takes the frame down with all dialogs that belong to it, as the host ends; acedGetAcadFrame gives
// null from then on, until MakeHostWindows.
void CloseHostWindows();
// Made at the first use otherwise.
void MakeHostWindows();

// The pointer left a modeless dialog: asks it by WM_ACAD_KEEPFOCUS whether the focus stays, and
// gives it to the drawing if not.
void PointerLeft(HWND dialog);

}  // namespace host
