// Which module's resources are looked at, and what is in them.
#pragma once

#include <string>

#include "host/mfc/resource_script.h"

namespace host {

// A module's script is read at its first use: res/NAME.rc beside the module file NAME.arx (or any
// other extension). Another place can be set before; for modules that are linked into a program.
void SetResourceScript(HINSTANCE module, const std::wstring& path);

// Null, and why, when the script cannot be read or holds no such dialog.
const DialogTemplate* FindDialog(HINSTANCE module, int id, std::wstring& reason);

}  // namespace host
