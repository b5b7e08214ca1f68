// Solids of the working database as SAT files.
#pragma once

#include "StdAfx.h"

// Writes one solid as a SAT file, over a file of that name.
// result  false when the solid cannot be opened or the file cannot be written
bool WriteSat(const CString& strPath, const AcDbObjectId& solidId);

// Asks for the SAT file to write, by a save dialog that offers the name; extension "sat". Empty
// when the user cancels. Alone in its source: a program without windows brings its own.
CString AskSatPath(const CString& strDefaultName);
