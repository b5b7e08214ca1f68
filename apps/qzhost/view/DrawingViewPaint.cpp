// How the drawing window looks: the picture of the drawing, and what is laid over it.
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "apps/qzhost/view/DrawingView.h"
#include "apps/qzhost/view/SnapMarkers.h"
#include "host/db/highlight.h"
#include "host/db/stub.h"
#include "host/ed/document_imp.h"

namespace app {
namespace {

// Points in a scene up to which it is painted on the spot.
constexpr size_t kSmallScene = 20000;
constexpr double kPictureSize = 1.5;      // of the picture by the window, each way
constexpr size_t kSmoothScene = 300000;   // points; larger ones are drawn without smoothing
constexpr size_t kMostHighlights = 5000;  // drawn apart; of more the rest looks as usual
constexpr double kPickBox = 5.0;          // half, pixels
constexpr int kMostGridLines = 400;

const QRgb kHighlight = qRgb(0xFF, 0xA0, 0x20);
const QRgb kPicked = qRgb(0x50, 0xA8, 0xFF);
const QRgb kMarked = qRgb(0xFF, 0x50, 0xC0);
const QColor kRubber(0xF0, 0xE0, 0x60);
const QColor kMarker(0x40, 0xE0, 0x60);

}  // namespace

SceneView DrawingView::ViewOf(const QSize& size, double ratio) const {
    SceneView view;
    if (m_document != nullptr) {
        const AcGePoint2d centre = m_document->imp().view.center;
        view.centre = QPointF(centre.x, centre.y);
    }
    view.scale = Scale() * ratio;
    view.size = size;
    return view;
}

SceneLook DrawingView::Look() const {
    SceneLook look;
    const double ratio = devicePixelRatioF();
    look.hair *= ratio;
    look.pixelsPerMillimetre *= ratio;
    if (m_isLight) {
        look.paper = qRgb(0xFA, 0xFA, 0xF6);
        look.ink = qRgb(0x10, 0x10, 0x10);
    }
    return look;
}

bool DrawingView::IsSharp() const { return !m_isPictureStale && !m_renderer.IsBusy(); }

// Small scenes at once; large ones from the thread, one after the other.
void DrawingView::AskForPicture() {
    Scene* const scene = CurrentScene();
    if (scene == nullptr || !m_isPictureStale) return;
    const bool isSmall = scene->Weight() <= kSmallScene;
    if (!isSmall && m_renderer.IsBusy()) return;
    const double ratio = devicePixelRatioF();
    const double larger = isSmall ? 1.0 : kPictureSize;
    ScenePicture picture{scene->Chunks(), scene->Patterns(),
                         ViewOf(size() * (ratio * larger), ratio), Look()};
    picture.look.isSmooth = scene->Weight() <= kSmoothScene;
    m_isPictureStale = false;
    if (isSmall)
        m_picture = SceneRenderer::Render(picture);
    else
        m_renderer.Request(std::move(picture));
}

void DrawingView::PaintDrawing(QPainter& painter) {
    AskForPicture();
    const SceneView now = ViewOf(size(), 1.0);
    const SceneView& then = m_picture.view;
    if (m_picture.image.isNull()) return painter.fillRect(rect(), QColor::fromRgb(Look().paper));
    const double factor = now.scale / then.scale;
    const QPointF corner = now.ToPixel(then.ToWorld(QPointF(0, 0)));
    const QRectF target(corner, QSizeF(then.size) * factor);
    if (!target.contains(QRectF(rect()))) painter.fillRect(rect(), QColor::fromRgb(Look().paper));
    if (std::fabs(factor * devicePixelRatioF() - 1.0) < 1e-9) {
        // Unscaled, on whole pixels of the screen.
        QImage image = m_picture.image;
        image.setDevicePixelRatio(devicePixelRatioF());
        painter.drawImage(QPoint(qRound(corner.x()), qRound(corner.y())), image);
    } else {
        painter.drawImage(target, m_picture.image);
    }
}

void DrawingView::PaintHighlights(QPainter& painter) {
    const Scene* const scene = CurrentScene();
    const SceneView view = ViewOf(size(), 1.0);
    SceneLook look = Look();
    look.hair = 1.2;
    look.widen = 1.3;
    const QRectF area = view.Area();
    size_t left = kMostHighlights;
    const auto paint = [&](AcDbObjectId id) {
        const SceneChunk* chunk = nullptr;
        const SceneItem* const item = scene->Find(id, chunk);
        if (item == nullptr || !Touches(item->box, area) || left == 0) return;
        --left;
        PaintSceneItem(painter, *chunk, *item, *scene->Patterns(), view, look);
    };
    look.override = kHighlight;
    for (const AcDbObjectId id : host::HighlightedEntities()) paint(id);
    look.override = kPicked;
    for (const AcDbObjectId id : m_picked) paint(id);
    look.override = kMarked;
    for (const AcDbObjectId id : m_marked) paint(id);
    constexpr double kGrip = 4.0;  // half, pixels
    painter.setPen(QColor(0x20, 0x50, 0x90));
    painter.setBrush(QColor::fromRgb(kPicked));
    for (const AcGePoint3d& grip : m_grips)
        painter.drawRect(
            QRectF(ToPixel(grip) - QPointF(kGrip, kGrip), QSizeF(2 * kGrip, 2 * kGrip)));
}

void DrawingView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (CurrentScene() == nullptr) {
        painter.fillRect(rect(), QColor::fromRgb(Look().paper));
        return;
    }
    PaintDrawing(painter);
    PaintGrid(painter);
    PaintHighlights(painter);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintNote(painter);
    PaintOverlay(painter);
    PaintCorner(painter);
    PaintAim(painter);
    PaintPointer(painter);
}

void DrawingView::PaintGrid(QPainter& painter) const {
    if (!m_hasGrid) return;
    const SceneView view = ViewOf(size(), 1.0);
    const QRectF area = view.Area();
    // Ten times as wide until the lines stand apart.
    double step = m_gridStep;
    while (step * view.scale < 10.0) step *= 10.0;
    painter.setRenderHint(QPainter::Antialiasing, false);
    const auto colour = [&](double at) {
        const bool isMain = std::fabs(std::remainder(at / step, 5.0)) < 0.5;
        return QColor(0x80, 0x88, 0x90, isMain ? 0x50 : 0x28);
    };
    int lines = 0;
    for (double x = std::ceil(area.left() / step) * step;
         x <= area.right() && lines < kMostGridLines; x += step, ++lines) {
        painter.setPen(colour(x));
        const double at = view.ToPixel(QPointF(x, 0)).x();
        painter.drawLine(QPointF(at, 0), QPointF(at, height()));
    }
    for (double y = std::ceil(area.top() / step) * step;
         y <= area.bottom() && lines < 2 * kMostGridLines; y += step, ++lines) {
        painter.setPen(colour(y));
        const double at = view.ToPixel(QPointF(0, y)).y();
        painter.drawLine(QPointF(0, at), QPointF(width(), at));
    }
}

// To the right it is a window, to the left it crosses.
void DrawingView::PaintCorner(QPainter& painter) const {
    if (!m_corner) return;
    const QPointF from = ToPixel(*m_corner);
    const bool isCrossing = m_pointer.x() < from.x();
    const QColor colour = isCrossing ? kMarker : QColor::fromRgb(kPicked);
    QColor inside = colour;
    inside.setAlpha(0x30);
    painter.setPen(QPen(colour, 1, isCrossing ? Qt::DashLine : Qt::SolidLine));
    painter.setBrush(inside);
    painter.drawRect(QRectF(from, m_pointer).normalized());
}

void DrawingView::PaintOverlay(QPainter& painter) const {
    constexpr double kRing = 14.0;  // pixels around a place
    const SceneView view = ViewOf(size(), 1.0);
    painter.setBrush(Qt::NoBrush);
    for (const Overlay::Path& path : m_overlay.paths) {
        QPolygonF line;
        for (const QPointF& point : path.points) line << view.ToPixel(point);
        painter.setPen(QPen(path.colour, 2, path.isDashed ? Qt::DashLine : Qt::SolidLine));
        painter.drawPolyline(line);
    }
    for (const Overlay::Spot& spot : m_overlay.spots) {
        const QPointF at = view.ToPixel(spot.at);
        painter.setPen(QPen(spot.colour, 2));
        painter.drawEllipse(at, kRing, kRing);
        if (!spot.text.isEmpty()) PaintTooltip(painter, at, spot.text, rect());
        painter.setBrush(Qt::NoBrush);
    }
    double down = 8.0;
    for (const Overlay::Line& line : m_overlay.legend) {
        painter.setPen(line.colour);
        const QRectF box = painter.boundingRect(QRectF(10, down, width() - 20, height()),
                                                Qt::AlignLeft | Qt::TextWordWrap, line.text);
        painter.drawText(box, Qt::AlignLeft | Qt::TextWordWrap, line.text);
        down = box.bottom() + 2.0;
    }
}

void DrawingView::PaintAim(QPainter& painter) const {
    if (!m_aim) return;
    painter.setBrush(Qt::NoBrush);
    const QPointF at = ToPixel(m_aim->aim.point);
    if (m_aim->base) {
        const QPointF from = ToPixel(*m_aim->base);
        painter.setPen(QPen(m_aim->aim.isOnRay ? kMarker : kRubber, 1, Qt::DashLine));
        painter.drawLine(from, at);
    }
    painter.setPen(QPen(kRubber, 1.2));
    for (const host::Piece& piece : m_aim->drag)
        painter.drawLine(ToPixel(piece.first), ToPixel(piece.second));
    if (m_aim->aim.snap) PaintSnapMarker(painter, m_aim->aim.snap->mode, at);
    if (!m_aim->aim.label.empty())
        PaintTooltip(painter, at, QString::fromStdWString(m_aim->aim.label), rect());
}

// Cross hairs over the whole window; a box where entities are picked.
void DrawingView::PaintPointer(QPainter& painter) const {
    if (!m_isPointerInside || m_panFrom) return;
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(m_isLight ? QColor(0x60, 0x60, 0x60) : QColor(0xB0, 0xB8, 0xC0));
    painter.setBrush(Qt::NoBrush);
    const QPoint at = m_pointer.toPoint();
    painter.drawLine(0, at.y(), width(), at.y());
    painter.drawLine(at.x(), 0, at.x(), height());
    if (m_isPicking || !m_aim)
        painter.drawRect(
            QRectF(QPointF(at) - QPointF(kPickBox, kPickBox), QSizeF(2 * kPickBox, 2 * kPickBox)));
}

// A drawing of nothing but what has no shape here must not look empty.
void DrawingView::PaintNote(QPainter& painter) const {
    const auto& unshown = CurrentScene()->Unshown();
    if (unshown.empty()) return;
    QStringList kinds;
    for (const auto& [name, count] : unshown)
        kinds << QString("%1 %2").arg(count).arg(QString::fromStdWString(name).remove("AcDb"));
    painter.setPen(QColor(0x90, 0x98, 0xA0));
    painter.drawText(rect().adjusted(8, 8, -8, -8), Qt::AlignBottom | Qt::AlignLeft,
                     QString("Not shown in this view: %1").arg(kinds.join(", ")));
}

}  // namespace app
