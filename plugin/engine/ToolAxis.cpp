#include "StdAfx.h"

#include "ToolAxis.h"

#include "CentreAxis.h"
#include "CurrentLayerGuard.h"
#include "EncircleLayers.h"
#include "EntityBox.h"

CToolAxis::CToolAxis(const AcDbObjectIdArray& ids, const AcGePoint3d& centre, bool bExact) {
    const CCurrentLayerGuard layer(kEnvelopeLayer);
    AcGePoint3d from;
    AcGePoint3d to;
    if (bExact && FindCentreAxis(ids, centre, from, to)) {
        m_line = std::make_unique<CAxisLine>(from, to);
    } else {
        m_line = std::make_unique<CAxisLine>(GetEntitiesBox(ids), centre.y);
    }
}
