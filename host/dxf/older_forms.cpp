#include "host/dxf/older_forms.h"

#include <algorithm>

#include "dbelipse.h"
#include "dbpl.h"
#include "dbspline.h"
#include "gecurv3d.h"
#include "host/db/access.h"

namespace host::dxf {

namespace {

using Entities = std::vector<std::unique_ptr<AcDbEntity>>;

void CopyCommon(const AcDbEntity& from, AcDbEntity& to) {
    Access::Layer(to) = Access::Layer(from);
    Access::Linetype(to) = Access::Linetype(from);
    Access::Color(to) = Access::Color(from);
}

std::unique_ptr<AcDb2dPolyline> HeavyFromLight(const AcDbPolyline& light) {
    auto heavy = std::make_unique<AcDb2dPolyline>();
    Access::Elevation(*heavy) = Access::Elevation(light);
    Access::Thickness(*heavy) = Access::Thickness(light);
    Access::Normal(*heavy) = Access::Normal(light);
    Access::Closed(*heavy) = Access::Closed(light);
    Access::StartWidth(*heavy) = Access::EndWidth(*heavy) = Access::ConstantWidth(light);
    for (const auto& vertex : Access::Vertices(light)) {
        const double startWidth = (std::max)(vertex.startWidth, 0.0);
        const double endWidth = (std::max)(vertex.endWidth, 0.0);
        const AcGePoint3d point(vertex.point.x, vertex.point.y, Access::Elevation(light));
        Access::Owned(*heavy).fresh.push_back(
            std::make_unique<AcDb2dVertex>(point, vertex.bulge, startWidth, endWidth));
    }
    return heavy;
}

std::unique_ptr<AcDb3dPolyline> Segments(const AcDbCurve& curve) {
    AcGeCurve3d* made = nullptr;
    if (curve.getAcGeCurve(made) != Acad::eOk) return nullptr;
    const std::unique_ptr<AcGeCurve3d> geometry(made);
    AcGePoint3dArray points;
    geometry->getSamplePoints(kSegmentsPerCurve + 1, points);
    auto line = std::make_unique<AcDb3dPolyline>();
    for (int i = 0; i < points.length(); ++i)
        Access::Owned(*line).fresh.push_back(std::make_unique<AcDb3dPolylineVertex>(points[i]));
    return line;
}

Entities Pieces(const AcDbEntity& entity) {
    Entities pieces;
    AcDbVoidPtrArray exploded;
    if (entity.explode(exploded) != Acad::eOk) return pieces;
    for (int i = 0; i < exploded.length(); ++i)
        pieces.emplace_back(static_cast<AcDbEntity*>(exploded[i]));
    return pieces;
}

}  // namespace

Entities OlderForms(const AcDbEntity& entity) {
    Entities forms;
    if (const auto* light = AcDbPolyline::cast(&entity)) {
        forms.push_back(HeavyFromLight(*light));
    } else if (entity.isKindOf(AcDbEllipse::desc()) || entity.isKindOf(AcDbSpline::desc())) {
        if (auto line = Segments(static_cast<const AcDbCurve&>(entity)))
            forms.push_back(std::move(line));
    } else {
        forms = Pieces(entity);
    }
    for (auto& form : forms) {
        CopyCommon(entity, *form);
        if (form->isKindOf(AcDb2dPolyline::desc()) || form->isKindOf(AcDb3dPolyline::desc()))
            for (auto& vertex : FreshVertices(*form)) CopyCommon(entity, *vertex);
    }
    return forms;
}

const Entities& FreshVertices(const AcDbEntity& polyline) {
    return Access::Owned(static_cast<const HeavyPolyline&>(polyline)).fresh;
}

}  // namespace host::dxf
