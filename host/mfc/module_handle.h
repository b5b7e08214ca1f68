// Modules as the dynamic loader knows them: the one part of the windows that asks the system.
#pragma once

#include <string>

#include "host_wintypes.h"

namespace host {

// The module that holds an address; null when none does.
HINSTANCE ModuleOfAddress(const void* address);
// The program itself.
HINSTANCE ProgramModule();
// Its file, with folders; empty for no module.
std::wstring ModulePath(HINSTANCE module);
// Keeps the module mapped to the end of the process.
bool PinModule(HINSTANCE module);

}  // namespace host
