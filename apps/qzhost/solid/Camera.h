// How a solid is looked at: turned, moved, larger or smaller; in parallel, as drawings are.
#pragma once

#include <QMatrix4x4>
#include <QPointF>
#include <QQuaternion>
#include <QSize>
#include <QVector3D>

#include "gepnt3d.h"

namespace app {

// Coordinates are relative to the origin, which keeps single precision good far from zero.
struct Camera {
    AcGePoint3d origin;  // of the world, in the middle of what is shown
    QQuaternion turn;    // of the world before the eye; none: as the drawing lies
    QPointF shift;       // of the picture, pixels, y down
    double scale = 1.0;  // pixels a drawing unit
    double reach = 1.0;  // half the depth that is shown, drawing units
    QSize size{1, 1};    // pixels

    QVector3D Relative(const AcGePoint3d& world) const;
    QPointF ToPixel(const AcGePoint3d& world) const;
    // Where the ray through a pixel begins, in front of everything, and where it goes.
    void RayOf(const QPointF& pixel, AcGePoint3d& from, AcGeVector3d& along) const;
    // From relative coordinates to OpenGL's cube.
    QMatrix4x4 Matrix() const;

    // The mouse has gone from one pixel to another with the left button down.
    void TurnBy(const QPointF& step);
    // Zooms about a pixel.
    void ZoomAt(const QPointF& pixel, double factor);
    // Shows a ball of that radius about the origin.
    void Fit(double radius);
};

}  // namespace app
