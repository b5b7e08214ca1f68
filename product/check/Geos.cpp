#include "product/check/Geos.h"

namespace product {

Geos::Geometry Geos::Lines(const Polylines& lines) const {
    std::vector<GEOSGeometry*> made;
    for (const Polyline& line : lines) {
        if (line.size() < 2) continue;
        GEOSCoordSequence* const points =
            GEOSCoordSeq_create_r(Handle(), static_cast<unsigned>(line.size()), 2);
        for (unsigned i = 0; i < line.size(); ++i)
            GEOSCoordSeq_setXY_r(Handle(), points, i, line[i].x, line[i].y);
        if (GEOSGeometry* const geometry = GEOSGeom_createLineString_r(Handle(), points))
            made.push_back(geometry);
    }
    return Own(GEOSGeom_createCollection_r(Handle(), GEOS_MULTILINESTRING, made.data(),
                                           static_cast<unsigned>(made.size())));
}

Geos::Geometry Geos::Area(const Polyline& ring) const {
    GEOSCoordSequence* const points =
        GEOSCoordSeq_create_r(Handle(), static_cast<unsigned>(ring.size()), 2);
    for (unsigned i = 0; i < ring.size(); ++i)
        GEOSCoordSeq_setXY_r(Handle(), points, i, ring[i].x, ring[i].y);
    GEOSGeometry* const shell = GEOSGeom_createLinearRing_r(Handle(), points);
    if (shell == nullptr) return Geometry();
    return Own(GEOSGeom_createPolygon_r(Handle(), shell, nullptr, 0));
}

Geos::Geometry Geos::Noded(const Polylines& lines, double tolerance) const {
    const Geometry all = Lines(lines);
    return all ? Own(GEOSUnaryUnionPrec_r(Handle(), all.get(), tolerance)) : Geometry();
}

Polyline Geos::PolylineOf(const GEOSGeometry* line) const {
    Polyline out;
    for (const AcGePoint2d& point : PointsOf(line)) out.push_back(Point{point.x, point.y});
    return out;
}

Polylines Geos::LinesOf(const GEOSGeometry* lines) const {
    Polylines out;
    const int count = GEOSGetNumGeometries_r(Handle(), lines);
    for (int i = 0; i < count; ++i)
        out.push_back(PolylineOf(GEOSGetGeometryN_r(Handle(), lines, i)));
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
        if (ring != nullptr) rings.push_back(PolylineOf(ring));
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
