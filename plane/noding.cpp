#include "plane/noding.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <utility>

#include "plane/box.h"
#include "plane/meeting.h"

namespace plane {
namespace {

// Tolerances within which the middles of pieces between the same nodes make them one.
constexpr double kSamePiece = 4.0;

// Nodes by the cell that they lie in; a cell is one tolerance wide.
class NodeTable {
public:
    NodeTable(std::vector<Point>& nodes, double tol) : m_nodes(nodes), m_tol(tol) {}

    // The nearest node within the tolerance, or a new one.
    std::size_t NodeAt(const Point& p) {
        const Cell cell{CellOf(p.x), CellOf(p.y)};
        std::size_t nearest = m_nodes.size();
        double best = m_tol;
        for (std::int64_t dx = -1; dx <= 1; ++dx) {
            for (std::int64_t dy = -1; dy <= 1; ++dy) {
                const auto range = m_cells.equal_range(Key({cell.first + dx, cell.second + dy}));
                for (auto it = range.first; it != range.second; ++it) {
                    const double distance = Distance(m_nodes[it->second], p);
                    if (distance > best) continue;
                    best = distance;
                    nearest = it->second;
                }
            }
        }
        if (nearest == m_nodes.size()) {
            m_nodes.push_back(p);
            m_cells.emplace(Key(cell), nearest);
        }
        return nearest;
    }

private:
    using Cell = std::pair<std::int64_t, std::int64_t>;
    std::int64_t CellOf(double x) const { return static_cast<std::int64_t>(std::floor(x / m_tol)); }
    // Different cells may share a key: the distance decides.
    static std::uint64_t Key(const Cell& cell) {
        return static_cast<std::uint64_t>(cell.first) * 0x9E3779B97F4A7C15u ^
               static_cast<std::uint64_t>(cell.second) * 0xC2B2AE3D27D4EB4Fu;
    }

    std::vector<Point>& m_nodes;
    double m_tol;
    std::unordered_multimap<std::uint64_t, std::size_t> m_cells;
};

// Where along a curve a node lies; the curve's own ends lie at its ends whatever rounding says.
struct Stop {
    double share;
    std::size_t node;
};

void AppendPieces(std::size_t curve, std::vector<Stop>& stops, std::vector<NodedPiece>& pieces) {
    std::sort(stops.begin(), stops.end(), [](const Stop& a, const Stop& b) {
        return a.share < b.share || (a.share == b.share && a.node < b.node);
    });
    for (std::size_t i = 1; i < stops.size(); ++i) {
        const Stop &a = stops[i - 1], &b = stops[i];
        if (a.node == b.node) continue;
        pieces.push_back({curve, a.node, b.node, a.share, b.share});
    }
}

void DropRepeated(const std::vector<Curve>& curves, double tol, Noding& noding) {
    std::map<std::pair<std::size_t, std::size_t>, std::vector<Point>> middles;
    std::vector<NodedPiece> kept;
    for (const NodedPiece& piece : noding.pieces) {
        const double share = (piece.fromShare + piece.toShare) / 2;
        const Point middle = PointAt(curves[piece.curve], share);
        auto& known = middles[std::minmax(piece.from, piece.to)];
        const bool isKnown = std::any_of(known.begin(), known.end(), [&](const Point& p) {
            return Distance(p, middle) <= kSamePiece * tol;
        });
        if (isKnown) continue;
        known.push_back(middle);
        kept.push_back(piece);
    }
    noding.pieces = std::move(kept);
}

}  // namespace

Noding NodeCurves(const std::vector<Curve>& curves, double tol) {
    Noding noding;
    NodeTable table(noding.nodes, tol);
    std::vector<std::vector<Stop>> stops(curves.size());
    for (std::size_t i = 0; i < curves.size(); ++i)
        stops[i] = {{0.0, table.NodeAt(curves[i].from)}, {1.0, table.NodeAt(curves[i].to)}};

    const auto stopAt = [&](std::size_t curve, std::size_t node) {
        const std::size_t first = stops[curve][0].node, last = stops[curve][1].node;
        if (node == first || node == last) return;
        const double share = ShareOf(curves[curve], noding.nodes[node]);
        stops[curve].push_back({(std::min)((std::max)(share, 0.0), 1.0), node});
    };
    std::vector<Box> boxes;
    boxes.reserve(curves.size());
    for (const Curve& curve : curves) boxes.push_back(BoxOf(curve));
    std::vector<Point> points;
    ForEachMeetingPair(boxes, tol, [&](std::size_t i, std::size_t j) {
        points.clear();
        AppendMeetings(curves[i], curves[j], tol, points);
        for (const Point& p : points) {
            const std::size_t node = table.NodeAt(p);
            stopAt(i, node);
            stopAt(j, node);
        }
        return true;
    });
    for (std::size_t i = 0; i < curves.size(); ++i) AppendPieces(i, stops[i], noding.pieces);
    DropRepeated(curves, tol, noding);
    return noding;
}

Curve CurveOf(const NodedPiece& piece, const std::vector<Curve>& curves, const Noding& noding) {
    Curve part = curves[piece.curve];
    part.from = noding.nodes[piece.from];
    part.to = noding.nodes[piece.to];
    // By the shares and not by the nodes: those may lie a tolerance off the curve.
    const bool isWhole = piece.fromShare == 0.0 && piece.toShare == 1.0;
    if (part.IsArc() && !isWhole)
        part.bulge = std::tan(part.HalfAngle() * (piece.toShare - piece.fromShare) / 2.0);
    return part;
}

}  // namespace plane
