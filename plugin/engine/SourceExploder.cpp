#include "StdAfx.h"

#include "SourceExploder.h"

#include <memory>

#include "AddEntity.h"
#include "EncircleTrace.h"
#include "EraseEntity.h"

namespace {

void DeleteAll(AcDbVoidPtrArray& entities) {
    for (int i = 0; i < entities.length(); ++i) {
        delete static_cast<AcDbEntity*>(entities[i]);
    }
    entities.removeAll();
}

// Appends the transformed entity, or else its transformed pieces. False when something was lost.
bool AddTransformed(const AcDbEntity* pEntity, const AcGeMatrix3d& transform,
                    AcDbVoidPtrArray& pieces) {
    AcDbEntity* pCopy = nullptr;
    if (pEntity->getTransformedCopy(transform, pCopy) == Acad::eOk && pCopy != nullptr) {
        pieces.append(pCopy);
        return true;
    }
    AcDbVoidPtrArray parts;
    if (pEntity->explode(parts) != Acad::eOk) {
        DeleteAll(parts);
        return false;
    }
    bool bWhole = true;
    for (int i = 0; i < parts.length(); ++i) {
        AcDbEntity* pPart = nullptr;
        if (static_cast<AcDbEntity*>(parts[i])->getTransformedCopy(transform, pPart) == Acad::eOk &&
            pPart != nullptr) {
            pieces.append(pPart);
        } else {
            bWhole = false;
        }
    }
    DeleteAll(parts);
    return bWhole;
}

// The transforms of the reference's cells: one, or those of an array insert row by row. Rows and
// columns lie along the turned axes and are not scaled.
std::vector<AcGeMatrix3d> GetCellTransforms(const AcDbBlockReference* pReference) {
    const AcGeMatrix3d transform = pReference->blockTransform();
    const AcDbMInsertBlock* pArray = AcDbMInsertBlock::cast(pReference);
    if (pArray == nullptr) {
        return {transform};
    }
    const AcGeMatrix3d toWorld =
        AcGeMatrix3d::planeToWorld(pArray->normal()) *
        AcGeMatrix3d::rotation(pArray->rotation(), AcGeVector3d::kZAxis, AcGePoint3d::kOrigin);
    std::vector<AcGeMatrix3d> transforms;
    for (int row = 0; row < pArray->rows(); ++row) {
        for (int column = 0; column < pArray->columns(); ++column) {
            AcGeVector3d offset(column * pArray->columnSpacing(), row * pArray->rowSpacing(), 0.0);
            offset.transformBy(toWorld);
            transforms.push_back(AcGeMatrix3d::translation(offset) * transform);
        }
    }
    return transforms;
}

// Opens the entities of a block one after the other for read and calls use(entity).
template <class Use>
bool ForEachEntity(const AcDbObjectId& blockId, Use use) {
    AcDbObjectPointer<AcDbBlockTableRecord> block(blockId, AcDb::kForRead);
    AcDbBlockTableRecordIterator* pIterator = nullptr;
    if (block.openStatus() != Acad::eOk || block->isFromExternalReference() ||
        block->newIterator(pIterator) != Acad::eOk) {
        return false;
    }
    const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(pIterator);
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        if (iterator->getEntityId(id) != Acad::eOk) {
            continue;
        }
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.openStatus() == Acad::eOk) {
            use(entity.object());
        }
    }
    return true;
}

bool ExplodePiecewise(const AcDbBlockReference* pReference, AcDbVoidPtrArray& pieces) {
    const std::vector<AcGeMatrix3d> transforms = GetCellTransforms(pReference);
    bool bWhole = true;
    const bool bRead =
        ForEachEntity(pReference->blockTableRecord(), [&](const AcDbEntity* pEntity) {
            for (const AcGeMatrix3d& transform : transforms) {
                bWhole = AddTransformed(pEntity, transform, pieces) && bWhole;
            }
        });
    if (bRead && !bWhole) {
        CEncircleTrace::Note(_T("parts of a block that cannot be scaled unequally are left out"),
                             pReference->objectId());
    }
    return bRead;
}

bool IsTooLarge(const AcDbEntity* pEntity) {
    const AcDbMInsertBlock* pArray = AcDbMInsertBlock::cast(pEntity);
    if (pArray == nullptr) {
        return false;
    }
    double count = 0.0;  // cells times entities may pass every integer
    ForEachEntity(pArray->blockTableRecord(), [&](const AcDbEntity*) { count += 1.0; });
    return count * pArray->rows() * pArray->columns() > kMaxPieces;
}

bool ExplodeEntity(const AcDbEntity* pEntity, AcDbVoidPtrArray& pieces) {
    if (IsTooLarge(pEntity)) {
        return false;
    }
    if (pEntity->explode(pieces) == Acad::eOk) {
        return true;
    }
    DeleteAll(pieces);
    const AcDbBlockReference* pReference = AcDbBlockReference::cast(pEntity);
    return pReference != nullptr && ExplodePiecewise(pReference, pieces);
}

}  // namespace

CSourceExploder::CSourceExploder(bool bKeepLook) : m_resolver(bKeepLook) {
    if (const AcDbDatabase* pDatabase = acdbHostApplicationServices()->workingDatabase()) {
        m_layerId = pDatabase->clayer();
    }
}

bool CSourceExploder::Explode(const AcDbObjectId& id, AcDbObjectIdArray& pieces) {
    AcDbVoidPtrArray parts;
    {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk) {
            return false;
        }
        if (!ExplodeEntity(entity.object(), parts)) {
            CEncircleTrace::LeftOut(CEncircleTrace::E_LeftOut_Explode, id);
        }
    }
    EraseById(id);
    const int before = pieces.length();
    CBlockAppender appender;
    for (int i = 0; i < parts.length(); ++i) {
        AcDbEntity* pPart = static_cast<AcDbEntity*>(parts[i]);
        if (!m_resolver.Resolve(pPart) || pPart->setLayer(m_layerId, true, false) != Acad::eOk) {
            delete pPart;
            continue;
        }
        const AcDbObjectId pieceId = appender.Append(pPart);
        if (!pieceId.isNull()) {
            pieces.append(pieceId);
            CEncircleTrace::Made(pieceId, id);
        }
    }
    return pieces.length() > before;
}
