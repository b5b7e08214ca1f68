#include "host/mfc/qt/control_events.h"

#include <QFocusEvent>
#include <QKeyEvent>

#include "host/mfc/window_system.h"

namespace host {
namespace {

struct KeyName {
    int qt;
    UINT windows;
    bool movesInText;  // edit boxes and lists use it themselves
};
const KeyName kKeys[] = {{Qt::Key_Return, VK_RETURN, false}, {Qt::Key_Enter, VK_RETURN, false},
                         {Qt::Key_Escape, VK_ESCAPE, false}, {Qt::Key_Tab, VK_TAB, false},
                         {Qt::Key_Backtab, VK_TAB, false},   {Qt::Key_Left, VK_LEFT, true},
                         {Qt::Key_Up, VK_UP, true},          {Qt::Key_Right, VK_RIGHT, true},
                         {Qt::Key_Down, VK_DOWN, true}};

// The message is handled later, when the shift key may be up again; so the input sets it.
void PostKey(HWND handle, UINT key, bool isShift) {
    if (key == VK_ESCAPE) {
        // As the message itself: a long run looks for it in the queue.
        WindowSystem::Get().Post(handle, WM_KEYDOWN, key, 0);
        return;
    }
    WindowSystem::Get().PostInput(handle, [=] {
        WindowSystem& system = WindowSystem::Get();
        system.SetShiftDown(isShift);
        MSG message = {handle, WM_KEYDOWN, key, 0, 0, {0, 0}};
        if (!AfxPreTranslateMessage(&message)) system.Dispatch(message);
        system.SetShiftDown(false);
    });
}

}  // namespace

bool ControlEvents::eventFilter(QObject* watched, QEvent* event) {
    const Window* const window = WindowSystem::Get().Find(m_handle);
    if (window == nullptr) return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        const HWND handle = m_handle;
        if (window->parent != nullptr &&
            (reason == Qt::MouseFocusReason || reason == Qt::ShortcutFocusReason))
            WindowSystem::Get().PostInput(handle,
                                          [handle] { WindowSystem::Get().SetFocus(handle); });
        return false;
    }
    if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
    if (!window->IsUsable()) return true;
    const auto* const key = static_cast<QKeyEvent*>(event);
    const bool hasText = window->kind == WindowKind::kEdit || window->kind == WindowKind::kList;
    const bool wantsReturn = window->kind == WindowKind::kEdit && window->Has(ES_WANTRETURN);
    for (const KeyName& name : kKeys) {
        if (name.qt != key->key() || (name.movesInText && hasText)) continue;
        if (name.windows == VK_RETURN && wantsReturn) continue;
        PostKey(m_handle, name.windows,
                name.qt == Qt::Key_Backtab || (key->modifiers() & Qt::ShiftModifier));
        return true;
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace host
