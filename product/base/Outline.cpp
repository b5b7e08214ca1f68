#include "product/base/Outline.h"

namespace product {

std::vector<plane::Curve> EdgesOf(const std::vector<Vertex>& ring) {
    std::vector<plane::Corner> corners;
    corners.reserve(ring.size());
    for (const Vertex& v : ring) corners.push_back({{v.x, v.y}, v.bulge});
    return plane::CurvesOf(corners);
}

Box ExtentsOf(const std::vector<Vertex>& ring) { return plane::BoxOf(EdgesOf(ring)); }

double LengthOf(const std::vector<Vertex>& ring) {
    double length = 0;
    for (const plane::Curve& edge : EdgesOf(ring)) length += edge.Length();
    return length;
}

}  // namespace product
