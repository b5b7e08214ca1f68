#include "apps/qzenvelope/RunDisplay.h"
#include "product/base/Words.h"

#include <pthread.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>

namespace app {

using product::Tr;
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kShortRun{500}, kBetweenLines{150};

// Signals are the run's business: it knows which temporary file to remove.
class SignalsBlocked {
public:
    SignalsBlocked() {
        sigset_t all;
        ::sigfillset(&all);
        ::pthread_sigmask(SIG_SETMASK, &all, &m_former);
    }
    ~SignalsBlocked() { ::pthread_sigmask(SIG_SETMASK, &m_former, nullptr); }

private:
    sigset_t m_former;
};

}  // namespace

RunDisplay::RunDisplay() {
    if (::isatty(STDERR_FILENO) == 0) return;
    const SignalsBlocked whileItStarts;
    m_thread = std::thread([this] { Draw(); });
}

RunDisplay::~RunDisplay() {
    if (!m_thread.joinable()) return;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isOver = true;
    }
    m_end.notify_one();
    m_thread.join();
}

void RunDisplay::Enter(const char* phase) {
    m_pass = "";
    m_phase = phase;
}

void RunDisplay::Step(const char* pass, size_t done, size_t all) {
    m_done = done;
    m_all = all;
    m_pass = pass;
}

std::string RunDisplay::LineText(const char* phase, const char* pass, size_t done, size_t all,
                                 double seconds) {
    std::string text = phase;
    if (*pass != '\0') text += std::string(": ") + pass;
    if (*pass != '\0' && all > 0) text += " " + std::to_string(100 * done / all) + " %";
    const auto whole = static_cast<unsigned long>(seconds);
    char clock[32];
    std::snprintf(clock, sizeof clock, ", %lu:%02lu", whole / 60, whole % 60);
    return text + clock + Tr("; Ctrl-C ends it");
}

void RunDisplay::Draw() {
    const Clock::time_point start = Clock::now();
    std::unique_lock<std::mutex> lock(m_mutex);
    if (m_end.wait_for(lock, kShortRun, [this] { return m_isOver; })) return;
    do {
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        std::fprintf(stderr, "\r\x1b[K%s",
                     LineText(m_phase, m_pass, m_done, m_all, seconds).c_str());
        std::fflush(stderr);
    } while (!m_end.wait_for(lock, kBetweenLines, [this] { return m_isOver; }));
    std::fputs("\r\x1b[K", stderr);
    std::fflush(stderr);
}

}  // namespace app
