// What a long run is at, on the terminal: a line that is drawn anew, from half a second on.
#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include "product/tool/ToolJobs.h"

namespace app {

// On standard error, when that is a terminal; otherwise nothing is shown and nothing is watched.
// Short runs show nothing either. The line is gone when this is.
class RunDisplay : public product::RunListener {
public:
    RunDisplay();
    ~RunDisplay() override;
    RunDisplay(const RunDisplay&) = delete;
    RunDisplay& operator=(const RunDisplay&) = delete;

    // This, for who can tell it more; null where nothing is shown.
    product::RunListener* Listener() { return m_thread.joinable() ? this : nullptr; }

    // phase  what the run is at from now on: "reading", a literal
    void Enter(const char* phase) override;
    void Step(const char* pass, size_t done, size_t all) override;

    // "computing: visible 43 %, 0:05; Ctrl-C ends it"
    static std::string LineText(const char* phase, const char* pass, size_t done, size_t all,
                                double seconds);

private:
    void Draw();

    // Written by the run, read by the drawing thread.
    std::atomic<const char*> m_phase{""}, m_pass{""};
    std::atomic<size_t> m_done{0}, m_all{0};

    std::mutex m_mutex;
    std::condition_variable m_end;
    bool m_isOver = false;
    std::thread m_thread;
};

}  // namespace app
