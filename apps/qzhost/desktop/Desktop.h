// The host on the desktop: drawing, command line, layers, and the modules' dialogs.
#pragma once

#include <QDockWidget>
#include <QMainWindow>
#include <QTabBar>
#include <QTimer>
#include <QToolBar>
#include <deque>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "acdocman.h"
#include "apps/qzhost/desktop/DesktopInput.h"
#include "apps/qzhost/desktop/ReviewDesk.h"
#include "apps/qzhost/panels/LayerPanel.h"
#include "apps/qzhost/panels/PropertyPanel.h"
#include "apps/qzhost/settings/Autosave.h"
#include "apps/qzhost/settings/Settings.h"

namespace app {

// Needs a QApplication. Takes prompts and windows for its own life.
class Desktop : public QMainWindow, public AcApDocManagerReactor {
public:
    // isKept  settings and automatic copies are its user's, from one start to the next
    explicit Desktop(bool isKept = false);
    ~Desktop() override;
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    DrawingView& View() { return *m_view; }
    CommandLine& Line() { return *m_line; }
    LayerPanel& Layers() { return *m_layers; }
    PropertyPanel& Properties() { return *m_properties; }
    DesktopInput& Input() { return m_input; }
    host::QtWindowDriver& Driver() { return m_driver; }

    // As typed on the command line, or as an answer when something is asked.
    //
    // isByBlank  a blank ended it: behind a word that is no command, what comes next is dropped
    void Type(const std::wstring& line, bool isByBlank = false);

    // Shows the drawing and its layers as they are now.
    void Refresh();

    // Offers what an earlier run has left behind. False when there is nothing.
    bool OfferRescue();
    void OpenFiles(const QStringList& paths);

    void documentBecameCurrent(AcApDocument* document) override;
    void documentToBeDestroyed(AcApDocument* document) override;
    void documentTitleUpdated(AcApDocument* document) override;

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void ConnectInput();
    void MakePanels();
    QDockWidget* AddPanel(const char* title, const char* name, QWidget* widget,
                          Qt::DockWidgetArea area);
    // False when it is no command.
    bool Run(const std::wstring& command);
    // Takes what was typed while nobody could take it.
    void TakeTypedAhead();
    // Looks soon at what has changed; nothing runs while nothing happens.
    void AskTick();
    void Tick();
    void ShowTabs();
    void ShowState();
    void ShowChanges();
    void ChangeLayer(const std::wstring& layer, const std::wstring& option,
                     const std::wstring& value);

    // Menus (DesktopMenus.cpp).
    struct MenuRow;
    void MakeMenus();
    void MakeFileMenu();
    void AddTabKeys();
    void MakeEditMenus();
    void MakeViewMenu();
    void MakeDraftingMenu();
    void MakeToolsMenu();
    QAction* AddAction(QMenu& menu, const char* text, const char* icon, const QKeySequence& key,
                       const std::function<void()>& run, bool needsIdle = true);
    void AddCommands(QMenu& menu, std::initializer_list<MenuRow> rows);
    void AddToggle(QMenu& menu, const char* text, Qt::Key key, bool PointAid::*state);
    void UseTheme(Theme theme);
    void ShowIcons();

    // Files (DesktopFiles.cpp).
    void AskOpen();
    void AskSave(bool asksName);
    std::wstring AskSaveName(const AcApDocument& document);
    host::ClosingChoice AskClosing(const std::vector<AcApDocument*>& documents);
    void AddRecent(const QString& path);
    void FillRecent();
    void AskExport();
    void AskPrint();
    bool MayCopy() const;
    void SaveCopies();
    bool MayPlot() const;

    host::QtWindowDriver m_driver;
    std::unique_ptr<Settings> m_settings;  // null: nothing is kept
    std::unique_ptr<Autosave> m_autosave;
    QTimer m_autosaveTimer;
    DrawingView* m_view;
    CommandLine* m_line;
    LayerPanel* m_layers;
    PropertyPanel* m_properties;
    QTabBar* m_tabs;
    ReviewDesk* m_reviews;
    DesktopInput m_input;
    std::wstring m_lastCommand;
    struct Typed {
        std::wstring line;
        bool isByBlank;
    };
    std::deque<Typed> m_typedAhead;
    bool m_isDropping = false;  // the rest of a line that began with no command
    QMenu* m_recent = nullptr;
    QToolBar* m_bar = nullptr;
    std::vector<QDockWidget*> m_docks;
    std::vector<std::pair<QAction*, QString>> m_icons;  // by name
    std::vector<QAction*> m_idleActions;                // not while something is asked
    bool m_isRunning = false;
    bool m_isTickAsked = false;
    bool m_isFillingTabs = false;
    bool m_isHandingOn = false;   // a key to the command line
    bool m_isLeaving = false;     // the question about changes has been answered
    std::vector<bool> m_changed;  // by document, as shown
};

}  // namespace app
