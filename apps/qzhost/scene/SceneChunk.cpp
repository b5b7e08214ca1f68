#include "apps/qzhost/scene/SceneChunk.h"

#include <algorithm>

namespace app {

QRectF United(const QRectF& a, const QRectF& b) {
    const QPointF low((std::min)(a.left(), b.left()), (std::min)(a.top(), b.top()));
    const QPointF high((std::max)(a.right(), b.right()), (std::max)(a.bottom(), b.bottom()));
    return QRectF(low, high);
}

void SceneChunk::Append(const SceneChunk& from, const SceneItem& item) {
    SceneItem copy = item;
    copy.firstPart = static_cast<unsigned>(parts.size());
    copy.firstLabel = static_cast<unsigned>(labels.size());
    for (unsigned i = 0; i < item.parts; ++i) {
        ScenePart part = from.parts[item.firstPart + i];
        const auto begin = from.points.begin() + part.first;
        part.first = static_cast<unsigned>(points.size());
        points.insert(points.end(), begin, begin + part.count);
        parts.push_back(part);
    }
    const auto label = from.labels.begin() + item.firstLabel;
    labels.insert(labels.end(), label, label + item.labels);
    box = United(box, item.box);
    items.push_back(copy);
}

}  // namespace app
