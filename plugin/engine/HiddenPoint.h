#pragma once

#include "QZRect.h"
#include "RemoveLineDir.h"

// Whether the segment start-end hides the point from a side.
//
// The point must lie strictly between the ends across the view (no tolerance), and a test segment
// through it along the view, as long as the extents to either side, must meet the segment
// (intersectWith by tol). It is hidden when it lies on the segment within tol's equalPoint
// (strict), or behind it.
bool IsHiddenBySegment(const AcGePoint3d& pt, const AcGePoint3d& start, const AcGePoint3d& end,
                       E_RemoveLine_Dir dir, const CQZRect& extents, const AcGeTol& tol);

// The older test, by the side of the segment's line on which the point lies. No view is built, and
// nothing depends on how large the drawing is.
//
// The point must lie strictly between the ends across the view, and at least tolPoint's equalPoint
// away from each. A segment is level when its ends' y differ by less than tolLine's equalPoint,
// upright when their x do; a level one hides from above and below, an upright one from left and
// right, any other from every side. The side of an oblique line counts in the direction from start
// to end: to the right for vertical sides, downwards for the others. A point on the line, where the
// cross product is below tolPoint's equalPoint, is not hidden.
bool IsBehindSegment(const AcGePoint3d& pt, const AcGePoint3d& start, const AcGePoint3d& end,
                     E_RemoveLine_Dir dir, const AcGeTol& tolPoint, const AcGeTol& tolLine);
