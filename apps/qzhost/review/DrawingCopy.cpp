#include "apps/qzhost/review/DrawingCopy.h"

#include "arxHeaders.h"
#include "host/dxf/dxf_file.h"

namespace app {

DrawingCopy::DrawingCopy(const AcDbDatabase& drawing)
    : m_database(std::make_unique<AcDbDatabase>(false)) {
    host::dxf::Report report;
    host::dxf::Result result = host::dxf::WriteToString(drawing, m_bytes, report);
    if (result.ok()) result = host::dxf::ReadBytes(*m_database, m_bytes, "copy", report);
    if (!result.ok())
        m_reason = result.message.empty() ? "the drawing cannot be copied" : result.message;
}

AcArray<AcDbObjectId> DrawingCopy::Counterparts(const std::vector<AcDbObjectId>& ids) const {
    AcArray<AcDbObjectId> found;
    for (const AcDbObjectId id : ids) {
        AcDbObjectId there;
        if (!id.isErased() && m_database->getAcDbObjectId(there, false, id.handle()) == Acad::eOk)
            found.append(there);
    }
    return found;
}

}  // namespace app
