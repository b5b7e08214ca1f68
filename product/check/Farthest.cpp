#include "product/check/Farthest.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "product/check/Tolerance.h"

namespace product {
namespace {

double LengthOf(const Polylines& lines) {
    double length = 0;
    for (const Polyline& line : lines)
        for (size_t i = 1; i < line.size(); ++i) length += Distance(line[i - 1], line[i]);
    return length;
}

// The edges of lines in a grid of squares, to tell quickly what is near.
class EdgeGrid {
public:
    explicit EdgeGrid(const Polylines& lines) {
        size_t count = 0;
        for (const Polyline& line : lines) {
            count += line.size();
            for (const Point& p : line) m_box.Add(p);
        }
        if (count == 0) return;
        const double wide = m_box.Width(), high = m_box.Height();
        // About a square for each vertex, whatever the shape of the box.
        m_pitch = (std::max)(std::sqrt(wide * high / static_cast<double>(count)),
                             (std::max)(wide, high) / static_cast<double>(count));
        if (!(m_pitch > 0)) return;
        m_columns = 1 + static_cast<size_t>(wide / m_pitch);
        m_rows = 1 + static_cast<size_t>(high / m_pitch);
        m_cells.resize(m_columns * m_rows);
        for (const Polyline& line : lines)
            for (size_t i = 1; i < line.size(); ++i) Add(line[i - 1], line[i]);
    }

    // Some edge in the square of the point, or in those around, is within the reach of it.
    bool HasWithin(const Point& p, double reach) const {
        if (m_cells.empty()) return false;
        const size_t column = ColumnOf(p.x), row = RowOf(p.y);
        for (const plane::Curve& edge : m_cells[column * m_rows + row])
            if (Distance(edge, p) <= reach) return true;
        for (size_t x = column - (column > 0); x <= column + 1 && x < m_columns; ++x)
            for (size_t y = row - (row > 0); y <= row + 1 && y < m_rows; ++y)
                for (const plane::Curve& edge : m_cells[x * m_rows + y])
                    if (Distance(edge, p) <= reach) return true;
        return false;
    }

private:
    static size_t Clamped(double at, size_t count) {
        return at > 0 ? (std::min)(static_cast<size_t>(at), count - 1) : 0;
    }
    size_t ColumnOf(double x) const { return Clamped((x - m_box.low.x) / m_pitch, m_columns); }
    size_t RowOf(double y) const { return Clamped((y - m_box.low.y) / m_pitch, m_rows); }

    // Into every square that the edge passes, column by column.
    void Add(Point a, Point b) {
        if (b.x < a.x) std::swap(a, b);
        const size_t first = ColumnOf(a.x), last = ColumnOf(b.x);
        const auto heightAt = [&](size_t column) {
            const double x = m_box.low.x + static_cast<double>(column) * m_pitch;
            return a.y + (b.y - a.y) * (std::clamp)((x - a.x) / (b.x - a.x), 0.0, 1.0);
        };
        for (size_t column = first; column <= last; ++column) {
            const double y0 = column == first ? a.y : heightAt(column);
            const double y1 = column == last ? b.y : heightAt(column + 1);
            const auto [low, high] = std::minmax({RowOf(y0), RowOf(y1)});
            for (size_t row = low; row <= high; ++row)
                m_cells[column * m_rows + row].push_back(plane::MakeLine(a, b));
        }
    }

    Box m_box;
    double m_pitch = 0;
    size_t m_columns = 0, m_rows = 0;
    std::vector<std::vector<plane::Curve>> m_cells;
};

}  // namespace

Deviation Farthest(const Polylines& lines, const Polylines& others, const Near& geometry) {
    const double length = LengthOf(lines), step = length / kContourSamples;
    const EdgeGrid grid(others);
    Deviation worst;
    const auto look = [&](const Point& p) {
        if (grid.HasWithin(p, (std::max)(worst.distance, kNoiseShare * length))) return;
        const double distance = geometry.DistanceTo(p);
        if (distance > worst.distance) worst = {distance, p, false};
    };
    for (const Polyline& line : lines)
        for (size_t i = 0; i < line.size(); ++i) {
            look(line[i]);
            if (i == 0) continue;
            const Point &a = line[i - 1], &b = line[i];
            const double parts = std::floor(Distance(a, b) / step);
            for (double k = 1; k < parts; ++k)
                look({a.x + (b.x - a.x) * k / parts, a.y + (b.y - a.y) * k / parts});
        }
    return worst;
}

}  // namespace product
