// Classes for what this host does not know.
#pragma once

#include <string>

#include "rxclass.h"

namespace host {

// The class of unknown entities or objects of a DXF name; made on first use. Its name() is
// "AcDbZombieEntity" or "AcDbZombieObject", its dxfName() the given one.
AcRxClass* OpaqueEntityClass(const std::wstring& dxfName);
AcRxClass* OpaqueObjectClass(const std::wstring& dxfName);

// The class of a DXF name such as "LWPOLYLINE", or null when the host does not know it. Names
// shared by several classes give: POLYLINE AcDb2dPolyline, VERTEX AcDb2dVertex, DIMENSION
// AcDbDimension.
AcRxClass* ClassByDxfName(const std::wstring& dxfName);

}  // namespace host
