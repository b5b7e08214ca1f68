// How far one set of lines leaves another.
#pragma once

#include "product/check/Geos.h"
#include "product/check/TrueOutline.h"

namespace product {

// The sample of the lines that is farthest from the other ones, whose geometry, as lines or as the
// area inside them, is given with them: every vertex, and points between them, kContourSamples
// along the whole. isOutside is left unset. cost   linear in samples and vertices as long as edges
// are spread over the place, and a distance of
//        GEOS for each sample that is not surely nearer than one before: of lines that agree, few.
Deviation Farthest(const Polylines& lines, const Polylines& others, const Near& geometry);

}  // namespace product
