// The task lists of all open drawings.
#pragma once

#include <map>
#include <memory>

#include "BatchTaskList.h"

// One per process, made on first use. Lists come into being empty when they are first asked for and
// stay where they are in memory until they are removed.
class CKnifeDiagramFactory {
public:
    static CKnifeDiagramFactory& GetInstance();

    // The list of a drawing; null means the working database. Without one the list is empty, and
    // what is put into it is gone with the next call.
    BatchTaskList& GetTaskList(AcDbDatabase* pDatabase);
    // The list of the working database.
    BatchTaskList& GetTaskList();

    // The list of a drawing that has one already, else null.
    BatchTaskList* FindTaskList(const AcDbDatabase* pDatabase) const;
    // The drawing whose list holds the task of that number; null when none does.
    AcDbDatabase* FindOwner(Adesk::UInt64 nTaskSerial) const;

    // Frees the list of a drawing that is about to be destroyed; unknown ones are ignored.
    void RemoveTaskList(const AcDbDatabase* pDatabase);

private:
    CKnifeDiagramFactory() = default;

    std::map<AcDbDatabase*, std::unique_ptr<BatchTaskList>> m_lists;
    BatchTaskList m_noDrawing;
};
