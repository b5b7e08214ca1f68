// Drawing frames: block references that carry a tool's number.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/qzenvelope/Outline.h"
#include "arxHeaders.h"

namespace app {

struct ToolFrame {
    std::string number, carrier, handle, block;
    std::optional<Box> extents;
};

// The text that an entity carries under "TUKANGE_NAME_IDENTITY", and where: in extended data of
// that application, else in an Xrecord of its extension dictionary, else, on a block reference, in
// an attribute of that tag (in any case of letters). Nothing when there is none.
std::optional<ToolFrame> FrameOf(const AcDbEntity& entity);

}  // namespace app
