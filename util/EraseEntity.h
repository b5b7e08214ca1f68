#pragma once

#include "arxHeaders.h"

// Erases an object of the working database.
//
// A group is emptied instead: each of its entities is erased, the group itself stays.
// result   true when it is erased now or was already; false for a null id or an object that cannot
//          be opened for write
bool EraseById(const AcDbObjectId& id);

// The entities of model space on a layer, in drawing order. O(entities of model space).
AcDbObjectIdArray GetEntitiesOnLayer(const AcDbObjectId& layerId);

// Erases every entity of model space on a layer. What cannot be opened for write stays.
void EraseOnLayer(const AcDbObjectId& layerId);
