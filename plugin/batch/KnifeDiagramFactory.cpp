#include "StdAfx.h"
#include "KnifeDiagramFactory.h"

CKnifeDiagramFactory& CKnifeDiagramFactory::GetInstance() {
    static CKnifeDiagramFactory instance;
    return instance;
}

BatchTaskList& CKnifeDiagramFactory::GetTaskList(AcDbDatabase* pDatabase) {
    if (pDatabase == nullptr) {
        pDatabase = acdbHostApplicationServices()->workingDatabase();
    }
    if (pDatabase == nullptr) {
        m_noDrawing.clear();
        return m_noDrawing;
    }
    std::unique_ptr<BatchTaskList>& list = m_lists[pDatabase];
    if (list == nullptr) {
        list = std::make_unique<BatchTaskList>();
    }
    return *list;
}

BatchTaskList& CKnifeDiagramFactory::GetTaskList() { return GetTaskList(nullptr); }

BatchTaskList* CKnifeDiagramFactory::FindTaskList(const AcDbDatabase* pDatabase) const {
    const auto found = m_lists.find(const_cast<AcDbDatabase*>(pDatabase));
    return found == m_lists.end() ? nullptr : found->second.get();
}

AcDbDatabase* CKnifeDiagramFactory::FindOwner(Adesk::UInt64 nTaskSerial) const {
    for (const auto& [pDatabase, list] : m_lists) {
        for (const BatchTask& task : *list) {
            if (task.serial == nTaskSerial) {
                return pDatabase;
            }
        }
    }
    return nullptr;
}

void CKnifeDiagramFactory::RemoveTaskList(const AcDbDatabase* pDatabase) {
    m_lists.erase(const_cast<AcDbDatabase*>(pDatabase));
}
