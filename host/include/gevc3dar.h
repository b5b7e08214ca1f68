#pragma once

#include "acarray.h"
#include "gevec3d.h"

// Vectors in space, in order.
typedef AcArray<AcGeVector3d> AcGeVector3dArray;
