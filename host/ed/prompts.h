// Asking for input: queued keystrokes first, then the person or script.
#pragma once

#include <string>

#include "dbid.h"
#include "gepnt3d.h"
#include "host/ed/user_input.h"

namespace host {

// Each shows the prompt. Without a document, or with nobody to answer, the answer is Escape.
Answer AskPoint(const std::wstring& prompt, const PointRequest& request = {});
Answer AskText(const std::wstring& prompt, bool spacesAllowed);
SelectionAnswer AskSelection(const std::wstring& prompt);

// What a typed text means as an answer to the request: a point, a keyword, a number; false for
// anything else. Points are x,y or x,y,z, or distance<angle in degrees; with @ before them they
// count from the request's base, else from the current document's last point.
bool ParseAnswer(const std::wstring& text, const PointRequest& request, Answer& answer);

// The keyword, in capitals, that the text stands for: its capitals at least, its letters at most,
// without case; empty when none.
std::wstring MatchKeyword(const std::wstring& text, const std::vector<std::wstring>& keywords);

}  // namespace host
