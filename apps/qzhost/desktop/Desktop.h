// The host on the desktop: drawing, command line, layers, and the modules' dialogs.
#pragma once

#include <QMainWindow>
#include <QTabBar>
#include <QTimer>

#include "acdocman.h"
#include "apps/qzhost/desktop/DesktopInput.h"
#include "apps/qzhost/panels/LayerPanel.h"

namespace app {

// Needs a QApplication. Takes prompts and windows for its own life.
class Desktop : public QMainWindow, public AcApDocManagerReactor {
public:
    Desktop();
    ~Desktop() override;
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    DrawingView& View() { return *m_view; }
    CommandLine& Line() { return *m_line; }
    LayerPanel& Layers() { return *m_layers; }
    DesktopInput& Input() { return m_input; }
    host::QtWindowDriver& Driver() { return m_driver; }

    // As typed on the command line, or as an answer when something is asked.
    void Type(const std::wstring& line);

    // Shows the drawing and its layers as they are now.
    void Refresh();

    void documentBecameCurrent(AcApDocument* document) override;
    void documentToBeDestroyed(AcApDocument* document) override;
    void documentTitleUpdated(AcApDocument* document) override;

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void MakeMenus();
    void MakePanels();
    void Run(const std::wstring& command);
    // Looks soon at what has changed; nothing runs while nothing happens.
    void AskTick();
    void Tick();
    void ShowTabs();
    void ShowState();
    void ShowChanges();
    void AskOpen();
    void AskSave(bool asksName);
    std::wstring AskSaveName(const AcApDocument& document);
    host::ClosingChoice AskClosing(const std::vector<AcApDocument*>& documents);
    void AddToggle(QMenu& menu, const char* text, Qt::Key key, bool PointAid::*state);

    host::QtWindowDriver m_driver;
    DrawingView* m_view;
    CommandLine* m_line;
    LayerPanel* m_layers;
    QTabBar* m_tabs;
    DesktopInput m_input;
    std::wstring m_lastCommand;
    std::vector<QAction*> m_idleActions;  // not while something is asked
    bool m_isRunning = false;
    bool m_isTickAsked = false;
    bool m_isFillingTabs = false;
    bool m_isHandingOn = false;   // a key to the command line
    bool m_isLeaving = false;     // the question about changes has been answered
    std::vector<bool> m_changed;  // by document, as shown
};

}  // namespace app
