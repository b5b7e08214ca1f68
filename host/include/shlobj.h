// The older chooser for folders.
#pragma once

#include "host_winuser.h"

struct ITEMIDLIST;
typedef ITEMIDLIST* LPITEMIDLIST;
typedef const ITEMIDLIST* LPCITEMIDLIST;
typedef int(CALLBACK* BFFCALLBACK)(HWND hwnd, UINT uMsg, LPARAM lParam, LPARAM lpData);

#define BIF_RETURNONLYFSDIRS 0x0001u  // folders of the file system only; always so here
#define BIF_EDITBOX 0x0010u           // with a line to type in; not looked at
#define BIF_NEWDIALOGSTYLE 0x0040u

struct BROWSEINFO {
    HWND hwndOwner;          // disabled meanwhile
    LPCITEMIDLIST pidlRoot;  // not looked at
    LPTSTR pszDisplayName;   // receives the folder's own name; room for MAX_PATH
    LPCTSTR lpszTitle;       // the prompt
    UINT ulFlags;            // BIF_ bits
    BFFCALLBACK lpfn;        // never called here
    LPARAM lParam;           // for lpfn
    int iImage;              // not written
};
typedef BROWSEINFO* LPBROWSEINFO;

// The folder that was chosen, to be freed by CoTaskMemFree; null when the user cancels.
LPITEMIDLIST SHBrowseForFolder(LPBROWSEINFO lpbi);
// Copies its path to room for MAX_PATH; FALSE when it is longer.
BOOL SHGetPathFromIDList(LPCITEMIDLIST pidl, LPTSTR pszPath);
void CoTaskMemFree(void* pv);  // null is harmless
