// Names of files that are being written, and what became of those of dead processes.
#pragma once

#include <string>

namespace host {

// A name that no other process of this machine uses, in the folder, whose name ends with a slash:
// ".save-MACHINE-PROCESS-NUMBER".
std::string NewTemporaryName(const std::string& folder);

// Removes files of such names whose process is gone, once for each folder in the life of a process.
// Those of other machines that share the folder stay.
void SweepTemporaryFiles(const std::string& folder);

}  // namespace host
