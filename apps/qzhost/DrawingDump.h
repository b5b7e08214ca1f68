// The state of the host as lines of text, for scripts to compare.
#pragma once

#include <string>
#include <vector>

class AcDbDatabase;

namespace app {

using Lines = std::vector<std::wstring>;

// Each layer with what can be switched, in the order of the table.
Lines DumpLayers(AcDbDatabase& database);
// Each entity of model space: handle, class, layer, what sets it apart, and its extents to six
// decimals.
Lines DumpEntities(AcDbDatabase& database);
// Each document by its title; the current one is marked.
Lines DumpDocuments();
// What no command should leave behind: open objects, held locks and selection sets. "none" when
// there is nothing.
Lines DumpLeftovers();
// Each dialog that exists.
Lines DumpDialogs();

}  // namespace app
