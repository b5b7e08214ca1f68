#include "apps/qzhost/desktop/ReviewDesk.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QProgressDialog>
#include <QUrl>
#include <algorithm>
#include <cmath>
#include <utility>

#include "apps/qzhost/words/Words.h"
#include "host/ed/session.h"
#include "host/sys/file_io.h"
#include "product/base/Failure.h"
#include "product/check/SourceCurves.h"
#include "product/report/Page.h"

namespace app {
namespace {

constexpr int kPause = 150;  // milliseconds without a change before anything is worked out
constexpr double kChordShare = 1e-4;

const QColor kSteps(0x30, 0xC8, 0xE8), kExact(0xFF, 0x9C, 0x30), kSpot(0xFF, 0x50, 0xC0);

Overlay::Path PathOf(const std::vector<product::Vertex>& ring, const QColor& colour,
                     bool isDashed) {
    Overlay::Path path{{}, colour, isDashed};
    const product::Box box = product::ExtentsOf(ring);
    const double chord = kChordShare * std::hypot(box.Width(), box.Height());
    for (const product::Point& p : product::ChordsOf(ring, true, (std::max)(chord, 1e-12)))
        path.points.emplace_back(p.x, p.y);
    return path;
}

bool IsSame(const product::ToolParameters& a, const product::ToolParameters& b) {
    return a.half == b.half && a.includeDashed == b.includeDashed &&
           a.verticalEnds == b.verticalEnds && a.pointTolerance == b.pointTolerance &&
           a.lineTolerance == b.lineTolerance && a.horVerTolerance == b.horVerTolerance &&
           a.arcPrecision == b.arcPrecision && a.sideLength == b.sideLength;
}

}  // namespace

ReviewDesk::ReviewDesk(DrawingView& view, QWidget* parent)
    : QObject(parent),
      m_view(view),
      m_parent(parent),
      m_findings(new FindingPanel(parent)),
      m_solids(new SolidPanel(parent)),
      m_tools(new ToolPanel(parent)) {
    m_timer.setSingleShot(true);
    m_timer.setInterval(kPause);
    connect(&m_timer, &QTimer::timeout, this, [this] { Work(); });
    ConnectPanels();
}

void ReviewDesk::ConnectPanels() {
    m_findings->onChosen = [this](const ReviewRow& row) { ShowRow(row); };
    m_solids->onChosen = [this](AcDbObjectId envelope) { m_view.SetMarked({envelope}); };
    m_solids->onSaid = [this](const QString& text) { Say(text); };
    m_tools->onList = [this] { ListTools(); };
    m_tools->onCheck = [this] { AskCheck(); };
    m_tools->onPage = [this] { AskPage(); };
    m_tools->onChosen = [this](const ListedTool& tool) {
        m_view.SetMarked(tool.ids);
        SetTool(tool.ids, tool.centre, tool.parameters);
    };
    m_tools->onZoom = [this](const ListedTool& tool) { ZoomTo(tool.ids); };
}

void ReviewDesk::SetDocument(AcApDocument* document) {
    m_document = document;
    m_pick.reset();
    m_review.reset();
    m_result.reset();
    m_copy.reset();
    m_spots.clear();
    m_findings->Clear();
    m_tools->Show(nullptr);
    m_solids->ShowPreview(nullptr);
    m_solids->ShowDrawing(nullptr);
    DrawingChanged();
}

void ReviewDesk::DrawingChanged() {
    m_copy.reset();
    m_isStale = m_areSolidsStale = true;
    Due();
}

void ReviewDesk::DialogTouched() {
    if (m_hasPreview && m_pick) Due();
}

void ReviewDesk::SetTool(std::vector<AcDbObjectId> ids, const AcGePoint3d& centre,
                         const std::optional<product::ToolParameters>& parameters) {
    m_own = parameters;
    m_pick = ToolPick{std::move(ids), centre};
    m_isStale = true;
    m_spots.clear();
    Due();
}

void ReviewDesk::SetPreview(bool isOn) {
    m_hasPreview = isOn;
    m_isStale = true;
    Due();
}

void ReviewDesk::SetComparing(bool isOn) {
    m_isComparing = isOn;
    if (isOn && !m_pick) Say(Tr("Compute an envelope, or click a tool in the list of tools."));
    m_isStale = true;
    Due();
}

void ReviewDesk::Due() {
    m_isDue = true;
    m_timer.start();
}

bool ReviewDesk::IsShowing() const { return m_isComparing || (m_hasPreview && IsDialogOpen()); }

void ReviewDesk::Work() {
    if (!m_isDue || m_isWorking || m_timer.isActive() || (mayWork && !mayWork())) return;
    m_isDue = false;
    m_isWorking = true;
    if (std::exchange(m_areSolidsStale, false))
        m_solids->ShowDrawing(m_document == nullptr ? nullptr : m_document->database());
    if (m_document != nullptr && m_pick) {
        product::ToolParameters parameters =
            m_own ? *m_own : m_parameters.value_or(product::ToolParameters());
        if (const auto shown = ParametersOfDialog()) parameters = *shown;
        const bool isOther = !m_parameters || !IsSame(*m_parameters, parameters);
        if (m_isStale || isOther) {
            m_parameters = parameters;
            m_isStale = false;
            Compute();
        }
    }
    ShowReview();
    m_isWorking = false;
}

void ReviewDesk::Compute() {
    AcDbDatabase& drawing = *m_document->database();
    if (m_copy == nullptr) m_copy = std::make_unique<DrawingCopy>(drawing);
    try {
        m_review = ReviewTool(drawing, *m_copy, *m_pick, *m_parameters);
    } catch (const std::exception& error) {
        m_review.emplace();
        m_review->reason = QString::fromStdString(error.what());
    }
    m_findings->Show(*m_review);
}

void ReviewDesk::ShowReview() {
    Overlay overlay;
    overlay.spots = m_spots;
    const bool isShowing = m_review && IsShowing();
    if (isShowing) {
        const EnvelopeReview& review = *m_review;
        if (!review.steps.empty()) overlay.paths.push_back(PathOf(review.steps, kSteps, false));
        if (!review.exact.empty()) overlay.paths.push_back(PathOf(review.exact, kExact, true));
        const QString figures = review.reason.isEmpty() ? Tr("length %1, diameter %2, %3 vertices")
                                                              .arg(review.length, 0, 'g', 8)
                                                              .arg(review.diameter, 0, 'g', 8)
                                                              .arg(review.steps.size())
                                                        : review.reason;
        overlay.legend.push_back({Tr("By steps: %1").arg(figures), kSteps});
        overlay.legend.push_back(
            {review.exact.empty()
                 ? Tr("Exact: there is none")
                 : Tr("Exact: %1")
                       .arg(review.difference.isEmpty() ? Tr("%1 vertices").arg(review.exact.size())
                                                        : review.difference),
             kExact});
        if (review.greatest)
            overlay.spots.push_back({QPointF(review.greatest->x, review.greatest->y),
                                     Tr("greatest difference"), kExact});
    }
    m_view.SetOverlay(std::move(overlay));
    const bool isPreview = isShowing && m_hasPreview && IsDialogOpen() && m_review->solid.profile;
    m_solids->ShowPreview(isPreview ? std::make_shared<const SolidBody>(
                                          MakeBody(m_review->solid, QColor(0x60, 0xA8, 0xC0)))
                                    : nullptr);
}

void ReviewDesk::ZoomTo(const std::vector<AcDbObjectId>& ids) {
    const Scene* const scene = m_view.CurrentScene();
    QRectF all = NoBox();
    for (const AcDbObjectId id : ids) {
        const SceneChunk* chunk = nullptr;
        if (const SceneItem* const item = scene->Find(id, chunk)) all = United(all, item->box);
    }
    if (!IsNoBox(all)) m_view.ZoomTo(all);
}

void ReviewDesk::ShowRow(const ReviewRow& row) {
    if (m_view.CurrentScene() == nullptr) return;
    m_view.SetMarked(row.ids);
    m_spots.clear();
    if (row.at) {
        // As much around it as shows where on the tool it is.
        double size = m_review ? (std::max)(m_review->length, m_review->diameter) / 8.0 : 1.0;
        if (!(size > 0.0)) size = 10.0;
        m_spots.push_back({QPointF(row.at->x, row.at->y), row.kind, kSpot});
        m_view.ZoomTo(QRectF(row.at->x - size, row.at->y - size, 2 * size, 2 * size));
    } else if (!row.ids.empty()) {
        ZoomTo(row.ids);
    }
    ShowReview();
}

void ReviewDesk::ListTools() {
    if (m_document == nullptr) return;
    AcDbDatabase* const database = m_document->database();
    // Whoever keeps tools in memory puts them into the drawing, as before it is saved.
    if (IsDialogOpen())
        host::Session::Get().EventReactors().Notify(
            [&](AcRxEventReactor& reactor) { reactor.beginSave(database, L""); });
    m_tools->Show(database);
}

bool ReviewDesk::CheckTools(const QString& folder) {
    ListTools();
    QProgressDialog progress(Tr("Computing tools..."), Tr("Stop"), 0, 0, m_parent);
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(0);
    m_isWorking = true;
    const auto told = [&](size_t done, size_t all) {
        progress.setMaximum(static_cast<int>(all));
        progress.setValue(static_cast<int>(done));
        QCoreApplication::processEvents();
        return !progress.wasCanceled();
    };
    bool isDone = false;
    try {
        const std::string title = QString::fromWCharArray(m_document->fileName()).toStdString();
        m_result = app::CheckTools(*m_document->database(), title, folder.toStdString(), told);
        m_tools->ShowResult(*m_result);
        const product::DrawingResult& drawing = m_result->drawings.front();
        Say(Tr("%1 tools, %2 failed; files in %3. %4")
                .arg(drawing.tools.size())
                .arg(m_result->FailedTools())
                .arg(folder, QString::fromStdString(drawing.reason)));
        isDone = true;
    } catch (const std::exception& error) {
        Say(QString::fromStdString(error.what()));
    }
    m_isWorking = false;
    return isDone;
}

void ReviewDesk::AskCheck() {
    if (m_document == nullptr || (mayWork && !mayWork())) return;
    const QString folder = QFileDialog::getExistingDirectory(m_parent, Tr("Folder for the solids"));
    if (!folder.isEmpty()) CheckTools(folder);
}

void ReviewDesk::AskPage() {
    if (m_document == nullptr || (mayWork && !mayWork())) return;
    QFileDialog dialog(m_parent, Tr("Page of findings"), "findings.html", "HTML (*.html)");
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("html");
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return;
    const QString path = dialog.selectedFiles().first();
    if (!CheckTools(QFileInfo(path).absolutePath())) return;
    m_result->page = path.toStdString();
    const std::string text = product::PageText(*m_result);
    host::FileError error;
    if (!host::WriteFileAtomically(path.toStdString(), {std::string_view(text)}, error))
        return Say(path + ": " + QString::fromStdString(error.reason));
    Say(Tr("Saved %1").arg(path));
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

}  // namespace app
