#include "StdAfx.h"
#include "EntityBox.h"

CQZRect GetEntityBox(const AcDbObjectId& id) {
    CQZRect box(true);
    const AcDbObjectPointer<AcDbEntity> pEntity(id, AcDb::kForRead);
    AcDbExtents extents;
    if (pEntity.openStatus() == Acad::eOk && pEntity->getGeomExtents(extents) == Acad::eOk) {
        const AcGePoint3d low = extents.minPoint();
        const AcGePoint3d high = extents.maxPoint();
        box.Extend(AcGePoint3d(low.x, low.y, 0.0));
        box.Extend(AcGePoint3d(high.x, high.y, 0.0));
    }
    return box;
}

CQZRect GetEntitiesBox(const AcDbObjectIdArray& ids) {
    CQZRect box(true);
    for (int i = 0; i < ids.length(); ++i) {
        box.Extend(GetEntityBox(ids[i]));
    }
    return box;
}
