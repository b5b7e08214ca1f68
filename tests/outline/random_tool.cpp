#include "random_tool.h"

#include <algorithm>
#include <cmath>

namespace test {

void RandomTool::LineTo(double s, double r) {
    const plane::Point to{s, r};
    if (plane::Distance(m_at, to) > 1e-6) m_curves.push_back(plane::MakeLine(m_at, to));
    m_at = to;
}

void RandomTool::ArcTo(double s, double r, double bulge) {
    const plane::Point to{s, r};
    m_curves.push_back(plane::MakeCurve(m_at, to, bulge));
    m_at = to;
}

void RandomTool::LeftFace(double r) {
    const int kind = Below(7);
    if (kind == 0) {
        m_at = {0, r};  // no face at all
    } else if (kind == 1) {
        m_at = {Length(0.2, 3), 0};  // a dished face
        LineTo(0, r);
    } else if (kind == 2) {
        // A bore with a mouth.
        const double bore = r * Between(0.2, 0.6);
        m_at = {Length(12, 20), bore};
        LineTo(1, bore);
        LineTo(0, bore + 1);
        LineTo(0, r);
    } else if (kind == 3) {
        m_at = {0, 0};
        ArcTo(r, r, -std::tan(std::acos(-1.0) / 8));  // a ball nose
    } else if (kind == 4) {
        m_at = {0, 0};
        LineTo(r / 2, r);
    } else {
        m_at = {0, 0};
        LineTo(0, r);
    }
}

void RandomTool::Step() {
    const double r = m_at.y, next = (std::max)(1.5, Length(2, 15)), s = m_at.x;
    switch (Below(8)) {
        case 0:
            LineTo(s + Length(1, 6), next);
            break;
        case 1: {  // a chamfer on the edge, then the wall
            const double c = (std::min)(0.5, r / 4);
            LineTo(s + c, r - c);
            LineTo(s + c, next);
            break;
        }
        case 2: {  // a round edge, tangent to what comes before
            const double c = (std::min)(Length(0.3, 2), r / 2);
            ArcTo(s + c, r - c, -std::tan(std::acos(-1.0) / 8));
            break;
        }
        case 3: {  // a hollow, tangent to the wall's foot
            const double c = Length(0.3, 2);
            ArcTo(s + c, r + c, std::tan(std::acos(-1.0) / 8));
            break;
        }
        case 4:
            ArcTo(s + Length(2, 9), r, Between(-0.6, 0.3));
            break;
        case 5: {  // undercut: the wall leans back
            LineTo(s - Between(0.05, 0.5), (std::max)(1.0, r - Length(0.5, 2)));
            break;
        }
        default:
            LineTo(s, next);
    }
    LineTo(m_at.x + Length(1.5, 12), m_at.y);
}

void RandomTool::RightFace() {
    const double s = m_at.x, r = m_at.y;
    switch (Below(5)) {
        case 0:
            break;
        case 1:
            LineTo(s + r, 0);
            break;
        case 2:
            ArcTo(s + r, 0, -std::tan(std::acos(-1.0) / 8));
            break;
        case 3:
            LineTo(s - Between(0.1, 2), 0);
            break;
        default:
            LineTo(s, 0);
    }
}

// Edges and holes that lie inside, and what sticks out.
void RandomTool::Inside() {
    const double length = m_at.x;
    for (int i = Below(4); i > 0; --i) {
        const double s = Between(0, length), r = Between(0, 4);
        m_curves.push_back(plane::MakeLine({s, r}, {s + Between(-5, 5), r + Between(-1, 3)}));
    }
    for (int i = Below(3); i > 0; --i) {
        const plane::Curve c = m_curves[Below(static_cast<int>(m_curves.size()))];
        m_curves.push_back(plane::MakeLine({c.to.x, 0}, c.to));  // an edge of the step
    }
}

plane::Curve RandomTool::Shortened(const plane::Curve& c, double by, bool atStart) const {
    const double share = by / c.Length();
    const plane::Point p = plane::PointAt(c, atStart ? share : 1 - share);
    return atStart ? plane::PartOf(c, p, c.to) : plane::PartOf(c, c.from, p);
}

void RandomTool::Disturb() {
    const double gaps[] = {1e-4, 2e-4, 0.01, 0.05, 0.1, 0.3, 0.45, 0.7, 1.2, 3};
    for (int i = 1 + Below(5); i > 0; --i) {
        const size_t k = static_cast<size_t>(Below(static_cast<int>(m_curves.size())));
        const plane::Curve c = m_curves[k];
        const double by = gaps[Below(10)] * Between(0.8, 1.2);
        switch (Below(9)) {
            case 0:
                m_curves.push_back(Chance(0.5) ? c : c.Reversed());
                break;
            case 1: {
                const plane::Point p = plane::PointAt(c, Between(0.2, 0.8));
                m_curves[k] = plane::PartOf(c, c.from, p);
                m_curves.push_back(plane::PartOf(c, p, c.to));
                break;
            }
            case 2:
            case 3:
                if (c.Length() > 2.5 * by) m_curves[k] = Shortened(c, by, Chance(0.5));
                break;
            case 4:
            case 5:
                if (!c.IsArc()) {
                    const plane::Point p = c.to + plane::Unit(c.Chord()) * by;
                    if (p.y > 0) m_curves[k] = plane::MakeLine(c.from, p);
                }
                break;
            case 6: {  // an overlapping part
                const plane::Point p = plane::PointAt(c, Between(0.1, 0.4));
                const plane::Point q = plane::PointAt(c, Between(0.6, 0.9));
                m_curves.push_back(plane::PartOf(c, p, q));
                break;
            }
            case 7: {  // a mark or an extension line
                const plane::Point p = Chance(0.5) ? c.to : plane::PointAt(c, 0.4);
                m_curves.push_back(plane::MakeLine(p, {p.x, p.y + Between(0.2, 12)}));
                break;
            }
            default:
                m_curves.erase(m_curves.begin() + static_cast<std::ptrdiff_t>(k));
                if (m_curves.empty()) return;
        }
    }
}

std::vector<outline::Contour> RandomTool::Make(bool faults) {
    m_curves.clear();
    m_isSnapped = Chance(0.6);
    LeftFace(Length(3, 12));
    LineTo(m_at.x + Length(3, 15), m_at.y);
    for (int i = 1 + Below(6); i > 0; --i) Step();
    RightFace();
    Inside();
    if (faults) Disturb();
    std::shuffle(m_curves.begin(), m_curves.end(), m_random);
    std::vector<outline::Contour> contour;
    for (const plane::Curve& c : m_curves)
        contour.push_back({c, static_cast<int>(contour.size()), false});
    return contour;
}

}  // namespace test
