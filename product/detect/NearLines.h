// Strokes by place.
#pragma once

#include <vector>

#include "product/detect/Stroke.h"

namespace product::detect {

// Cells over the sheet. Keeps a reference to the sheet.
class NearLines {
public:
    NearLines(const Sheet& sheet, double tolerance);

    // Whether so many strokes come near the point that looking at each of them for each of them
    // would take too long: lines drawn over and over, hatching.
    bool IsCrowded(Point p) const;
    // Strokes that come within `reach` of the point, each once, in their order.
    std::vector<int> Near(Point p, double reach) const;
    // Those that have an end there.
    std::vector<int> EndsAt(Point p, double reach) const;

private:
    const Sheet& m_sheet;
    Box m_box;
    double m_cell = 1;
    int m_columns = 1, m_rows = 1;
    std::vector<std::vector<int>> m_cells;

    int Column(double x) const;
    int Row(double y) const;
};

}  // namespace product::detect
