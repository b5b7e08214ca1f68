#include "StdAfx.h"
#include "AxisLine.h"

#include "AddEntity.h"
#include "EraseEntity.h"
#include "Tolerances.h"

CAxisLine::CAxisLine(const CQZRect& box, double dHeight) {
    if (box.IsValid()) {
        m_id = AddLine(AcGePoint3d(box.min.x - kAxisOverhang, dHeight, 0.0),
                       AcGePoint3d(box.max.x + kAxisOverhang, dHeight, 0.0), kByLayerColour,
                       ACDB_MODEL_SPACE);
    }
}

CAxisLine::CAxisLine(const AcGePoint3d& from, const AcGePoint3d& to)
    : m_id(AddLine(from, to, kByLayerColour, ACDB_MODEL_SPACE)) {}

bool CAxisLine::Erase() {
    if (m_id.isNull()) {
        return true;
    }
    const bool bErased = EraseById(m_id);
    m_id.setNull();
    return bErased;
}
