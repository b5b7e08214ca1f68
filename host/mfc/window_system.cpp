// Windows: their making and end, what is shown and enabled, and the focus.
#include "host/mfc/window_system.h"

#include <algorithm>
#include <iostream>

#include "host/base/format.h"
#include "host/mfc/call_window.h"

namespace host {

WindowSystem::WindowSystem()
    : m_report([](const std::wstring& line) { std::cerr << Narrow(line) << '\n'; }) {}

// Never destroyed: objects with windows may outlive every static of this library.
WindowSystem& WindowSystem::Get() {
    static WindowSystem* const system = new WindowSystem();
    return *system;
}

void WindowSystem::SetDriver(WindowDriver* driver) {
    m_driver = driver != nullptr ? driver : &m_noDisplay;
    for (const HWND handle : TopLevelWindows()) m_driver->Created(*Find(handle));
}

Window* WindowSystem::Find(HWND handle) const {
    const auto found = m_windows.find(reinterpret_cast<std::uintptr_t>(handle));
    return found == m_windows.end() ? nullptr : found->second.get();
}

Window& WindowSystem::Make(WindowKind kind, Window* parent) {
    std::unique_ptr<Window>& slot = m_windows[++m_lastHandle];
    slot = std::make_unique<Window>();
    slot->handle = reinterpret_cast<HWND>(m_lastHandle);
    slot->kind = kind;
    slot->parent = parent;
    if (parent != nullptr) parent->children.push_back(slot.get());
    if (kind == WindowKind::kList) slot->list = std::make_unique<ListState>();
    return *slot;
}

std::vector<HWND> WindowSystem::TopLevelWindows() const {
    std::vector<HWND> handles;
    for (const auto& [number, window] : m_windows)
        if (window->parent == nullptr) handles.push_back(window->handle);
    return handles;
}

namespace {

std::vector<HWND> ChildrenOf(const Window& window) {
    std::vector<HWND> handles;
    for (const Window* const child : window.children) handles.push_back(child->handle);
    return handles;
}

bool IsWithin(const Window* window, HWND handle) {
    while (window != nullptr && window->handle != handle) window = window->parent;
    return window != nullptr;
}

}  // namespace

void WindowSystem::SendToChildren(HWND handle, UINT message) {
    const Window* const window = Find(handle);
    if (window == nullptr) return;
    for (const HWND child : ChildrenOf(*window)) {
        Send(child, message, 0, 0);
        SendToChildren(child, message);
    }
}

void WindowSystem::Remove(HWND handle) {
    Window* const window = Find(handle);
    if (window == nullptr) return;
    for (const HWND child : ChildrenOf(*window)) Remove(child);
    if (window->parent != nullptr) {
        auto& siblings = window->parent->children;
        siblings.erase(std::remove(siblings.begin(), siblings.end(), window), siblings.end());
    }
    m_windows.erase(reinterpret_cast<std::uintptr_t>(handle));
}

bool WindowSystem::Destroy(HWND handle) {
    Window* window = Find(handle);
    if (window == nullptr || window->isDestroying) return false;
    window->isDestroying = true;
    for (const HWND other : TopLevelWindows())
        if (const Window* const owned = Find(other); owned != nullptr && owned->owner == handle)
            Destroy(other);
    if (window->parent == nullptr) Show(handle, false);
    LoseFocus(handle);
    Send(handle, WM_DESTROY, 0, 0);
    SendToChildren(handle, WM_DESTROY);
    window = Find(handle);
    if (window == nullptr) return true;  // a handler destroyed what it lies in
    if (window->parent == nullptr) m_driver->Destroyed(*window);
    // From here on nobody finds the children's or the window's focus, queue entries stay unheard.
    LoseFocus(handle);
    SendToChildren(handle, WM_NCDESTROY);
    // The object's last message comes while the handle still answers; it may delete itself then.
    window = Find(handle);
    CWnd* const object = window == nullptr ? nullptr : window->object;
    if (object != nullptr) AfxCallWndProc(object, handle, WM_NCDESTROY, 0, 0);
    Remove(handle);
    return true;
}

bool WindowSystem::Show(HWND handle, bool show) {
    Window* window = Find(handle);
    if (window == nullptr) return false;
    const bool before = window->Has(WS_VISIBLE);
    if (before != show) {
        Send(handle, WM_SHOWWINDOW, show ? TRUE : FALSE, 0);
        window = Find(handle);
        if (window == nullptr) return before;
        window->style = show ? window->style | WS_VISIBLE : window->style & ~WS_VISIBLE;
        Changed(*window, WindowChange::kShown);
    }
    if (!show) {
        LoseFocus(handle);
    } else if (window->parent == nullptr) {
        Activate(handle);
    }
    return before;
}

bool WindowSystem::Enable(HWND handle, bool enable) {
    Window* const window = Find(handle);
    if (window == nullptr) return false;
    const bool wasDisabled = window->Has(WS_DISABLED);
    if (wasDisabled == enable) {
        window->style = enable ? window->style & ~WS_DISABLED : window->style | WS_DISABLED;
        Changed(*window, WindowChange::kEnabled);
        if (!enable) LoseFocus(handle);
        Send(handle, WM_ENABLE, enable ? TRUE : FALSE, 0);
    }
    return wasDisabled;
}

HWND WindowSystem::SetFocus(HWND handle) {
    const HWND before = m_focus;
    if (handle == before) return before;
    Window* const window = Find(handle);
    if (handle != nullptr && (window == nullptr || !window->IsUsable())) return nullptr;
    m_focus = handle;
    if (window != nullptr) {
        Window& top = window->TopLevel();
        if (&top != window) top.savedFocus = handle;
    }
    if (before != nullptr) Send(before, WM_KILLFOCUS, reinterpret_cast<WPARAM>(handle), 0);
    // A handler may have moved the focus on.
    if (m_focus == handle && handle != nullptr) {
        Send(handle, WM_SETFOCUS, reinterpret_cast<WPARAM>(before), 0);
        if (const Window* const now = Find(handle); now != nullptr && m_focus == handle)
            Changed(*now, WindowChange::kFocus);
    }
    return before;
}

void WindowSystem::Activate(HWND handle) {
    const Window* const window = Find(handle);
    if (window == nullptr || !window->IsUsable() || IsWithin(Find(m_focus), handle)) return;
    const Window* const saved = Find(window->savedFocus);
    SetFocus(saved != nullptr && saved->IsUsable() ? saved->handle : handle);
    if (const Window* const now = Find(handle)) Changed(*now, WindowChange::kRaised);
}

// A window that is hidden, disabled or gone cannot hold the focus; its owner takes it.
void WindowSystem::LoseFocus(HWND handle) {
    const Window* const window = Find(handle);
    if (window == nullptr || !IsWithin(Find(m_focus), handle)) return;
    const HWND owner = window->TopLevel().owner;
    if (window->parent == nullptr && Find(owner) != nullptr && Find(owner)->IsUsable() &&
        Find(owner)->IsShown()) {
        Activate(owner);
    } else {
        SetFocus(nullptr);
    }
}

}  // namespace host
