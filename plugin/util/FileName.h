#pragma once

#include "StdAfx.h"

// Whether a text can be the name of a file in a folder, on every system that may read the folder:
// not empty, no separator of folders or drives, none of the characters * ? " < > |, no control
// character, no dot or blank at its end, and no device name such as NUL, with or without extension.
bool IsFileName(const CString& strName);
