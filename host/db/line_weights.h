// Which line weights there are.
#pragma once

#include <cstdint>

#include "acdb.h"

namespace host {

// Whether a number is one of AcDb::LineWeight, which has gaps.
bool IsLineWeight(std::int64_t number);

// The weight nearest to a width, the thinner of two that are as near. None of the three states.
AcDb::LineWeight NearestLineWeight(double millimetres);

}  // namespace host
