#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <new>

#include "host/sys/process_end.h"

namespace host {
namespace {

// What the handlers need, made ready beforehand: they may neither allocate nor lock.
char g_temporary[PATH_MAX];
volatile std::sig_atomic_t g_hasTemporary = 0;
char g_interrupted[128], g_outOfTime[256];
char g_outOfMemory[256] = "there is not enough memory\n";

void Say(const char* sentence) {
    // Nobody may be listening; there is nothing else to do then.
    const ssize_t written = ::write(STDERR_FILENO, sentence, std::strlen(sentence));
    static_cast<void>(written);
}

[[noreturn]] void End(const char* sentence, int status) {
    if (g_hasTemporary != 0) ::unlink(g_temporary);
    Say(sentence);
    ::_exit(status);
}

void OnSignal(int signal) { End(g_interrupted, kEndedBySignal + signal); }
void OnAlarm(int) { End(g_outOfTime, kEndedOutOfTime); }
[[noreturn]] void OnOutOfMemory() { End(g_outOfMemory, kEndedOutOfMemory); }

std::string& ProcessName() {
    static std::string name;
    return name;
}

// The sentence with its beginning, nothing for a process without a name.
template <size_t N>
void Prepare(char (&text)[N], const std::string& sentence) {
    const std::string& name = ProcessName();
    // Over what a progress bar has drawn.
    const char* const clear = ::isatty(STDERR_FILENO) != 0 ? "\r\x1b[K" : "";
    const std::string whole = name.empty() ? "" : clear + name + ": " + sentence + "\n";
    std::snprintf(text, N, "%s", whole.c_str());
}

void PrepareOutOfMemory(const std::string& limit) {
    Prepare(g_outOfMemory, "there is not enough memory" + limit);
}

void Handle(int signal, void (*handler)(int)) {
    struct sigaction former {};
    if (::sigaction(signal, nullptr, &former) == 0 && former.sa_handler == SIG_IGN) return;
    struct sigaction action {};
    action.sa_handler = handler;
    ::sigfillset(&action.sa_mask);
    ::sigaction(signal, &action, nullptr);
}

}  // namespace

void EndCleanly(const std::string& name) {
    // First, for what follows allocates too.
    std::set_new_handler(OnOutOfMemory);
    ProcessName() = name;
    Prepare(g_interrupted, "interrupted; what is written so far is whole");
    PrepareOutOfMemory("; close other programs, or do it in parts");
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) Handle(signal, OnSignal);
}

void LimitTime(double seconds, const char* what) {
    char text[160];
    std::snprintf(text, sizeof text, "%s took longer than %g s; raise --time-limit", what, seconds);
    Prepare(g_outOfTime, text);
    if (seconds > 0) Handle(SIGALRM, OnAlarm);
    itimerval timer{};
    // An interval of zero would lift the limit instead.
    const double micros = (std::max)(1.0, (std::min)(seconds, 1e9) * 1e6);
    timer.it_value.tv_sec = seconds > 0 ? static_cast<time_t>(micros / 1e6) : 0;
    timer.it_value.tv_usec = seconds > 0 ? static_cast<suseconds_t>(std::fmod(micros, 1e6)) : 0;
    ::setitimer(ITIMER_REAL, &timer, nullptr);
}

bool LimitMemory(double megabytes) {
    if (megabytes <= 0) return true;
    char text[80];
    std::snprintf(text, sizeof text, " within the %g MB given; raise --memory-limit", megabytes);
    PrepareOutOfMemory(text);
    const double bytes = (std::min)(megabytes * 1048576.0, 9e18);
    rlimit limit{static_cast<rlim_t>(bytes), static_cast<rlim_t>(bytes)};
    return ::setrlimit(RLIMIT_DATA, &limit) == 0;
}

void SetTemporaryFile(const char* path) {
    g_hasTemporary = 0;
    if (path == nullptr || std::strlen(path) >= sizeof g_temporary) return;
    std::strcpy(g_temporary, path);
    g_hasTemporary = 1;
}

}  // namespace host
