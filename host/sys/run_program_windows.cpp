#include "host/sys/run_program.h"

namespace host {

// Programs of their own are for the command line, which is not built for this system.
ProgramEnd RunProgram(const std::vector<std::string>&, double) {
    ProgramEnd end;
    end.output = "other programs are not run on this system";
    return end;
}

std::string FindProgram(const std::string&) { return {}; }

ScratchFolder::ScratchFolder() = default;
ScratchFolder::~ScratchFolder() = default;

}  // namespace host
