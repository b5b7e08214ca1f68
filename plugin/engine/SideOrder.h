// How segments run along a side, and the way a side looks.
#pragma once

#include "LineInfo.h"
#include "RemoveLineDir.h"

// Seen from above or below: the view runs along y, segments from left to right. Every other value
// looks along x, at segments that run from top to bottom.
inline bool IsVerticalSide(E_RemoveLine_Dir dir) { return dir == E_Dir_Bottom || dir == E_Dir_Top; }

// Exchanges the ends of a segment that does not run that way. One that is edge-on to the viewer is
// exchanged every time.
inline void OrientForSide(E_RemoveLine_Dir dir, AcGePoint3d& start, AcGePoint3d& end) {
    const bool bRight = IsVerticalSide(dir) ? end.x > start.x : start.y > end.y;
    if (!bRight) {
        std::swap(start, end);
    }
}
