// The window that shows the current drawing and takes the mouse.
#pragma once

#include <QWidget>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "acdocman.h"
#include "apps/qzhost/PointAid.h"
#include "apps/qzhost/Scene.h"
#include "gepnt3d.h"
#include "host/ed/outline.h"

namespace app {

// What is shown of a point that is being aimed at.
struct AimView {
    Aim aim;
    std::optional<AcGePoint3d> base;  // a line is drawn from here
    std::vector<host::Piece> drag;    // what would be drawn
};

// The wheel zooms about the pointer, the middle button pans, its double click shows everything.
class DrawingView : public QWidget {
public:
    explicit DrawingView(QWidget* parent = nullptr);

    // The drawing shown; null: none. Each keeps its own view.
    void SetDocument(AcApDocument* document);
    void Forget(const AcApDocument* document) { m_scenes.erase(document); }
    // Repaints when the drawing has changed or what is highlighted.
    void Refresh();
    void ZoomExtents();
    void ZoomBy(double factor);

    AcGePoint3d ToWorld(const QPointF& pixel) const;
    QPointF ToPixel(const AcGePoint3d& point) const;
    // How far a pick may be from what it means, in drawing units.
    double PickAperture() const;

    // What has been picked so far, drawn apart; and the corner a window begins at.
    void SetPicked(std::vector<AcDbObjectId> ids);
    void SetCorner(std::optional<AcGePoint3d> corner);
    void SetAim(std::optional<AimView> aim);
    // Entities near a place, to snap to.
    std::vector<const host::SnapSource*> SourcesNear(const AcGePoint3d& at, double aperture);
    // While a point or entities are asked for the pointer is a cross.
    void SetPicking(bool isPicking);

    std::function<void(const AcGePoint3d&, bool takesOut)> onClick;
    std::function<void()> onEnter;  // the right button
    std::function<void(const AcGePoint3d&)> onMove;

protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    Scene* CurrentScene() const;
    double Scale() const;  // pixels a drawing unit
    void KeepShape();
    void PaintItem(QPainter& painter, const SceneItem& item, bool isPicked) const;
    void PaintCorner(QPainter& painter) const;
    void PaintAim(QPainter& painter) const;
    size_t CountHighlighted() const;

    AcApDocument* m_document = nullptr;
    std::map<const AcApDocument*, std::unique_ptr<Scene>> m_scenes;
    std::vector<AcDbObjectId> m_picked;
    std::optional<AcGePoint3d> m_corner;
    std::optional<AimView> m_aim;
    QPointF m_pointer;
    std::optional<QPointF> m_panFrom;
    size_t m_highlighted = 0;
};

}  // namespace app
