#include "product/picture/Picture.h"

#include <cmath>

namespace product {

void Path::MoveTo(Point p) {
    PathStep step;
    step.to = p;
    m_steps.push_back(step);
}

void Path::LineTo(Point p) {
    PathStep step;
    step.kind = PathStep::Line;
    step.to = p;
    m_steps.push_back(step);
}

void Path::ArcTo(Point p, double radiusX, double radiusY, double turn, bool large, bool ccw) {
    PathStep step;
    step.kind = PathStep::Arc;
    step.to = p;
    step.radiusX = radiusX;
    step.radiusY = radiusY;
    step.turn = turn;
    step.large = large;
    step.ccw = ccw;
    m_steps.push_back(step);
}

void Path::CubicTo(Point control1, Point control2, Point p) {
    PathStep step;
    step.kind = PathStep::Cubic;
    step.to = p;
    step.control1 = control1;
    step.control2 = control2;
    m_steps.push_back(step);
}

void Path::Close() {
    PathStep step;
    step.kind = PathStep::Close;
    m_steps.push_back(step);
}

void Path::AddRing(const std::vector<Vertex>& vertices, bool closed) {
    if (vertices.empty()) return;
    MoveTo({vertices[0].x, vertices[0].y});
    const size_t edges = vertices.size() - (closed ? 0 : 1);
    for (size_t i = 0; i < edges; ++i) {
        const Vertex& from = vertices[i];
        const Vertex& next = vertices[(i + 1) % vertices.size()];
        const Point to{next.x, next.y};
        if (from.bulge == 0 || (to.x == from.x && to.y == from.y)) {
            LineTo(to);
            continue;
        }
        const double radius = plane::MakeCurve({from.x, from.y}, to, from.bulge).radius;
        ArcTo(to, radius, radius, 0, std::abs(from.bulge) > 1, from.bulge > 0);
    }
    if (closed) Close();
}

void Path::AddEllipse(const Affine& place, double from, double to) {
    const double radiusX = std::hypot(place.a, place.b), radiusY = std::hypot(place.c, place.d);
    const double turn = std::atan2(place.b, place.a);
    const bool ccw = place.a * place.d - place.b * place.c > 0;
    const auto at = [&](double t) { return place({std::cos(t), std::sin(t)}); };
    MoveTo(at(from));
    // In halves: an arc that ends where it begins would be nothing.
    const double half = (to - from) / 2;
    for (int i = 1; i <= 2; ++i) ArcTo(at(from + i * half), radiusX, radiusY, turn, false, ccw);
}

}  // namespace product
