#include "apps/qzhost/desktop/Desktop.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDockWidget>
#include <QFileDialog>
#include <QMenuBar>
#include <QStatusBar>
#include <QMessageBox>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <memory>
#include <utility>

#include "accmd.h"
#include "apps/qzhost/session/HostProgram.h"
#include "host/db/build.h"
#include "host/db/highlight.h"
#include "host/ed/builtin_commands.h"
#include "host/ed/session.h"
#include "host/mfc/host_frame.h"
#include "host/mfc/window_system.h"

namespace app {
namespace {

constexpr int kTick = 20;  // milliseconds from a change to the look at it
constexpr double kZoomStep = 1.5;
const char* const kFilter = "Drawings (*.dxf);;All files (*)";

host::Session& Session() { return host::Session::Get(); }

// The host's commands and the modules'.
QStringList CommandNames() {
    QStringList names;
    for (const std::wstring& name : host::BuiltinNames()) names << QString::fromStdWString(name);
    const std::unique_ptr<AcEdCommandIterator> registered(acedRegCmds->iterator());
    for (; !registered->done(); registered->next())
        names << QString::fromWCharArray(registered->command()->globalName());
    names.sort();
    return names;
}

}  // namespace

Desktop::Desktop()
    : m_view(new DrawingView(this)),
      m_line(new CommandLine(this)),
      m_layers(new LayerPanel(this)),
      m_tabs(new QTabBar(this)),
      m_input(*m_view, *m_line, m_driver) {
    setWindowTitle("QZHost");
    resize(1280, 800);
    MakePanels();
    MakeMenus();
    m_view->onClick = [this](const AcGePoint3d& point, bool takesOut) {
        m_input.Click(point, takesOut);
    };
    m_view->onEnter = [this] { Type({}); };
    m_view->onMove = [this](const AcGePoint3d& point) {
        statusBar()->showMessage(QString("%1, %2").arg(point.x, 0, 'f', 4).arg(point.y, 0, 'f', 4));
        m_input.Hover(point);
    };
    m_line->onEnter = [this](const std::wstring& line) { Type(line); };
    m_line->onEscape = [this] {
        if (!m_input.Escape()) m_input.ForgetPickFirst();
    };
    m_line->names = [this] { return m_input.IsAsking() ? QStringList() : CommandNames(); };
    // Behind a word that is no command a blank starts nothing: the whole line is dropped with it.
    m_line->takesBlanks = [this] {
        if (m_input.IsAsking()) return m_input.TakesBlanks();
        const QString typed = m_line->Edit().text();
        return !typed.isEmpty() && !host::IsCommandKnown(typed.toStdWString());
    };
    m_input.onClosing = [this](const auto& documents) { return AskClosing(documents); };
    m_input.onNameForSaving = [this](const AcApDocument& document) {
        return AskSaveName(document);
    };
    m_layers->onSwitch = [this](const std::wstring& layer, bool on) {
        Run(L"_.LAYER\n" + std::wstring(on ? L"ON\n" : L"OFF\n") + layer + L"\n");
    };
    m_input.onChange = [this] { ShowState(); };
    m_input.onQueued = [this] { AskTick(); };
    m_view->onChange = [this] { AskTick(); };
    host::SetHighlightSink([this] { AskTick(); });
    Session().SetInput(&m_input);
    host::WindowSystem::Get().SetDriver(&m_driver);
    m_driver.SetMainWindow(this);
    acDocManager->addReactor(this);
    documentBecameCurrent(Session().Current());
}

Desktop::~Desktop() {
    acDocManager->removeReactor(this);
    host::SetHighlightSink({});
    Session().SetInput(nullptr);
}

void Desktop::MakePanels() {
    auto* const middle = new QWidget(this);
    auto* const layout = new QVBoxLayout(middle);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    m_tabs->setExpanding(false);
    m_tabs->setDocumentMode(true);
    layout->addWidget(m_tabs);
    layout->addWidget(m_view, 1);
    setCentralWidget(middle);
    const struct {
        const char* title;
        QWidget* widget;
        Qt::DockWidgetArea area;
        int size;
        Qt::Orientation along;
    } docks[] = {{"Layers", m_layers, Qt::RightDockWidgetArea, 220, Qt::Horizontal},
                 {"Command line", m_line, Qt::BottomDockWidgetArea, 170, Qt::Vertical}};
    for (const auto& dock : docks) {
        auto* const window = new QDockWidget(dock.title, this);
        window->setWidget(dock.widget);
        window->setFeatures(QDockWidget::DockWidgetMovable);
        addDockWidget(dock.area, window);
        resizeDocks({window}, {dock.size}, dock.along);
    }
    connect(m_tabs, &QTabBar::currentChanged, this, [this](int index) {
        const auto& documents = Session().Documents();
        if (m_isFillingTabs || index < 0 || static_cast<size_t>(index) >= documents.size()) return;
        if (!m_isRunning && !m_input.IsAsking())
            Session().MakeCurrent(documents[static_cast<size_t>(index)].get());
        ShowTabs();
    });
    statusBar();
}

void Desktop::MakeMenus() {
    QToolBar* const bar = addToolBar("Tools");
    bar->setMovable(false);
    QMenu* const file = menuBar()->addMenu("&File");
    QMenu* const edit = menuBar()->addMenu("&Edit");
    QMenu* const view = menuBar()->addMenu("&View");
    QMenu* const tools = menuBar()->addMenu("&Tools");
    const auto add = [&](QMenu* menu, const char* text, const QKeySequence& key, bool needsIdle,
                         const std::function<void()>& run) {
        QAction* const action = menu->addAction(text);
        action->setShortcut(key);
        connect(action, &QAction::triggered, this, run);
        if (needsIdle) m_idleActions.push_back(action);
        bar->addAction(action);
    };
    const auto command = [this](const wchar_t* name) { return [this, name] { Run(name); }; };
    add(file, "New", QKeySequence::New, true, command(L"_.NEW"));
    add(file, "Open...", QKeySequence::Open, true, [this] { AskOpen(); });
    add(file, "Save", QKeySequence::Save, true, [this] { AskSave(false); });
    add(file, "Save as...", QKeySequence(), true, [this] { AskSave(true); });
    add(file, "Close", QKeySequence::Close, true, command(L"_.CLOSE"));
    bar->addSeparator();
    add(edit, "Undo", QKeySequence::Undo, true, command(L"_.U"));
    add(edit, "Redo", QKeySequence::Redo, true, command(L"_.REDO"));
    add(edit, "Erase", QKeySequence(), true, command(L"_.ERASE"));
    add(edit, "Explode", QKeySequence(), true, command(L"_.EXPLODE"));
    // The key alone erases what is picked; it asks nothing.
    auto* const erase = new QAction(this);
    erase->setShortcut(QKeySequence::Delete);
    addAction(erase);
    connect(erase, &QAction::triggered, this, [this] {
        if (curDoc() != nullptr && !curDoc()->imp().pickFirst.empty()) Run(L"_.ERASE");
    });
    m_idleActions.push_back(erase);
    QAction* const all = edit->addAction("Select all");
    all->setShortcut(QKeySequence::SelectAll);
    connect(all, &QAction::triggered, this, [this] { m_input.PickAllFirst(); });
    m_idleActions.push_back(all);
    QMenu* const draw = menuBar()->addMenu("&Draw");
    QMenu* const modify = menuBar()->addMenu("&Modify");
    QMenu* const inquiry = menuBar()->addMenu("&Inquiry");
    const struct {
        QMenu* menu;
        const char* text;
        const wchar_t* command;
    } commands[] = {{draw, "Line", L"_.LINE"},       {draw, "Polyline", L"_.PLINE"},
                    {draw, "Arc", L"_.ARC"},         {modify, "Move", L"_.MOVE"},
                    {modify, "Rotate", L"_.ROTATE"}, {modify, "Scale", L"_.SCALE"},
                    {modify, "Mirror", L"_.MIRROR"}, {inquiry, "Distance", L"_.DIST"},
                    {inquiry, "Point", L"_.ID"},     {inquiry, "List", L"_.LIST"},
                    {inquiry, "Commands", L"_.HELP"}};
    for (const auto& row : commands) {
        QAction* const action = row.menu->addAction(row.text);
        connect(action, &QAction::triggered, this, command(row.command));
        m_idleActions.push_back(action);
        if (row.command == std::wstring(L"_.HELP")) action->setShortcut(Qt::Key_F1);
    }
    bar->addSeparator();
    add(view, "Zoom all", QKeySequence(), false, [this] { m_view->ZoomExtents(); });
    add(view, "Zoom in", QKeySequence::ZoomIn, false, [this] { m_view->ZoomBy(kZoomStep); });
    add(view, "Zoom out", QKeySequence::ZoomOut, false, [this] { m_view->ZoomBy(1 / kZoomStep); });
    QMenu* const drafting = menuBar()->addMenu("&Drafting");
    AddToggle(*drafting, "Object snap", Qt::Key_F3, &PointAid::isSnapping);
    AddToggle(*drafting, "Ortho", Qt::Key_F8, &PointAid::isOrtho);
    AddToggle(*drafting, "Polar tracking", Qt::Key_F10, &PointAid::isPolar);
    AddToggle(*drafting, "Snap to grid", Qt::Key_F9, &PointAid::isOnGrid);
    QAction* const grid = drafting->addAction("Grid");
    grid->setShortcut(Qt::Key_F7);
    grid->setCheckable(true);
    connect(grid, &QAction::toggled, this,
            [this](bool isOn) { m_view->SetGrid(isOn, m_input.Aid().gridStep); });
    drafting->addSeparator();
    for (const host::SnapModeName& name : host::SnapModeNames()) {
        QAction* const action = drafting->addAction(QString::fromWCharArray(name.label));
        action->setCheckable(true);
        action->setChecked((m_input.Aid().modes & name.mode) != 0);
        connect(action, &QAction::toggled, this, [this, mode = name.mode](bool isOn) {
            unsigned& modes = m_input.Aid().modes;
            modes = isOn ? modes | mode : modes & ~static_cast<unsigned>(mode);
        });
    }
    bar->addSeparator();
    add(tools, "Envelope", QKeySequence(), true, command(L"QZTOOLDESIGNProfileAuto3D"));
    add(tools, "Envelopes, many", QKeySequence(), true, command(L"QZTOOLDESIGNProfilesAuto3D"));
}

void Desktop::AddToggle(QMenu& menu, const char* text, Qt::Key key, bool PointAid::*state) {
    QAction* const action = menu.addAction(text);
    action->setShortcut(key);
    action->setCheckable(true);
    action->setChecked(m_input.Aid().*state);
    auto* const button = new QToolButton(this);
    button->setDefaultAction(action);
    button->setFocusPolicy(Qt::NoFocus);
    statusBar()->addPermanentWidget(button);
    connect(action, &QAction::toggled, this, [this, text, state](bool isOn) {
        m_input.Aid().*state = isOn;
        m_line->Output().Line(QString(text).toStdWString() + (isOn ? L" on" : L" off"));
    });
}

void Desktop::Type(const std::wstring& line) {
    if (m_input.IsAsking()) {
        if (!line.empty()) m_line->Output().Line(L" < " + line);
        m_input.Enter(line);
        return;
    }
    Run(line.empty() ? m_lastCommand : line);
}

// Enter alone repeats the last command.
void Desktop::Run(const std::wstring& command) {
    if (m_isRunning || m_input.IsAsking() || command.empty()) return;
    m_lastCommand = command.substr(0, command.find(L'\n'));
    m_line->Output().Line(L"> " + m_lastCommand);
    m_isRunning = true;
    ShowState();
    Session().Execute(command);
    Settle();
    m_isRunning = false;
    m_input.ShowPickFirst();
    m_line->Output().Finish();
    ShowState();
    m_view->Refresh();
}

void Desktop::AskTick() {
    if (std::exchange(m_isTickAsked, true)) return;
    QTimer::singleShot(kTick, this, [this] { Tick(); });
}

void Desktop::Tick() {
    m_isTickAsked = false;
    // What handlers have queued runs when nothing else does.
    const bool isBusy = m_isRunning || m_input.IsAsking() || m_driver.IsInHostLoop();
    if (!isBusy) {
        m_isRunning = true;
        Session().RunQueued();
        m_isRunning = false;
    } else if (Session().HasQueued()) {
        AskTick();
    }
    Refresh();
}

void Desktop::Refresh() {
    m_view->Refresh();
    AcApDocument* const document = Session().Current();
    m_layers->Show(document == nullptr ? nullptr : document->database());
    ShowChanges();
}

// A changed drawing carries a star on its tab and in the title.
void Desktop::ShowChanges() {
    std::vector<bool> changed;
    for (const auto& document : Session().Documents())
        changed.push_back(host::IsModified(*document->database()));
    if (changed != m_changed) ShowTabs();
}

void Desktop::ShowState() {
    const bool isIdle = !m_isRunning && !m_input.IsAsking();
    if (isIdle) AskTick();
    for (QAction* const action : m_idleActions) action->setEnabled(isIdle);
    m_layers->setEnabled(isIdle);
    m_line->Edit().setPlaceholderText(m_input.IsAsking() ? "Answer, or Esc" : "Type a command");
}

void Desktop::ShowTabs() {
    m_isFillingTabs = true;
    m_changed.clear();
    while (m_tabs->count() > 0) m_tabs->removeTab(0);
    for (const auto& document : Session().Documents()) {
        m_changed.push_back(host::IsModified(*document->database()));
        const QString name = QString::fromWCharArray(document->docTitle());
        const int index = m_tabs->addTab(m_changed.back() ? name + "*" : name);
        m_tabs->setTabToolTip(index, QString::fromWCharArray(document->fileName()));
        if (document.get() == Session().Current()) m_tabs->setCurrentIndex(index);
    }
    m_isFillingTabs = false;
    const AcApDocument* const current = Session().Current();
    setWindowTitle(current == nullptr
                       ? QString("QZHost")
                       : QString::fromWCharArray(current->docTitle()) + "[*] - QZHost");
    setWindowModified(current != nullptr && host::IsModified(*current->database()));
}

void Desktop::documentBecameCurrent(AcApDocument* document) {
    m_view->SetDocument(document);
    ShowTabs();
    AskTick();
}

void Desktop::documentToBeDestroyed(AcApDocument* document) {
    m_view->SetDocument(nullptr);
    m_view->Forget(document);
}

void Desktop::documentTitleUpdated(AcApDocument*) { ShowTabs(); }

void Desktop::AskOpen() {
    const QString path = QFileDialog::getOpenFileName(this, "Open drawing", {}, kFilter);
    if (path.isEmpty()) return;
    m_line->Output().Line(L"> OPEN " + path.toStdWString());
    Session().Open(path.toStdWString());
    Settle();
}

void Desktop::AskSave(bool asksName) {
    AcApDocument* const document = Session().Current();
    if (document == nullptr) return;
    if (!asksName && document->imp().isTitled) return Run(L"_.QSAVE");
    const std::wstring path = AskSaveName(*document);
    if (!path.empty()) Run(L"_.SAVEAS\n" + path);
}

std::wstring Desktop::AskSaveName(const AcApDocument& document) {
    const QString name = QString::fromWCharArray(document.fileName());
    QFileDialog dialog(this, "Save drawing", name, kFilter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("dxf");
    dialog.selectFile(name);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return dialog.selectedFiles().first().toStdWString();
}

host::ClosingChoice Desktop::AskClosing(const std::vector<AcApDocument*>& documents) {
    QStringList names;
    for (const AcApDocument* const document : documents)
        names << QString::fromWCharArray(document->docTitle());
    const QString text = names.size() == 1
                             ? QString("%1 has changes that are not saved.").arg(names[0])
                             : QString("%1 drawings have changes that are not saved:\n%2")
                                   .arg(names.size())
                                   .arg(names.join("\n"));
    QMessageBox box(QMessageBox::Question, "QZHost", text,
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::Save);
    switch (box.exec()) {
        case QMessageBox::Save:
            return host::ClosingChoice::kSave;
        case QMessageBox::Discard:
            return host::ClosingChoice::kDiscard;
        default:
            return host::ClosingChoice::kStay;
    }
}

// Tab moves between points to snap to while one is asked, not between widgets.
bool Desktop::event(QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* const key = static_cast<QKeyEvent*>(event);
        if ((key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) && m_input.CycleSnap())
            return true;
    }
    return QMainWindow::event(event);
}

// What is typed goes to the command line, wherever the focus is. A key that the line itself has
// handed back is nobody's.
void Desktop::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && m_input.Escape()) return;
    if (event->key() == Qt::Key_Escape) m_input.ForgetPickFirst();
    QLineEdit& edit = m_line->Edit();
    const bool isText = !event->text().isEmpty() && event->text()[0].isPrint() &&
                        !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    const int keys[] = {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Backspace,
                        Qt::Key_Up,     Qt::Key_Down,  Qt::Key_Escape};
    const bool isForLine =
        isText || std::find(std::begin(keys), std::end(keys), event->key()) != std::end(keys);
    if (!isForLine || m_isHandingOn) return QMainWindow::keyPressEvent(event);
    m_isHandingOn = true;
    edit.setFocus();
    QCoreApplication::sendEvent(&edit, event);
    m_isHandingOn = false;
}

void Desktop::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (!m_isLeaving) {
        std::vector<AcApDocument*> documents;
        for (const auto& document : Session().Documents()) documents.push_back(document.get());
        if (!Session().MayClose(documents)) return;
        m_isLeaving = true;
    }
    // What waits inside a prompt has to come back first.
    if (m_input.IsAsking() || m_isRunning || m_driver.IsInHostLoop()) {
        m_input.GiveUp();
        QTimer::singleShot(0, this, [this] { close(); });
        return;
    }
    EndHost();
    event->accept();
}

}  // namespace app
