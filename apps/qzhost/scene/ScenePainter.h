// Draws chunks of a scene into a picture.
#pragma once

#include <QImage>
#include <QPainter>
#include <functional>
#include <unordered_set>

#include "apps/qzhost/scene/SceneChunk.h"

namespace app {

// From world to picture: y up to y down.
struct SceneView {
    QPointF centre;      // world, in the middle of the picture
    double scale = 1.0;  // pixels a drawing unit
    QSize size;          // pixels

    QPointF ToPixel(const QPointF& world) const {
        return QPointF(size.width() / 2.0 + (world.x() - centre.x()) * scale,
                       size.height() / 2.0 - (world.y() - centre.y()) * scale);
    }
    QPointF ToWorld(const QPointF& pixel) const {
        return QPointF(centre.x() + (pixel.x() - size.width() / 2.0) / scale,
                       centre.y() - (pixel.y() - size.height() / 2.0) / scale);
    }
    // The part of the world that the picture shows.
    QRectF Area() const {
        const QSizeF world(size.width() / scale, size.height() / scale);
        return QRectF(QPointF(centre.x() - world.width() / 2, centre.y() - world.height() / 2),
                      world);
    }
};

struct SceneLook {
    bool isSmooth = true;              // antialiased
    double pixelsPerMillimetre = 3.8;  // for lineweights
    double hair = 1.2;                 // pixels of the thinnest line
    QRgb paper = 0xFF212830;
    QRgb ink = kForeground;  // for what has the foreground's colour
    QRgb override = 0;       // one colour for everything; 0: its own
    double widen = 0.0;      // pixels more for every line
};

// What a picture is made from; holds on to its chunks.
struct ScenePicture {
    SceneChunks chunks;
    std::shared_ptr<const DashPatterns> patterns;
    SceneView view;
    SceneLook look;
};

// Paints everything that the view shows. What is smaller than a pixel becomes a dot, one a pixel
// and colour; curves get as many chords as their size on the screen wants; texts too small to be
// read are left out.
//
// isWanted  asked now and then; false: stops there
// cost      linear in the entities whose chunks the view touches
bool PaintScene(QPainter& painter, const ScenePicture& picture,
                const std::function<bool()>& isWanted = {});

// One item.
void PaintSceneItem(QPainter& painter, const SceneChunk& chunk, const SceneItem& item,
                    const DashPatterns& patterns, const SceneView& view, const SceneLook& look);

}  // namespace app
