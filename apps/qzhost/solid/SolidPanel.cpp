#include "apps/qzhost/solid/SolidPanel.h"

#include <QAction>
#include <QCoreApplication>
#include <QFileDialog>
#include <QGuiApplication>
#include <QOpenGLContext>
#include <QVBoxLayout>
#include <algorithm>

#include "apps/qzhost/solid/SolidView.h"
#include "apps/qzhost/words/Words.h"
#include "product/base/Failure.h"
#include "product/base/Text.h"
#include "product/tool/SolidBodies.h"

namespace app {
namespace {

// The offscreen platform makes contexts that widgets cannot use.
bool HasOpenGl() {
    if (QGuiApplication::platformName() == QLatin1String("offscreen")) return false;
    QOpenGLContext context;
    return context.create();
}

QString Number(double value) { return QString::number(value, 'g', 8); }

}  // namespace

SolidPanel::SolidPanel(QWidget* parent)
    : QWidget(parent),
      m_names(new QComboBox(this)),
      m_figures(new QLabel(this)),
      m_bar(new QToolBar(this)) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_bar);
    if (HasOpenGl()) {
        m_view = new SolidView(this);
        m_view->onMeasured = [this](const QString& text) {
            if (onSaid && !text.isEmpty()) onSaid(text);
            if (Shown() != nullptr) m_figures->setText(text.isEmpty() ? FiguresOf(*Shown()) : text);
        };
        layout->addWidget(m_view, 1);
    } else {
        layout->addWidget(new QLabel(Tr("This display shows no solids: it has no OpenGL."), this),
                          1, Qt::AlignCenter);
    }
    m_figures->setContentsMargins(6, 2, 6, 2);
    m_figures->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_figures->setWordWrap(true);
    layout->addWidget(m_figures);
    m_names->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_names->setFocusPolicy(Qt::ClickFocus);
    connect(m_names, &QComboBox::currentIndexChanged, this, [this](int) {
        if (m_isFilling) return;
        MakeChosen();
        if (onChosen && m_body != nullptr) onChosen(m_body->envelope);
    });
    MakeBar();
}

void SolidPanel::MakeBar() {
    m_bar->setIconSize(QSize(18, 18));
    m_bar->addWidget(m_names);
    const auto look = [this](const QString& text, SolidView::Side side) {
        connect(m_bar->addAction(text), &QAction::triggered, this, [this, side] {
            if (m_view != nullptr) m_view->LookFrom(side);
        });
    };
    look(Tr("Front"), SolidView::Side::kFront);
    look(Tr("End"), SolidView::Side::kEnd);
    look(Tr("Corner"), SolidView::Side::kCorner);
    QAction* const section = m_bar->addAction(Tr("Section"));
    section->setCheckable(true);
    connect(section, &QAction::toggled, this, [this](bool isOn) {
        if (m_view != nullptr) m_view->SetSection(isOn);
    });
    connect(m_bar->addAction(Tr("Save...")), &QAction::triggered, this, [this] { AskSave(); });
}

void SolidPanel::ShowDrawing(AcDbDatabase* database) {
    const AcDbObjectId kept = m_body == nullptr ? AcDbObjectId() : m_body->envelope;
    const size_t before = m_envelopes.size();
    m_database = database;
    m_envelopes = database == nullptr ? std::vector<AcDbObjectId>() : EnvelopesOf(*database);
    m_isFilling = true;
    m_names->clear();
    int chosen = static_cast<int>(m_envelopes.size()) - 1;
    for (size_t i = 0; i < m_envelopes.size(); ++i) {
        const std::string handle = product::HandleText(m_envelopes[i]);
        m_names->addItem(Tr("Envelope %1").arg(QString::fromStdString(handle)));
        // A new one comes into view; else the one that was shown stays.
        if (m_envelopes[i] == kept && m_envelopes.size() <= before) chosen = static_cast<int>(i);
    }
    m_names->setCurrentIndex(chosen);
    m_isFilling = false;
    MakeChosen();
}

void SolidPanel::MakeChosen() {
    const int index = m_names->currentIndex();
    m_body =
        index < 0
            ? nullptr
            : std::make_shared<const SolidBody>(BodyOf(m_envelopes[static_cast<size_t>(index)]));
    ShowChosen();
}

void SolidPanel::ShowPreview(std::shared_ptr<const SolidBody> body) {
    m_preview = std::move(body);
    ShowChosen();
}

void SolidPanel::Choose(AcDbObjectId envelope) {
    for (size_t i = 0; i < m_envelopes.size(); ++i)
        if (m_envelopes[i] == envelope) m_names->setCurrentIndex(static_cast<int>(i));
}

QString SolidPanel::FiguresOf(const SolidBody& body) const {
    if (!body.HasShape()) return Tr("No solid: %1").arg(QString::fromStdString(body.Reason()));
    const host::solid::Measures& m = body.run.measures;
    return Tr("Length %1   \u2300 %2   Volume %3   Surface %4")
        .arg(Number(m.length), Number(m.largestDiameter), Number(m.volume), Number(m.area));
}

void SolidPanel::ShowChosen() {
    const SolidBody* const shown = Shown();
    m_figures->setText(shown == nullptr ? Tr("No envelope in the drawing yet.")
                                        : FiguresOf(*shown));
    if (m_view == nullptr) return;
    m_view->SetNote(m_preview != nullptr ? Tr("Preview") : QString());
    m_view->Show(m_preview != nullptr ? m_preview : m_body);
}

void SolidPanel::SetLight(bool isLight) {
    if (m_view != nullptr) m_view->SetLight(isLight);
}

void SolidPanel::AskSave() {
    const SolidBody* const body = Shown();
    if (body == nullptr || !body->HasShape()) {
        if (onSaid) onSaid(Tr("There is no solid to save."));
        return;
    }
    QFileDialog dialog(this, Tr("Save solid"), "solid.stp",
                       "STEP (*.stp *.step);;SAT (*.sat);;STL (*.stl);;PNG (*.png)");
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("stp");
    connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& filter) {
        const int dot = static_cast<int>(filter.indexOf("*.")) + 2;
        dialog.setDefaultSuffix(filter.mid(dot, 3));
    });
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return;
    const QString said = Save(dialog.selectedFiles().first());
    if (onSaid) onSaid(said);
}

QString SolidPanel::Save(const QString& path) {
    const SolidBody* const body = Shown();
    if (body == nullptr || m_database == nullptr || !body->HasShape())
        return Tr("There is no solid to save.");
    const QString ending = path.section('.', -1).toLower();
    product::SolidFiles files;
    const std::string file = path.toStdString();
    if (ending == "png" && m_view != nullptr) {
        // What is seen, as it is turned and cut.
        return m_view->grabFramebuffer().save(path) ? Tr("Saved %1").arg(path)
                                                    : Tr("%1 cannot be written.").arg(path);
    }
    if (ending == "sat")
        files.sat = file;
    else if (ending == "stp" || ending == "step")
        files.step = file;
    else if (ending == "stl")
        files.stl = file;
    else if (ending == "png")
        files.png = file;
    else
        return Tr("%1: a solid is saved as .stp, .sat, .stl or .png.").arg(path);
    std::vector<std::string> written;
    try {
        product::ToolRun run;
        run.solid = body->run;
        const std::string name = path.section('/', -1).section('.', 0, 0).toStdString();
        product::WriteSolidFiles(run.solid, product::BodiesOf({}, run, name), *m_database, files,
                                 "", written);
    } catch (const product::Failure& failure) {
        return QString::fromStdString(failure.what());
    }
    return Tr("Saved %1").arg(path);
}

}  // namespace app
