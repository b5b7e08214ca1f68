#pragma once

#include "acarray.h"
#include "gepnt2d.h"

// Points of the plane, in order.
typedef AcArray<AcGePoint2d> AcGePoint2dArray;
