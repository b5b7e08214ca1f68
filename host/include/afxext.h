// What an extension library needs of MFC.
#pragma once

#include "afxwin.h"

struct AFX_EXTENSION_MODULE {
    BOOL bInitialized;
    HMODULE hModule;
    HMODULE hResource;
};
