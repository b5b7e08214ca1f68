// What a long run is at, on the terminal: a line that is drawn anew, from half a second on.
#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "EncircleWatch.h"

namespace app {

// On standard error, when that is a terminal; otherwise nothing is shown and nothing is watched.
// Short runs show nothing either. The line is gone when this is.
class RunDisplay : private CEncircleWatch {
public:
    RunDisplay();
    ~RunDisplay() override;
    RunDisplay(const RunDisplay&) = delete;
    RunDisplay& operator=(const RunDisplay&) = delete;

    // phase  what the run is at from now on: "reading", a literal
    void Enter(const char* phase);

    // "computing: visible 43 %, 0:05; Ctrl-C ends it"
    static std::string LineText(const char* phase, const char* pass, size_t done, size_t all,
                                double seconds);

private:
    // Only on a terminal: a watched run counts its crossings first.
    std::optional<CEncircleWatchScope> m_watch;

    bool MayBreak(size_t nLines, size_t nMeetings) override;
    bool MayGoOn(const char* pPass, size_t nDone, size_t nAll) override;
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
