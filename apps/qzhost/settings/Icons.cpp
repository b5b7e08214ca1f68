#include "apps/qzhost/settings/Icons.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <map>

namespace app {
namespace {

// On a field of 24 by 24: M and L with a point each; O with centre and radius; A with these, the
// angle it begins at and its sweep in degrees; Z closes.
const std::map<QString, const char*>& Pictures() {
    static const std::map<QString, const char*> kPictures = {
        {"new", "M 6 3 L 14 3 L 18 7 L 18 21 L 6 21 Z M 14 3 L 14 7 L 18 7"},
        {"open", "M 3 19 L 3 5 L 9 5 L 11 8 L 19 8 L 19 11 M 3 19 L 7 11 L 22 11 L 18 19 Z"},
        {"save",
         "M 4 4 L 17 4 L 20 7 L 20 20 L 4 20 Z M 8 4 L 8 9 L 15 9 L 15 4 M 7 20 L 7 13 L 17 "
         "13 L 17 20"},
        {"print",
         "M 7 9 L 7 3 L 17 3 L 17 9 M 7 17 L 3 17 L 3 9 L 21 9 L 21 17 L 17 17 M 7 14 L 17 "
         "14 L 17 21 L 7 21 Z"},
        {"undo", "M 9 5 L 4 9 L 9 13 M 4 9 L 15 9 L 19 12 L 19 16 L 15 19 L 8 19"},
        {"redo", "M 15 5 L 20 9 L 15 13 M 20 9 L 9 9 L 5 12 L 5 16 L 9 19 L 16 19"},
        {"erase", "M 4 15 L 13 5 L 20 11 L 12 20 L 8 20 Z M 8 11 L 15 17"},
        {"explode",
         "M 12 12 L 4 4 M 12 12 L 20 4 M 12 12 L 4 20 M 12 12 L 20 20 M 4 9 L 4 4 L 9 4 "
         "M 15 4 L 20 4 L 20 9 M 4 15 L 4 20 L 9 20 M 15 20 L 20 20 L 20 15"},
        {"line", "M 4 20 L 20 4 O 4 20 1.5 O 20 4 1.5"},
        {"polyline", "M 3 18 L 9 6 L 15 14 L 21 5 O 9 6 1.5 O 15 14 1.5"},
        {"arc", "A 12 17 9 0 180 O 3 17 1.5 O 21 17 1.5"},
        {"move",
         "M 12 3 L 12 21 M 3 12 L 21 12 M 9 6 L 12 3 L 15 6 M 9 18 L 12 21 L 15 18 M 6 9 L 3 "
         "12 L 6 15 M 18 9 L 21 12 L 18 15"},
        {"rotate", "A 12 12 8 30 300 M 15 4 L 19 8 L 20 2"},
        {"scale", "M 4 12 L 4 20 L 12 20 M 4 4 L 20 4 L 20 20 M 7 17 L 17 7 M 12 7 L 17 7 L 17 12"},
        {"mirror", "M 12 3 L 12 21 M 9 6 L 3 18 L 9 18 Z M 15 6 L 21 18 L 15 18 Z"},
        {"distance",
         "M 3 18 L 21 18 M 3 14 L 3 22 M 21 14 L 21 22 M 6 15 L 3 18 L 6 21 M 18 15 L 21 "
         "18 L 18 21 M 6 8 L 18 8"},
        {"zoom all",
         "M 3 8 L 3 3 L 8 3 M 16 3 L 21 3 L 21 8 M 21 16 L 21 21 L 16 21 M 8 21 L 3 21 L "
         "3 16 M 8 8 L 16 8 L 16 16 L 8 16 Z"},
        {"zoom in", "O 10 10 7 M 15 15 L 21 21 M 10 7 L 10 13 M 7 10 L 13 10"},
        {"zoom out", "O 10 10 7 M 15 15 L 21 21 M 7 10 L 13 10"},
        {"envelope", "M 2 12 L 5 12 L 5 7 L 14 7 L 14 9 L 20 9 L 22 12 M 2 15 L 22 15"},
        {"envelopes",
         "M 2 8 L 4 8 L 4 4 L 14 4 L 14 5 L 20 5 L 22 8 M 2 10 L 22 10 M 2 18 L 4 18 L "
         "4 14 L 12 14 L 12 15 L 20 15 L 22 18 M 2 20 L 22 20"},
        {"solid",
         "M 12 3 L 20 7 L 20 17 L 12 21 L 4 17 L 4 7 Z M 4 7 L 12 11 L 20 7 M 12 11 L 12 21"},
        {"compare", "M 3 16 L 8 8 L 14 12 L 21 5 M 3 19 L 8 12 L 14 15 L 21 10"},
        {"page", "M 5 3 L 19 3 L 19 21 L 5 21 Z M 8 8 L 16 8 M 8 12 L 16 12 M 8 16 L 13 16"},
        {"layers", "M 12 4 L 21 9 L 12 14 L 3 9 Z M 3 13 L 12 18 L 21 13 M 3 17 L 12 22 L 21 17"},
    };
    return kPictures;
}

QPainterPath PathOf(const QString& text) {
    QPainterPath path;
    const QStringList words = text.split(' ', Qt::SkipEmptyParts);
    qsizetype at = 0;
    const auto number = [&] { return at < words.size() ? words[at++].toDouble() : 0.0; };
    while (at < words.size()) {
        const QString word = words[at++];
        const double x = word == "Z" ? 0.0 : number(), y = word == "Z" ? 0.0 : number();
        if (word == "M") {
            path.moveTo(x, y);
        } else if (word == "L") {
            path.lineTo(x, y);
        } else if (word == "O") {
            const double radius = number();
            path.addEllipse(QPointF(x, y), radius, radius);
        } else if (word == "A") {
            const double radius = number(), from = number(), sweep = number();
            const QRectF box(x - radius, y - radius, 2 * radius, 2 * radius);
            path.arcMoveTo(box, from);
            path.arcTo(box, from, sweep);
        } else {
            path.closeSubpath();
        }
    }
    return path;
}

class LineEngine : public QIconEngine {
public:
    LineEngine(QPainterPath path, const QColor& ink) : m_path(std::move(path)), m_ink(ink) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        QColor ink = m_ink;
        if (mode == QIcon::Disabled) ink.setAlphaF(0.35F);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / 24.0, rect.height() / 24.0);
        QPen pen(ink, 1.6);
        pen.setCapStyle(Qt::RoundCap);
        pen.setJoinStyle(Qt::RoundJoin);
        painter->setPen(pen);
        painter->drawPath(m_path);
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }
    QIconEngine* clone() const override { return new LineEngine(*this); }

private:
    QPainterPath m_path;
    QColor m_ink;
};

}  // namespace

QIcon MakeIcon(const QString& name, const QColor& ink) {
    const auto found = Pictures().find(name);
    return found == Pictures().end() ? QIcon() : QIcon(new LineEngine(PathOf(found->second), ink));
}

}  // namespace app
