#pragma once

#include "StdAfx.h"

// Whether a text can be the name of a file in a folder, on every system that may read the folder:
// not empty, no separator of folders or drives, none of the characters * ? " < > |, no control
// character, no dot or blank at its end, and no device name such as NUL, with or without extension.
bool IsFileName(const CString& strName);

// The text as the name of a file: what no name may hold becomes '_', as does a dot or blank at its
// end; a device name gets a '_' behind its stem; an empty text is "_".
CString MakeFileName(const CString& strText);

// Whether every character of a path has a place in ASCII: what any modeller takes.
bool IsPlainPath(const CString& strPath);
