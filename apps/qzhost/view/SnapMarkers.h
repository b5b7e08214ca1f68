// The signs that tell what a point is, as draughtsmen know them.
#pragma once

#include <QPainter>

#include "host/ed/object_snap.h"

namespace app {

// A square for an end, a triangle for a middle, and so on; at is in pixels.
void PaintSnapMarker(QPainter& painter, host::SnapMode mode, const QPointF& at);

// A few words beside a place, kept inside the area.
void PaintTooltip(QPainter& painter, const QPointF& at, const QString& text, const QRectF& area);

}  // namespace app
