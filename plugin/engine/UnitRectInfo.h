// One cell of the grid that a dense-line pass lays over the drawing.
#pragma once

#include <vector>

#include "LineInfo.h"
#include "QZRect.h"
#include "RemoveLineDir.h"

// No pipeline of the engine uses it: it is there for modules that lay grids of their own.
class AFX_EXT_CLASS CUnitRectInfo {
public:
    CUnitRectInfo();
    CUnitRectInfo(const CUnitRectInfo& other);
    CUnitRectInfo& operator=(const CUnitRectInfo& other);
    ~CUnitRectInfo();

    // Appends the point unless one that equals it within tol is there. O(points).
    void AddPoint(const AcGePoint3d& pt, const AcGeTol& tol);
    // Orders the points column by column (row by row for left and right), in each the one nearest
    // to the viewer first. Coordinates that differ by less than 1e-6 are one column.
    void Sort(E_RemoveLine_Dir dir);

    CQZRect m_rect;                   // of the cell
    std::vector<CLineInfo> m_lines1;  // two lists for whatever the caller tells apart
    std::vector<CLineInfo> m_lines2;
    std::vector<AcGePoint3d> m_points;  // by AddPoint
};
