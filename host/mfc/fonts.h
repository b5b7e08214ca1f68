// Fonts by handle: only descriptions, so that dialogs are laid out alike with and without a
// display.
#pragma once

#include <string>

#include "afxwin.h"

namespace host {

HFONT MakeFont(const LOGFONT& description);  // a handle that is never used again
void DropFont(HFONT handle);                 // harmless for one that is gone
// Null when there is no such font.
const LOGFONT* FindFont(HFONT handle);
LOGFONT DescribeFont(double points, const std::wstring& face, int weight, bool isItalic);

}  // namespace host
