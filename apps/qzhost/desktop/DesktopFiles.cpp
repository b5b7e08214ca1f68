// Files of the desktop: opening, saving, what was open before, paper, automatic copies.
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPrintDialog>
#include <QPrinter>

#include "apps/qzhost/desktop/Desktop.h"
#include "apps/qzhost/output/PlotDialog.h"
#include "apps/qzhost/session/HostProgram.h"
#include "apps/qzhost/words/Words.h"
#include "host/dwg/drawing_file.h"
#include "host/ed/session.h"
#include "host/solid/revolve.h"

namespace app {
namespace {

host::Session& Session() { return host::Session::Get(); }

constexpr int kAfterFailure = 60 * 1000;  // milliseconds until a copy is tried again

// DWG only where something here can read it.
QString DrawingFilter() {
    return host::dwg::HasConverter() ? Tr("Drawings (*.dxf *.dwg);;All files (*)")
                                     : Tr("Drawings (*.dxf);;All files (*)");
}

// Files that were dragged here.
QStringList FilesOf(const QMimeData& data) {
    QStringList paths;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile()) paths << url.toLocalFile();
    return paths;
}

}  // namespace

void Desktop::OpenFiles(const QStringList& paths) {
    if (m_isRunning || m_input.IsAsking()) return;
    for (const QString& path : paths) {
        m_line->Output().Line(L"> OPEN " + path.toStdWString());
        Session().OpenOnce(path.toStdWString());
        Settle();
    }
}

void Desktop::AskOpen() {
    OpenFiles(QFileDialog::getOpenFileNames(this, Tr("Open drawing"), {}, DrawingFilter()));
}

void Desktop::AskSave(bool asksName) {
    AcApDocument* const document = Session().Current();
    if (document == nullptr) return;
    if (!asksName && document->imp().isTitled) {
        Run(L"_.QSAVE");
        return;
    }
    const std::wstring path = AskSaveName(*document);
    if (!path.empty()) Run(L"_.SAVEAS\n" + path);
}

std::wstring Desktop::AskSaveName(const AcApDocument& document) {
    const QString name = QString::fromWCharArray(document.fileName());
    QFileDialog dialog(this, Tr("Save drawing"), name, DrawingFilter());
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
    const QString text = names.size() == 1 ? Tr("%1 has changes that are not saved.").arg(names[0])
                                           : Tr("%1 drawings have changes that are not saved:\n%2")
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

void Desktop::AddRecent(const QString& path) {
    if (!m_settings) return;
    m_settings->AddRecent(path);
    FillRecent();
}

void Desktop::FillRecent() {
    m_recent->clear();
    const QStringList recent = m_settings ? m_settings->Recent() : QStringList();
    int number = 0;
    for (const QString& path : recent) {
        QAction* const action = m_recent->addAction(
            QString("&%1 %2").arg(++number % 10).arg(QFileInfo(path).fileName()));
        action->setToolTip(path);
        action->setStatusTip(path);
        connect(action, &QAction::triggered, this, [this, path] { OpenFiles({path}); });
    }
    m_recent->setEnabled(!recent.isEmpty());
}

void Desktop::dragEnterEvent(QDragEnterEvent* event) {
    if (!FilesOf(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void Desktop::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    OpenFiles(FilesOf(*event->mimeData()));
}

bool Desktop::MayPlot() const {
    return m_view->CurrentScene() != nullptr && m_view->CurrentScene()->Count() > 0;
}

namespace {

PlotSetup StartOf(const AcApDocument& document) {
    PlotSetup setup;
    setup.millimetresPerUnit = host::solid::MillimetresPerUnit(document.database()->insunits());
    setup.title = QString::fromWCharArray(document.docTitle());
    return setup;
}

}  // namespace

void Desktop::AskExport() {
    if (!MayPlot()) return m_line->Output().Line(Tr("There is nothing to print.").toStdWString());
    const Scene& scene = *m_view->CurrentScene();
    PlotDialog setup(StartOf(*Session().Current()), m_view->ShownArea(), scene.Extents(), this);
    if (setup.exec() != QDialog::Accepted) return;
    const QString name = QString::fromWCharArray(Session().Current()->docTitle());
    QFileDialog dialog(this, Tr("Export page"), name.section('.', 0, -2) + ".pdf",
                       "PDF (*.pdf);;SVG (*.svg);;PNG (*.png)");
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("pdf");
    connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& filter) {
        dialog.setDefaultSuffix(filter.section("*.", 1).left(3));
    });
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return;
    const QString path = dialog.selectedFiles().first();
    const QString reason = PlotToFile(scene, setup.Setup(), path);
    m_line->Output().Line((reason.isEmpty() ? Tr("Saved %1").arg(path) : reason).toStdWString());
}

void Desktop::AskPrint() {
    if (!MayPlot()) return m_line->Output().Line(Tr("There is nothing to print.").toStdWString());
    const Scene& scene = *m_view->CurrentScene();
    PlotDialog setup(StartOf(*Session().Current()), m_view->ShownArea(), scene.Extents(), this);
    if (setup.exec() != QDialog::Accepted) return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(setup.Setup().page);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() == QDialog::Accepted) PlotToPrinter(scene, setup.Setup(), printer);
}

// A prompt that waits keeps nobody from copying; a command or a dialog's run under way does.
bool Desktop::MayCopy() const {
    const bool isAsking = m_input.IsAsking();
    const host::Leftovers held = Session().FindLeftovers();
    return held.openObjects.empty() && (isAsking || (!m_isRunning && held.locks.empty()));
}

void Desktop::SaveCopies() {
    if (!m_autosave) return;
    if (!MayCopy()) return m_autosaveTimer.start(m_autosave->Pause());
    const QString reason = m_autosave->Write();
    if (reason.isEmpty()) return;
    m_line->Output().Line(Tr("No automatic copy: %1").arg(reason).toStdWString());
    m_autosaveTimer.start(kAfterFailure);
}

bool Desktop::OfferRescue() {
    if (!m_autosave) return false;
    const std::vector<Rescued> left = m_autosave->Left();
    if (left.empty()) return false;
    QStringList names;
    for (const Rescued& rescued : left) names << QFileInfo(rescued.original).fileName();
    QMessageBox box(QMessageBox::Question, "QZHost",
                    Tr("The program ended without saving these drawings:\n%1\nOpen their "
                       "automatic copies?")
                        .arg(names.join("\n")),
                    QMessageBox::Yes | QMessageBox::No, this);
    box.setTextFormat(Qt::PlainText);
    const int answer = box.exec();
    if (answer == QMessageBox::No)
        for (const Rescued& rescued : left) Autosave::Drop(rescued);
    // What cannot be opened now stays for another try, and so does all of it while there is no copy
    // of the copy.
    std::vector<Rescued> opened;
    for (const Rescued& rescued : left) {
        if (answer != QMessageBox::Yes) break;
        AcApDocument* const document =
            Session().OpenCopy(rescued.copy.toStdWString(), rescued.original.toStdWString());
        if (document == nullptr) continue;
        m_autosave->Note(document);
        opened.push_back(rescued);
    }
    if (opened.empty()) return false;
    const QString reason = m_autosave->Write();
    for (const Rescued& rescued : opened)
        if (reason.isEmpty()) Autosave::Drop(rescued);
    if (!reason.isEmpty())
        m_line->Output().Line(Tr("No automatic copy: %1").arg(reason).toStdWString());
    return true;
}

}  // namespace app
