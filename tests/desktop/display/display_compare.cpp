// Compares what the desktop shows of a drawing with what another renderer found in it.
//
// display_compare DRAWING SHAPES PICTURE
//   SHAPES   of the other renderer, a line each, in drawing units: "W x y width height" the part
//            to compare, "L x y x y" a stroke, "F x y x y x y ..." a face, "T x y ..." the corners
//            of a text, in which letters may differ
//   PICTURE  written: black both, red only the other's, blue only the desktop's, grey texts
// Prints one line: strokes of the other's that are missing and strokes of the desktop's that are
// too many, as parts of all; texts of the other's, and those of them where nothing is shown.
#include <QGuiApplication>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "apps/qzhost/scene/Scene.h"
#include "apps/qzhost/scene/SceneRenderer.h"
#include "host/base/format.h"
#include "host/ed/session.h"

namespace {

constexpr int kSize = 1200;  // pixels, the longer side of the part to compare
constexpr int kNear = 4;     // pixels that lines may lie apart: curves are cut into other chords
constexpr QRgb kPaper = qRgb(255, 255, 255), kInk = qRgb(0, 0, 0);

struct Shape {
    char kind = 'L';
    std::vector<double> numbers;
};

std::vector<Shape> ReadShapes(const char* path) {
    std::vector<Shape> shapes;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        Shape shape;
        words >> shape.kind;
        for (double number = 0; words >> number;) shape.numbers.push_back(number);
        shapes.push_back(shape);
    }
    return shapes;
}

QPolygonF PolygonOf(const Shape& shape, const app::SceneView& view) {
    QPolygonF polygon;
    for (size_t i = 0; i + 1 < shape.numbers.size(); i += 2)
        polygon << view.ToPixel(QPointF(shape.numbers[i], shape.numbers[i + 1]));
    return polygon;
}

using Mask = std::vector<unsigned char>;  // a byte a pixel, 1 where there is ink

Mask InkOf(const QImage& image) {
    Mask ink(static_cast<size_t>(image.width()) * static_cast<size_t>(image.height()));
    size_t at = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) ink[at++] = image.pixel(x, y) != kPaper;
    return ink;
}

// Along rows and then along columns: a square of ink around every pixel.
Mask Widened(const Mask& ink, const QSize& size, int by) {
    Mask wide = ink;
    for (const bool isAlongRows : {true, false}) {
        const Mask before = wide;
        for (int y = 0; y < size.height(); ++y)
            for (int x = 0; x < size.width(); ++x) {
                const int at = isAlongRows ? x : y;
                const int last = (isAlongRows ? size.width() : size.height()) - 1;
                const int step = isAlongRows ? 1 : size.width();
                const int here = y * size.width() + x;
                unsigned char any = 0;
                for (int i = (std::max)(-by, -at); i <= (std::min)(by, last - at); ++i)
                    any |= before[static_cast<size_t>(here + i * step)];
                wide[static_cast<size_t>(here)] = any;
            }
    }
    return wide;
}

// The part of ink that nothing lies near to.
double Alone(const Mask& ink, const Mask& others) {
    size_t all = 0, alone = 0;
    for (size_t i = 0; i < ink.size(); ++i) {
        all += ink[i];
        alone += ink[i] != 0 && others[i] == 0;
    }
    return all == 0 ? 0.0 : static_cast<double>(alone) / static_cast<double>(all);
}

QImage Blank(const QSize& size) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(kPaper);
    return image;
}

bool HasInk(const QPolygonF& where, const QImage& texts, const Mask& ink) {
    const QRect box = where.boundingRect().toAlignedRect().intersected(texts.rect());
    for (int y = box.top(); y <= box.bottom(); ++y)
        for (int x = box.left(); x <= box.right(); ++x)
            if (ink[static_cast<size_t>(y * texts.width() + x)] != 0 &&
                where.containsPoint(QPointF(x, y), Qt::OddEvenFill))
                return true;
    return box.isEmpty();  // beyond the part to compare
}

void WritePicture(const QSize& size, const Mask& theirs, const Mask& ours, const Mask& texts,
                  const char* path) {
    QImage image = Blank(size);
    size_t at = 0;
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x, ++at) {
            if (texts[at] != 0) image.setPixel(x, y, qRgb(225, 225, 225));
            if (ours[at] != 0 || theirs[at] != 0)
                image.setPixel(x, y,
                               ours[at] == 0     ? qRgb(255, 0, 0)
                               : theirs[at] == 0 ? qRgb(0, 0, 255)
                                                 : kInk);
        }
    image.save(path, "PNG");
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication qt(argc, argv);
    const std::vector<Shape> shapes = argc == 4 ? ReadShapes(argv[2]) : std::vector<Shape>();
    if (shapes.empty() || shapes.front().kind != 'W' || shapes.front().numbers.size() != 4) {
        std::fprintf(stderr, "usage: display_compare DRAWING SHAPES PICTURE\n");
        return 2;
    }
    AcApDocument* const document = host::Session::Get().Open(host::Widen(argv[1]));
    if (document == nullptr) return 1;
    const std::vector<double>& part = shapes.front().numbers;
    app::SceneView view;
    view.scale = kSize / (std::max)(part[2], part[3]);
    view.centre = QPointF(part[0] + part[2] / 2, part[1] + part[3] / 2);
    view.size = QSize(static_cast<int>(std::ceil(part[2] * view.scale)) + 40,
                      static_cast<int>(std::ceil(part[3] * view.scale)) + 40);
    int missingTexts = 0, texts = 0;
    double missing = 0, tooMuch = 0;
    {
        app::Scene scene(*document->database());
        scene.Update();
        app::ScenePicture picture{scene.Chunks(), scene.Patterns(), view, {}};
        picture.look = {false, 0.0, 1.0, kPaper, kInk, kInk, 0.0};
        const Mask ours = InkOf(app::SceneRenderer::Render(picture).image);
        QImage strokes = Blank(view.size), letters = Blank(view.size);
        QPainter pen(&strokes), box(&letters);
        pen.setBrush(Qt::black);
        box.setBrush(Qt::black);
        for (const Shape& shape : shapes) {
            if (shape.kind == 'L') pen.drawPolyline(PolygonOf(shape, view));
            if (shape.kind == 'F') pen.drawPolygon(PolygonOf(shape, view));
            if (shape.kind == 'T') box.drawPolygon(PolygonOf(shape, view));
        }
        pen.end();
        box.end();
        const Mask theirs = InkOf(strokes), area = InkOf(letters);
        Mask allowed = Widened(theirs, view.size, kNear);
        const Mask around = Widened(area, view.size, 4 * kNear);
        for (size_t i = 0; i < allowed.size(); ++i) allowed[i] |= around[i];
        missing = Alone(theirs, Widened(ours, view.size, kNear));
        tooMuch = Alone(ours, allowed);
        for (const Shape& shape : shapes) {
            if (shape.kind != 'T') continue;
            ++texts;
            missingTexts += !HasInk(PolygonOf(shape, view), letters, ours);
        }
        WritePicture(view.size, theirs, ours, area, argv[3]);
    }
    std::printf("%.4f %.4f %d %d\n", missing, tooMuch, texts, missingTexts);
    host::Session::Get().CloseAll();
    return 0;
}
