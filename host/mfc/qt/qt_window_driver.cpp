#include "host/mfc/qt/qt_window_driver.h"

#include <QGuiApplication>
#include <QTimer>
#include <utility>

#include "host/mfc/qt/widgets.h"
#include "host/mfc/window_system.h"

namespace host {

QtWindowDriver::QtWindowDriver() = default;

QtWindowDriver::~QtWindowDriver() {
    if (&WindowSystem::Get().Driver() == this) WindowSystem::Get().SetDriver(nullptr);
    for (auto& [handle, widget] : m_widgets)
        if (widget && widget->isWindow()) delete widget.data();
}

QWidget* QtWindowDriver::Find(HWND handle) const {
    const auto found = m_widgets.find(handle);
    return found == m_widgets.end() ? nullptr : found->second.data();
}

void QtWindowDriver::SetMainWindow(QWidget* window) {
    m_main = window;
    Window* const frame = WindowSystem::Get().Find(m_frame);
    if (window == nullptr || frame == nullptr) return;
    const QRect place = window->frameGeometry();
    frame->bounds = {place.left(), place.top(), place.left() + place.width(),
                     place.top() + place.height()};
}

void QtWindowDriver::Created(const Window& window) {
    if (window.kind == WindowKind::kFrame) {
        m_frame = window.handle;
        SetMainWindow(m_main);
        return;
    }
    if (window.kind != WindowKind::kDialog) return;
    QWidget* const owner = Find(window.owner) != nullptr ? Find(window.owner) : m_main.data();
    QWidget* const widget = MakeDialogWidget(window, owner);
    m_widgets[window.handle] = widget;
    for (const Window* const child : window.children) {
        QWidget* const control = MakeControlWidget(*child, widget);
        m_widgets[child->handle] = control;
        ShowAll(*control, *child);
    }
    ShowAll(*widget, window);
    widget->setVisible(window.Has(WS_VISIBLE));
}

void QtWindowDriver::Destroyed(const Window& window) {
    QWidget* const widget = Find(window.handle);
    for (const Window* const child : window.children) {
        m_widgets.erase(child->handle);
        m_stale.erase(child->handle);
    }
    m_widgets.erase(window.handle);
    if (widget == nullptr) return;
    // An event of this very widget may be under way.
    widget->hide();
    widget->setParent(nullptr);
    widget->deleteLater();
}

void QtWindowDriver::Changed(const Window& window, WindowChange change) {
    if (window.handle == m_frame && change == WindowChange::kEnabled && m_main)
        m_main->setAttribute(Qt::WA_TransparentForMouseEvents, window.Has(WS_DISABLED));
    QWidget* const widget = Find(window.handle);
    if (widget == nullptr) return;
    switch (change) {
        case WindowChange::kText:
            return ShowText(*widget, window);
        case WindowChange::kCheck:
            return ShowCheck(*widget, window);
        case WindowChange::kShown:
            return widget->setVisible(window.Has(WS_VISIBLE));
        case WindowChange::kEnabled:
            return ShowEnabled(*widget, window);
        case WindowChange::kBounds:
            return ShowPlace(*widget, window);
        case WindowChange::kFont:
            return ShowFont(*widget, window);
        case WindowChange::kFocus:
            if (!widget->hasFocus()) widget->setFocus(Qt::OtherFocusReason);
            return;
        case WindowChange::kSelection:
            if (window.kind == WindowKind::kEdit) return ShowSelection(*widget, window);
            [[fallthrough]];
        case WindowChange::kColumns:
        case WindowChange::kRows:
            // Rows come one by one; they are shown together.
            m_stale.insert(window.handle);
            return Posted();
        case WindowChange::kProgress:
            return ShowProgress(*widget, window);
        case WindowChange::kRaised:
            // The offscreen platform complains about it.
            if (QGuiApplication::platformName() != QLatin1String("offscreen")) widget->raise();
            return widget->activateWindow();
    }
}

void QtWindowDriver::Refresh() {
    for (const HWND handle : std::exchange(m_stale, {})) {
        QWidget* const widget = Find(handle);
        const Window* const window = WindowSystem::Get().Find(handle);
        if (widget != nullptr && window != nullptr) ShowList(*widget, *window);
    }
}

void QtWindowDriver::Posted() {
    if (onInput) onInput();
    if (std::exchange(m_isIdleAsked, true)) return;
    QTimer::singleShot(0, this, [this] { OnIdle(); });
}

// Only for Qt's own loop: a loop of the host handles its messages itself.
void QtWindowDriver::OnIdle() {
    m_isIdleAsked = false;
    if (m_polling == 0) WindowSystem::Get().DispatchPending();
    Refresh();
}

void QtWindowDriver::Poll() {
    Refresh();
    ++m_polling;
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    --m_polling;
}

bool QtWindowDriver::Wait() {
    Refresh();
    ++m_polling;
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    --m_polling;
    return !QCoreApplication::closingDown();
}

}  // namespace host
