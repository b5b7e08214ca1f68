#include "apps/qzhost/DrawingView.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "apps/qzhost/SnapMarkers.h"
#include "host/db/stub.h"
#include "host/ed/document_imp.h"

namespace app {
namespace {

constexpr double kPickPixels = 6.0;       // half the pick box
constexpr double kMargin = 1.08;          // around everything, when all is shown
constexpr double kWheelStep = 1.25;       // zoom a notch
constexpr double kSmallestLabel = 3.0;    // pixels; smaller letters are not drawn
constexpr double kCapitalsOfFont = 0.72;  // height of capitals by height of the font

const QColor kPaper(0x21, 0x28, 0x30);
const QColor kHighlight(0xFF, 0xA0, 0x20);
const QColor kPicked(0x50, 0xA8, 0xFF);
const QColor kRubber(0xF0, 0xE0, 0x60);
const QColor kMarker(0x40, 0xE0, 0x60);

}  // namespace

DrawingView::DrawingView(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::ClickFocus);
    setMinimumSize(320, 240);
}

Scene* DrawingView::CurrentScene() const {
    const auto found = m_scenes.find(m_document);
    return found == m_scenes.end() ? nullptr : found->second.get();
}

void DrawingView::SetDocument(AcApDocument* document) {
    m_document = document;
    if (document != nullptr && CurrentScene() == nullptr) {
        m_scenes[document] = std::make_unique<Scene>(*document->database());
        CurrentScene()->Update();
        if (!(document->imp().view.height > 0.0)) ZoomExtents();
    }
    update();
}

void DrawingView::Refresh() {
    Scene* const scene = CurrentScene();
    if (scene == nullptr) return;
    const size_t highlighted = CountHighlighted();
    if (!scene->IsStale() && highlighted == m_highlighted) return;
    scene->Update();
    m_highlighted = CountHighlighted();
    update();
}

size_t DrawingView::CountHighlighted() const {
    const auto& items = CurrentScene()->Items();
    return static_cast<size_t>(std::count_if(items.begin(), items.end(), [](const auto& item) {
        return item.first.stub()->Has(host::kStubHighlighted);
    }));
}

double DrawingView::Scale() const {
    const double high = m_document == nullptr ? 0.0 : m_document->imp().view.height;
    return high > 0.0 ? height() / high : 1.0;
}

// The view's width follows from its height and the window's shape.
void DrawingView::KeepShape() {
    if (m_document == nullptr) return;
    host::View& view = m_document->imp().view;
    view.width = view.height * width() / (std::max)(height(), 1);
    update();
}

void DrawingView::ZoomExtents() {
    if (m_document == nullptr) return;
    QRectF all = CurrentScene()->Extents();
    if (all.isEmpty()) all = all.united(QRectF(all.center(), QSizeF(1, 1)));
    if (CurrentScene()->Items().empty()) all = QRectF(0, 0, 297, 210);
    host::View& view = m_document->imp().view;
    view.center.set(all.center().x(), all.center().y());
    view.height =
        kMargin * (std::max)(all.height(), all.width() * height() / (std::max)(width(), 1));
    KeepShape();
}

void DrawingView::ZoomBy(double factor) {
    if (m_document != nullptr) m_document->imp().view.height /= factor;
    KeepShape();
}

AcGePoint3d DrawingView::ToWorld(const QPointF& pixel) const {
    if (m_document == nullptr) return AcGePoint3d();
    const AcGePoint2d centre = m_document->imp().view.center;
    return AcGePoint3d(centre.x + (pixel.x() - width() / 2.0) / Scale(),
                       centre.y - (pixel.y() - height() / 2.0) / Scale(), 0.0);
}

QPointF DrawingView::ToPixel(const AcGePoint3d& point) const {
    const AcGePoint2d centre =
        m_document == nullptr ? AcGePoint2d() : m_document->imp().view.center;
    return QPointF(width() / 2.0 + (point.x - centre.x) * Scale(),
                   height() / 2.0 - (point.y - centre.y) * Scale());
}

double DrawingView::PickAperture() const { return kPickPixels / Scale(); }

void DrawingView::SetPicked(std::vector<AcDbObjectId> ids) {
    m_picked = std::move(ids);
    update();
}

void DrawingView::SetCorner(std::optional<AcGePoint3d> corner) {
    m_corner = corner;
    update();
}

void DrawingView::SetAim(std::optional<AimView> aim) {
    m_aim = std::move(aim);
    update();
}

std::vector<const host::SnapSource*> DrawingView::SourcesNear(const AcGePoint3d& at,
                                                              double aperture) {
    Scene* const scene = CurrentScene();
    if (scene == nullptr) return {};
    scene->Update();
    return scene->SourcesNear(QRectF(at.x - aperture, at.y - aperture, 2 * aperture, 2 * aperture));
}

void DrawingView::SetPicking(bool isPicking) {
    setCursor(isPicking ? Qt::CrossCursor : Qt::ArrowCursor);
}

void DrawingView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), kPaper);
    const Scene* const scene = CurrentScene();
    if (scene == nullptr) return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.save();
    const QPointF origin = ToPixel(AcGePoint3d());
    painter.setTransform(QTransform(Scale(), 0, 0, -Scale(), origin.x(), origin.y()));
    for (const auto& [id, item] : scene->Items())
        PaintItem(painter, item, std::find(m_picked.begin(), m_picked.end(), id) != m_picked.end());
    painter.restore();
    PaintCorner(painter);
    PaintAim(painter);
}

void DrawingView::PaintItem(QPainter& painter, const SceneItem& item, bool isPicked) const {
    const bool isHighlighted = item.id.stub()->Has(host::kStubHighlighted);
    QPen pen(isPicked        ? kPicked
             : isHighlighted ? kHighlight
                             : QColor::fromRgb(item.colour),
             isPicked || isHighlighted ? 2.5 : 1.2, item.style);
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.drawPath(item.path);
    for (const SceneLabel& label : item.labels) {
        if (label.height * Scale() < kSmallestLabel) continue;
        painter.save();
        // Letters are set at a fixed size and scaled, with y upwards again.
        constexpr double kSize = 100.0;
        QFont font = painter.font();
        font.setPixelSize(static_cast<int>(kSize));
        const double factor = label.height / (kSize * kCapitalsOfFont);
        painter.setTransform(label.place, true);
        painter.scale(factor, -factor);
        painter.setFont(font);
        const double wide = QFontMetricsF(font).horizontalAdvance(label.text);
        painter.drawText(QPointF(-wide * label.anchor / 2.0, 0.0), label.text);
        painter.restore();
    }
}

// To the right it is a window, to the left it crosses.
void DrawingView::PaintCorner(QPainter& painter) const {
    if (!m_corner) return;
    const QPointF from = ToPixel(*m_corner);
    const bool isCrossing = m_pointer.x() < from.x();
    const QColor colour = isCrossing ? QColor(0x40, 0xE0, 0x60) : kPicked;
    QColor inside = colour;
    inside.setAlpha(0x30);
    painter.setPen(QPen(colour, 1, isCrossing ? Qt::DashLine : Qt::SolidLine));
    painter.setBrush(inside);
    painter.drawRect(QRectF(from, m_pointer).normalized());
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

void DrawingView::resizeEvent(QResizeEvent*) { KeepShape(); }

void DrawingView::wheelEvent(QWheelEvent* event) {
    if (m_document == nullptr) return;
    const AcGePoint3d before = ToWorld(event->position());
    ZoomBy(std::pow(kWheelStep, event->angleDelta().y() / 120.0));
    const AcGePoint3d after = ToWorld(event->position());
    m_document->imp().view.center.x += before.x - after.x;
    m_document->imp().view.center.y += before.y - after.y;
    update();
}

void DrawingView::mousePressEvent(QMouseEvent* event) {
    m_pointer = event->position();
    if (event->button() == Qt::MiddleButton) m_panFrom = m_pointer;
    if (event->button() == Qt::LeftButton && onClick)
        onClick(ToWorld(m_pointer), event->modifiers().testFlag(Qt::ShiftModifier));
    if (event->button() == Qt::RightButton && onEnter) onEnter();
}

void DrawingView::mouseMoveEvent(QMouseEvent* event) {
    m_pointer = event->position();
    if (m_panFrom && m_document != nullptr) {
        const QPointF step = m_pointer - *m_panFrom;
        m_document->imp().view.center.x -= step.x() / Scale();
        m_document->imp().view.center.y += step.y() / Scale();
        m_panFrom = m_pointer;
    }
    if (onMove) onMove(ToWorld(m_pointer));
    update();
}

void DrawingView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton) m_panFrom.reset();
    // A window can be drawn in one go as well as by two clicks.
    constexpr double kDrag = 8.0;  // pixels
    if (event->button() == Qt::LeftButton && m_corner && onClick &&
        (event->position() - ToPixel(*m_corner)).manhattanLength() > kDrag)
        onClick(ToWorld(event->position()), event->modifiers().testFlag(Qt::ShiftModifier));
}

void DrawingView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton)
        ZoomExtents();
    else
        mousePressEvent(event);
}

}  // namespace app
