// Asking for input: queued keystrokes first, then the person or script.
#pragma once

#include <string>

#include "dbid.h"
#include "gepnt3d.h"
#include "host/ed/user_input.h"

namespace host {

// Each shows the prompt. Without a document, or with nobody to answer, the answer is Escape.
Answer AskPoint(const std::wstring& prompt, const AcGePoint3d* base);
Answer AskText(const std::wstring& prompt, bool spacesAllowed);
SelectionAnswer AskSelection(const std::wstring& prompt);

// "x,y" or "x,y,z" as typed; false for anything else.
bool ParsePoint(const std::wstring& text, AcGePoint3d& point);

}  // namespace host
