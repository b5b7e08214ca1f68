// The window that shows the current drawing and takes the mouse.
#pragma once

#include <QWidget>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "acdocman.h"
#include "apps/qzhost/view/Overlay.h"
#include "apps/qzhost/view/PointAid.h"
#include "apps/qzhost/scene/Scene.h"
#include "apps/qzhost/scene/SceneRenderer.h"
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
//
// The drawing is painted from a picture that is a little larger than the window; when the view
// moves, the picture moves with it at once, and a sharp one follows from another thread. Small
// drawings are painted on the spot.
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
    void ZoomTo(const QRectF& area);

    AcGePoint3d ToWorld(const QPointF& pixel) const;
    QPointF ToPixel(const AcGePoint3d& point) const;
    // How far a pick may be from what it means, in drawing units.
    double PickAperture() const;

    // What has been picked so far, drawn apart; and the corner a window begins at.
    void SetPicked(std::vector<AcDbObjectId> ids);
    // Small squares at what can be snapped to of the entities picked beforehand.
    void SetGrips(std::vector<AcGePoint3d> grips);
    void SetCorner(std::optional<AcGePoint3d> corner);
    void SetAim(std::optional<AimView> aim);
    void SetOverlay(Overlay overlay);
    // Entities that are marked beside what is picked or highlighted.
    void SetMarked(std::vector<AcDbObjectId> ids);
    // The grip under a place, within the pick box; null: none.
    const AcGePoint3d* GripNear(const AcGePoint3d& at) const;
    // The part of the drawing that the window shows.
    QRectF ShownArea() const { return ViewOf(size(), 1.0).Area(); }
    // Entities near a place, and what there is to snap to in them.
    std::vector<AcDbObjectId> IdsNear(const QRectF& area);
    std::vector<const host::SnapSource*> SourcesNear(const AcGePoint3d& at, double aperture);
    // While a point or entities are asked the pointer has a pick box.
    void SetPicking(bool isPicking);
    void SetGrid(bool isShown, double step);
    void SetLight(bool isLight);

    // The scene of the current drawing; null without one.
    Scene* CurrentScene() const;
    // The sharp picture of the present view has been painted.
    bool IsSharp() const;

    std::function<void(const AcGePoint3d&, bool takesOut)> onClick;
    std::function<void()> onEnter;  // the right button
    std::function<void(const AcGePoint3d&)> onMove;
    // Something in the database shown has changed.
    std::function<void()> onChange;

protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent*) override;

private:
    double Scale() const;  // pixels a drawing unit
    void KeepShape();
    SceneView ViewOf(const QSize& size, double ratio) const;
    SceneLook Look() const;
    void AskForPicture();
    void PaintDrawing(QPainter& painter);
    void PaintHighlights(QPainter& painter);
    void PaintGrid(QPainter& painter) const;
    void PaintCorner(QPainter& painter) const;
    void PaintAim(QPainter& painter) const;
    void PaintOverlay(QPainter& painter) const;
    void PaintPointer(QPainter& painter) const;
    void PaintNote(QPainter& painter) const;

    AcApDocument* m_document = nullptr;
    std::map<const AcApDocument*, std::unique_ptr<Scene>> m_scenes;
    SceneRenderer m_renderer;
    RenderedScene m_picture;
    bool m_isPictureStale = true;  // view or drawing have changed since it was asked for
    std::vector<AcDbObjectId> m_picked;
    std::optional<AcGePoint3d> m_corner;
    std::optional<AimView> m_aim;
    std::vector<AcGePoint3d> m_grips;
    Overlay m_overlay;
    std::vector<AcDbObjectId> m_marked;
    AcGePoint2d m_centre;  // of the view as it was fitted to the window
    double m_height = 0.0;
    QSize m_size;  // that the view was fitted to
    QPointF m_pointer;
    bool m_isPointerInside = false;
    bool m_isPicking = false;
    bool m_hasGrid = false;
    bool m_isLight = false;
    double m_gridStep = 10.0;
    std::optional<QPointF> m_panFrom;
    unsigned m_highlightRevision = 0;
};

}  // namespace app
