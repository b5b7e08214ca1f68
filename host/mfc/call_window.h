// The way into an object's window procedure.
#pragma once

#include "afxwin.h"

// Calls the object's procedure; the message is the current one meanwhile (CWnd::Default). An
// exception that gets out is reported to the user. The object may be gone afterwards.
LRESULT AfxCallWndProc(CWnd* pWnd, HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam);
