#include "product/check/Farthest.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "plane/box_index.h"
#include "product/check/Tolerance.h"

namespace product {
namespace {

double LengthOf(const Polylines& lines) {
    double length = 0;
    for (const Polyline& line : lines)
        for (size_t i = 1; i < line.size(); ++i) length += Distance(line[i - 1], line[i]);
    return length;
}

// The edges of lines, to tell quickly whether one is close by.
class Edges {
public:
    explicit Edges(const Polylines& lines) : m_edges(EdgesOf(lines)), m_index(BoxesOf(m_edges)) {}

    bool HasWithin(const Point& p, double reach) const {
        const Box at = plane::BoxOf(p, p);
        return m_index.Visit(
            [&](const Box& box) { return box.Meets(at, reach); },
            [&](int i) { return Distance(m_edges[static_cast<size_t>(i)], p) <= reach; });
    }

private:
    static std::vector<plane::Curve> EdgesOf(const Polylines& lines) {
        std::vector<plane::Curve> edges;
        for (const Polyline& line : lines)
            for (size_t i = 1; i < line.size(); ++i) {
                const Point &a = line[i - 1], &b = line[i];
                // From left to right, so that either way round it is as far to the last bit.
                edges.push_back(b.x < a.x ? plane::MakeLine(b, a) : plane::MakeLine(a, b));
            }
        return edges;
    }
    static std::vector<Box> BoxesOf(const std::vector<plane::Curve>& edges) {
        std::vector<Box> boxes;
        boxes.reserve(edges.size());
        for (const plane::Curve& edge : edges) boxes.push_back(plane::BoxOf(edge.from, edge.to));
        return boxes;
    }

    std::vector<plane::Curve> m_edges;
    plane::BoxIndex m_index;
};

}  // namespace

Deviation Farthest(const Polylines& lines, const Polylines& others, const Near& geometry) {
    const double length = LengthOf(lines), step = length / kContourSamples;
    const Edges edges(others);
    Deviation worst;
    const auto look = [&](const Point& p) {
        if (edges.HasWithin(p, (std::max)(worst.distance, kNoiseShare * length))) return;
        const double distance = geometry.DistanceTo(p);
        if (distance > worst.distance) worst = {distance, p, false};
    };
    for (const Polyline& line : lines)
        for (size_t i = 0; i < line.size(); ++i) {
            look(line[i]);
            if (i == 0) continue;
            const Point &a = line[i - 1], &b = line[i];
            const double parts = std::floor(Distance(a, b) / step);
            for (double k = 1; k < parts; ++k)
                look({a.x + (b.x - a.x) * k / parts, a.y + (b.y - a.y) * k / parts});
        }
    return worst;
}

}  // namespace product
