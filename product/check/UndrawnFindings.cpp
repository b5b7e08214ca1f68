#include <algorithm>
#include <cmath>

#include "product/base/Text.h"
#include "product/check/Findings.h"
#include "product/check/Tolerance.h"
#include "product/detect/NearLines.h"

namespace product {
namespace {

constexpr int kSamples = 8;           // of an edge, its ends left out
constexpr double kMostUndrawn = 0.5;  // share of them beside which nothing may be drawn
constexpr double kSquare = 1e-3;      // sine of an angle that counts as none
constexpr size_t kMostTold = 6;

std::string Place(const Point& p) { return Figure(p.x) + ", " + Figure(p.y); }

class Tracker {
public:
    Tracker(const detect::Sheet& sheet, double tolerance)
        : m_sheet(sheet), m_lines(sheet, tolerance), m_tolerance(tolerance) {}

    // Whether some stroke runs along there. The lines by place follow curves by chords, which a
    // reach of their own makes good.
    bool IsDrawn(const Point& p) const {
        const double reach = m_tolerance + kChordReach * detect::Diagonal(m_sheet.box);
        for (const int i : m_lines.Near(p, reach))
            for (const plane::Curve& curve : m_sheet.strokes[i].curves)
                if (plane::Distance(curve, {p.x, p.y}) <= m_tolerance) return true;
        return false;
    }

private:
    static constexpr double kChordReach = 4e-3;

    const detect::Sheet& m_sheet;
    detect::NearLines m_lines;
    double m_tolerance;
};

}  // namespace

void AddUndrawnFindings(const std::vector<Vertex>& ring, const detect::Sheet& sheet,
                        const Axis& axis, double pointTolerance, std::vector<Finding>& findings) {
    if (ring.size() < 3) return;
    const AxisFrame frame(axis);
    const Box about = BoxAbout(axis, ring);
    const double diameter = 2 * std::max(about.high.y, -about.low.y);
    const double tolerance =
        std::max(kNotablePointTolerances * pointTolerance, kNotableDiameterShare * diameter);
    const Tracker tracker(sheet, tolerance);
    size_t told = 0;
    for (const plane::Curve& edge : EdgesOf(ring)) {
        const Point from{edge.from.x, edge.from.y}, to{edge.to.x, edge.to.y};
        const Point a = frame.In(from), b = frame.In(to);
        const double length = edge.Length();
        if (length <= 2 * tolerance || std::abs(a.x - b.x) <= kSquare * length) continue;
        if (std::max(std::abs(a.y), std::abs(b.y)) <= tolerance && !edge.IsArc()) continue;
        int undrawn = 0;
        for (int k = 1; k <= kSamples; ++k) {
            const plane::Point p = plane::PointAt(edge, static_cast<double>(k) / (kSamples + 1));
            undrawn += tracker.IsDrawn({p.x, p.y}) ? 0 : 1;
        }
        if (undrawn <= kMostUndrawn * kSamples) continue;
        if (++told > kMostTold) continue;
        findings.push_back({Finding::Kind::Gap, true,
                            "nothing is drawn along the outline from " + Place(from) + " to " +
                                Place(to) + ", " + Figure(length) + " long",
                            Point{(from.x + to.x) / 2, (from.y + to.y) / 2}});
    }
    if (told > kMostTold)
        findings.push_back(
            {Finding::Kind::Gap, true,
             "nor along " + std::to_string(told - kMostTold) + " more of the outline's edges",
             std::nullopt});
}

}  // namespace product
