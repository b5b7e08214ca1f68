// Look-up in message maps.
#pragma once

#include "afxwin.h"

namespace host {

// The first entry in the class's own table, then in those of its bases; null when there is none.
const AFX_MSGMAP_ENTRY* FindEntry(const AFX_MSGMAP* map, UINT message, UINT code, UINT id);

}  // namespace host
