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
    std::unique_ptr<BatchTaskList>& list = m_lists[pDatabase];
    if (list == nullptr) {
        list = std::make_unique<BatchTaskList>();
    }
    return *list;
}

BatchTaskList& CKnifeDiagramFactory::GetTaskList() { return GetTaskList(nullptr); }

bool CKnifeDiagramFactory::HasTaskList(const AcDbDatabase* pDatabase) const {
    return m_lists.count(pDatabase) != 0;
}

void CKnifeDiagramFactory::RemoveTaskList(const AcDbDatabase* pDatabase) {
    m_lists.erase(pDatabase);
}
