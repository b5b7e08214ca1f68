// Chains of result buffers and the tags they stand for: Xrecords and extended data.
#pragma once

#include <vector>

#include "adsdef.h"
#include "host/dxf/field_reader.h"
#include "host/dxf/field_writer.h"

namespace host::dxf {

// A new chain of the tags; a point's three groups make one node. Null for no tags. The caller frees
// it by acutRelRb.
resbuf* ChainFromTags(const FieldReader& io, const std::vector<Tag>& tags);

// The tags of a chain in order.
void WriteChain(FieldWriter& io, const resbuf* chain);

// The same for extended data: each application's data is a scope of its own.
void WriteXData(FieldWriter& io, const resbuf* chain);

}  // namespace host::dxf
