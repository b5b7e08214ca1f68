// The host's life around its modules: what the desktop and the script runner share.
#pragma once

#include <string>

#include "apps/qzhost/session/DrawingDump.h"

namespace app {

// The module that lies beside the program, loaded at the start unless told otherwise.
std::wstring UsualModule();

// False after a message on the command line.
bool LoadModule(const std::wstring& path);

// Runs what waits: window messages and queued command text, until neither is left.
void Settle();

// Closes all drawings without saving, takes the windows down and tells the modules that the host
// ends. What is still there then has leaked: dialogs, open objects, locks and selection sets, one a
// line; none when all is well.
Lines EndHost();

}  // namespace app
