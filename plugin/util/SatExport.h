// Solids of the working database as SAT files.
#pragma once

#include "StdAfx.h"

// Writes one solid as a SAT file, over a file of that name.
//
// Where the path is beyond ASCII, the modeller writes a file of a plain name beside it, or in the
// folder for passing files when the folder's own name is beyond ASCII, which becomes the asked one
// when it is whole: so names in any script do.
//
// result  false when the solid cannot be opened or the file cannot be written
bool WriteSat(const CString& strPath, const AcDbObjectId& solidId);

// Whether there is a file, or anything else, of that name.
bool IsPathTaken(const CString& strPath);

// Asks for the SAT file to write, by a save dialog that offers the name; extension "sat". Empty
// when the user cancels. Alone in its source: a program without windows brings its own.
//
// pParent  the window that waits for the dialog; null for the host's main window
CString AskSatPath(const CString& strDefaultName, CWnd* pParent);
