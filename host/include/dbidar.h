// Arrays of identifiers.
#pragma once

#include "acarray.h"
#include "dbid.h"

// In the order in which they were appended; nothing keeps an identifier from standing twice.
typedef AcArray<AcDbObjectId> AcDbObjectIdArray;
