// Records and functions of the Windows interface below MFC's classes. A private header, reached
// through afxwin.h. A window is named by its handle; a handle is never used again, so that asking
// after a window that is gone is always safe.
#pragma once

#include "host_winconst.h"
#include "host_wintypes.h"

// In pixels; x to the right, y down.
struct POINT {
    LONG x;
    LONG y;
};
// In pixels.
struct SIZE {
    LONG cx;
    LONG cy;
};
// In pixels; right and bottom lie outside.
struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};
typedef POINT* LPPOINT;
typedef RECT* LPRECT;
typedef const RECT* LPCRECT;

// A message on its way.
struct MSG {
    HWND hwnd;      // null: to the whole program
    UINT message;   // WM_ number
    WPARAM wParam;  // what they hold depends on the message
    LPARAM lParam;
    DWORD time;  // milliseconds since the host started
    POINT pt;    // always 0,0: this host keeps no pointer position
};
typedef MSG* LPMSG;

// What every notification begins with.
struct NMHDR {
    HWND hwndFrom;    // the control
    UINT_PTR idFrom;  // its number
    UINT code;        // what happened
};
// What LVN_ITEMCHANGED carries.
struct NMLISTVIEW {
    NMHDR hdr;
    int iItem;       // row, from 0
    int iSubItem;    // column; 0 for the row itself
    UINT uNewState;  // LVIS_ bits afterwards
    UINT uOldState;  // and before
    UINT uChanged;   // LVIF_STATE
    POINT ptAction;
    LPARAM lParam;  // the row's data
};
typedef NMLISTVIEW* LPNMLISTVIEW;
typedef NMLISTVIEW NM_LISTVIEW;

// What NM_DBLCLK of a list carries; iItem is -1 beside the rows.
struct NMITEMACTIVATE {
    NMHDR hdr;
    int iItem;
    int iSubItem;
    UINT uNewState;
    UINT uOldState;
    UINT uChanged;
    POINT ptAction;
    LPARAM lParam;
    UINT uKeyFlags;
};
typedef NMITEMACTIVATE* LPNMITEMACTIVATE;

// What WM_GETMINMAXINFO asks for: sizes between which the user may pull a window.
struct MINMAXINFO {
    POINT ptReserved;
    POINT ptMaxSize;
    POINT ptMaxPosition;
    POINT ptMinTrackSize;
    POINT ptMaxTrackSize;
};
typedef MINMAXINFO* LPMINMAXINFO;

struct LOGFONT {        // A font by its description
    LONG lfHeight;      // below 0: height of a letter in pixels; above: height of a line
    LONG lfWidth;       // 0: as the height wants it
    LONG lfEscapement;  // tenths of a degree; not looked at
    LONG lfOrientation;
    LONG lfWeight;  // 400 normal, 700 bold
    BYTE lfItalic;  // 0 or 1, as the next two
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;  // the rest is kept and not looked at
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
    WCHAR lfFaceName[LF_FACESIZE];  // the family's name
};

// Of the many members of the original only those that the choosers read.
struct OPENFILENAME {
    DWORD lStructSize;
    HWND hwndOwner;  // disabled meanwhile
    LPCTSTR
    lpstrFilter;  // pairs of name and pattern, each with an end mark, a further one at the end
    DWORD nFilterIndex;  // from 1
    LPTSTR lpstrFile;    // the name offered; receives the chosen one
    DWORD nMaxFile;
    LPCTSTR lpstrInitialDir;  // null: the working folder
    LPCTSTR lpstrTitle;       // must live until DoModal returns
    DWORD Flags;
    LPCTSTR lpstrDefExt;
};

BOOL IsWindow(HWND hWnd);                    // TRUE until it is destroyed
BOOL IsWindowVisible(HWND hWnd);             // it and everything it lies in
BOOL IsWindowEnabled(HWND hWnd);             // its own state only
BOOL IsChild(HWND hWndParent, HWND hWnd);    // at any depth
BOOL DestroyWindow(HWND hWnd);               // with all that lies in it
BOOL ShowWindow(HWND hWnd, int nCmdShow);    // whether it was shown before
BOOL EnableWindow(HWND hWnd, BOOL bEnable);  // whether it was disabled before
BOOL UpdateWindow(HWND hWnd);
BOOL MoveWindow(HWND hWnd, int x, int y, int width, int height, BOOL bRepaint);
HWND SetFocus(HWND hWnd);  // the one that had the focus; null when hWnd cannot take it
HWND GetFocus();           // null when no window of the host has it
HWND GetActiveWindow();
BOOL SetForegroundWindow(HWND hWnd);
HWND GetParent(HWND hWnd);  // of a top-level window: its owner
HWND GetWindow(HWND hWnd, UINT uCmd);
HWND GetDlgItem(HWND hDlg, int nIDDlgItem);  // null when there is none
int GetDlgCtrlID(HWND hWnd);                 // 0 for a top-level window
HWND GetNextDlgTabItem(HWND hDlg, HWND hCtl, BOOL bPrevious);
HWND GetNextDlgGroupItem(HWND hDlg, HWND hCtl, BOOL bPrevious);
BOOL GetClientRect(HWND hWnd, LPRECT lpRect);  // from 0,0
BOOL GetWindowRect(HWND hWnd, LPRECT lpRect);  // on the screen
int GetWindowTextLength(HWND hWnd);            // without the end mark
int GetWindowText(HWND hWnd, LPTSTR lpString, int nMaxCount);
BOOL SetWindowText(HWND hWnd, LPCTSTR lpString);

// Calls the window's procedure at once; 0 when there is no such window.
LRESULT SendMessage(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);
// Puts the message at the end of the queue; FALSE when there is no such window.
BOOL PostMessage(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);
void PostQuitMessage(int nExitCode);  // ends the innermost message loop

// The next message of a window (null: of any) within a range of numbers (0, 0: all). Waiting input
// of the display is taken into the queue first when the queue is empty. FALSE: there is none.
BOOL PeekMessage(LPMSG lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax, UINT wRemoveMsg);
// Waits for one; 0 for WM_QUIT, and also when nothing can come any more (no display, no script).
BOOL GetMessage(LPMSG lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax);
BOOL TranslateMessage(const MSG* lpMsg);  // nothing to do here: texts change without WM_CHAR
LRESULT DispatchMessage(const MSG* lpMsg);
// Keyboard of dialogs: Tab, Enter, Escape, arrows in a radio group. TRUE: the message is dealt
// with.
BOOL IsDialogMessage(HWND hDlg, LPMSG lpMsg);
SHORT GetKeyState(int nVirtKey);  // high bit set while the key is held; VK_SHIFT only

int MessageBox(HWND hWnd, LPCTSTR lpText, LPCTSTR lpCaption, UINT uType);

// Files. Their parts may be set apart by '\\' or '/'; relative paths are taken from the working
// folder. Each is FALSE (0, INVALID_FILE_ATTRIBUTES) when the system refuses.
BOOL MoveFileEx(LPCTSTR lpExistingFileName, LPCTSTR lpNewFileName, DWORD dwFlags);
BOOL DeleteFile(LPCTSTR lpFileName);
DWORD GetFileAttributes(LPCTSTR lpFileName);  // FILE_ATTRIBUTE_DIRECTORY or _NORMAL, no others
// Folder for files of passing use, with a separator at its end; its length without the end mark, or
// the room needed when nBufferLength is too little.
DWORD GetTempPath(DWORD nBufferLength, LPTSTR lpBuffer);
DWORD GetCurrentProcessId();  // the system's number
ULONGLONG GetTickCount64();   // milliseconds since some moment in the past

// The module that holds an address (flag FROM_ADDRESS), or one by file name; PIN keeps it mapped
// for good. Unlike Windows, only by address or for the program itself (null).
BOOL GetModuleHandleEx(DWORD dwFlags, LPCTSTR lpModuleName, HMODULE* phModule);
// its length; null: of the program
DWORD GetModuleFileName(HMODULE hModule, LPTSTR lpFilename, DWORD nSize);
