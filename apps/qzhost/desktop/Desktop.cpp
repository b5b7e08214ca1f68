#include "apps/qzhost/desktop/Desktop.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QStatusBar>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "accmd.h"
#include "apps/qzhost/session/HostProgram.h"
#include "apps/qzhost/words/Words.h"
#include "host/db/build.h"
#include "host/db/highlight.h"
#include "host/ed/builtin_commands.h"
#include "host/ed/layer_changes.h"
#include "host/ed/point_text.h"
#include "host/ed/session.h"
#include "host/mfc/window_system.h"

namespace app {
namespace {

constexpr int kTick = 20;  // milliseconds from a change to the look at it

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

// As a pattern that nothing but the name itself matches.
std::wstring PatternOf(const std::wstring& name) {
    std::wstring pattern;
    for (const wchar_t c : name) {
        if (std::wstring(L"#@.*?~[]-,`").find(c) != std::wstring::npos) pattern += L'`';
        pattern += c;
    }
    return pattern;
}

}  // namespace

Desktop::Desktop(bool isKept)
    : m_settings(isKept ? std::make_unique<Settings>() : nullptr),
      m_autosave(isKept ? std::make_unique<Autosave>() : nullptr),
      m_view(new DrawingView(this)),
      m_line(new CommandLine(this)),
      m_layers(new LayerPanel(this)),
      m_properties(new PropertyPanel(this)),
      m_tabs(new QTabBar(this)),
      m_reviews(new ReviewDesk(*m_view, this)),
      m_input(*m_view, *m_line, m_driver) {
    setWindowTitle("QZHost");
    resize(1280, 800);
    setAcceptDrops(true);
    if (m_settings) m_settings->RestoreAids(m_input.Aid());
    MakePanels();
    MakeMenus();
    if (m_settings) m_settings->RestoreWindow(*this);
    UseTheme(m_settings ? m_settings->Look() : Theme::kDark);
    ConnectInput();
    host::SetHighlightSink([this] { AskTick(); });
    Session().SetInput(&m_input);
    host::WindowSystem::Get().SetDriver(&m_driver);
    m_driver.SetMainWindow(this);
    acDocManager->addReactor(this);
    documentBecameCurrent(Session().Current());
    connect(&m_autosaveTimer, &QTimer::timeout, this, [this] { SaveCopies(); });
    m_autosaveTimer.setSingleShot(true);
}

Desktop::~Desktop() {
    acDocManager->removeReactor(this);
    host::SetHighlightSink({});
    Session().SetInput(nullptr);
}

void Desktop::ConnectInput() {
    m_view->onClick = [this](const AcGePoint3d& point, bool takesOut) {
        m_input.Click(point, takesOut);
    };
    m_view->onEnter = [this] { Type({}); };
    m_view->onMove = [this](const AcGePoint3d& point) {
        statusBar()->showMessage(QString("%1, %2").arg(point.x, 0, 'f', 4).arg(point.y, 0, 'f', 4));
        m_input.Hover(point);
    };
    m_line->onEnter = [this](const std::wstring& line, bool isByBlank) { Type(line, isByBlank); };
    m_line->onEscape = [this] {
        m_typedAhead.clear();
        m_isDropping = false;
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
    m_input.onPicked = [this](const std::vector<AcDbObjectId>& ids) {
        m_properties->Show(ids);
        if (ids.size() == 1 && IsEnvelope(ids[0])) m_reviews->Solids().Choose(ids[0]);
    };
    m_input.onGrip = [this](const AcGePoint3d& at) {
        Run(L"_.GRIP\n" + host::PointText(at) + L"\n");
    };
    m_input.onToolPicked = [this](const std::vector<AcDbObjectId>& ids, const AcGePoint3d& at) {
        m_reviews->SetTool(ids, at);
    };
    m_input.onChange = [this] { ShowState(); };
    m_input.onQueued = [this] { AskTick(); };
    m_layers->onChange = [this](const std::wstring& layer, const std::wstring& option,
                                const std::wstring& value) { ChangeLayer(layer, option, value); };
    m_properties->onChange = [this](const std::wstring& name, const std::wstring& value) {
        Run(L"_.PROPERTIES\n" + name + L"\n" + value + L"\n\n");
        m_input.ShowPickFirst();
        m_line->Edit().setFocus();
    };
    m_view->onChange = [this] {
        m_reviews->DrawingChanged();
        if (m_autosave && Session().Current() != nullptr) {
            m_autosave->Note(Session().Current());
            if (!m_autosaveTimer.isActive()) m_autosaveTimer.start(m_autosave->Pause());
        }
        AskTick();
    };
    m_driver.onInput = [this] { m_reviews->DialogTouched(); };
    m_reviews->mayWork = [this] { return !m_isRunning && !m_input.IsAsking(); };
    m_reviews->onSaid = [this](const QString& text) { m_line->Output().Line(text.toStdWString()); };
}

// While a command waits, the layer is changed beside it; else it is a command of its own.
void Desktop::ChangeLayer(const std::wstring& layer, const std::wstring& option,
                          const std::wstring& value) {
    if (!m_isRunning && !m_input.IsAsking()) {
        const std::wstring name = option == L"SET" ? layer : PatternOf(layer);
        Run(L"_.LAYER\n" + option + L"\n" + (value.empty() ? L"" : value + L"\n") + name + L"\n\n");
        return;
    }
    std::wstring reason;
    if (curDoc() != nullptr &&
        !host::ChangeLayer(*curDoc()->database(), layer, option, value, reason))
        m_line->Output().Line(reason);
    Refresh();
}

QDockWidget* Desktop::AddPanel(const char* title, const char* name, QWidget* widget,
                               Qt::DockWidgetArea area) {
    auto* const dock = new QDockWidget(Tr(title), this);
    dock->setObjectName(name);
    dock->setWidget(widget);
    addDockWidget(area, dock);
    m_docks.push_back(dock);
    return dock;
}

void Desktop::MakePanels() {
    auto* const middle = new QWidget(this);
    auto* const layout = new QVBoxLayout(middle);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    m_tabs->setObjectName("documents");
    m_tabs->setExpanding(false);
    m_tabs->setDocumentMode(true);
    layout->addWidget(m_tabs);
    layout->addWidget(m_view, 1);
    setCentralWidget(middle);
    QDockWidget* const layers =
        AddPanel(Word("Layers"), "layers", m_layers, Qt::RightDockWidgetArea);
    QDockWidget* const properties =
        AddPanel(Word("Properties"), "properties", m_properties, Qt::RightDockWidgetArea);
    QDockWidget* const tools =
        AddPanel(Word("Tools"), "tools", &m_reviews->Tools(), Qt::RightDockWidgetArea);
    QDockWidget* const solid =
        AddPanel(Word("Solid"), "solid", &m_reviews->Solids(), Qt::RightDockWidgetArea);
    QDockWidget* const line =
        AddPanel(Word("Command line"), "line", m_line, Qt::BottomDockWidgetArea);
    QDockWidget* const findings =
        AddPanel(Word("Findings"), "findings", &m_reviews->Findings(), Qt::BottomDockWidgetArea);
    tabifyDockWidget(layers, properties);
    tabifyDockWidget(properties, tools);
    layers->raise();
    splitDockWidget(line, findings, Qt::Horizontal);
    line->setFeatures(QDockWidget::DockWidgetMovable);
    resizeDocks({layers, solid}, {380, 380}, Qt::Horizontal);
    resizeDocks({layers, solid}, {280, 360}, Qt::Vertical);
    resizeDocks({line}, {170}, Qt::Vertical);
    resizeDocks({line, findings}, {620, 380}, Qt::Horizontal);
    connect(m_tabs, &QTabBar::currentChanged, this, [this](int index) {
        const auto& documents = Session().Documents();
        if (m_isFillingTabs || index < 0 || static_cast<size_t>(index) >= documents.size()) return;
        if (!m_isRunning && !m_input.IsAsking())
            Session().MakeCurrent(documents[static_cast<size_t>(index)].get());
        ShowTabs();
    });
    statusBar();
}

void Desktop::Type(const std::wstring& line, bool isByBlank) {
    if (m_isDropping) {
        m_isDropping = isByBlank;
        return;
    }
    // Between an answer and what follows it somebody who types fast is a line ahead.
    if (m_input.IsAnswered() || (m_isRunning && !m_input.IsAsking())) {
        m_typedAhead.push_back({line, isByBlank});
        return;
    }
    if (m_input.IsAsking()) {
        if (!line.empty()) m_line->Output().Line(L" < " + line);
        m_input.Enter(line);
        return;
    }
    if (Run(line.empty() ? m_lastCommand : line) || !isByBlank) return;
    // What stands behind a word that is no command starts nothing.
    m_isDropping = true;
    while (m_isDropping && !m_typedAhead.empty()) {
        m_isDropping = m_typedAhead.front().isByBlank;
        m_typedAhead.pop_front();
    }
}

void Desktop::TakeTypedAhead() {
    if (m_typedAhead.empty() || m_input.IsAnswered() || (m_isRunning && !m_input.IsAsking()))
        return;
    const Typed typed = m_typedAhead.front();
    m_typedAhead.pop_front();
    if (!m_typedAhead.empty()) QTimer::singleShot(0, this, [this] { TakeTypedAhead(); });
    Type(typed.line, typed.isByBlank);
}

// Enter alone repeats the last command.
bool Desktop::Run(const std::wstring& command) {
    // A key pressed while the last command comes to its end is meant for what follows.
    if (m_isRunning && !m_input.IsAsking()) m_typedAhead.push_back({command, false});
    if (m_isRunning || m_input.IsAsking() || command.empty()) return true;
    m_lastCommand = command.substr(0, command.find(L'\n'));
    m_line->Output().Line(L"> " + m_lastCommand);
    m_isRunning = true;
    ShowState();
    const bool isKnown = Session().Execute(command);
    Settle();
    m_isRunning = false;
    m_input.ShowPickFirst();
    m_line->Output().Finish();
    ShowState();
    m_view->Refresh();
    return isKnown;
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
    m_reviews->Work();
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
    if (!m_typedAhead.empty()) QTimer::singleShot(0, this, [this] { TakeTypedAhead(); });
    for (QAction* const action : m_idleActions) action->setEnabled(!m_input.IsAsking());
    m_properties->setEnabled(isIdle);
    m_line->Edit().setPlaceholderText(m_input.IsAsking() ? Tr("Answer, or Esc")
                                                         : Tr("Type a command"));
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
    m_reviews->SetDocument(document);
    m_properties->Show({});
    if (document != nullptr && document->imp().isTitled)
        AddRecent(QString::fromWCharArray(document->fileName()));
    ShowTabs();
    AskTick();
}

void Desktop::documentToBeDestroyed(AcApDocument* document) {
    m_view->SetDocument(nullptr);
    m_view->Forget(document);
    m_reviews->SetDocument(nullptr);
    if (m_autosave) m_autosave->Forget(document);
}

void Desktop::documentTitleUpdated(AcApDocument* document) {
    if (document->imp().isTitled) AddRecent(QString::fromWCharArray(document->fileName()));
    ShowTabs();
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
    if (m_settings) {
        m_settings->KeepWindow(*this);
        m_settings->KeepAids(m_input.Aid());
    }
    if (m_autosave) m_autosave->ForgetAll();
    EndHost();
    event->accept();
}

}  // namespace app
