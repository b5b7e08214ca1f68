#include "product/detect/Hangers.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <unordered_map>

#include "product/detect/Components.h"

namespace product::detect {
namespace {

constexpr double kMostShare = 0.25;  // of its component's length
constexpr size_t kMostStrokes = 24;
constexpr size_t kMostContacts = 40;  // of a stroke, on average
constexpr double kTextReach = 2.0;    // heights of a text between it and what it explains

// Strokes and the points at which they touch, as one graph: a stroke leads to its points, a point
// to its strokes.
class Contacts {
public:
    Contacts(const Sheet& sheet, const std::vector<char>& use, double tolerance)
        : m_cell(8 * tolerance), m_count(sheet.strokes.size()), m_links(m_count) {
        const size_t most = 1000 + kMostContacts * m_count;
        size_t contacts = 0;
        m_isWhole = ForEachTouch(sheet, use, tolerance, [&](int a, int b, Point at) {
            Add(a, b, at);
            return ++contacts < most;
        });
    }

    bool IsWhole() const { return m_isWhole; }
    size_t NodeCount() const { return m_links.size(); }
    bool IsPoint(int node) const { return static_cast<size_t>(node) >= m_count; }
    Point At(int node) const { return m_points[static_cast<size_t>(node) - m_count]; }
    const std::vector<int>& Links(int node) const { return m_links[node]; }

private:
    static std::int64_t Key(std::int64_t column, std::int64_t row) {
        return column * 0x9E3779B1 + row;
    }

    // The node of a point; one that lies next to a known one is that.
    int NodeOf(Point p) {
        const auto column = static_cast<std::int64_t>(std::floor(p.x / m_cell));
        const auto row = static_cast<std::int64_t>(std::floor(p.y / m_cell));
        for (std::int64_t c = column - 1; c <= column + 1; ++c)
            for (std::int64_t r = row - 1; r <= row + 1; ++r) {
                const auto known = m_byCell.find(Key(c, r));
                if (known != m_byCell.end() && Distance(At(known->second), p) <= m_cell)
                    return known->second;
            }
        const int node = static_cast<int>(m_links.size());
        m_links.emplace_back();
        m_points.push_back(p);
        m_byCell.emplace(Key(column, row), node);
        return node;
    }

    void Add(int a, int b, Point at) {
        const int node = NodeOf(at);
        for (const int stroke : {a, b}) {
            std::vector<int>& links = m_links[stroke];
            if (std::find(links.begin(), links.end(), node) != links.end()) continue;
            links.push_back(node);
            m_links[node].push_back(stroke);
        }
    }

    double m_cell;
    size_t m_count;
    bool m_isWhole = true;
    std::vector<std::vector<int>> m_links;
    std::vector<Point> m_points;
    std::unordered_map<std::int64_t, int> m_byCell;
};

// Depth first from the longest stroke of each component, with the earliest node that each part
// comes back to: a part that comes back to no node before a point hangs on that point.
class HangerFinder {
public:
    HangerFinder(const Sheet& sheet, const std::vector<char>& use, const Contacts& contacts)
        : m_sheet(sheet),
          m_contacts(contacts),
          m_place(contacts.NodeCount(), -1),
          m_low(contacts.NodeCount(), 0),
          m_size(contacts.NodeCount(), 1),
          m_length(contacts.NodeCount(), 0.0) {
        for (size_t i = 0; i < use.size(); ++i)
            if (use[i]) m_starts.push_back(static_cast<int>(i));
        std::stable_sort(m_starts.begin(), m_starts.end(), [&](int a, int b) {
            return sheet.strokes[a].Length() > sheet.strokes[b].Length();
        });
    }

    std::vector<Hanger> Run() {
        for (const int start : m_starts) {
            if (m_place[start] >= 0) continue;
            const size_t first = m_order.size();
            Visit(start);
            Take(first, m_length[start]);
        }
        return std::move(m_found);
    }

private:
    void Enter(int node, int parent) {
        m_place[node] = static_cast<int>(m_order.size());
        m_low[node] = m_place[node];
        m_length[node] = m_contacts.IsPoint(node) ? 0 : m_sheet.strokes[node].Length();
        m_order.push_back(node);
        m_parent.push_back(parent);
        m_stack.push_back({node, 0});
    }

    void Visit(int start) {
        Enter(start, -1);
        while (!m_stack.empty()) {
            const int node = m_stack.back().node;
            const std::vector<int>& links = m_contacts.Links(node);
            if (m_stack.back().next < links.size()) {
                const int next = links[m_stack.back().next++];
                if (m_place[next] < 0)
                    Enter(next, node);
                else if (next != m_parent[static_cast<size_t>(m_place[node])])
                    m_low[node] = std::min(m_low[node], m_place[next]);
                continue;
            }
            m_stack.pop_back();
            if (m_stack.empty()) return;
            const int parent = m_stack.back().node;
            m_low[parent] = std::min(m_low[parent], m_low[node]);
            m_size[parent] += m_size[node];
            m_length[parent] += m_length[node];
        }
    }

    // The topmost hanging parts of the nodes from `first` on.
    void Take(size_t first, double whole) {
        for (size_t i = first; i < m_order.size(); ++i) {
            const int node = m_order[i], parent = m_parent[i];
            if (parent < 0 || !m_contacts.IsPoint(parent)) continue;
            if (m_low[node] < m_place[parent] || m_length[node] > kMostShare * whole) continue;
            Hanger hanger;
            hanger.at = m_contacts.At(parent);
            const size_t end = i + static_cast<size_t>(m_size[node]);
            for (size_t k = i; k < end; ++k)
                if (!m_contacts.IsPoint(m_order[k])) hanger.strokes.push_back(m_order[k]);
            if (hanger.strokes.size() <= kMostStrokes) {
                hanger.hasText = HasText(hanger);
                m_found.push_back(std::move(hanger));
            }
            i = end - 1;
        }
    }

    bool HasText(const Hanger& hanger) const {
        Box box;
        for (const int s : hanger.strokes) box.Add(BoxOf(m_sheet.strokes[s]));
        for (const NoteText& text : m_sheet.texts) {
            const double dx = std::max({box.low.x - text.at.x, text.at.x - box.high.x, 0.0});
            const double dy = std::max({box.low.y - text.at.y, text.at.y - box.high.y, 0.0});
            if (std::hypot(dx, dy) <= kTextReach * text.height + text.halfLength) return true;
        }
        for (const Stroke& circle : m_sheet.strokes) {
            if (!circle.isFullCircle) continue;
            for (const int s : hanger.strokes)
                for (const Point& end : {m_sheet.strokes[s].From(), m_sheet.strokes[s].To()})
                    if (std::abs(Distance(end, circle.centre) - circle.radius) <=
                        0.05 * circle.radius)
                        return true;
        }
        return false;
    }

    struct Step {
        int node;
        size_t next;
    };

    const Sheet& m_sheet;
    const Contacts& m_contacts;
    std::vector<int> m_starts;
    std::vector<int> m_place, m_low;  // by node: number in the order; the earliest one come back to
    std::vector<int> m_size;          // nodes of its part
    std::vector<double> m_length;
    std::vector<int> m_order, m_parent;  // by number
    std::vector<Step> m_stack;
    std::vector<Hanger> m_found;
};

}  // namespace

std::vector<Hanger> FindHangers(const Sheet& sheet, const std::vector<char>& use,
                                double tolerance) {
    const Contacts contacts(sheet, use, tolerance);
    if (!contacts.IsWhole()) return {};
    return HangerFinder(sheet, use, contacts).Run();
}

}  // namespace product::detect
