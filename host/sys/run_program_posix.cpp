#include "host/sys/run_program.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sstream>

namespace host {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr std::size_t kMostOutput = 16 * 1024;
const char* const kScratchName = "qz-scratch-";

[[noreturn]] void Become(const std::vector<std::string>& arguments, int output, int failure,
                         pid_t parent) {
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) ::_exit(127);
    // Handlers and limits of this program are none of the other's.
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGALRM, SIGPIPE}) ::signal(signal, SIG_DFL);
    ::alarm(0);
    const int nothing = ::open("/dev/null", O_RDONLY);
    ::dup2(nothing, STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(output, STDERR_FILENO);
    std::vector<char*> words;
    for (const std::string& argument : arguments)
        words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    ::execvp(words[0], words.data());
    const int error = errno;
    const ssize_t told = ::write(failure, &error, sizeof error);
    static_cast<void>(told);
    ::_exit(127);
}

// Reads until the pipe ends or the time is over; true when the pipe ended.
bool ReadUntil(int pipe, Clock::time_point end, std::string& output) {
    for (;;) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
        if (left <= 0) return false;
        pollfd wait{pipe, POLLIN, 0};
        const int ready = ::poll(&wait, 1, static_cast<int>(std::min<long long>(left, 1000)));
        if (ready < 0 && errno != EINTR) return true;
        if (ready <= 0) continue;
        char bytes[4096];
        const ssize_t count = ::read(pipe, bytes, sizeof bytes);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return true;
        output.append(bytes, static_cast<std::size_t>(count));
        if (output.size() > 2 * kMostOutput) output.erase(0, output.size() - kMostOutput);
    }
}

// Waits for the process, which may have closed its outputs and gone on.
bool WaitUntil(pid_t process, Clock::time_point end, int& status) {
    for (;;) {
        const pid_t ended = ::waitpid(process, &status, WNOHANG);
        if (ended == process || (ended < 0 && errno != EINTR)) return true;
        if (Clock::now() >= end) return false;
        ::usleep(5000);
    }
}

void RemoveOfTheDead(const fs::path& folder) {
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        const std::string name = entry.path().filename().string();
        if (name.rfind(kScratchName, 0) != 0) continue;
        const long process = std::strtol(name.c_str() + std::strlen(kScratchName), nullptr, 10);
        if (process > 0 && ::kill(static_cast<pid_t>(process), 0) != 0 && errno == ESRCH) {
            std::error_code ignored;  // another user's, or already gone
            fs::remove_all(entry.path(), ignored);
        }
    }
}

}  // namespace

ProgramEnd RunProgram(const std::vector<std::string>& arguments, double seconds) {
    ProgramEnd end;
    int output[2], failure[2];
    if (arguments.empty() || ::pipe2(output, O_CLOEXEC) != 0) {
        end.output = std::strerror(errno);
        return end;
    }
    if (::pipe2(failure, O_CLOEXEC) != 0) {
        end.output = std::strerror(errno);
        for (const int file : output) ::close(file);
        return end;
    }
    const pid_t parent = ::getpid();
    const pid_t process = ::fork();
    if (process == 0) Become(arguments, output[1], failure[1], parent);
    const int forkError = errno;
    ::close(output[1]);
    ::close(failure[1]);
    int execError = 0;
    if (process < 0)
        end.output = std::strerror(forkError);
    else if (::read(failure[0], &execError, sizeof execError) == sizeof execError)
        end.output = std::strerror(execError);
    else
        end.isStarted = true;
    if (process > 0) {
        const Clock::time_point limit =
            Clock::now() + std::chrono::milliseconds(static_cast<long long>(1000 * seconds));
        int status = 0;
        if (end.isStarted)
            end.isLate =
                !ReadUntil(output[0], limit, end.output) || !WaitUntil(process, limit, status);
        if (end.isLate) ::kill(-process, SIGKILL);
        if (end.isLate || !end.isStarted)
            while (::waitpid(process, &status, 0) < 0 && errno == EINTR) continue;
        if (WIFEXITED(status)) end.status = WEXITSTATUS(status);
        if (WIFSIGNALED(status)) end.signal = WTERMSIG(status);
        // What it started and left behind.
        ::kill(-process, SIGKILL);
    }
    ::close(output[0]);
    ::close(failure[0]);
    return end;
}

std::string FindProgram(const std::string& name) {
    const char* const path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        const std::string file = (folder.empty() ? "." : folder) + "/" + name;
        if (::access(file.c_str(), X_OK) == 0 && !fs::is_directory(file)) return file;
    }
    return {};
}

ScratchFolder::ScratchFolder() {
    std::error_code error;
    const fs::path folder = fs::temp_directory_path(error);
    if (error) return;
    RemoveOfTheDead(folder);
    std::string name = (folder / (kScratchName + std::to_string(::getpid()) + "-XXXXXX")).string();
    if (::mkdtemp(name.data()) != nullptr) m_path = name;
}

ScratchFolder::~ScratchFolder() {
    std::error_code error;
    if (!m_path.empty()) fs::remove_all(m_path, error);
}

}  // namespace host
