// Other programs, run to their end.
#pragma once

#include <string>
#include <vector>

namespace host {

struct ProgramEnd {
    bool isStarted = false;
    bool isLate = false;  // it was ended, for it took too long
    int status = -1;      // its exit status; -1: none
    int signal = 0;       // that ended it; 0: none
    // What it printed on both outputs, the last 16 KB; when it could not be started, why.
    std::string output;
};

// Runs a program without a shell and waits for its end, in a process group of its own, which ends
// with this process and after the time limit, with whatever the program has started.
//
// arguments  the program first: a path, or a name that is looked for in PATH
// seconds    how long it may take
ProgramEnd RunProgram(const std::vector<std::string>& arguments, double seconds);

// The file that a name without slashes means in PATH; empty when there is none that can be run.
std::string FindProgram(const std::string& name);

// A folder that nobody else uses, removed with all that is in it when this goes. What processes
// that were killed left behind is removed when the next one is made.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    // Empty when none could be made.
    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
};

}  // namespace host
