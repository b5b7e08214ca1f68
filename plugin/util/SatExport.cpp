#include "StdAfx.h"

#include "SatExport.h"

bool WriteSat(const CString& strPath, const AcDbObjectId& solidId) {
    const AcDbObjectPointer<AcDb3dSolid> pSolid(solidId, AcDb::kForRead);
    if (pSolid.openStatus() != Acad::eOk) {
        return false;
    }
    AcDbVoidPtrArray entities;
    entities.append(const_cast<AcDb3dSolid*>(pSolid.object()));
    return AcDbBody::acisOut(strPath, entities) == Acad::eOk;
}
