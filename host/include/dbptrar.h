// Arrays of untyped pointers, such as the pieces of an exploded entity.
#pragma once

#include "acarray.h"

typedef AcArray<void*> AcDbVoidPtrArray;
