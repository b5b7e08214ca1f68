// The record BLOCK, which begins a block's entities and holds what BLOCK_RECORD does not.
#pragma once

#include "dbsymtb.h"
#include "host/dxf/field_io.h"

namespace host::dxf {

// Name, base point, flags, path and comment of a block definition. Reading leaves the name alone.
void BlockFields(FieldIo& io, AcDbBlockTableRecord& block);

}  // namespace host::dxf
