// For a hand-written DllMain of an extension library. The embedded host never calls one: it finds a
// module's resources by the module's place in the file system.
#pragma once

#include "afxext.h"

// Fills the record; always TRUE for a real module handle.
// The counterpart of AfxTermExtensionModule.
BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE hModule);
// Empties the record.
void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL bAll = FALSE);

// Makes the module's resources known; the look-up here needs no such list, so it only keeps the
// handle.
class CDynLinkLibrary : public CObject {
public:
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL bSystem = FALSE);
    HMODULE m_hModule;  // as the record has it
};
