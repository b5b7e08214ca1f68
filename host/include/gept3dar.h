#pragma once

#include "acarray.h"
#include "gepnt3d.h"

// Points in space, in order.
typedef AcArray<AcGePoint3d> AcGePoint3dArray;
