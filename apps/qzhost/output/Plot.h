// The drawing to scale on paper or in a file.
#pragma once

#include <QPageLayout>
#include <QPrinter>
#include <QString>

#include "apps/qzhost/scene/Scene.h"

namespace app {

struct PlotSetup {
    QRectF area;         // of the drawing, what is to be seen
    double scale = 0.0;  // millimetres on paper a millimetre of the drawing; 0: as large as fits
    double millimetresPerUnit = 1.0;
    QPageLayout page;           // its margins are kept free
    bool isMonochrome = false;  // everything in black
    int dotsPerInch = 300;      // of pictures made of dots
    QString title;
};

// The scale that fits the area into the page.
double FittingScale(const PlotSetup& setup);
// Whether the area, at the scale asked for, lies within the page.
bool Fits(const PlotSetup& setup);

// Writes a page: .pdf, .svg or .png by the ending; the area's middle comes to the page's middle.
// result  empty, or why there is no file
QString PlotToFile(const Scene& scene, const PlotSetup& setup, const QString& path);
void PlotToPrinter(const Scene& scene, const PlotSetup& setup, QPrinter& printer);

}  // namespace app
