// Arrays of identifiers.
#pragma once

#include "acarray.h"
#include "dbid.h"

typedef AcArray<AcDbObjectId> AcDbObjectIdArray;
