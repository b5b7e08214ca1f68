#include "apps/qzenvelope/Progress.h"

#include "apps/qzenvelope/Output.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "SatExport.h"
#include "plugin/batch/Progress.h"
#include "product/base/Words.h"

namespace app {

using product::Tr;
namespace {

constexpr size_t kBarWidth = 24;
constexpr size_t kUsualColumns = 80;
// Often enough for an eye, seldom enough for a slow line.
constexpr std::chrono::milliseconds kBetweenBars{100};

std::string Clock(double seconds) {
    const auto whole = static_cast<long long>(std::max(0.0, seconds) + 0.5);
    char text[48];
    if (whole >= 3600)
        std::snprintf(text, sizeof text, "%lld:%02lld:%02lld", whole / 3600, whole / 60 % 60,
                      whole % 60);
    else
        std::snprintf(text, sizeof text, "%lld:%02lld", whole / 60, whole % 60);
    return text;
}

size_t Columns() {
    winsize size{};
    if (::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kUsualColumns;
    return size.ws_col;
}

}  // namespace

Progress::Progress(size_t total, bool quiet)
    : m_total(total),
      m_quiet(quiet),
      m_isTerminal(::isatty(STDERR_FILENO) != 0),
      m_start(std::chrono::steady_clock::now()) {}

Progress::~Progress() { Clear(); }

void Progress::Begin(const std::string& tool) {
    m_tool = tool;
    Show(false);
}

void Progress::End(const std::string& drawing, const product::ToolResult& result) {
    ++m_done;
    if (!result.IsGood()) ++m_failed;
    if (m_isTerminal) {
        if (!result.IsGood()) Say(drawing + Tr(": tool ") + result.name + ": " + result.reason);
        Show(m_done == m_total);
        return;
    }
    char count[64], time[32];
    std::snprintf(count, sizeof count, "%zu/%zu  ", m_done, m_total);
    std::snprintf(time, sizeof time, ", %.0f ms", result.seconds * 1000);
    Say(count + drawing + Tr(": tool ") + result.name +
        (result.IsGood() ? Tr(" done") + std::string(time) : Tr(" FAILED: ") + result.reason));
}

void Progress::Say(const std::string& line) {
    if (m_quiet) return;
    Clear();
    std::fprintf(stderr, "%s\n", Shown(line).c_str());
}

void Progress::Clear() {
    if (!m_isShown) return;
    std::fputs("\r\x1b[K", stderr);
    std::fflush(stderr);
    m_isShown = false;
}

void Progress::Show(bool always) {
    const auto now = std::chrono::steady_clock::now();
    if (m_quiet || !m_isTerminal || (!always && m_isShown && now - m_shown < kBetweenBars)) return;
    m_shown = now;
    const double elapsed = std::chrono::duration<double>(now - m_start).count();
    std::fprintf(stderr, "\r\x1b[K%s",
                 BarText(m_done, m_total, m_failed, elapsed, m_tool, Columns()).c_str());
    std::fflush(stderr);
    m_isShown = true;
}

std::string Progress::BarText(size_t done, size_t total, size_t failed, double elapsed,
                              const std::string& tool, size_t columns) {
    const size_t full = total == 0 ? kBarWidth : done * kBarWidth / total;
    std::string text = "[" + std::string(full, '#') + std::string(kBarWidth - full, '.') + "] ";
    text += std::to_string(done) + "/" + std::to_string(total) + Tr(" tools");
    if (failed > 0) text += ", " + std::to_string(failed) + Tr(" failed");
    text += ", " + Clock(elapsed) + Tr(" elapsed");
    if (done > 0 && done < total)
        text += ", " +
                Clock(elapsed / static_cast<double>(done) * static_cast<double>(total - done)) +
                Tr(" left");
    // A line that wraps could not be drawn over.
    if (text.size() >= columns) return text.substr(0, columns > 0 ? columns - 1 : 0);
    if (!tool.empty() && text.size() + tool.size() + 3 < columns) text += "  " + tool;
    return text;
}

}  // namespace app

// The batch records' own display is the worker's: it tells its parent of each tool by itself, and
// there is no window to pump messages for.
void progressStart() {}
void progressStep(int, int, double) {}
void progressEnd() {}

// Nobody can be asked; the batch always names a folder.
CString AskSatPath(const CString&, CWnd*) { return CString(); }
