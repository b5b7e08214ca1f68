// The plane's boxes and their index under the plug-in's names.
#pragma once

#include "StdAfx.h"
#include "plane/box_index.h"

using SFlatBox = plane::Box;
using CBoxIndex = plane::BoxIndex;

// Of two points in any order, seen from above.
inline SFlatBox GetFlatBox(const AcGePoint3d& p, const AcGePoint3d& q) {
    return plane::BoxOf({p.x, p.y}, {q.x, q.y});
}
