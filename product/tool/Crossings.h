// How often picked lines cross one another, told before the engine breaks them there.
#pragma once

#include "arxHeaders.h"

namespace product {

// Crossings of the straight lines among the picked entities, each pair once; lines that lie in one
// another or touch at their ends have none. Blocks and curves are not looked into: the figure is a
// least one.
//
// limit  counting ends when so many are found, or when telling would take seconds
// cost   O((n + k) log n) for n lines whose boxes meet k times
double CountCrossings(const AcArray<AcDbObjectId>& ids, double limit);

}  // namespace product
