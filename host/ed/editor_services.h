// Puts the services that modules look up into the system registry.
#pragma once

namespace host {

// "DynamicLinker", "AcEditor" and "ACAD_REGISTERED_COMMANDS". Once per process.
void RegisterEditorServices();

}  // namespace host
