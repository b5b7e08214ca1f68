// Paths in dashes, cut off at a frame.
#pragma once

#include <QRectF>
#include <cmath>
#include <vector>

namespace app {

// Shortens the line to the part inside the frame; false when there is none.
bool ClipToFrame(QPointF& from, QPointF& to, const QRectF& frame);

// Below this many pixels a pattern cannot be told from a line.
constexpr double kSmallestPattern = 5.0;

// Calls draw(from, to) for each stroke of the path inside the frame. Strokes go on around corners.
// False, with nothing drawn, when the pattern is too small to be seen.
template <class Draw>
bool WalkDashes(const std::vector<QPointF>& path, const std::vector<double>& dashes, double scale,
                const QRectF& frame, Draw draw) {
    double length = 0.0;
    for (const double dash : dashes) length += std::fabs(dash) * scale;
    if (!(length >= kSmallestPattern)) return false;
    double before = 0.0;  // along the path
    for (size_t i = 1; i < path.size(); ++i) {
        const QPointF start = path[i - 1], step = path[i] - start;
        const double whole = std::hypot(step.x(), step.y());
        QPointF from = start, to = path[i];
        if (whole > 0.0 && ClipToFrame(from, to, frame)) {
            const QPointF unit = step / whole;
            const auto along = [&](const QPointF& p) {
                return (p.x() - start.x()) * unit.x() + (p.y() - start.y()) * unit.y();
            };
            double at = along(from);
            const double end = along(to);
            double phase = std::fmod(before + at, length);
            size_t k = 0;
            while (phase >= std::fabs(dashes[k]) * scale && k + 1 < dashes.size())
                phase -= std::fabs(dashes[k++]) * scale;
            while (at < end) {
                // A dot is drawn as a pixel.
                const double rest = (std::max)(std::fabs(dashes[k]) * scale - phase, 0.0);
                const double next = (std::min)(at + rest, end);
                if (dashes[k] >= 0.0)
                    draw(start + unit * at, start + unit * (std::max)(next, at + 0.7));
                at = next;
                phase = 0.0;
                k = (k + 1) % dashes.size();
            }
        }
        before += whole;
    }
    return true;
}

}  // namespace app
