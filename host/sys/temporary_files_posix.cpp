#include "host/sys/temporary_files_posix.h"

#include <dirent.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstring>
#include <set>

namespace host {
namespace {

// ".save-MACHINE-"; the machine's name without what cannot stand in a name.
std::string Prefix() {
    utsname system{};
    std::string machine = ::uname(&system) == 0 ? system.nodename : "";
    for (char& c : machine)
        if (c == '-' || c == '/') c = '_';
    return ".save-" + machine + "-";
}

// The process of a name, 0 for others.
pid_t ProcessOf(const char* name, const std::string& prefix) {
    const size_t length = std::strlen(name);
    if (length <= prefix.size() || std::strncmp(name, prefix.c_str(), prefix.size()) != 0) return 0;
    long process = 0;
    const auto [end, error] = std::from_chars(name + prefix.size(), name + length, process);
    return error == std::errc() && *end == '-' && process > 0 ? static_cast<pid_t>(process) : 0;
}

}  // namespace

std::string NewTemporaryName(const std::string& folder) {
    static unsigned long last = 0;
    const std::string begin = folder + Prefix() + std::to_string(::getpid()) + "-";
    // One that is there belongs to a dead process of the same number.
    const std::string name = begin + std::to_string(++last);
    ::unlink(name.c_str());
    return name;
}

void SweepTemporaryFiles(const std::string& folder) {
    // By name: the number of a folder that is gone is given to the next.
    static std::set<std::string> swept;
    if (!swept.insert(folder).second) return;
    DIR* const entries = ::opendir(folder.c_str());
    if (entries == nullptr) return;
    const std::string prefix = Prefix();
    while (const dirent* const entry = ::readdir(entries)) {
        const pid_t process = ProcessOf(entry->d_name, prefix);
        if (process > 0 && ::kill(process, 0) != 0 && errno == ESRCH)
            ::unlink((folder + entry->d_name).c_str());
    }
    ::closedir(entries);
}

}  // namespace host
