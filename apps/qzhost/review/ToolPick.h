// The tool that is worked on: what was picked last, and the centre that was given with it.
#pragma once

#include <optional>
#include <vector>

#include "dbid.h"
#include "gepnt3d.h"
#include "product/tool/ToolRequest.h"

namespace app {

struct ToolPick {
    std::vector<AcDbObjectId> ids;
    AcGePoint3d centre;
};

// The parameters as a dialog of the module shows them now: the task's, while it is edited, else the
// single tool's; nothing when none is open or a number cannot be read.
std::optional<product::ToolParameters> ParametersOfDialog();

// True while a dialog of the module is there.
bool IsDialogOpen();

}  // namespace app
