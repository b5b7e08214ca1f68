// Boundary tracing as plain loops: every pair of curves, every node looked through, every face
// walked along its edges. Written to be read, not to be quick.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "host/ed/noding.h"

namespace test {

inline host::Noding PlainNoding(const std::vector<host::PlaneCurve>& curves) {
    host::Noding noding;
    const auto nodeAt = [&](const AcGePoint2d& p) {
        size_t nearest = noding.nodes.size();
        double best = host::kNodeTol;
        for (size_t n = 0; n < noding.nodes.size(); ++n) {
            const double distance = (noding.nodes[n] - p).length();
            if (distance > best) continue;
            best = distance;
            nearest = n;
        }
        if (nearest == noding.nodes.size()) noding.nodes.push_back(p);
        return nearest;
    };
    using Stops = std::vector<std::pair<double, size_t>>;
    std::vector<Stops> stops;
    for (const host::PlaneCurve& curve : curves)
        stops.push_back({{0.0, nodeAt(curve.start)}, {1.0, nodeAt(curve.end)}});
    for (size_t i = 0; i < curves.size(); ++i) {
        for (size_t j = i + 1; j < curves.size(); ++j) {
            std::vector<AcGePoint2d> points;
            host::AppendMeetings(curves[i], curves[j], points);
            for (const AcGePoint2d& p : points) {
                const size_t node = nodeAt(p);
                for (const size_t c : {i, j}) {
                    if (node == stops[c][0].second || node == stops[c][1].second) continue;
                    const double param = curves[c].ParamOf(noding.nodes[node]);
                    stops[c].emplace_back(std::clamp(param, 0.0, 1.0), node);
                }
            }
        }
    }
    for (size_t c = 0; c < curves.size(); ++c) {
        std::sort(stops[c].begin(), stops[c].end());
        for (size_t s = 1; s < stops[c].size(); ++s) {
            const auto &a = stops[c][s - 1], &b = stops[c][s];
            const host::NodedPiece piece{c, a.second, b.second, a.first, b.first};
            const auto middle = [&](const host::NodedPiece& p) {
                return host::CurveOf(p, curves, noding).PointAt(0.5);
            };
            const bool isRepeated = std::any_of(
                noding.pieces.begin(), noding.pieces.end(), [&](const host::NodedPiece& other) {
                    return std::minmax(piece.from, piece.to) == std::minmax(other.from, other.to) &&
                           (middle(piece) - middle(other)).length() <= 4 * host::kNodeTol;
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

    PlainFaces(const std::vector<host::PlaneCurve>& curves, const host::Noding& noding) {
        for (const host::NodedPiece& piece : noding.pieces) {
            const host::PlaneCurve curve = host::CurveOf(piece, curves, noding);
            m_edges.push_back(EdgeOf(curve, piece.from, piece.to));
            m_edges.push_back(EdgeOf(Reversed(curve), piece.to, piece.from));
        }
        std::vector<char> isWalked(m_edges.size(), 0);
        for (size_t first = 0; first < m_edges.size(); ++first) {
            std::vector<AcGePoint2d> walk;
            for (size_t e = first; isWalked[e] == 0; e = Next(e)) {
                isWalked[e] = 1;
                walk.insert(walk.end(), m_edges[e].points.begin(), m_edges[e].points.end() - 1);
            }
            if (Area(walk) > 1e-7) m_walks.push_back(walk);
        }
    }

    // The smallest walk around the point: all points of one face share it.
    size_t FaceOf(const AcGePoint2d& p) const {
        size_t smallest = kNone;
        for (size_t w = 0; w < m_walks.size(); ++w)
            if (Winding(m_walks[w], p) != 0 &&
                (smallest == kNone || Area(m_walks[w]) < Area(m_walks[smallest])))
                smallest = w;
        return smallest;
    }

    static host::PlaneCurve Reversed(host::PlaneCurve curve) {
        std::swap(curve.start, curve.end);
        curve.startAngle += curve.sweep;
        curve.sweep = -curve.sweep;
        return curve;
    }

    static std::vector<AcGePoint2d> Sampled(const host::PlaneCurve& curve) {
        std::vector<AcGePoint2d> points;
        const int steps = curve.isArc ? 64 : 1;
        for (int i = 0; i <= steps; ++i) points.push_back(curve.PointAt(double(i) / steps));
        return points;
    }

    // How often the closed walk goes around the point.
    static int Winding(const std::vector<AcGePoint2d>& walk, const AcGePoint2d& p) {
        double turn = 0.0;
        for (size_t i = 0; i < walk.size(); ++i) {
            const AcGeVector2d a = walk[i] - p, b = walk[(i + 1) % walk.size()] - p;
            turn += std::atan2(a.x * b.y - a.y * b.x, a.x * b.x + a.y * b.y);
        }
        return static_cast<int>(std::lround(turn / 6.283185307179586));
    }

private:
    struct Edge {
        size_t from, to;
        double angle, curvature;  // where it leaves
        std::vector<AcGePoint2d> points;
    };

    static Edge EdgeOf(const host::PlaneCurve& curve, size_t from, size_t to) {
        const AcGeVector2d chord = curve.end - curve.start;
        double angle = std::atan2(chord.y, chord.x);
        double curvature = 0.0;
        if (curve.isArc && curve.sweep != 0.0) {
            const double sign = curve.sweep > 0.0 ? 1.0 : -1.0;
            angle = curve.startAngle + sign * 1.5707963267948966;
            angle = std::atan2(std::sin(angle), std::cos(angle));
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

    static double Area(const std::vector<AcGePoint2d>& walk) {
        double area = 0.0;
        for (size_t i = 0; i < walk.size(); ++i) {
            const AcGeVector2d a = walk[i] - walk[0], b = walk[(i + 1) % walk.size()] - walk[0];
            area += (a.x * b.y - a.y * b.x) / 2;
        }
        return area;
    }

    std::vector<Edge> m_edges;
    std::vector<std::vector<AcGePoint2d>> m_walks;
};

}  // namespace test
