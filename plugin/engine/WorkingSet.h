#pragma once

#include <vector>

#include "LineInfo.h"

// The records of the lines, in order. What is no line, or lies nowhere, is erased and noted in the
// trace.
std::vector<CLineInfo> MakeWorkingSet(const AcDbObjectIdArray& lineIds);
