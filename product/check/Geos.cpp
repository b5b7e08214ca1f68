#include "product/check/Geos.h"

namespace product {

Geos::Geometry Geos::Noded(const Polylines& lines, double tolerance) const {
    const Geometry all = MakeLines(lines);
    return all ? Own(GEOSUnaryUnionPrec_r(Handle(), all.get(), tolerance)) : Geometry();
}

Polylines Geos::LinesOf(const GEOSGeometry* lines) const {
    Polylines out;
    const int count = GEOSGetNumGeometries_r(Handle(), lines);
    for (int i = 0; i < count; ++i) out.push_back(PointsOf(GEOSGetGeometryN_r(Handle(), lines, i)));
    return out;
}

Polylines Geos::OuterRings(const GEOSGeometry* noded) const {
    const Geometry faces = Own(GEOSPolygonize_r(Handle(), &noded, 1));
    const Geometry area = faces ? Own(GEOSUnaryUnion_r(Handle(), faces.get())) : Geometry();
    if (!area) return {};
    Polylines rings;
    const int count = GEOSGetNumGeometries_r(Handle(), area.get());
    for (int i = 0; i < count; ++i) {
        const GEOSGeometry* const part = GEOSGetGeometryN_r(Handle(), area.get(), i);
        const GEOSGeometry* const ring = GEOSGetExteriorRing_r(Handle(), part);
        if (ring != nullptr) rings.push_back(PointsOf(ring));
    }
    return rings;
}

Near::Near(const Geos& geos, Geos::Geometry geometry)
    : m_geos(geos), m_geometry(std::move(geometry)) {
    if (m_geometry) m_prepared = GEOSPrepare_r(geos.Handle(), m_geometry.get());
}

Near::~Near() { GEOSPreparedGeom_destroy_r(m_geos.Handle(), m_prepared); }

double Near::DistanceTo(const Point& point) const {
    double distance = -1;
    const Geos::Geometry place =
        m_geos.Own(GEOSGeom_createPointFromXY_r(m_geos.Handle(), point.x, point.y));
    if (m_prepared == nullptr || !place ||
        GEOSPreparedDistance_r(m_geos.Handle(), m_prepared, place.get(), &distance) == 0)
        return -1;
    return distance;
}

}  // namespace product
