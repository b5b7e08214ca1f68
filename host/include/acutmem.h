// Memory that passes between the host and its callers. Strings in result buffers come from here.
#pragma once

#include "acadstrc.h"
#include "adesk.h"

// A copy of the text; eNullPtr-like refusal (eInvalidInput) for null, the output then stays as it
// is.
Acad::ErrorStatus acutNewString(const ACHAR* source, ACHAR*& copy);

// Replaces a string from acutNewString (null allowed) by a copy of source.
Acad::ErrorStatus acutUpdString(const ACHAR* source, ACHAR*& copy);

// Frees and nulls; null is harmless.
void acutDelString(ACHAR*& text);

// size zeroed bytes, at least one.
Acad::ErrorStatus acutNewBuffer(char*& buffer, size_t size);
void acutDelBuffer(char*& buffer);
