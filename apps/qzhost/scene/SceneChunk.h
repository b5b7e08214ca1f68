// What is drawn of a drawing, as flat lists that a painter in another thread can read.
#pragma once

#include <QColor>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QTransform>
#include <memory>
#include <vector>

#include "dbid.h"

namespace app {

// What is white on a dark paper and black on a light one; a painter gives it the ink of its paper.
constexpr QRgb kForeground = 0xFFE8E8E8;

struct SceneLabel {
    QString text;
    double height = 0.0;  // of capitals, drawing units
    int anchor = 0;       // 0 begins, 1 is centred at, 2 ends at its place
    QRgb colour = 0;
    QTransform place;  // base line's origin, x along the text, y up
};

// One stroke or filled face. Its points, in world coordinates:
//   kLine  a path
//   kArc   centre, two half axes as vectors, and (start, sweep) in radians as parameters
//   kFill  the corners of a face
struct ScenePart {
    enum Kind : unsigned char { kLine, kArc, kFill };
    Kind kind = kLine;
    unsigned char weight = 0;  // tenths of a millimetre on paper; 0: a hair
    short pattern = 0;         // index of a linetype's dashes; 0: none
    float patternScale = 1.0F;
    QRgb colour = 0;
    unsigned first = 0, count = 0;  // points
};

// Dashes in drawing units: positive drawn, negative left out, 0 a dot.
using DashPatterns = std::vector<std::vector<double>>;

// The box of nothing; unlike QRectF's it is no point at the origin.
inline QRectF NoBox() { return QRectF(QPointF(1e300, 1e300), QPointF(-1e300, -1e300)); }
inline bool IsNoBox(const QRectF& box) { return box.width() < 0.0; }

struct SceneItem {
    AcDbObjectId id;
    QRectF box = NoBox();
    unsigned firstPart = 0, parts = 0;
    unsigned firstLabel = 0, labels = 0;
};

// Some thousand entities; never changed once made.
struct SceneChunk {
    std::vector<SceneItem> items;
    std::vector<ScenePart> parts;
    std::vector<QPointF> points;
    std::vector<SceneLabel> labels;
    QRectF box = NoBox();

    // Appends a copy of an item of another chunk, or of this one's like.
    void Append(const SceneChunk& from, const SceneItem& item);
};
using SceneChunks = std::vector<std::shared_ptr<const SceneChunk>>;

// True also where they only touch; a box without width or height is one, too.
inline bool Touches(const QRectF& a, const QRectF& b) {
    return a.left() <= b.right() && b.left() <= a.right() && a.top() <= b.bottom() &&
           b.top() <= a.bottom();
}

// The smallest box around both; unlike QRectF's it counts boxes without area, and NoBox() adds
// nothing.
QRectF United(const QRectF& a, const QRectF& b);

}  // namespace app
