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
