// Menus, buttons and keys of the desktop.
#include <QApplication>
#include <QActionGroup>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolButton>

#include "apps/qzhost/desktop/Desktop.h"
#include "apps/qzhost/settings/Icons.h"
#include "apps/qzhost/words/Words.h"
#include "host/ed/session.h"

namespace app {
namespace {

constexpr double kZoomStep = 1.5;
constexpr int kIcon = 20;  // pixels

}  // namespace

struct Desktop::MenuRow {
    const char* text;
    const char* icon;
    const wchar_t* command;
    QKeySequence key = {};
};

QAction* Desktop::AddAction(QMenu& menu, const char* text, const char* icon,
                            const QKeySequence& key, const std::function<void()>& run,
                            bool needsIdle) {
    QAction* const action = menu.addAction(Tr(text));
    action->setShortcut(key);
    connect(action, &QAction::triggered, this, run);
    if (needsIdle) m_idleActions.push_back(action);
    if (*icon != '\0') {
        m_icons.emplace_back(action, icon);
        const QString keys = key.toString(QKeySequence::NativeText);
        const QString name = action->text().remove('&').remove("...");
        action->setToolTip(keys.isEmpty() ? name : name + " (" + keys + ")");
        m_bar->addAction(action);
    }
    return action;
}

void Desktop::AddCommands(QMenu& menu, std::initializer_list<MenuRow> rows) {
    for (const MenuRow& row : rows)
        AddAction(menu, row.text, row.icon, row.key, [this, name = row.command] { Run(name); });
}

void Desktop::MakeMenus() {
    m_bar = addToolBar(Tr("Buttons"));
    m_bar->setObjectName("buttons");
    m_bar->setIconSize(QSize(kIcon, kIcon));
    MakeFileMenu();
    m_bar->addSeparator();
    MakeEditMenus();
    m_bar->addSeparator();
    MakeViewMenu();
    MakeDraftingMenu();
    m_bar->addSeparator();
    MakeToolsMenu();
}

void Desktop::MakeFileMenu() {
    QMenu& file = *menuBar()->addMenu(Tr("&File"));
    AddAction(file, Word("New"), "new", QKeySequence::New, [this] { Run(L"_.NEW"); });
    AddAction(file, Word("Open..."), "open", QKeySequence::Open, [this] { AskOpen(); });
    m_recent = file.addMenu(Tr("Open recent"));
    FillRecent();
    AddAction(file, Word("Save"), "save", QKeySequence::Save, [this] { AskSave(false); });
    AddAction(file, Word("Save as..."), "", QKeySequence::SaveAs, [this] { AskSave(true); });
    file.addSeparator();
    AddAction(file, Word("Export page..."), "page", QKeySequence("Ctrl+E"),
              [this] { AskExport(); });
    AddAction(file, Word("Print..."), "print", QKeySequence::Print, [this] { AskPrint(); });
    file.addSeparator();
    AddAction(file, Word("Close"), "", QKeySequence::Close, [this] { Run(L"_.CLOSE"); });
    AddAction(
        file, Word("Quit"), "", QKeySequence("Ctrl+Q"), [this] { close(); }, false);
    AddTabKeys();
}

// Ctrl+Tab and back, as where there is no menu row for it.
void Desktop::AddTabKeys() {
    for (const auto& [key, step] :
         {std::pair{QKeySequence("Ctrl+Tab"), 1}, std::pair{QKeySequence("Ctrl+Shift+Tab"), -1}}) {
        auto* const action = new QAction(this);
        action->setShortcut(key);
        addAction(action);
        connect(action, &QAction::triggered, this, [this, step = step] {
            const int count = m_tabs->count();
            if (count > 0) m_tabs->setCurrentIndex((m_tabs->currentIndex() + count + step) % count);
        });
    }
}

void Desktop::MakeEditMenus() {
    QMenu& edit = *menuBar()->addMenu(Tr("&Edit"));
    AddCommands(edit, {{Word("Undo"), "undo", L"_.U", QKeySequence::Undo},
                       {Word("Redo"), "redo", L"_.REDO", QKeySequence::Redo},
                       {Word("Erase"), "erase", L"_.ERASE"},
                       {Word("Explode"), "explode", L"_.EXPLODE"}});
    // The key alone erases what is picked; it asks nothing.
    auto* const erase = new QAction(this);
    erase->setShortcut(QKeySequence::Delete);
    addAction(erase);
    connect(erase, &QAction::triggered, this, [this] {
        if (curDoc() != nullptr && !curDoc()->imp().pickFirst.empty()) Run(L"_.ERASE");
    });
    m_idleActions.push_back(erase);
    AddAction(edit, Word("Select all"), "", QKeySequence::SelectAll,
              [this] { m_input.PickAllFirst(); });
    m_bar->addSeparator();
    AddCommands(*menuBar()->addMenu(Tr("&Draw")), {{Word("Line"), "line", L"_.LINE"},
                                                   {Word("Polyline"), "polyline", L"_.PLINE"},
                                                   {Word("Arc"), "arc", L"_.ARC"}});
    AddCommands(*menuBar()->addMenu(Tr("&Modify")), {{Word("Move"), "move", L"_.MOVE"},
                                                     {Word("Rotate"), "rotate", L"_.ROTATE"},
                                                     {Word("Scale"), "scale", L"_.SCALE"},
                                                     {Word("Mirror"), "mirror", L"_.MIRROR"}});
    AddCommands(*menuBar()->addMenu(Tr("&Inquiry")),
                {{Word("Distance"), "distance", L"_.DIST"},
                 {Word("Point"), "", L"_.ID"},
                 {Word("List"), "", L"_.LIST"},
                 {Word("Commands"), "", L"_.HELP", Qt::Key_F1}});
}

void Desktop::MakeViewMenu() {
    QMenu& view = *menuBar()->addMenu(Tr("&View"));
    AddAction(
        view, Word("Zoom all"), "zoom all", QKeySequence("Ctrl+0"),
        [this] { m_view->ZoomExtents(); }, false);
    AddAction(
        view, Word("Zoom in"), "zoom in", QKeySequence::ZoomIn,
        [this] { m_view->ZoomBy(kZoomStep); }, false);
    AddAction(
        view, Word("Zoom out"), "zoom out", QKeySequence::ZoomOut,
        [this] { m_view->ZoomBy(1 / kZoomStep); }, false);
    view.addSeparator();
    int number = 0;
    for (QDockWidget* const dock : m_docks) {
        QAction* const action = dock->toggleViewAction();
        action->setShortcut(QKeySequence(QString("Ctrl+%1").arg(++number)));
        view.addAction(action);
    }
    view.addSeparator();
    QMenu& look = *view.addMenu(Tr("Colors"));
    auto* const looks = new QActionGroup(this);
    const Theme now = m_settings ? m_settings->Look() : Theme::kDark;
    for (const auto& [text, theme] :
         {std::pair{Word("As the system"), Theme::kSystem}, std::pair{Word("Dark"), Theme::kDark},
          std::pair{Word("Light"), Theme::kLight}}) {
        QAction* const action = look.addAction(Tr(text));
        action->setCheckable(true);
        action->setChecked(theme == now);
        looks->addAction(action);
        connect(action, &QAction::triggered, this, [this, chosen = theme] {
            if (m_settings) m_settings->SetLook(chosen);
            UseTheme(chosen);
        });
    }
    QMenu& language = *view.addMenu(Tr("Language"));
    auto* const languages = new QActionGroup(this);
    const QString chosen = m_settings ? m_settings->Language() : QString("en");
    for (const auto& [text, code] :
         {std::pair{Tr("As the system"), QString()}, std::pair{QString("English"), QString("en")},
          std::pair{QString("\u4E2D\u6587"), QString("zh")}}) {
        QAction* const action = language.addAction(text);
        action->setCheckable(true);
        action->setChecked(code == chosen);
        languages->addAction(action);
        connect(action, &QAction::triggered, this, [this, wanted = code] {
            if (m_settings) m_settings->SetLanguage(wanted);
            m_line->Output().Line(Tr("The language changes at the next start.").toStdWString());
        });
    }
}

void Desktop::MakeDraftingMenu() {
    QMenu* const drafting = menuBar()->addMenu(Tr("&Drafting"));
    AddToggle(*drafting, Word("Object snap"), Qt::Key_F3, &PointAid::isSnapping);
    AddToggle(*drafting, Word("Ortho"), Qt::Key_F8, &PointAid::isOrtho);
    AddToggle(*drafting, Word("Polar tracking"), Qt::Key_F10, &PointAid::isPolar);
    AddToggle(*drafting, Word("Snap to grid"), Qt::Key_F9, &PointAid::isOnGrid);
    QAction* const grid = drafting->addAction(Tr("Grid"));
    grid->setShortcut(Qt::Key_F7);
    grid->setCheckable(true);
    connect(grid, &QAction::toggled, this,
            [this](bool isOn) { m_view->SetGrid(isOn, m_input.Aid().gridStep); });
    drafting->addSeparator();
    for (const host::SnapModeName& name : host::SnapModeNames()) {
        const std::string label = QString::fromWCharArray(name.label).toStdString();
        QAction* const action = drafting->addAction(Tr(label.c_str()));
        action->setCheckable(true);
        action->setChecked((m_input.Aid().modes & name.mode) != 0);
        connect(action, &QAction::toggled, this, [this, mode = name.mode](bool isOn) {
            unsigned& modes = m_input.Aid().modes;
            modes = isOn ? modes | mode : modes & ~static_cast<unsigned>(mode);
        });
    }
}

void Desktop::MakeToolsMenu() {
    QMenu& tools = *menuBar()->addMenu(Tr("&Tools"));
    AddCommands(tools, {{Word("Envelope"), "envelope", L"QZTOOLDESIGNProfileAuto3D"},
                        {Word("Envelopes, many"), "envelopes", L"QZTOOLDESIGNProfilesAuto3D"}});
    tools.addSeparator();
    const auto toggle = [&](const char* text, const char* icon, const QKeySequence& key, bool isOn,
                            const std::function<void(bool)>& run) {
        QAction* const action = AddAction(
            tools, text, icon, key, [] {}, false);
        action->setCheckable(true);
        action->setChecked(isOn);
        connect(action, &QAction::toggled, this, run);
    };
    const bool hasPreview = !m_settings || m_settings->Flag("preview", true);
    m_reviews->SetPreview(hasPreview);
    toggle(Word("Live preview"), "", {}, hasPreview, [this](bool isOn) {
        if (m_settings) m_settings->SetFlag("preview", isOn);
        m_reviews->SetPreview(isOn);
    });
    toggle(Word("Compare with the exact envelope"), "compare", QKeySequence("Ctrl+K"), false,
           [this](bool isOn) { m_reviews->SetComparing(isOn); });
    tools.addSeparator();
    AddAction(tools, Word("List tools"), "", {}, [this] { m_reviews->ListTools(); });
    AddAction(tools, Word("Compute and export tools..."), "", {},
              [this] { m_reviews->AskCheck(); });
    AddAction(tools, Word("Page of findings..."), "", {}, [this] { m_reviews->AskPage(); });
}

void Desktop::AddToggle(QMenu& menu, const char* text, Qt::Key key, bool PointAid::*state) {
    QAction* const action = menu.addAction(Tr(text));
    action->setShortcut(key);
    action->setCheckable(true);
    action->setChecked(m_input.Aid().*state);
    auto* const button = new QToolButton(this);
    button->setDefaultAction(action);
    button->setFocusPolicy(Qt::NoFocus);
    statusBar()->addPermanentWidget(button);
    connect(action, &QAction::toggled, this, [this, text, state](bool isOn) {
        m_input.Aid().*state = isOn;
        m_line->Output().Line((isOn ? Tr("%1 on") : Tr("%1 off")).arg(Tr(text)).toStdWString());
    });
}

void Desktop::UseTheme(Theme theme) {
    const bool isDark = IsDark(theme);
    ApplyTheme(*this, isDark);
    m_view->SetLight(!isDark);
    m_reviews->SetLight(!isDark);
    ShowIcons();
}

void Desktop::ShowIcons() {
    const QColor ink = palette().color(QPalette::ButtonText);
    for (const auto& [action, name] : m_icons) action->setIcon(MakeIcon(name, ink));
}

}  // namespace app
