// Chains of result buffers.
#pragma once

#include "acadstrc.h"
#include "adsdef.h"

namespace host {

// Which member of the value union a group code uses.
enum class RbKind { kNone, kString, kPoint, kReal, kInt16, kInt32, kInt64, kId, kBinary };

// By the value types of DXF group codes; kNone for a code that has none. 320..329 are handle texts.
RbKind KindOfCode(int code);

// True for codes an Xrecord may hold, and for codes of extended data.
bool IsXrecordCode(int code);
bool IsXDataCode(int code);

// A copy of one node without its successor, or of a whole chain; null for null.
resbuf* CopyNode(const resbuf& node);
resbuf* CopyChain(const resbuf* chain);

// The last node of a chain that is not empty.
resbuf* LastNode(resbuf* chain);

}  // namespace host
