// Boundary tracing as plain loops: every pair of curves, every node looked through, every face
// walked along its edges. Written to be read, not to be quick.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "plane/meeting.h"
#include "plane/noding.h"

namespace test {

inline plane::Noding PlainNoding(const std::vector<plane::Curve>& curves, double tol) {
    plane::Noding noding;
    const auto nodeAt = [&](const plane::Point& p) {
        size_t nearest = noding.nodes.size();
        double best = tol;
        for (size_t n = 0; n < noding.nodes.size(); ++n) {
            const double distance = Distance(noding.nodes[n], p);
            if (distance > best) continue;
            best = distance;
            nearest = n;
        }
        if (nearest == noding.nodes.size()) noding.nodes.push_back(p);
        return nearest;
    };
    using Stops = std::vector<std::pair<double, size_t>>;
    std::vector<Stops> stops;
    for (const plane::Curve& curve : curves)
        stops.push_back({{0.0, nodeAt(curve.from)}, {1.0, nodeAt(curve.to)}});
    for (size_t i = 0; i < curves.size(); ++i) {
        for (size_t j = i + 1; j < curves.size(); ++j) {
            std::vector<plane::Point> points;
            plane::AppendMeetings(curves[i], curves[j], tol, points);
            for (const plane::Point& p : points) {
                const size_t node = nodeAt(p);
                for (const size_t c : {i, j}) {
                    if (node == stops[c][0].second || node == stops[c][1].second) continue;
                    const double share = plane::ShareOf(curves[c], noding.nodes[node]);
                    stops[c].emplace_back(std::clamp(share, 0.0, 1.0), node);
                }
            }
        }
    }
    for (size_t c = 0; c < curves.size(); ++c) {
        std::sort(stops[c].begin(), stops[c].end());
        for (size_t s = 1; s < stops[c].size(); ++s) {
            const auto &a = stops[c][s - 1], &b = stops[c][s];
            const plane::NodedPiece piece{c, a.second, b.second, a.first, b.first};
            const auto middle = [&](const plane::NodedPiece& p) {
                return plane::PointAt(curves[p.curve], (p.fromShare + p.toShare) / 2);
            };
            const bool isRepeated = std::any_of(
                noding.pieces.begin(), noding.pieces.end(), [&](const plane::NodedPiece& other) {
                    return std::minmax(piece.from, piece.to) == std::minmax(other.from, other.to) &&
                           Distance(middle(piece), middle(other)) <= 4 * tol;
                });
            if (a.second != b.second && !isRepeated) noding.pieces.push_back(piece);
        }
    }
    return noding;
}

// All faces, by their outer walks.
class PlainFaces {
public:
    static constexpr size_t kNone = static_cast<size_t>(-1);

    PlainFaces(const std::vector<plane::Curve>& curves, const plane::Noding& noding) {
        for (const plane::NodedPiece& piece : noding.pieces) {
            const plane::Curve curve = plane::CurveOf(piece, curves, noding);
            m_edges.push_back(EdgeOf(curve, piece.from, piece.to));
            m_edges.push_back(EdgeOf(curve.Reversed(), piece.to, piece.from));
        }
        std::vector<char> isWalked(m_edges.size(), 0);
        for (size_t first = 0; first < m_edges.size(); ++first) {
            std::vector<plane::Point> walk;
            for (size_t e = first; isWalked[e] == 0; e = Next(e)) {
                isWalked[e] = 1;
                walk.insert(walk.end(), m_edges[e].points.begin(), m_edges[e].points.end() - 1);
            }
            if (Area(walk) > 1e-7) m_walks.push_back(walk);
        }
    }

    // The smallest walk around the point: all points of one face share it.
    size_t FaceOf(const plane::Point& p) const {
        size_t smallest = kNone;
        for (size_t w = 0; w < m_walks.size(); ++w)
            if (Winding(m_walks[w], p) != 0 &&
                (smallest == kNone || Area(m_walks[w]) < Area(m_walks[smallest])))
                smallest = w;
        return smallest;
    }

    static std::vector<plane::Point> Sampled(const plane::Curve& curve) {
        std::vector<plane::Point> points;
        const int steps = curve.IsArc() ? 64 : 1;
        for (int i = 0; i <= steps; ++i) points.push_back(PointAt(curve, double(i) / steps));
        return points;
    }

    // How often the closed walk goes around the point.
    static int Winding(const std::vector<plane::Point>& walk, const plane::Point& p) {
        double turn = 0.0;
        for (size_t i = 0; i < walk.size(); ++i) {
            const plane::Vector a = walk[i] - p, b = walk[(i + 1) % walk.size()] - p;
            turn += std::atan2(a.x * b.y - a.y * b.x, a.x * b.x + a.y * b.y);
        }
        return static_cast<int>(std::lround(turn / 6.283185307179586));
    }

private:
    struct Edge {
        size_t from, to;
        double angle, curvature;  // where it leaves
        std::vector<plane::Point> points;
    };

    static Edge EdgeOf(const plane::Curve& curve, size_t from, size_t to) {
        double angle = plane::AngleOf(curve.Chord());
        double curvature = 0.0;
        if (curve.IsArc()) {
            const double sign = curve.bulge > 0.0 ? 1.0 : -1.0;
            angle = plane::AngleOf(plane::Left(curve.from - curve.centre) * sign);
            curvature = sign / curve.radius;
        }
        if (angle < -3.14159265) angle = -angle;  // both ends of the scale are one direction
        return {from, to, angle, curvature, Sampled(curve)};
    }

    // The edge that leaves the end of e most sharply to the left of where it came from: the first
    // one clockwise from the way back.
    size_t Next(size_t e) const {
        const size_t back = e ^ 1;
        size_t next = back, last = back;
        for (size_t other = 0; other < m_edges.size(); ++other) {
            if (m_edges[other].from != m_edges[e].to) continue;
            if (IsBefore(other, back) && (next == back || IsBefore(next, other))) next = other;
            if (IsBefore(last, other)) last = other;
        }
        return next == back ? last : next;
    }

    bool IsBefore(size_t a, size_t b) const {
        const Edge &x = m_edges[a], &y = m_edges[b];
        if (std::fabs(x.angle - y.angle) > 1e-7) return x.angle < y.angle;
        return x.curvature < y.curvature;
    }

    static double Area(const std::vector<plane::Point>& walk) {
        double area = 0.0;
        for (size_t i = 0; i < walk.size(); ++i) {
            const plane::Vector a = walk[i] - walk[0], b = walk[(i + 1) % walk.size()] - walk[0];
            area += (a.x * b.y - a.y * b.x) / 2;
        }
        return area;
    }

    std::vector<Edge> m_edges;
    std::vector<std::vector<plane::Point>> m_walks;
};

}  // namespace test
