// How far a batch has come, on the terminal.
#pragma once

#include <chrono>
#include <string>

#include "product/tool/ToolResult.h"

namespace app {

// One line that is drawn anew on a terminal, and a line for each tool otherwise. On standard error:
// standard output is for the summary.
class Progress {
public:
    // total  number of tools
    // quiet  nothing is shown at all
    Progress(size_t total, bool quiet);
    // Clears the line.
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void Begin(const std::string& tool);
    void End(const std::string& drawing, const product::ToolResult& result);
    // A line of its own, above the bar.
    void Say(const std::string& line);

    // "[#####.....] 12/24 tools, 1 failed, 0:12 elapsed, 0:12 left" within so many columns,
    // shortened from the middle of what follows the bar when it does not fit.
    static std::string BarText(size_t done, size_t total, size_t failed, double elapsed,
                               const std::string& tool, size_t columns);

private:
    void Show(bool always);
    void Clear();

    size_t m_total, m_done = 0, m_failed = 0;
    std::string m_tool;
    bool m_quiet, m_isTerminal;
    bool m_isShown = false;
    std::chrono::steady_clock::time_point m_start, m_shown;
};

}  // namespace app
