#include "StdAfx.h"

#include "RevolveSolid.h"

#include <memory>
#include <vector>

#include "AddEntity.h"
#include "EnvelopeAxis.h"
#include "plane/point.h"

namespace {

typedef std::vector<std::unique_ptr<AcDbEntity>> CEntityList;

// Takes over the new entities that the host put into an array.
CEntityList TakeEntities(const AcDbVoidPtrArray& pointers) {
    CEntityList entities;
    for (int i = 0; i < pointers.length(); ++i) {
        entities.emplace_back(static_cast<AcDbEntity*>(pointers.at(i)));
    }
    return entities;
}

AcDbObjectId AddSolid(std::unique_ptr<AcDb3dSolid> solid) {
    solid->setDatabaseDefaults();
    return AddEntity(solid.release());
}

AcDbObjectId RevolveOpened(const AcDbObjectId& curveId, AcDb::OpenMode mode,
                           const AcGePoint3d& axisPoint, const AcGeVector3d& axisDir,
                           double dAngle) {
    AcDbObjectPointer<AcDbEntity> pCurve(curveId, mode);
    if (pCurve.openStatus() != Acad::eOk) {
        return AcDbObjectId::kNull;
    }
    std::unique_ptr<AcDb3dSolid> solid(new AcDb3dSolid);
    AcDbRevolveOptions options;
    if (solid->createRevolvedSolid(pCurve.object(), axisPoint, axisDir, dAngle, 0.0, options) !=
        Acad::eOk) {
        return AcDbObjectId::kNull;
    }
    // The curve is closed first: appending may want its block.
    static_cast<void>(pCurve.close());
    return AddSolid(std::move(solid));
}

// The region that the pieces of a curve enclose; null when there is none or more than one.
std::unique_ptr<AcDbRegion> RegionOfCurve(const AcDbObjectId& curveId) {
    AcDbVoidPtrArray pieces;
    {
        const AcDbObjectPointer<AcDbEntity> pCurve(curveId, AcDb::kForRead);
        if (pCurve.openStatus() != Acad::eOk || pCurve->explode(pieces) != Acad::eOk) {
            return nullptr;
        }
    }
    const CEntityList ownedPieces = TakeEntities(pieces);
    AcDbVoidPtrArray regions;
    const Acad::ErrorStatus status = AcDbRegion::createFromCurves(pieces, regions);
    CEntityList ownedRegions = TakeEntities(regions);
    if (status != Acad::eOk || ownedRegions.size() != 1) {
        return nullptr;
    }
    AcDbRegion* pRegion = AcDbRegion::cast(ownedRegions.front().get());
    if (pRegion != nullptr) {
        static_cast<void>(ownedRegions.front().release());
    }
    return std::unique_ptr<AcDbRegion>(pRegion);
}

}  // namespace

AcDbObjectId RevolveCurve(const AcDbObjectId& curveId, const AcGePoint3d& axisPoint,
                          const AcGeVector3d& axisDir, double dAngle) {
    // Open for read should do; whether every release of the host agrees is not documented.
    const AcDbObjectId solidId = RevolveOpened(curveId, AcDb::kForRead, axisPoint, axisDir, dAngle);
    return solidId.isNull() ? RevolveOpened(curveId, AcDb::kForWrite, axisPoint, axisDir, dAngle)
                            : solidId;
}

AcDbObjectId RevolveThroughRegion(const AcDbObjectId& curveId, const AcGePoint3d& axisPoint,
                                  const AcGeVector3d& axisDir, double dAngle) {
    const std::unique_ptr<AcDbRegion> region = RegionOfCurve(curveId);
    std::unique_ptr<AcDb3dSolid> solid(new AcDb3dSolid);
    if (region == nullptr ||
        solid->revolve(region.get(), axisPoint, axisDir, dAngle) != Acad::eOk) {
        return AcDbObjectId::kNull;
    }
    return AddSolid(std::move(solid));
}

AcDbObjectId RevolveEnvelope(const AcDbObjectId& envelopeId, const AcGePoint3d& centre) {
    const double dFullTurn = 2.0 * plane::kHalfTurn;
    AcGePoint3d axisPoint(centre);
    AcGeVector3d axisDir(1.0, 0.0, 0.0);
    static_cast<void>(GetMarkedAxis(envelopeId, axisPoint, axisDir));
    const AcDbObjectId solidId = RevolveCurve(envelopeId, axisPoint, axisDir, dFullTurn);
    return solidId.isNull() ? RevolveThroughRegion(envelopeId, axisPoint, axisDir, dFullTurn)
                            : solidId;
}
