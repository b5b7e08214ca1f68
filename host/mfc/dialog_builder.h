// Windows from dialog templates.
#pragma once

#include "host/mfc/resource_script.h"

namespace host {

// Pixels of a dialog unit: horizontally a quarter, vertically an eighth of the mean size of the
// dialog font's letters. Taken from the font's size alone, so that the layout does not depend on a
// display; the ratio is that of the usual dialog fonts (7 x 15 pixels at 9 points, 6 x 13 at 8).
struct BaseUnits {
    int x;
    int y;
};
BaseUnits BaseUnitsOf(const LOGFONT& font);
RECT ToPixels(const RECT& units, BaseUnits base);

// Makes the dialog with its controls and attaches the object; WM_INITDIALOG has been handled when
// it returns. Null and a reason when the template names a window class that is not known; null
// without a reason when the dialog was destroyed while it was initialised.
HWND BuildDialog(const DialogTemplate& dialog, CWnd& object, HWND owner, bool isModal,
                 std::wstring& reason);

}  // namespace host
