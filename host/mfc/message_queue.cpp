// Messages: sending, posting, taking and handling them.
#include <chrono>

#include "host/mfc/call_window.h"
#include "host/mfc/window_system.h"

namespace host {
namespace {

DWORD Milliseconds() {
    using Clock = std::chrono::steady_clock;
    static const Clock::time_point start = Clock::now();
    return static_cast<DWORD>(
        std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start).count());
}

}  // namespace

LRESULT WindowSystem::Send(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    Window* const window = Find(handle);
    if (window == nullptr) return 0;
    if (CWnd* const object = window->object)
        return AfxCallWndProc(object, handle, message, wParam, lParam);
    return DefaultProcedure(handle, message, wParam, lParam);
}

bool WindowSystem::Post(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    if (handle != nullptr && Find(handle) == nullptr) return false;
    m_queue.push_back({handle, message, wParam, lParam, Milliseconds(), {0, 0}});
    if (m_queue.size() == 1) m_driver->Posted();
    return true;
}

void WindowSystem::PostInput(HWND handle, std::function<void()> input) {
    if (Find(handle) == nullptr) return;
    m_inputs[++m_lastInput] = std::move(input);
    Post(handle, kInputMessage, m_lastInput, 0);
}

void WindowSystem::PostQuit(int code) {
    m_isQuitting = true;
    m_quitCode = code;
    if (m_queue.empty()) m_driver->Posted();
}

bool WindowSystem::Take(MSG& message, HWND handle, UINT first, UINT last, bool remove) {
    if (m_queue.empty()) m_driver->Poll();
    const bool all = first == 0 && last == 0;
    for (auto it = m_queue.begin(); it != m_queue.end(); ++it) {
        const bool isOfWindow = handle == nullptr || it->hwnd == handle;
        if (!isOfWindow || !(all || (it->message >= first && it->message <= last))) continue;
        message = *it;
        if (remove) m_queue.erase(it);
        return true;
    }
    // That the program is to end is heard whatever was asked for.
    if (!m_isQuitting) return false;
    message = {nullptr, WM_QUIT, static_cast<WPARAM>(m_quitCode), 0, Milliseconds(), {0, 0}};
    if (remove) m_isQuitting = false;
    return true;
}

LRESULT WindowSystem::Dispatch(const MSG& message) {
    if (message.message != kInputMessage)
        return Send(message.hwnd, message.message, message.wParam, message.lParam);
    const auto found = m_inputs.find(message.wParam);
    if (found == m_inputs.end()) return 0;
    const std::function<void()> input = std::move(found->second);
    m_inputs.erase(found);
    const Window* const window = Find(message.hwnd);
    if (window != nullptr && window->IsUsable()) input();
    return 0;
}

void WindowSystem::DispatchPending() {
    MSG message;
    while (Take(message, nullptr, 0, 0, true)) {
        if (message.message == WM_QUIT) {
            PostQuit(static_cast<int>(message.wParam));
            return;
        }
        if (!AfxPreTranslateMessage(&message)) Dispatch(message);
    }
}

bool WindowSystem::WaitForInput() {
    return m_answers != nullptr ? m_answers->act() : m_driver->Wait();
}

}  // namespace host
