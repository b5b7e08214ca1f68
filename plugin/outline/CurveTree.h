// Finds the curves near a point, and the first one along a path.
#pragma once

#include <algorithm>
#include <optional>
#include <vector>

#include "Strokes.h"
#include "plane/box.h"

namespace outline {

class CurveTree {
public:
    // The curves are kept by reference and must stay.
    // cost  O(n log n), memory O(n)
    explicit CurveTree(const std::vector<Contour>& curves);

    // The curves in an order in which neighbours lie near one another.
    const std::vector<int>& Order() const { return m_order; }

    // Calls use(i) for each curve whose box comes within `reach` of p, in no order, until it
    // returns false.
    template <class Use>
    void Visit(const plane::Point& p, double reach, const Use& use) const {
        if (m_nodes.empty()) return;
        int stack[kDepth], depth = 0;
        stack[depth++] = 0;
        while (depth > 0) {
            const Node& node = m_nodes[stack[--depth]];
            if (!IsNear(node.box, p, reach) || !MayHold(node, p, reach)) continue;
            if (node.right == 0) {
                for (int k = node.first; k < node.last; ++k)
                    if (IsNear(m_boxes[k], p, reach) && !use(m_order[k])) return;
                continue;
            }
            stack[depth++] = node.right;
            stack[depth++] = static_cast<int>(&node - m_nodes.data()) + 1;
        }
    }

    struct Contact {
        double length = 0;  // along the path from its start
        plane::Point at;
        int curve = -1;
    };
    // The first place along a path where a curve comes within `reach` of it, crosses it or touches
    // it.
    //
    // skip  skip(i) leaves a curve out
    // cost  O(log n + m) for m boxes that the path meets before that place
    template <class Skip>
    std::optional<Contact> FirstAlong(const plane::Curve& path, double reach,
                                      const Skip& skip) const {
        std::optional<Contact> best;
        if (m_nodes.empty()) return best;
        // Arcs go in parts, one after the other: the box of a long one holds too much.
        constexpr double kPart = 0.25;
        const int parts = path.IsArc() ? 1 + static_cast<int>(std::fabs(path.Sweep()) / kPart) : 1;
        const double length = path.Length();
        plane::Point from = path.from;
        for (int i = 0; i < parts && !best; ++i) {
            const double share = static_cast<double>(i + 1) / parts;
            const plane::Point to = i + 1 < parts ? plane::PointAt(path, share) : path.to;
            const plane::Curve part =
                parts == 1 ? path
                           : ArcBetween(from, to, path.centre, path.radius, path.bulge > 0.0);
            best = FirstInPart(part, reach, skip);
            if (best) best->length += length * i / parts;
            from = to;
        }
        return best;
    }

private:
    static constexpr int kDepth = 128;
    struct Node {
        plane::Box box;
        int first = 0, last = 0;  // of m_order
        int right = 0;            // the second child; the first follows its parent. 0: a leaf
        int bound = -1;           // of m_bounds, where boxes overlap too much to tell curves apart
    };
    // What holds the curves of a node more closely than its box: a strip between two parallel
    // lines, or, for arcs about one place, a ring.
    struct Bound {
        bool isRing = false;
        plane::Vector normal;
        plane::Point centre;
        double low = 0, high = 0;  // along the normal, or from the centre
    };

    static bool IsNear(const plane::Box& b, const plane::Point& p, double reach) {
        return p.x >= b.low.x - reach && p.x <= b.high.x + reach && p.y >= b.low.y - reach &&
               p.y <= b.high.y + reach;
    }
    static bool AreNear(const plane::Box& a, const plane::Box& b, double reach) {
        return a.low.x <= b.high.x + reach && b.low.x <= a.high.x + reach &&
               a.low.y <= b.high.y + reach && b.low.y <= a.high.y + reach;
    }
    bool MayHold(const Node& node, const plane::Point& p, double reach) const {
        if (node.bound < 0) return true;
        const Bound& b = m_bounds[node.bound];
        const double at =
            b.isRing ? plane::Distance(p, b.centre) : plane::Dot(b.normal, {p.x, p.y});
        return at >= b.low - reach && at <= b.high + reach;
    }
    struct Sums;
    void Split(int first, int last);
    int AddBound(int first, int last, const Sums& sums);
    // How far along the part, as a share, it may first come within reach of a box that its own box
    // meets; above 1 when it does not.
    static double EntryOf(const plane::Curve& part, const plane::Box& box, double reach);
    static double OffFrom(const plane::Point& p, const plane::Box& box) {
        const double x = (std::max)((std::max)(box.low.x - p.x, p.x - box.high.x), 0.0);
        const double y = (std::max)((std::max)(box.low.y - p.y, p.y - box.high.y), 0.0);
        return x + y;
    }
    // Whether a curve of the node may come within reach of the part, which bends by no more than a
    // quarter of a turn.
    bool MayMeet(const Node& node, const plane::Curve& part, double sagitta, double reach) const;
    void Consider(const plane::Curve& part, int curve, double reach,
                  std::vector<plane::Point>& scratch, std::optional<Contact>& best) const;

    template <class Skip>
    std::optional<Contact> FirstInPart(const plane::Curve& part, double reach,
                                       const Skip& skip) const {
        std::optional<Contact> best;
        const plane::Box partBox = plane::BoxOf(part);
        const double length = part.Length(), sagitta = part.IsArc() ? part.Sagitta() : 0.0;
        std::vector<plane::Point> scratch;
        const auto isLate = [&](const plane::Box& box) {
            if (!AreNear(box, partBox, reach)) return true;
            const double entry = EntryOf(part, box, reach);
            return entry > 1.0 || (best && entry * length > best->length);
        };
        int stack[kDepth], depth = 0;
        stack[depth++] = 0;
        while (depth > 0) {
            const int n = stack[--depth];
            const Node& node = m_nodes[n];
            if (isLate(node.box) || !MayMeet(node, part, sagitta, reach)) continue;
            if (node.right == 0) {
                for (int k = node.first; k < node.last; ++k)
                    if (!isLate(m_boxes[k]) && !skip(m_order[k]))
                        Consider(part, m_order[k], reach, scratch, best);
                continue;
            }
            // The child nearer to the start is looked at first.
            const bool isFirst = OffFrom(part.from, m_nodes[n + 1].box) <=
                                 OffFrom(part.from, m_nodes[node.right].box);
            stack[depth++] = isFirst ? node.right : n + 1;
            stack[depth++] = isFirst ? n + 1 : node.right;
        }
        return best;
    }

    const std::vector<Contour>& m_curves;
    std::vector<plane::Box> m_boxes;  // in the order of m_order
    std::vector<int> m_order;
    std::vector<Node> m_nodes;
    std::vector<Bound> m_bounds;
};

}  // namespace outline
