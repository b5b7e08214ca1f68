// Result buffers and small helpers of the C-style interface.
#pragma once

#include "adsdef.h"
#include "adscodes.h"

// A zeroed node with the given group code or result type; null when out of memory.
// The value is of the type that the code has; see ads_u_val. Strings come by acutNewString.
resbuf* acutNewRb(int restype);

// Frees the whole chain, its strings and binary runs included. Null is harmless. RTNORM.
int acutRelRb(resbuf* chain);

// Distance of two points in drawing units, and the angle in radians, in [0, 2 pi), of the line from
// the first to the second, seen in the XY plane.
ads_real acutDistance(const ads_point p, const ads_point q);
ads_real acutAngle(const ads_point p, const ads_point q);

// Writes to the command line of the host; wide format, %s takes a wide string.
int acutPrintf(const ACHAR* format, ...);
