// Windows on the desktop, by Qt Widgets.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <map>
#include <set>

#include "host/mfc/window_driver.h"

namespace host {

// Shows the host's windows as widgets. Widgets hold no state of their own: what a user does goes
// into the host's queue, and what the host changes comes back through Changed. Needs a QApplication
// that lives longer; works with the offscreen platform too.
//
// Under QApplication::exec waiting messages are handled whenever Qt is idle; the host's own loops
// (modal dialogs, pumps) run Qt's events through Wait and Poll.
class QtWindowDriver : public QObject, public WindowDriver {
public:
    QtWindowDriver();
    ~QtWindowDriver() override;

    // The program's window, which stands for the host's frame: dialogs are centred on it and stay
    // in front of it. Not owned. When it closes, it should call CloseHostWindows first: dialogs
    // answer a closing by Qt (QApplication::quit asks every window) only through their own
    // messages.
    void SetMainWindow(QWidget* window);

    // A loop of the host, a modal dialog's or a prompt's, has called Qt.
    bool IsInHostLoop() const { return m_polling > 0; }

    // A window's control may have been used; the host's queue has not been handled yet.
    std::function<void()> onInput;

    void Created(const Window& window) override;
    void Destroyed(const Window& window) override;
    void Changed(const Window& window, WindowChange change) override;
    void Posted() override;
    void Poll() override;
    bool Wait() override;
    int ShowBox(const BoxRequest& request) override;
    int ShowMenu(const MenuRequest& request) override;
    std::optional<std::wstring> ChooseFile(const ChooserRequest& request) override;
    std::optional<std::wstring> ChooseFolder(const ChooserRequest& request) override;
    bool Capture(const std::wstring& path, std::wstring& reason) override;

private:
    QWidget* Find(HWND handle) const;  // null when Qt has deleted it
    void Refresh();                    // shows the rows of stale lists
    void OnIdle();                     // handles what waits, when no loop of ours does

    QPointer<QWidget> m_main;
    HWND m_frame = nullptr;
    std::map<HWND, QPointer<QWidget>> m_widgets;  // of dialogs and their controls
    std::set<HWND> m_stale;                       // lists whose rows are to be shown anew
    int m_polling = 0;                            // inside Qt's events, called from a loop of ours
    bool m_isIdleAsked = false;
};

}  // namespace host
