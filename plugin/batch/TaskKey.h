#pragma once

#include "BatchTask.h"

// A task by identity. Rows change while a run or a dialog lets the user click, and another
// drawing's list may become the current one; the key still means the same task, or none.
struct STaskKey {
    AcDbDatabase* m_pDatabase = nullptr;
    Adesk::UInt64 m_nSerial = 0;
};

// Null when the task was deleted or its drawing closed.
BatchTask* FindTask(const STaskKey& key);

// The tool of that number; null when the task has none (any more).
BatchTool* FindTool(BatchTask& task, Adesk::UInt64 nSerial);

// The key of a task of some list; without a drawing for a task that is in none.
STaskKey GetTaskKey(const BatchTask& task);
