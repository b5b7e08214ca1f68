#include "product/tool/SolidRun.h"

#include "CurrentLayerGuard.h"
#include "EnvelopeAxis.h"
#include "EnvelopeExport.h"
#include "EraseEntity.h"
#include "RevolveSolid.h"
#include "host/solid/revolve.h"
#include "host/solid/shapes.h"
#include "product/tool/KernelForm.h"

namespace product {
namespace {

SolidRun Told(const host::solid::Refusal& refusal, host::solid::Profile profile) {
    SolidRun solid;
    if (refusal) {
        solid.refusal = refusal;
        return solid;
    }
    solid.measures = Measure(profile);
    solid.profile = profile;
    solid.form = std::make_shared<KernelForm>(std::move(profile), solid.measures.volume);
    return solid;
}

AcGePoint3d PointOn(const Axis& axis) { return AcGePoint3d(axis.from.x, axis.from.y, 0.0); }

// Along x exactly where the axis is level: the direction then brings no rounding.
AcGeVector3d DirectionOf(const Axis& axis) {
    if (axis.IsLevel()) return AcGeVector3d(1, 0, 0);
    return AcGeVector3d(axis.to.x - axis.from.x, axis.to.y - axis.from.y, 0.0).normalize();
}

}  // namespace

SolidRun RevolveRing(const std::vector<Vertex>& ring, bool closed, const Axis& axis) {
    host::solid::Outline outline;
    outline.closed = closed;
    for (const Vertex& v : ring) outline.corners.push_back({{v.x, v.y}, v.bulge});
    host::solid::Profile profile;
    const host::solid::Refusal refusal =
        Prepare(outline, PointOn(axis), DirectionOf(axis), profile);
    return Told(refusal, std::move(profile));
}

SolidRun RevolveInDrawing(const AcDbObjectId& envelopeId, const Envelope& envelope,
                          const Axis& axis, bool& isLayerEmpty) {
    const CCurrentLayerGuard guard(kSolidLayer);
    // The plug-in's operation does not say why there is no solid.
    const AcDbObjectId solidId = ::RevolveEnvelope(envelopeId, PointOn(axis));
    if (solidId.isNull()) return RevolveRing(envelope.vertices, envelope.closed, axis);
    SolidRun run;
    {
        const AcDbObjectPointer<AcDb3dSolid> solid(solidId, AcDb::kForRead);
        if (solid.openStatus() == Acad::eOk)
            if (const host::solid::Profile* profile = host::solid::ProfileOf(*solid.object()))
                run = Told({}, *profile);
    }
    if (!isLayerEmpty)
        EraseOnLayer(guard.GetLayerId());
    else
        EraseById(solidId);
    isLayerEmpty = true;
    return run;
}

SolidRun RevolveEnvelope(const AcDbObjectId& id) {
    AcGePoint3d axisPoint;
    AcGeVector3d along;
    if (!GetEnvelopeAxis(id, axisPoint, along)) return {};
    const AcDbObjectPointer<AcDbEntity> envelope(id, AcDb::kForRead);
    if (envelope.openStatus() != Acad::eOk) return {};
    host::solid::Profile profile;
    const host::solid::Refusal refusal =
        host::solid::ProfileOfEntity(*envelope.object(), axisPoint, along, profile);
    return Told(refusal, std::move(profile));
}

}  // namespace product
