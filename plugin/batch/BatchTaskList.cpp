#include "StdAfx.h"
#include "BatchTaskList.h"

#include <memory>

#include "BatchChain.h"
#include "DocumentLock.h"

namespace {

constexpr Adesk::Int32 kStoreVersion = 2;
// Parameters are stored since this version.
constexpr Adesk::Int32 kFirstVersionWithParams = 2;

// ---- Writing

void WriteTool(CBatchChainWriter& chain, const BatchTool& tool) {
    chain.AddText(tool.name);
    chain.AddPoint(tool.centre);
    chain.Add(E_Code_Status, tool.execStatus);
    chain.Add(E_Code_Status, tool.exportStatus);
    chain.AddHandle(tool.envelopeId);
    chain.Add(E_Code_Count, tool.sourceIds.length());
    for (int i = 0; i < tool.sourceIds.length(); ++i) {
        chain.AddHandle(tool.sourceIds[i]);
    }
}

// The vertical-ends flag and the axis are not part of the stored form: the first is chosen anew for
// each session, the second lives for one computation only.
void WriteParams(CBatchChainWriter& chain, const CEncircleCalInfo& params) {
    chain.AddFlag(params.m_bExcludeDashed);
    chain.AddReal(params.m_tolPoint.equalPoint());
    chain.AddReal(params.m_tolLine.equalPoint());
    chain.AddReal(params.m_tolHorVer.equalPoint());
    chain.AddReal(params.m_dArcPrecision);
    chain.AddReal(params.m_dSideLength);
    chain.Add(E_Code_Status, params.m_nHalfSide);
}

void WriteTask(CBatchChainWriter& chain, const BatchTask& task) {
    chain.AddText(task.name);
    chain.Add(E_Code_Status, task.execStatus);
    chain.Add(E_Code_Status, task.exportStatus);
    chain.Add(E_Code_Count, static_cast<Adesk::Int32>(task.tools.size()));
    for (const BatchTool& tool : task.tools) {
        WriteTool(chain, tool);
    }
    WriteParams(chain, task.params);
}

// Opens an entry of a dictionary for write, making it when it is missing.
template <class T>
Acad::ErrorStatus OpenOrMake(AcDbDictionary& dictionary, const ACHAR* pKey,
                             AcDbObjectPointer<T>& pEntry) {
    AcDbObjectId id;
    if (dictionary.getAt(pKey, id) == Acad::eOk) {
        return pEntry.open(id, AcDb::kForWrite);
    }
    Acad::ErrorStatus es = dictionary.isWriteEnabled() ? Acad::eOk : dictionary.upgradeOpen();
    if (es != Acad::eOk) {
        return es;
    }
    auto pMade = std::make_unique<T>();
    es = dictionary.setAt(pKey, pMade.get(), id);
    if (es != Acad::eOk) {
        return es;
    }
    T* pResident = pMade.release();
    return pEntry.acquire(pResident);
}

// Gives the stored record another name, under which nothing looks for it.
Acad::ErrorStatus KeepRecord(AcDbDictionary& store) {
    Acad::ErrorStatus es = store.isWriteEnabled() ? Acad::eOk : store.upgradeOpen();
    if (es != Acad::eOk || !store.has(kStoreRecord)) {
        return es;
    }
    CString strKept;
    int nNumber = 0;
    do {
        strKept.Format(_T("%s-%d"), kStoreRecord, ++nNumber);
    } while (store.has(strKept));
    if (!store.setName(kStoreRecord, strKept)) {
        return Acad::eDuplicateKey;
    }
    acutPrintf(_T("\n任务列表未能全部读出，原记录保留为 %s\n"), strKept.GetString());
    return Acad::eOk;
}

// ---- Reading

bool ReadStatus(CBatchChainReader& chain, BatchStatus& status) {
    Adesk::Int32 nStatus = 0;
    if (!chain.Read(E_Code_Status, nStatus)) {
        return false;
    }
    status = static_cast<BatchStatus>(nStatus);
    return true;
}

bool ReadTool(CBatchChainReader& chain, AcDbDatabase& database, BatchTool& tool) {
    Adesk::Int32 nSources = 0;
    if (!chain.ReadText(tool.name) || !chain.ReadPoint(tool.centre) ||
        !ReadStatus(chain, tool.execStatus) || !ReadStatus(chain, tool.exportStatus) ||
        !chain.ReadHandle(database, tool.envelopeId) || !chain.Read(E_Code_Count, nSources) ||
        nSources < 0) {
        return false;
    }
    for (Adesk::Int32 i = 0; i < nSources; ++i) {
        AcDbObjectId id;
        if (!chain.ReadHandle(database, id)) {
            return false;
        }
        if (!id.isNull()) {
            tool.sourceIds.append(id);
        }
    }
    return true;
}

bool ReadTolerance(CBatchChainReader& chain, AcGeTol& tol) {
    double dTol = 0.0;
    if (!chain.ReadReal(dTol)) {
        return false;
    }
    tol.setEqualPoint(dTol);
    tol.setEqualVector(dTol);
    return true;
}

bool ReadParams(CBatchChainReader& chain, CEncircleCalInfo& params) {
    return chain.ReadFlag(params.m_bExcludeDashed) && ReadTolerance(chain, params.m_tolPoint) &&
           ReadTolerance(chain, params.m_tolLine) && ReadTolerance(chain, params.m_tolHorVer) &&
           chain.ReadReal(params.m_dArcPrecision) && chain.ReadReal(params.m_dSideLength) &&
           chain.Read(E_Code_Status, params.m_nHalfSide);
}

bool ReadTask(CBatchChainReader& chain, AcDbDatabase& database, Adesk::Int32 nVersion,
              BatchTask& task) {
    Adesk::Int32 nTools = 0;
    if (!chain.ReadText(task.name) || !ReadStatus(chain, task.execStatus) ||
        !ReadStatus(chain, task.exportStatus) || !chain.Read(E_Code_Count, nTools) || nTools < 0) {
        return false;
    }
    for (Adesk::Int32 i = 0; i < nTools; ++i) {
        BatchTool tool;
        if (!ReadTool(chain, database, tool)) {
            return false;
        }
        task.tools.push_back(std::move(tool));
    }
    return nVersion < kFirstVersionWithParams || ReadParams(chain, task.params);
}

// False when something of the chain was not understood.
bool ReadTasks(CBatchChainReader& chain, AcDbDatabase& database, std::vector<BatchTask>& tasks) {
    Adesk::Int32 nVersion = 0;
    Adesk::Int32 nTasks = 0;
    if (!chain.Read(E_Code_Version, nVersion) || !chain.Read(E_Code_Count, nTasks)) {
        return false;
    }
    for (Adesk::Int32 i = 0; i < nTasks; ++i) {
        BatchTask task;
        if (!ReadTask(chain, database, nVersion, task)) {
            return false;
        }
        tasks.push_back(std::move(task));
    }
    return nTasks >= 0 && chain.IsAtEnd();
}

AcDbObjectId FindRecord(AcDbDatabase* pDatabase) {
    AcDbObjectId id;
    if (pDatabase == nullptr) {
        return id;
    }
    const AcDbObjectPointer<AcDbDictionary> pRoot(pDatabase->namedObjectsDictionaryId(),
                                                  AcDb::kForRead);
    if (pRoot.openStatus() != Acad::eOk || pRoot->getAt(kStoreDictionary, id) != Acad::eOk) {
        return AcDbObjectId();
    }
    const AcDbObjectPointer<AcDbDictionary> pStore(id, AcDb::kForRead);
    if (pStore.openStatus() != Acad::eOk || pStore->getAt(kStoreRecord, id) != Acad::eOk) {
        return AcDbObjectId();
    }
    return id;
}

}  // namespace

Acad::ErrorStatus BatchTaskList::store(AcDbDatabase* pDatabase) {
    if (pDatabase == nullptr) {
        return Acad::eNoDatabase;
    }
    const CDocumentLock lock(pDatabase);
    if (!lock.IsOk()) {
        return Acad::eLockViolation;
    }
    CBatchChainWriter chain;
    chain.Add(E_Code_Version, kStoreVersion);
    chain.Add(E_Code_Count, static_cast<Adesk::Int32>(size()));
    for (const BatchTask& task : *this) {
        WriteTask(chain, task);
    }
    if (chain.GetChain() == nullptr) {
        return Acad::eOutOfMemory;
    }
    AcDbObjectPointer<AcDbDictionary> pRoot(pDatabase->namedObjectsDictionaryId(), AcDb::kForRead);
    if (pRoot.openStatus() != Acad::eOk) {
        return pRoot.openStatus();
    }
    AcDbObjectPointer<AcDbDictionary> pStore;
    Acad::ErrorStatus es = OpenOrMake(*pRoot.object(), kStoreDictionary, pStore);
    if (es != Acad::eOk) {
        return es;
    }
    if (m_bPartlyRead) {
        es = KeepRecord(*pStore.object());
        if (es != Acad::eOk) {
            return es;
        }
        m_bPartlyRead = false;
    }
    AcDbObjectPointer<AcDbXrecord> pRecord;
    es = OpenOrMake(*pStore.object(), kStoreRecord, pRecord);
    return es == Acad::eOk ? pRecord->setFromRbChain(*chain.GetChain()) : es;
}

void BatchTaskList::load(AcDbDatabase* pDatabase) {
    clear();
    m_bPartlyRead = false;
    const AcDbObjectId recordId = FindRecord(pDatabase);
    if (recordId.isNull()) {
        return;
    }
    const AcDbObjectPointer<AcDbXrecord> pRecord(recordId, AcDb::kForRead);
    resbuf* pRaw = nullptr;
    if (pRecord.openStatus() == Acad::eOk && pRecord->rbChain(&pRaw) == Acad::eOk) {
        CBatchChainReader chain(pRaw);
        m_bPartlyRead = !ReadTasks(chain, *pDatabase, *this);
        acutRelRb(pRaw);
    } else {
        m_bPartlyRead = true;
    }
    if (m_bPartlyRead) {
        acutPrintf(_T("\n任务列表的记录已损坏，只读出 %d 个任务\n"), static_cast<int>(size()));
    }
}

bool BatchTaskList::isStored(AcDbDatabase* pDatabase) { return !FindRecord(pDatabase).isNull(); }
