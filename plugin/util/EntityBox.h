#pragma once

#include "QZRect.h"

// The planar box of an entity's extents; empty when it cannot be opened or has none.
CQZRect GetEntityBox(const AcDbObjectId& id);

// The box of all of them; empty when none has extents. O(entities).
CQZRect GetEntitiesBox(const AcDbObjectIdArray& ids);
