// Puts the services that modules look up into the system registry.
#pragma once

namespace host {

// "DynamicLinker", "AcEditor" and "ACAD_REGISTERED_COMMANDS". Once per process.
void RegisterEditorServices();

// How often a module has posted the command prompt again after input of its own.
unsigned PromptPosts();

}  // namespace host
