#include "apps/qzhost/scene/Dashes.h"

#include <algorithm>

namespace app {

// One border after the other (Liang and Barsky, 1984).
bool ClipToFrame(QPointF& from, QPointF& to, const QRectF& frame) {
    const QPointF start = from, step = to - from;
    const double slope[4] = {-step.x(), step.x(), -step.y(), step.y()};
    const double room[4] = {start.x() - frame.left(), frame.right() - start.x(),
                            start.y() - frame.top(), frame.bottom() - start.y()};
    double first = 0.0, last = 1.0;
    for (int i = 0; i < 4; ++i) {
        if (slope[i] == 0.0) {
            if (room[i] < 0.0) return false;
        } else if (slope[i] < 0.0) {
            first = (std::max)(first, room[i] / slope[i]);
        } else {
            last = (std::min)(last, room[i] / slope[i]);
        }
    }
    if (!(first <= last)) return false;
    if (last < 1.0) to = start + step * last;
    if (first > 0.0) from = start + step * first;
    return true;
}

}  // namespace app
