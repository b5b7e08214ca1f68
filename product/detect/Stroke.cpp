#include "product/detect/Stroke.h"

#include <cmath>

#include "host/base/angles.h"

namespace product::detect {

double Stroke::Length() const {
    double length = 0;
    for (size_t i = 1; i < points.size(); ++i) length += Distance(points[i - 1], points[i]);
    return length;
}

Box BoxOf(const Stroke& stroke) {
    Box box;
    for (const Point& p : stroke.points) box.Add(p);
    return box;
}

double Diagonal(const Box& box) {
    return box.IsEmpty() ? 0 : std::hypot(box.Width(), box.Height());
}

Frame::Frame(Point origin, double angle)
    : m_origin(origin), m_angle(angle), m_cos(std::cos(angle)), m_sin(std::sin(angle)) {}

Frame Frame::Squarely() const {
    Frame turned = *this;
    turned.m_angle += host::kPi / 2;
    turned.m_cos = -m_sin;
    turned.m_sin = m_cos;
    return turned;
}

Point Frame::In(Point p) const {
    const Vector d = p - m_origin;
    return {d.x * m_cos + d.y * m_sin, d.y * m_cos - d.x * m_sin};
}

Point Frame::Out(Point p) const {
    return m_origin + Vector{p.x * m_cos - p.y * m_sin, p.x * m_sin + p.y * m_cos};
}

Sheet Turned(const Sheet& sheet, const Frame& frame) {
    Sheet out = sheet;
    out.box = {};
    for (Stroke& stroke : out.strokes) {
        for (Point& p : stroke.points) p = frame.In(p);
        stroke.centre = frame.In(stroke.centre);
        out.box.Add(BoxOf(stroke));
    }
    for (NoteText& text : out.texts) {
        text.at = frame.In(text.at);
        text.angle -= frame.Angle();
    }
    for (ArrowHead& head : out.heads) {
        head.tip = frame.In(head.tip);
        head.back = frame.In(head.back);
    }
    return out;
}

}  // namespace product::detect
