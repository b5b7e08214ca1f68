#include "host/db/image.h"

#include "host/db/access.h"
#include "host/db/define_class.h"
#include "host/db/entity_tools.h"

HOST_DEFINE_CLASS(AcDbRasterImage, AcDbEntity, ACRX_T("IMAGE"))
HOST_DEFINE_CLASS(AcDbWipeout, AcDbRasterImage, ACRX_T("WIPEOUT"))
HOST_DEFINE_COPY(AcDbRasterImage)
HOST_DEFINE_COPY(AcDbWipeout)

std::vector<AcGePoint3d> AcDbRasterImage::frame() const {
    std::vector<AcGePoint2d> corners = m_boundary;
    if (corners.size() < 2)
        corners = {AcGePoint2d(-0.5, -0.5), AcGePoint2d(m_width - 0.5, m_height - 0.5)};
    if (corners.size() == 2) {
        const AcGePoint2d low = corners[0], high = corners[1];
        corners = {low, AcGePoint2d(high.x, low.y), high, AcGePoint2d(low.x, high.y)};
    }
    std::vector<AcGePoint3d> frame;
    frame.reserve(corners.size());
    for (const AcGePoint2d& corner : corners)
        frame.push_back(m_origin + m_u * (corner.x + 0.5) + m_v * (m_height - 0.5 - corner.y));
    return frame;
}

Acad::ErrorStatus AcDbRasterImage::subGetGeomExtents(AcDbExtents& extents) const {
    AcDbExtents box;
    for (const AcGePoint3d& corner : frame()) box.addPoint(corner);
    extents = box;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbRasterImage::subTransformBy(const AcGeMatrix3d& matrix) {
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    m_origin = matrix * m_origin;
    m_u = matrix * m_u;
    m_v = matrix * m_v;
    return Acad::eOk;
}
