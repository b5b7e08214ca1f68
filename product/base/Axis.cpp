#include "product/base/Axis.h"

#include <cmath>

namespace product {

AxisFrame::AxisFrame(const Axis& axis, bool isLower)
    : m_origin(axis.from), m_sign(isLower ? -1 : 1) {
    if (axis.IsLevel()) return;
    const double dx = axis.to.x - axis.from.x, dy = axis.to.y - axis.from.y;
    const double length = std::hypot(dx, dy);
    if (length > 0) m_along = {dx / length, dy / length};
}

AxisFrame::AxisFrame(const Axis& axis, const Point& origin, bool isLower)
    : AxisFrame(axis, isLower) {
    m_origin = Out({In(origin).x, 0});
}

Point AxisFrame::In(const Point& p) const {
    const double dx = p.x - m_origin.x, dy = p.y - m_origin.y;
    return {dx * m_along.x + dy * m_along.y, m_sign * (dy * m_along.x - dx * m_along.y)};
}

Point AxisFrame::Out(const Point& p) const {
    const double y = m_sign * p.y;
    return {m_origin.x + p.x * m_along.x - y * m_along.y,
            m_origin.y + p.x * m_along.y + y * m_along.x};
}

Box BoxAbout(const Axis& axis, const std::vector<Vertex>& ring) {
    const AxisFrame frame(axis);
    std::vector<Vertex> turned;
    for (const Vertex& v : ring) {
        const Point p = frame.In({v.x, v.y});
        turned.push_back({p.x, p.y, v.bulge});
    }
    return ExtentsOf(turned);
}

}  // namespace product
