#include "apps/qzhost/view/DrawingView.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "host/db/highlight.h"
#include "host/ed/document_imp.h"

namespace app {
namespace {

constexpr double kPickPixels = 6.0;  // half the pick box
constexpr double kMargin = 1.08;     // around everything, when all is shown
constexpr double kWheelStep = 1.25;  // zoom a notch
// Beyond these a view is nothing but rounding.
constexpr double kSmallestView = 1e-6, kLargestView = 1e12;

}  // namespace

DrawingView::DrawingView(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::ClickFocus);
    setMinimumSize(320, 240);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setCursor(Qt::BlankCursor);
    m_renderer.onReady = [this](RenderedScene rendered) {
        m_picture = std::move(rendered);
        update();
    };
}

Scene* DrawingView::CurrentScene() const {
    const auto found = m_scenes.find(m_document);
    return found == m_scenes.end() ? nullptr : found->second.get();
}

void DrawingView::SetDocument(AcApDocument* document) {
    m_document = document;
    if (document != nullptr && CurrentScene() == nullptr) {
        std::unique_ptr<Scene>& scene = m_scenes[document];
        scene = std::make_unique<Scene>(*document->database());
        scene->Update();
        scene->onChange = [this] {
            if (onChange) onChange();
        };
        if (!(document->imp().view.height > 0.0)) ZoomExtents();
    }
    m_overlay = {};
    m_marked.clear();
    m_picture = {};
    m_isPictureStale = true;
    update();
}

void DrawingView::Refresh() {
    Scene* const scene = CurrentScene();
    if (scene == nullptr) return;
    if (scene->Update()) {
        m_isPictureStale = true;
        update();
    }
    // A command may have moved the view.
    const host::View& view = m_document->imp().view;
    if (!view.center.isEqualTo(m_centre, AcGeTol()) || view.height != m_height) KeepShape();
    if (m_highlightRevision != host::HighlightRevision()) {
        m_highlightRevision = host::HighlightRevision();
        update();
    }
}

double DrawingView::Scale() const {
    const double high = m_document == nullptr ? 0.0 : m_document->imp().view.height;
    return high > 0.0 ? height() / high : 1.0;
}

// The view's width follows from its height and the window's shape.
void DrawingView::KeepShape() {
    if (m_document == nullptr) return;
    host::View& view = m_document->imp().view;
    view.height = (std::clamp)(view.height, kSmallestView, kLargestView);
    view.width = view.height * width() / (std::max)(height(), 1);
    m_centre = view.center;
    m_height = view.height;
    m_isPictureStale = true;
    update();
}

void DrawingView::ZoomExtents() {
    if (m_document == nullptr) return;
    const bool isEmpty = CurrentScene()->Count() == 0;
    ZoomTo(isEmpty ? QRectF(0, 0, 297, 210) : CurrentScene()->Extents());
}

void DrawingView::ZoomTo(const QRectF& area) {
    if (m_document == nullptr) return;
    QRectF all = area;
    if (!(all.width() > 0.0) && !(all.height() > 0.0)) all.adjust(-0.5, -0.5, 0.5, 0.5);
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
    const QPointF world = ViewOf(size(), 1.0).ToWorld(pixel);
    return AcGePoint3d(world.x(), world.y(), 0.0);
}

QPointF DrawingView::ToPixel(const AcGePoint3d& point) const {
    return ViewOf(size(), 1.0).ToPixel(QPointF(point.x, point.y));
}

double DrawingView::PickAperture() const { return kPickPixels / Scale(); }

void DrawingView::SetPicked(std::vector<AcDbObjectId> ids) {
    m_picked = std::move(ids);
    update();
}

void DrawingView::SetGrips(std::vector<AcGePoint3d> grips) {
    m_grips = std::move(grips);
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

void DrawingView::SetOverlay(Overlay overlay) {
    if (overlay.IsEmpty() && m_overlay.IsEmpty()) return;
    m_overlay = std::move(overlay);
    update();
}

void DrawingView::SetMarked(std::vector<AcDbObjectId> ids) {
    m_marked = std::move(ids);
    update();
}

const AcGePoint3d* DrawingView::GripNear(const AcGePoint3d& at) const {
    const AcGePoint3d* nearest = nullptr;
    double best = PickAperture();
    for (const AcGePoint3d& grip : m_grips) {
        const double off = std::hypot(grip.x - at.x, grip.y - at.y);
        if (off > best) continue;
        best = off;
        nearest = &grip;
    }
    return nearest;
}

std::vector<AcDbObjectId> DrawingView::IdsNear(const QRectF& area) {
    Scene* const scene = CurrentScene();
    if (scene == nullptr) return {};
    scene->Update();
    return scene->IdsNear(area);
}

std::vector<const host::SnapSource*> DrawingView::SourcesNear(const AcGePoint3d& at,
                                                              double aperture) {
    Scene* const scene = CurrentScene();
    if (scene == nullptr) return {};
    scene->Update();
    return scene->SourcesNear(QRectF(at.x - aperture, at.y - aperture, 2 * aperture, 2 * aperture));
}

void DrawingView::SetPicking(bool isPicking) {
    m_isPicking = isPicking;
    update();
}

void DrawingView::SetGrid(bool isShown, double step) {
    m_hasGrid = isShown;
    m_gridStep = step;
    update();
}

void DrawingView::SetLight(bool isLight) {
    m_isLight = isLight;
    m_picture = {};
    m_isPictureStale = true;
    update();
}

void DrawingView::resizeEvent(QResizeEvent*) {
    // Windows that are not shown hear of their size again and again.
    if (m_size == size()) return;
    m_size = size();
    KeepShape();
}

void DrawingView::wheelEvent(QWheelEvent* event) {
    if (m_document == nullptr) return;
    const AcGePoint3d before = ToWorld(event->position());
    // A touchpad tells pixels: two fingers pan, with Ctrl, or a wheel, it zooms.
    const bool isTouch =
        !event->pixelDelta().isNull() && event->source() == Qt::MouseEventSynthesizedBySystem;
    if (isTouch && !event->modifiers().testFlag(Qt::ControlModifier)) {
        m_document->imp().view.center.x -= event->pixelDelta().x() / Scale();
        m_document->imp().view.center.y += event->pixelDelta().y() / Scale();
    } else {
        ZoomBy(std::pow(kWheelStep, event->angleDelta().y() / 120.0));
        const AcGePoint3d after = ToWorld(event->position());
        m_document->imp().view.center.x += before.x - after.x;
        m_document->imp().view.center.y += before.y - after.y;
    }
    m_isPictureStale = true;
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
    m_isPointerInside = true;
    if (m_panFrom && m_document != nullptr) {
        const QPointF step = m_pointer - *m_panFrom;
        m_document->imp().view.center.x -= step.x() / Scale();
        m_document->imp().view.center.y += step.y() / Scale();
        m_panFrom = m_pointer;
        m_isPictureStale = true;
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

void DrawingView::leaveEvent(QEvent*) {
    m_isPointerInside = false;
    update();
}

}  // namespace app
