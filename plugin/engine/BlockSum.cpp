#include "StdAfx.h"

#include "BlockSum.h"

#include <algorithm>
#include <memory>
#include <utility>

CBlockSum::CBlockSum(CFigure figure, CShare share)
    : m_figure(std::move(figure)), m_share(std::move(share)) {}

double CBlockSum::Of(const AcDbObjectId& id) {
    AcDbObjectId blockId;
    {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk) {
            return 0.0;
        }
        const AcDbBlockReference* pReference = AcDbBlockReference::cast(entity.object());
        if (pReference == nullptr) {
            return m_figure(entity.object());
        }
        blockId = pReference->blockTableRecord();
    }
    const double sum = OfBlock(blockId);
    const AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForRead);
    return reference.openStatus() == Acad::eOk ? m_share(reference.object(), sum) : 0.0;
}

double CBlockSum::OfBlock(const AcDbObjectId& blockId) {
    Enter(blockId);
    while (!m_path.empty()) {
        const size_t depth = m_path.size();
        SStep& step = m_path.back();
        SBlock& sum = m_blocks[step.m_blockId];
        if (step.m_nNext == step.m_ids.size()) {
            sum.m_bDone = true;
            m_path.pop_back();
        } else if (Take(step.m_ids[step.m_nNext], sum)) {
            ++m_path[depth - 1].m_nNext;
        }
    }
    return m_blocks[blockId].m_dSum;
}

bool CBlockSum::Enter(const AcDbObjectId& blockId) {
    if (!m_blocks.insert({blockId, SBlock()}).second) {
        return false;
    }
    SStep step;
    step.m_blockId = blockId;
    const AcDbObjectPointer<AcDbBlockTableRecord> block(blockId, AcDb::kForRead);
    AcDbBlockTableRecordIterator* pIterator = nullptr;
    if (block.openStatus() == Acad::eOk && block->newIterator(pIterator) == Acad::eOk) {
        const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(pIterator);
        for (; !iterator->done(); iterator->step()) {
            AcDbObjectId id;
            if (iterator->getEntityId(id) == Acad::eOk) {
                step.m_ids.push_back(id);
            }
        }
    }
    m_path.push_back(std::move(step));
    return true;
}

bool CBlockSum::Take(const AcDbObjectId& id, SBlock& sum) {
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    if (entity.openStatus() != Acad::eOk) {
        return true;
    }
    const AcDbBlockReference* pReference = AcDbBlockReference::cast(entity.object());
    if (pReference == nullptr) {
        sum.m_dSum += m_figure(entity.object());
        return true;
    }
    const AcDbObjectId blockId = pReference->blockTableRecord();
    if (Enter(blockId)) {
        return false;
    }
    const SBlock& inner = m_blocks[blockId];
    if (inner.m_bDone) {
        sum.m_dSum += m_share(pReference, inner.m_dSum);
    } else {
        m_bCycle = true;
    }
    return true;
}

double CountCells(const AcDbBlockReference* pReference) {
    const AcDbMInsertBlock* pArray = AcDbMInsertBlock::cast(pReference);
    if (pArray == nullptr) {
        return 1.0;
    }
    return (std::max)(1.0, static_cast<double>(pArray->rows())) *
           (std::max)(1.0, static_cast<double>(pArray->columns()));
}

CBlockSum MakePieceCount() {
    return CBlockSum([](const AcDbEntity*) { return 1.0; },
                     [](const AcDbBlockReference* pReference, double sum) {
                         return 1.0 + CountCells(pReference) * sum;
                     });
}
