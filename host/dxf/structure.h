// Where the sections, tables and blocks of a file begin and end.
#pragma once

#include "host/dxf/loaded_drawing.h"
#include "host/dxf/report.h"

namespace host::dxf {

// Fills sections, tables and blocks of the drawing; missing marks are reported. O(records).
void FindStructure(LoadedDrawing& drawing, Report& report);

}  // namespace host::dxf
