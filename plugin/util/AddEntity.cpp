#include "StdAfx.h"

#include "AddEntity.h"

#include <memory>

#include "Tolerances.h"

CBlockAppender::CBlockAppender(const ACHAR* pSpaceName) {
    AcDbDatabase* pDatabase = acdbHostApplicationServices()->workingDatabase();
    if (pDatabase == nullptr) {
        return;
    }
    AcDbObjectPointer<AcDbBlockTable> table(pDatabase->blockTableId(), AcDb::kForRead);
    AcDbObjectId blockId;
    if (table.openStatus() == Acad::eOk && table->getAt(pSpaceName, blockId) == Acad::eOk &&
        m_block.open(blockId, AcDb::kForWrite) == Acad::eOk) {
        m_byLayerId = pDatabase->byLayerLinetype();
    }
}

AcDbObjectId CBlockAppender::Append(AcDbEntity* pEntity) {
    std::unique_ptr<AcDbEntity> owned(pEntity);
    AcDbObjectId id;
    if (owned == nullptr || m_block.object() == nullptr ||
        m_block->appendAcDbEntity(id, owned.get()) != Acad::eOk) {
        return AcDbObjectId::kNull;
    }
    return owned.release()->close() == Acad::eOk ? id : AcDbObjectId::kNull;
}

AcDbObjectId CBlockAppender::AppendLine(const AcGePoint3d& p, const AcGePoint3d& q,
                                        Adesk::UInt16 nColour, const AcDbObjectId& layerId) {
    std::unique_ptr<AcDbLine> line(new AcDbLine(p, q));
    if (line->setColorIndex(nColour) != Acad::eOk || line->setLinetype(m_byLayerId) != Acad::eOk ||
        (!layerId.isNull() && line->setLayer(layerId) != Acad::eOk)) {
        return AcDbObjectId::kNull;
    }
    return Append(line.release());
}

AcDbObjectId AddLine(const AcGePoint3d& p, const AcGePoint3d& q, Adesk::UInt16 nColour,
                     const ACHAR* pSpaceName) {
    if (p.distanceTo(q) < kShortestLine) {
        return AcDbObjectId::kNull;
    }
    CBlockAppender appender(pSpaceName);
    return appender.AppendLine(p, q, nColour);
}

AcDbObjectId AddEntity(AcDbEntity* pEntity, const ACHAR* pSpaceName) {
    CBlockAppender appender(pSpaceName);
    return appender.Append(pEntity);
}
