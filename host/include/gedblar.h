#pragma once

#include "acarray.h"

// Numbers: parameters, knots, weights.
typedef AcArray<double> AcGeDoubleArray;
