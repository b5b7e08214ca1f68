#pragma once

#include "acarray.h"

typedef AcArray<double> AcGeDoubleArray;  // numbers: parameters, knots, weights
