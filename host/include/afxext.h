// What an extension library needs of MFC.
#pragma once

#include "afxwin.h"

struct AFX_EXTENSION_MODULE {
    BOOL bInitialized;  // between AfxInit and AfxTerm
    HMODULE hModule;    // the library
    HMODULE hResource;  // where its resources lie: the same
};
