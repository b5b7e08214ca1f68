#include "StdAfx.h"
#include "ToolFrame.h"

#include <memory>

#include "EntityBox.h"

namespace {

// Frees a chain that the host made for its caller.
struct SRbDeleter {
    void operator()(resbuf* pChain) const { acutRelRb(pChain); }
};
using CRbChain = std::unique_ptr<resbuf, SRbDeleter>;

// Codes of texts in extended data and in Xrecords.
bool IsText(int nCode) { return (nCode >= 1 && nCode <= 9) || nCode == 300 || nCode == 1000; }

bool FindFirstText(const resbuf* pChain, CString& strText) {
    for (const resbuf* pNode = pChain; pNode != nullptr; pNode = pNode->rbnext) {
        if (IsText(pNode->restype) && pNode->resval.rstring != nullptr) {
            strText = pNode->resval.rstring;
            return true;
        }
    }
    return false;
}

bool ReadExtendedData(const AcDbEntity& entity, const ACHAR* pKey, CString& strText) {
    const CRbChain chain(entity.xData(pKey));
    return FindFirstText(chain.get(), strText);
}

bool ReadExtensionRecord(const AcDbEntity& entity, const ACHAR* pKey, CString& strText) {
    const AcDbObjectPointer<AcDbDictionary> pDictionary(entity.extensionDictionary(),
                                                        AcDb::kForRead);
    AcDbObjectId recordId;
    if (pDictionary.openStatus() != Acad::eOk || pDictionary->getAt(pKey, recordId) != Acad::eOk) {
        return false;
    }
    const AcDbObjectPointer<AcDbXrecord> pRecord(recordId, AcDb::kForRead);
    resbuf* pRaw = nullptr;
    if (pRecord.openStatus() != Acad::eOk || pRecord->rbChain(&pRaw) != Acad::eOk) {
        return false;
    }
    const CRbChain chain(pRaw);
    return FindFirstText(chain.get(), strText);
}

bool ReadAttribute(const AcDbEntity& entity, const ACHAR* pTag, CString& strText) {
    const AcDbBlockReference* pReference = AcDbBlockReference::cast(&entity);
    if (pReference == nullptr) {
        return false;
    }
    const std::unique_ptr<AcDbObjectIterator> iterator(pReference->attributeIterator());
    for (; iterator != nullptr && !iterator->done(); iterator->step()) {
        const AcDbObjectPointer<AcDbAttribute> pAttribute(iterator->objectId(), AcDb::kForRead);
        if (pAttribute.openStatus() == Acad::eOk && _tcsicmp(pAttribute->tagConst(), pTag) == 0) {
            strText = pAttribute->textStringConst();
            return true;
        }
    }
    return false;
}

// In the order in which they are asked.
const struct {
    E_TextCarrier m_carrier;
    bool (*m_pRead)(const AcDbEntity& entity, const ACHAR* pKey, CString& strText);
} kCarriers[] = {
    {E_Carrier_ExtendedData, &ReadExtendedData},
    {E_Carrier_ExtensionRecord, &ReadExtensionRecord},
    {E_Carrier_Attribute, &ReadAttribute},
};

}  // namespace

CString GetAttachedText(const AcDbObjectId& id, const ACHAR* pKey, E_TextCarrier* pCarrier) {
    CString strText;
    E_TextCarrier found = E_Carrier_None;
    const AcDbObjectPointer<AcDbEntity> pEntity(id, AcDb::kForRead);
    if (pEntity.openStatus() == Acad::eOk) {
        for (const auto& row : kCarriers) {
            if (row.m_pRead(*pEntity.object(), pKey, strText)) {
                found = row.m_carrier;
                break;
            }
        }
    }
    if (pCarrier != nullptr) {
        *pCarrier = found;
    }
    return strText;
}

namespace {

// Model space first, then the paper space of every layout, as the block table has them.
std::vector<AcDbObjectId> GetSpaces(AcDbDatabase* pDatabase) {
    std::vector<AcDbObjectId> spaces;
    if (pDatabase == nullptr) {
        return spaces;
    }
    spaces.push_back(acdbSymUtil()->blockModelSpaceId(pDatabase));
    const AcDbObjectPointer<AcDbBlockTable> pTable(pDatabase->blockTableId(), AcDb::kForRead);
    AcDbBlockTableIterator* pIterator = nullptr;
    if (pTable.openStatus() != Acad::eOk || pTable->newIterator(pIterator) != Acad::eOk) {
        return spaces;
    }
    const std::unique_ptr<AcDbBlockTableIterator> iterator(pIterator);
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        if (iterator->getRecordId(id) != Acad::eOk || id == spaces.front()) {
            continue;
        }
        const AcDbObjectPointer<AcDbBlockTableRecord> pRecord(id, AcDb::kForRead);
        if (pRecord.openStatus() == Acad::eOk && pRecord->isLayout()) {
            spaces.push_back(id);
        }
    }
    return spaces;
}

void CollectFrames(const AcDbObjectId& spaceId, std::vector<SToolFrame>& frames) {
    const AcDbObjectPointer<AcDbBlockTableRecord> pSpace(spaceId, AcDb::kForRead);
    AcDbBlockTableRecordIterator* pIterator = nullptr;
    if (pSpace.openStatus() != Acad::eOk || pSpace->newIterator(pIterator) != Acad::eOk) {
        return;
    }
    const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(pIterator);
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        if (iterator->getEntityId(id) != Acad::eOk ||
            !id.objectClass()->isDerivedFrom(AcDbBlockReference::desc())) {
            continue;
        }
        E_TextCarrier carrier = E_Carrier_None;
        const CString strNumber = GetAttachedText(id, kToolNumberKey, &carrier);
        if (!strNumber.IsEmpty()) {
            frames.push_back({id, strNumber, GetEntityBox(id), carrier});
        }
    }
}

}  // namespace

std::vector<SToolFrame> CollectToolFrames(AcDbDatabase* pDatabase) {
    std::vector<SToolFrame> frames;
    if (pDatabase == nullptr) {
        pDatabase = acdbHostApplicationServices()->workingDatabase();
    }
    for (const AcDbObjectId& spaceId : GetSpaces(pDatabase)) {
        CollectFrames(spaceId, frames);
    }
    return frames;
}

CString FindToolNumber(const std::vector<SToolFrame>& frames, const CQZRect& box) {
    for (const SToolFrame& frame : frames) {
        if (frame.m_rect.Contains(box, 1e-6)) {
            return frame.m_strNumber;
        }
    }
    return CString();
}
