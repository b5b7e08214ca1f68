#include "product/detect/NearLines.h"

#include <algorithm>
#include <cmath>

#include "product/detect/Components.h"

namespace product::detect {

NearLines::NearLines(const Sheet& sheet, double tolerance) : m_sheet(sheet), m_box(sheet.box) {
    if (m_box.IsEmpty()) m_box.Add(Point{0, 0});
    const double size = std::max(Diagonal(m_box), tolerance);
    const double wanted = std::sqrt(static_cast<double>(sheet.strokes.size()) + 1);
    m_cell = std::max(size / std::clamp(wanted, 4.0, 512.0), 4 * tolerance);
    m_columns = static_cast<int>(m_box.Width() / m_cell) + 1;
    m_rows = static_cast<int>(m_box.Height() / m_cell) + 1;
    m_cells.resize(static_cast<size_t>(m_columns) * m_rows);
    for (size_t i = 0; i < sheet.strokes.size(); ++i) {
        const std::vector<Point>& p = sheet.strokes[i].points;
        for (size_t k = 1; k < p.size(); ++k) {
            // Column by column the rows that the chord runs through there.
            const Point a = p[k - 1].x <= p[k].x ? p[k - 1] : p[k];
            const Point b = p[k - 1].x <= p[k].x ? p[k] : p[k - 1];
            for (int c = Column(a.x); c <= Column(b.x); ++c) {
                const double x1 = std::max(a.x, m_box.low.x + c * m_cell);
                const double x2 = std::min(b.x, m_box.low.x + (c + 1) * m_cell);
                const double slope = b.x > a.x ? (b.y - a.y) / (b.x - a.x) : 0;
                double y1 = a.y, y2 = b.y;
                if (b.x > a.x) y1 = a.y + slope * (x1 - a.x), y2 = a.y + slope * (x2 - a.x);
                for (int r = Row(std::min(y1, y2)); r <= Row(std::max(y1, y2)); ++r) {
                    std::vector<int>& cell = m_cells[static_cast<size_t>(r) * m_columns + c];
                    if (cell.empty() || cell.back() != static_cast<int>(i))
                        cell.push_back(static_cast<int>(i));
                }
            }
        }
    }
}

int NearLines::Column(double x) const {
    return static_cast<int>(std::clamp((x - m_box.low.x) / m_cell, 0.0, m_columns - 1.0));
}

int NearLines::Row(double y) const {
    return static_cast<int>(std::clamp((y - m_box.low.y) / m_cell, 0.0, m_rows - 1.0));
}

bool NearLines::IsCrowded(Point p) const {
    constexpr size_t kMost = 200;
    return m_cells[static_cast<size_t>(Row(p.y)) * m_columns + Column(p.x)].size() > kMost;
}

std::vector<int> NearLines::Near(Point p, double reach) const {
    std::vector<int> out;
    for (int r = Row(p.y - reach); r <= Row(p.y + reach); ++r)
        for (int c = Column(p.x - reach); c <= Column(p.x + reach); ++c)
            for (const int i : m_cells[static_cast<size_t>(r) * m_columns + c]) out.push_back(i);
    std::sort(out.begin(), out.end());
    out.erase(std::unique(out.begin(), out.end()), out.end());
    out.erase(std::remove_if(out.begin(), out.end(),
                             [&](int i) {
                                 const std::vector<Point>& q = m_sheet.strokes[i].points;
                                 for (size_t k = 1; k < q.size(); ++k)
                                     if (Distance(p, q[k - 1], q[k]) <= reach) return false;
                                 return true;
                             }),
              out.end());
    return out;
}

std::vector<int> NearLines::EndsAt(Point p, double reach) const {
    std::vector<int> out = Near(p, reach);
    out.erase(std::remove_if(out.begin(), out.end(),
                             [&](int i) {
                                 const Stroke& stroke = m_sheet.strokes[i];
                                 return Distance(stroke.From(), p) > reach &&
                                        Distance(stroke.To(), p) > reach;
                             }),
              out.end());
    return out;
}

}  // namespace product::detect
