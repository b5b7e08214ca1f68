// What is laid over the drawing and is no part of it: previews, and places to look at.
#pragma once

#include <QColor>
#include <QPointF>
#include <QString>
#include <vector>

namespace app {

struct Overlay {
    struct Path {
        std::vector<QPointF> points;  // of the drawing
        QColor colour;
        bool isDashed = false;
    };
    struct Spot {
        QPointF at;  // of the drawing
        QString text;
        QColor colour;
    };
    struct Line {
        QString text;
        QColor colour;
    };
    std::vector<Path> paths;
    std::vector<Spot> spots;
    std::vector<Line> legend;

    bool IsEmpty() const { return paths.empty() && spots.empty() && legend.empty(); }
};

}  // namespace app
