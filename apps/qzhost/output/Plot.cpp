#include "apps/qzhost/output/Plot.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QSvgGenerator>
#include <algorithm>

#include "apps/qzhost/scene/ScenePainter.h"
#include "apps/qzhost/words/Words.h"

namespace app {
namespace {

constexpr double kMillimetresPerInch = 25.4;
constexpr double kHair = 0.18;     // millimetres, the thinnest line on paper
constexpr int kVectorDots = 1200;  // an inch, of files that are made of curves
constexpr qsizetype kMostDots = 400'000'000;

double ScaleOf(const PlotSetup& setup) {
    return setup.scale > 0.0 ? setup.scale : FittingScale(setup);
}

// Paints into a device whose corner is the page's.
void Paint(QPainter& painter, const Scene& scene, const PlotSetup& setup, double dotsPerInch) {
    const double dots = dotsPerInch / kMillimetresPerInch;
    const QRectF page = setup.page.fullRect(QPageLayout::Millimeter);
    const QRectF free = setup.page.paintRect(QPageLayout::Millimeter);
    ScenePicture picture{scene.Chunks(), scene.Patterns(), {}, {}};
    picture.look.paper = qRgb(0xFF, 0xFF, 0xFF);
    picture.look.ink = qRgb(0, 0, 0);
    picture.look.override = setup.isMonochrome ? qRgb(0, 0, 0) : 0;
    picture.look.hair = kHair * dots;
    picture.look.pixelsPerMillimetre = dots;
    picture.view.scale = dots * setup.millimetresPerUnit * ScaleOf(setup);
    picture.view.size = (free.size() * dots).toSize();
    picture.view.centre = setup.area.center();
    painter.fillRect(QRectF(QPointF(0, 0), page.size() * dots), Qt::white);
    painter.translate(free.topLeft() * dots);
    painter.setClipRect(QRectF(QPointF(0, 0), QSizeF(picture.view.size)));
    PaintScene(painter, picture);
}

QString WriteImage(const Scene& scene, const PlotSetup& setup, QIODevice& device) {
    const double dots = setup.dotsPerInch / kMillimetresPerInch;
    const QSize size = (setup.page.fullRect(QPageLayout::Millimeter).size() * dots).toSize();
    if (static_cast<qsizetype>(size.width()) * size.height() > kMostDots)
        return Tr("the picture would be too large; ask for fewer dots an inch");
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull()) return Tr("there is not enough memory for the picture");
    image.setDotsPerMeterX(static_cast<int>(dots * 1000));
    image.setDotsPerMeterY(static_cast<int>(dots * 1000));
    QPainter painter(&image);
    Paint(painter, scene, setup, setup.dotsPerInch);
    painter.end();
    return image.save(&device, "PNG") ? QString() : Tr("the picture cannot be written");
}

QString WritePdf(const Scene& scene, const PlotSetup& setup, QIODevice& device) {
    QPdfWriter writer(&device);
    writer.setResolution(kVectorDots);
    writer.setPageLayout(setup.page);
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    writer.setTitle(setup.title);
    writer.setCreator("QZHost");
    QPainter painter;
    if (!painter.begin(&writer)) return Tr("the page cannot be written");
    Paint(painter, scene, setup, kVectorDots);
    return painter.end() ? QString() : Tr("the page cannot be written");
}

QString WriteSvg(const Scene& scene, const PlotSetup& setup, QIODevice& device) {
    QSvgGenerator writer;
    writer.setOutputDevice(&device);
    writer.setTitle(setup.title);
    // Sizes are written in millimetres by the resolution.
    writer.setResolution(kVectorDots);
    const QSizeF page = setup.page.fullRect(QPageLayout::Millimeter).size();
    const QSizeF dots = page * (kVectorDots / kMillimetresPerInch);
    writer.setSize(dots.toSize());
    writer.setViewBox(QRectF(QPointF(0, 0), dots));
    QPainter painter;
    if (!painter.begin(&writer)) return Tr("the page cannot be written");
    Paint(painter, scene, setup, kVectorDots);
    return painter.end() ? QString() : Tr("the page cannot be written");
}

}  // namespace

double FittingScale(const PlotSetup& setup) {
    const QRectF free = setup.page.paintRect(QPageLayout::Millimeter);
    const double wide = setup.area.width() * setup.millimetresPerUnit;
    const double high = setup.area.height() * setup.millimetresPerUnit;
    double scale = 0.0;
    if (wide > 0.0) scale = free.width() / wide;
    if (high > 0.0) scale = (std::min)(scale > 0.0 ? scale : 1e300, free.height() / high);
    return scale > 0.0 ? scale : 1.0;
}

bool Fits(const PlotSetup& setup) { return ScaleOf(setup) <= FittingScale(setup) * (1.0 + 1e-9); }

QString PlotToFile(const Scene& scene, const PlotSetup& setup, const QString& path) {
    const QString ending = path.section('.', -1).toLower();
    if (ending != "pdf" && ending != "svg" && ending != "png")
        return Tr("%1: a page is written as .pdf, .svg or .png").arg(path);
    // As a whole or not at all.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return path + ": " + file.errorString();
    QString reason;
    if (ending == "png") {
        reason = WriteImage(scene, setup, file);
    } else {
        // These writers close what they write to.
        QBuffer bytes;
        bytes.open(QIODevice::WriteOnly);
        reason = ending == "pdf" ? WritePdf(scene, setup, bytes) : WriteSvg(scene, setup, bytes);
        if (reason.isEmpty() && file.write(bytes.data()) != bytes.data().size())
            reason = file.errorString();
    }
    if (reason.isEmpty() && !file.commit()) reason = file.errorString();
    return reason.isEmpty() ? QString() : path + ": " + reason;
}

void PlotToPrinter(const Scene& scene, const PlotSetup& setup, QPrinter& printer) {
    printer.setPageLayout(setup.page);
    printer.setFullPage(true);
    QPainter painter;
    if (painter.begin(&printer)) Paint(painter, scene, setup, printer.resolution());
}

}  // namespace app
