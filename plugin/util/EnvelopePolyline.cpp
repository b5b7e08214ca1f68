#include "StdAfx.h"

#include "EnvelopePolyline.h"

#include "AddEntity.h"

std::unique_ptr<AcDbPolyline> MakePolyline(const AcDbObjectId& layerId) {
    const AcDbDatabase* pDatabase = acdbHostApplicationServices()->workingDatabase();
    std::unique_ptr<AcDbPolyline> polyline(new AcDbPolyline);
    if (polyline->setLayer(layerId) != Acad::eOk ||
        polyline->setLinetype(pDatabase->byLayerLinetype()) != Acad::eOk) {
        return nullptr;
    }
    return polyline;
}

void AddVertex(AcDbPolyline* pPolyline, const AcGePoint3d& pt, double dBulge, int& nVertexIndex) {
    if (pPolyline->addVertexAt(static_cast<unsigned int>(nVertexIndex), AcGePoint2d(pt.x, pt.y),
                               dBulge, -1.0, -1.0, 0) == Acad::eOk) {
        ++nVertexIndex;
    }
}

void AddEnvelope(std::unique_ptr<AcDbPolyline> polyline, AcDbObjectId& id) {
    polyline->setClosed(true);
    const AcDbObjectId newId = AddEntity(polyline.release());
    if (!newId.isNull()) {
        id = newId;
    }
}
