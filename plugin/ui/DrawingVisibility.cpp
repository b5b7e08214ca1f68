#include "StdAfx.h"
#include "DrawingVisibility.h"

#include "FlushGraphics.h"
#include "PickedTool.h"

void ShowHiddenEntities() {
    const AcDbObjectIdArray ids = SelectAllEntities();
    for (int i = 0; i < ids.length(); ++i) {
        AcDbObjectPointer<AcDbEntity> pEntity(ids[i], AcDb::kForRead);
        if (pEntity.openStatus() != Acad::eOk || pEntity->visibility() == AcDb::kVisible ||
            pEntity->upgradeOpen() != Acad::eOk) {
            continue;
        }
        if (pEntity->setVisibility(AcDb::kVisible) != Acad::eOk) {
            acutPrintf(_T("\n无法显示隐藏的对象\n"));
        }
    }
    FlushGraphics();
}
