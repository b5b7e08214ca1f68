#include "product/base/Outline.h"

#include <algorithm>
#include <cmath>

namespace product {

void Box::Add(Point p) {
    minX = std::min(minX, p.x);
    minY = std::min(minY, p.y);
    maxX = std::max(maxX, p.x);
    maxY = std::max(maxY, p.y);
}

void Box::Add(const Box& other) {
    if (other.IsEmpty()) return;
    Add(Point{other.minX, other.minY});
    Add(Point{other.maxX, other.maxY});
}

bool Box::Contains(const Box& inner) const {
    return inner.minX >= minX && inner.minY >= minY && inner.maxX <= maxX && inner.maxY <= maxY;
}

bool Box::Meets(const Box& other) const {
    return other.minX <= maxX && other.maxX >= minX && other.minY <= maxY && other.maxY >= minY;
}

double Sweep(double bulge) { return 4 * std::atan(bulge); }

Circle CircleOf(const Vertex& from, Point to) {
    const double b = from.bulge;
    const double dx = to.x - from.x, dy = to.y - from.y;
    const double offset = (1 - b * b) / (4 * b);
    Circle circle;
    circle.centre = {(from.x + to.x) / 2 - dy * offset, (from.y + to.y) / 2 + dx * offset};
    circle.radius = std::hypot(dx, dy) * (1 + b * b) / (4 * std::abs(b));
    return circle;
}

namespace {

Point At(const std::vector<Vertex>& ring, size_t i) {
    const Vertex& v = ring[i % ring.size()];
    return {v.x, v.y};
}

// Whether the edge passes the direction `angle`, seen from its centre.
bool PassesAngle(const Vertex& from, const Circle& circle, double angle) {
    const double sweep = Sweep(from.bulge);
    const double start = std::atan2(from.y - circle.centre.y, from.x - circle.centre.x);
    double turn = sweep > 0 ? angle - start : start - angle;
    const double full = 2 * std::acos(-1.0);
    turn -= full * std::floor(turn / full);
    return turn <= std::abs(sweep);
}

}  // namespace

Box ExtentsOf(const std::vector<Vertex>& ring) {
    Box box;
    for (size_t i = 0; i < ring.size(); ++i) {
        const Vertex& from = ring[i];
        box.Add(At(ring, i));
        const Point to = At(ring, i + 1);
        if (from.bulge == 0 || (to.x == from.x && to.y == from.y)) continue;
        const Circle c = CircleOf(from, to);
        const double quarter = std::acos(0.0);
        const Point ends[] = {{c.centre.x + c.radius, c.centre.y},
                              {c.centre.x, c.centre.y + c.radius},
                              {c.centre.x - c.radius, c.centre.y},
                              {c.centre.x, c.centre.y - c.radius}};
        for (int k = 0; k < 4; ++k)
            if (PassesAngle(from, c, k * quarter)) box.Add(ends[k]);
    }
    return box;
}

double LengthOf(const std::vector<Vertex>& ring) {
    double length = 0;
    for (size_t i = 0; i < ring.size(); ++i) {
        const Point to = At(ring, i + 1);
        const double chord = std::hypot(to.x - ring[i].x, to.y - ring[i].y);
        if (chord == 0) continue;
        length += ring[i].bulge == 0
                      ? chord
                      : CircleOf(ring[i], to).radius * std::abs(Sweep(ring[i].bulge));
    }
    return length;
}

std::vector<plane::Curve> EdgesOf(const std::vector<Vertex>& ring) {
    std::vector<plane::Corner> corners;
    corners.reserve(ring.size());
    for (const Vertex& v : ring) corners.push_back({{v.x, v.y}, v.bulge});
    return plane::CurvesOf(corners);
}

}  // namespace product
