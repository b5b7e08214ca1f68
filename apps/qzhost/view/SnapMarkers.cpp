#include "apps/qzhost/view/SnapMarkers.h"

namespace app {
namespace {

constexpr double kSize = 7.0;  // half a marker, pixels
const QColor kMarker(0x40, 0xE0, 0x60);

QPolygonF Around(const QPointF& at, std::initializer_list<QPointF> corners) {
    QPolygonF polygon;
    for (const QPointF& corner : corners) polygon << at + corner * kSize;
    return polygon;
}

}  // namespace

void PaintSnapMarker(QPainter& painter, host::SnapMode mode, const QPointF& at) {
    painter.setPen(QPen(kMarker, 2));
    painter.setBrush(Qt::NoBrush);
    const auto closed = [&](std::initializer_list<QPointF> corners) {
        painter.drawPolygon(Around(at, corners));
    };
    const auto open = [&](std::initializer_list<QPointF> corners) {
        painter.drawPolyline(Around(at, corners));
    };
    switch (mode) {
        case host::kSnapEnd:
            return closed({{-1, -1}, {1, -1}, {1, 1}, {-1, 1}});
        case host::kSnapMiddle:
            return closed({{-1, 1}, {0, -1}, {1, 1}});
        case host::kSnapCentre:
            return painter.drawEllipse(at, kSize, kSize);
        case host::kSnapNode:
            painter.drawEllipse(at, kSize, kSize);
            [[fallthrough]];
        case host::kSnapIntersection:
            open({{-1, -1}, {1, 1}});
            return open({{-1, 1}, {1, -1}});
        case host::kSnapQuadrant:
            return closed({{-1, 0}, {0, -1}, {1, 0}, {0, 1}});
        case host::kSnapPerpendicular:
            open({{-1, -1}, {-1, 1}, {1, 1}});
            return open({{-1, 0}, {0, 0}, {0, 1}});
        case host::kSnapCentreLine:
            open({{-1.6, 0}, {-0.5, 0}});
            open({{-0.15, 0}, {0.15, 0}});
            open({{0.5, 0}, {1.6, 0}});
            return open({{0, -0.8}, {0, 0.8}});
        default:
            return closed({{-1, -1}, {1, -1}, {-1, 1}, {1, 1}});
    }
}

void PaintTooltip(QPainter& painter, const QPointF& at, const QString& text, const QRectF& area) {
    constexpr double kAside = 16.0;  // pixels from the pointer
    QRectF box = painter.fontMetrics().boundingRect(text).adjusted(-5, -3, 5, 3);
    box.moveTopLeft(at + QPointF(kAside, kAside));
    if (box.right() > area.right()) box.moveRight(at.x() - kAside);
    if (box.bottom() > area.bottom()) box.moveBottom(at.y() - kAside);
    painter.setPen(QColor(0x90, 0x98, 0xA0));
    painter.setBrush(QColor(0x38, 0x40, 0x4A));
    painter.drawRect(box);
    painter.setPen(QColor(0xF0, 0xF0, 0xF0));
    painter.drawText(box, Qt::AlignCenter, text);
}

}  // namespace app
