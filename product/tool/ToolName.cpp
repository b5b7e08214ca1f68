#include "product/tool/ToolName.h"

#include <filesystem>

#include "ToolFrame.h"
#include "product/base/Text.h"

namespace product {

std::string NameOfTool(const ToolRequest& request, const Envelope& envelope,
                       AcDbDatabase& database) {
    if (!request.name.empty()) return request.name;
    const Box& box = envelope.extents;
    const CString number = FindToolNumber(
        CollectToolFrames(&database),
        CQZRect(AcGePoint3d(box.low.x, box.low.y, 0.0), AcGePoint3d(box.high.x, box.high.y, 0.0)));
    if (!number.IsEmpty()) return ToUtf8(number);
    return std::filesystem::path(request.input).stem().string();
}

}  // namespace product
