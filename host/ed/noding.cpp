#include "host/ed/noding.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <utility>

#include "host/ed/geos_tools.h"

namespace host {
namespace {

// Pieces between the same nodes are one when their middles are closer: each may miss its nodes and
// touch the other within the tolerance.
constexpr double kSamePieceTol = 4 * kNodeTol;

// Nodes by the cell that they lie in; a cell is one tolerance wide.
class NodeTable {
public:
    explicit NodeTable(std::vector<AcGePoint2d>& nodes) : m_nodes(nodes) {}

    // The nearest node within the tolerance, or a new one.
    size_t NodeAt(const AcGePoint2d& p) {
        const Cell cell{CellOf(p.x), CellOf(p.y)};
        size_t nearest = m_nodes.size();
        double best = kNodeTol;
        for (std::int64_t dx = -1; dx <= 1; ++dx) {
            for (std::int64_t dy = -1; dy <= 1; ++dy) {
                const auto range = m_cells.equal_range(Key({cell.first + dx, cell.second + dy}));
                for (auto it = range.first; it != range.second; ++it) {
                    const double distance = (m_nodes[it->second] - p).length();
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
    static std::int64_t CellOf(double x) {
        return static_cast<std::int64_t>(std::floor(x / kNodeTol));
    }
    // Different cells may share a key: the distance decides.
    static std::uint64_t Key(const Cell& cell) {
        return static_cast<std::uint64_t>(cell.first) * 0x9E3779B97F4A7C15u ^
               static_cast<std::uint64_t>(cell.second) * 0xC2B2AE3D27D4EB4Fu;
    }

    std::vector<AcGePoint2d>& m_nodes;
    std::unordered_multimap<std::uint64_t, size_t> m_cells;
};

// Where along a curve a node lies; the curve's own ends lie at its ends whatever rounding says.
struct Stop {
    double param;
    size_t node;
};

void AppendPieces(size_t curve, std::vector<Stop>& stops, std::vector<NodedPiece>& pieces) {
    std::sort(stops.begin(), stops.end(), [](const Stop& a, const Stop& b) {
        return a.param < b.param || (a.param == b.param && a.node < b.node);
    });
    for (size_t i = 1; i < stops.size(); ++i) {
        const Stop &a = stops[i - 1], &b = stops[i];
        if (a.node == b.node) continue;
        pieces.push_back({curve, a.node, b.node, a.param, b.param});
    }
}

void DropRepeated(const std::vector<PlaneCurve>& curves, Noding& noding) {
    std::map<std::pair<size_t, size_t>, std::vector<AcGePoint2d>> middles;
    std::vector<NodedPiece> kept;
    for (const NodedPiece& piece : noding.pieces) {
        const AcGePoint2d middle = CurveOf(piece, curves, noding).PointAt(0.5);
        auto& known = middles[std::minmax(piece.from, piece.to)];
        const bool isKnown = std::any_of(known.begin(), known.end(), [&](const AcGePoint2d& p) {
            return (p - middle).length() <= kSamePieceTol;
        });
        if (isKnown) continue;
        known.push_back(middle);
        kept.push_back(piece);
    }
    noding.pieces = std::move(kept);
}

}  // namespace

Noding NodeCurves(const std::vector<PlaneCurve>& curves) {
    Noding noding;
    NodeTable table(noding.nodes);
    std::vector<std::vector<Stop>> stops(curves.size());
    for (size_t i = 0; i < curves.size(); ++i)
        stops[i] = {{0.0, table.NodeAt(curves[i].start)}, {1.0, table.NodeAt(curves[i].end)}};

    const auto stopAt = [&](size_t curve, size_t node) {
        const size_t first = stops[curve][0].node, last = stops[curve][1].node;
        if (node == first || node == last) return;
        const double param = curves[curve].ParamOf(noding.nodes[node]);
        stops[curve].push_back({(std::min)((std::max)(param, 0.0), 1.0), node});
    };
    std::vector<PlaneBox> boxes;
    boxes.reserve(curves.size());
    for (const PlaneCurve& curve : curves) boxes.push_back(BoxOf(curve));
    std::vector<AcGePoint2d> points;
    ForEachTouchingPair(boxes, kNodeTol, [&](size_t i, size_t j) {
        points.clear();
        AppendMeetings(curves[i], curves[j], points);
        for (const AcGePoint2d& p : points) {
            const size_t node = table.NodeAt(p);
            stopAt(i, node);
            stopAt(j, node);
        }
    });
    for (size_t i = 0; i < curves.size(); ++i) AppendPieces(i, stops[i], noding.pieces);
    DropRepeated(curves, noding);
    return noding;
}

PlaneCurve CurveOf(const NodedPiece& piece, const std::vector<PlaneCurve>& curves,
                   const Noding& noding) {
    PlaneCurve part = curves[piece.curve];
    part.startAngle += part.sweep * piece.fromParam;
    part.sweep *= piece.toParam - piece.fromParam;
    part.start = noding.nodes[piece.from];
    part.end = noding.nodes[piece.to];
    return part;
}

}  // namespace host
