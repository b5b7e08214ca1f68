#pragma once

// Registers the module's commands in their group, unless they are there already. What the host
// refuses is told on the command line.
void RegisterCommands();
