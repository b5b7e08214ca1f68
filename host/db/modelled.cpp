// Regions, solids, bodies and surfaces, as far as the modeller behind the seam makes them.

#include "dbcurve.h"
#include "dbregion.h"
#include "dbsurf.h"
#include "host/db/access.h"
#include "host/db/define_class.h"
#include "host/db/entity_tools.h"
#include "host/db/modeller.h"

using host::Access;

HOST_DEFINE_CLASS(AcDbBody, AcDbEntity, ACRX_T("BODY"))
HOST_DEFINE_CLASS(AcDbRegion, AcDbEntity, ACRX_T("REGION"))
HOST_DEFINE_CLASS(AcDb3dSolid, AcDbEntity, ACRX_T("3DSOLID"))
HOST_DEFINE_CLASS(AcDbSurface, AcDbEntity, ACRX_T("SURFACE"))
HOST_DEFINE_COPY(AcDbBody)
HOST_DEFINE_COPY(AcDbRegion)
HOST_DEFINE_COPY(AcDb3dSolid)
HOST_DEFINE_COPY(AcDbSurface)

namespace {

host::Modeller* g_modeller = nullptr;

}  // namespace

namespace host {

void SetModeller(Modeller* modeller) { g_modeller = modeller; }

std::shared_ptr<const Shape> ShapeOfEntity(const ModelledEntity& entity) {
    return Access::ShapeOf(entity);
}

void SetShape(ModelledEntity& entity, std::shared_ptr<const Shape> shape) {
    Access::ShapeOf(entity) = std::move(shape);
}

Acad::ErrorStatus ModelledEntity::subGetGeomExtents(AcDbExtents& extents) const {
    return m_shape == nullptr ? Acad::eNullExtents : m_shape->Extents(extents);
}

Acad::ErrorStatus ModelledEntity::subTransformBy(const AcGeMatrix3d& matrix) {
    if (m_shape == nullptr) return Acad::eNotImplementedYet;
    std::shared_ptr<const Shape> moved;
    Acad::ErrorStatus es = m_shape->Moved(matrix, moved);
    if (es == Acad::eOk) es = beginWrite(kDirtyGeometry);
    if (es == Acad::eOk) m_shape = moved;
    return es;
}

Acad::ErrorStatus ModelledEntity::subExplode(AcDbVoidPtrArray& pieces) const {
    if (m_shape == nullptr) return Acad::eCannotExplodeEntity;
    AcDbVoidPtrArray made;
    const Acad::ErrorStatus es = m_shape->Explode(made);
    if (es != Acad::eOk) return es;
    for (int i = 0; i < made.length(); ++i)
        CopyProperties(*this, *static_cast<AcDbEntity*>(made[i]));
    pieces.append(made);
    return Acad::eOk;
}

}  // namespace host

Acad::ErrorStatus AcDbRegion::createFromCurves(const AcDbVoidPtrArray& curves,
                                               AcDbVoidPtrArray& regions) {
    if (g_modeller == nullptr) return Acad::eNotImplementedYet;
    std::vector<const AcDbCurve*> inputs;
    for (int i = 0; i < curves.length(); ++i) {
        const AcDbCurve* const curve = AcDbCurve::cast(static_cast<AcRxObject*>(curves[i]));
        if (curve == nullptr) return Acad::eInvalidInput;
        inputs.push_back(curve);
    }
    std::vector<std::shared_ptr<const host::Shape>> shapes;
    const Acad::ErrorStatus es = g_modeller->Regions(inputs, shapes);
    if (es != Acad::eOk) return es;
    for (const auto& shape : shapes) {
        AcDbRegion* const region = new AcDbRegion;
        host::SetShape(*region, shape);
        regions.append(region);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbRegion::getArea(double& area) const {
    return m_shape == nullptr ? Acad::eNotApplicable : m_shape->Area(area);
}

Acad::ErrorStatus AcDb3dSolid::createRevolvedSolid(AcDbEntity* profile,
                                                   const AcGePoint3d& axisPoint,
                                                   const AcGeVector3d& axisDirection,
                                                   double revolveAngle, double startAngle,
                                                   AcDbRevolveOptions& options) {
    if (g_modeller == nullptr) return Acad::eNotImplementedYet;
    if (profile == nullptr || revolveAngle == 0.0) return Acad::eInvalidInput;
    if (options.draftAngle() != 0.0 || options.twistAngle() != 0.0 || options.closeToAxis())
        return Acad::eNotImplementedYet;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    std::shared_ptr<const host::Shape> shape;
    Acad::ErrorStatus es =
        g_modeller->Revolve(*profile, axisPoint, axisDirection, revolveAngle, startAngle, shape);
    if (es == Acad::eOk) es = beginWrite(host::kDirtyGeometry);
    if (es == Acad::eOk) m_shape = shape;
    return es;
}

Acad::ErrorStatus AcDb3dSolid::revolve(const AcDbRegion* region, const AcGePoint3d& axisPoint,
                                       const AcGeVector3d& axisDirection,
                                       double angleOfRevolution) {
    AcDbRevolveOptions options;
    // The profile is only looked at.
    return createRevolvedSolid(const_cast<AcDbRegion*>(region), axisPoint, axisDirection,
                               angleOfRevolution, 0.0, options);
}

Acad::ErrorStatus AcDb3dSolid::getVolume(double& volume) const {
    return m_shape == nullptr ? Acad::eNotApplicable : m_shape->Volume(volume);
}

Acad::ErrorStatus AcDbBody::acisOut(const ACHAR* fileName, const AcDbVoidPtrArray& entities) {
    if (fileName == nullptr || entities.isEmpty()) return Acad::eInvalidInput;
    if (g_modeller == nullptr) return Acad::eNotImplementedYet;
    std::vector<const host::ModelledEntity*> inputs;
    for (int i = 0; i < entities.length(); ++i) {
        const AcRxObject* const object = static_cast<const AcRxObject*>(entities[i]);
        if (object == nullptr ||
            !(object->isKindOf(AcDbBody::desc()) || object->isKindOf(AcDbRegion::desc()) ||
              object->isKindOf(AcDb3dSolid::desc())))
            return Acad::eInvalidInput;
        inputs.push_back(static_cast<const host::ModelledEntity*>(object));
    }
    return g_modeller->WriteSat(fileName, inputs);
}

Acad::ErrorStatus AcDbBody::acisIn(const ACHAR* fileName, AcDbVoidPtrArray& entities) {
    if (fileName == nullptr) return Acad::eInvalidInput;
    return g_modeller == nullptr ? Acad::eNotImplementedYet
                                 : g_modeller->ReadSat(fileName, entities);
}
