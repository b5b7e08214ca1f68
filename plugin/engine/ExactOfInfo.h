#pragma once

#include "EncircleCalInfo.h"
#include "ExactEnvelope.h"

// The exact envelope's request for a record of parameters: the half, the axis line's two ends,
// rightwards or upwards, and the lengths, of which the values of a new record mean the defaults by
// the drawing's size.
//
// result  false when the record names no axis line that can be read
bool GetExactRequest(const CEncircleCalInfo& info, const AcDbObjectIdArray& ids,
                     SExactRequest& request);
