#include "product/base/Extents.h"

namespace product {

std::optional<Box> ExtentsOf(const AcDbEntity& entity) {
    AcDbExtents extents;
    if (entity.getGeomExtents(extents) != Acad::eOk) return std::nullopt;
    Box box;
    box.Add(Point{extents.minPoint().x, extents.minPoint().y});
    box.Add(Point{extents.maxPoint().x, extents.maxPoint().y});
    return box;
}

Box BoxOf(const CQZRect& rect) {
    Box box;
    if (!rect.IsValid()) return box;
    box.Add(Point{rect.min.x, rect.min.y});
    box.Add(Point{rect.max.x, rect.max.y});
    return box;
}

}  // namespace product
