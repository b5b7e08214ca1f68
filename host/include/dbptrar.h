// Arrays of untyped pointers, such as the pieces of an exploded entity.
#pragma once

#include "acarray.h"

// What the pointers point to belongs to whom the call that fills the array says.
typedef AcArray<void*> AcDbVoidPtrArray;
