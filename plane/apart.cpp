#include "plane/apart.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace plane {
namespace {

constexpr std::size_t kMostSamples = 20000;

double DistanceToChord(const Point& p, const Point& a, const Point& b) {
    const Vector chord = b - a;
    const double square = Dot(chord, chord);
    const double share = square > 0.0 ? (std::clamp)(Dot(p - a, chord) / square, 0.0, 1.0) : 0.0;
    return Distance(p, a + chord * share);
}

// A line's chords sorted along x, so that only those near by are looked at.
class NearestChord {
public:
    explicit NearestChord(const std::vector<Point>& line) : m_line(line) {
        for (std::size_t i = 1; i < line.size(); ++i) m_order.push_back(i);
        std::sort(m_order.begin(), m_order.end(),
                  [this](std::size_t a, std::size_t b) { return Left(a) < Left(b); });
        for (const std::size_t i : m_order) {
            const double right = (std::max)(m_line[i - 1].x, m_line[i].x);
            m_rightmost.push_back(m_rightmost.empty() ? right
                                                      : (std::max)(right, m_rightmost.back()));
        }
    }

    double DistanceOf(const Point& p) const {
        // Outwards from p in both directions until nothing nearer can come.
        const auto middle = static_cast<std::size_t>(
            std::lower_bound(m_order.begin(), m_order.end(), p.x,
                             [this](std::size_t i, double x) { return Left(i) < x; }) -
            m_order.begin());
        double best = (std::numeric_limits<double>::max)();
        for (std::size_t k = middle; k < m_order.size() && Left(m_order[k]) - p.x < best; ++k)
            best = (std::min)(best, To(p, m_order[k]));
        for (std::size_t k = middle; k-- > 0 && p.x - m_rightmost[k] < best;)
            best = (std::min)(best, To(p, m_order[k]));
        return best;
    }

private:
    double Left(std::size_t i) const { return (std::min)(m_line[i - 1].x, m_line[i].x); }
    double To(const Point& p, std::size_t i) const {
        return DistanceToChord(p, m_line[i - 1], m_line[i]);
    }

    const std::vector<Point>& m_line;
    std::vector<std::size_t> m_order;
    std::vector<double> m_rightmost;
};

void Look(const std::vector<Point>& line, const std::vector<Point>& other, Apart& worst) {
    const NearestChord nearest(other);
    const std::size_t stride = line.size() / kMostSamples + 1;
    for (std::size_t i = 1; i < line.size(); i += stride)
        for (const Point& p : {line[i], line[i - 1] + (line[i] - line[i - 1]) * 0.5}) {
            const double distance = nearest.DistanceOf(p);
            if (distance > worst.distance) worst = {distance, p};
        }
}

}  // namespace

Apart FarthestApart(const std::vector<Point>& a, const std::vector<Point>& b) {
    Apart worst;
    if (a.size() < 2 || b.size() < 2) return worst;
    Look(a, b, worst);
    Look(b, a, worst);
    return worst;
}

}  // namespace plane
