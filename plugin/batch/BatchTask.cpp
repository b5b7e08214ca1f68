#include "StdAfx.h"
#include "BatchTask.h"

#include "BatchSerial.h"
#include "EnvelopeExport.h"
#include "KnifeDiagramFactory.h"
#include "Progress.h"

namespace {

// Shows progress for its own life.
class CProgressScope {
public:
    CProgressScope() { progressStart(); }
    ~CProgressScope() { progressEnd(); }
    CProgressScope(const CProgressScope&) = delete;
    CProgressScope& operator=(const CProgressScope&) = delete;
};

// Finds a task and its tools again after each step of the progress display, by their numbers: a
// click that the display delivered may have removed them or moved them in memory.
class CRunningTask {
public:
    explicit CRunningTask(const BatchTask& task)
        : m_pDatabase(acdbHostApplicationServices()->workingDatabase()), m_serial(task.serial) {
        for (const BatchTool& tool : task.tools) {
            m_toolSerials.push_back(tool.serial);
        }
    }

    int GetToolCount() const { return static_cast<int>(m_toolSerials.size()); }

    // Null when the task is gone or the working database is another one.
    BatchTask* FindTask() const {
        if (m_pDatabase == nullptr ||
            acdbHostApplicationServices()->workingDatabase() != m_pDatabase) {
            return nullptr;
        }
        for (BatchTask& task : CKnifeDiagramFactory::GetInstance().GetTaskList(m_pDatabase)) {
            if (task.serial == m_serial) {
                return &task;
            }
        }
        return nullptr;
    }

    BatchTool* FindTool(BatchTask& task, int nIndex) const {
        for (BatchTool& tool : task.tools) {
            if (tool.serial == m_toolSerials[static_cast<size_t>(nIndex)]) {
                return &tool;
            }
        }
        return nullptr;
    }

private:
    AcDbDatabase* m_pDatabase;
    Adesk::UInt64 m_serial;
    std::vector<Adesk::UInt64> m_toolSerials;
};

// Takes each tool of a task in order through one operation, which gives the tool's status.
template <class Operation>
void RunTools(const BatchTask& start, BatchStatus BatchTask::*taskStatus, Operation operation) {
    const CRunningTask running(start);
    const CProgressScope progress;
    for (int i = 0; i < running.GetToolCount(); ++i) {
        progressStep(running.GetToolCount(), i, 1.0);
        BatchTask* const pTask = running.FindTask();
        if (pTask == nullptr) {
            return;
        }
        BatchTool* const pTool = running.FindTool(*pTask, i);
        if (pTool != nullptr && operation(*pTask, *pTool) == kBatchFailed) {
            pTask->*taskStatus = kBatchFailed;
        }
    }
}

}  // namespace

BatchTask::BatchTask() : serial(NextBatchSerial()) {}

void BatchTask::rollUpStatus() {
    CStatusRollUp exec;
    CStatusRollUp exported;
    for (const BatchTool& tool : tools) {
        exec.Add(tool.execStatus);
        exported.Add(tool.exportStatus);
    }
    execStatus = exec.GetStatus();
    exportStatus = exported.GetStatus();
}

void BatchTask::run() {
    // Nothing was done where there is nothing to do.
    execStatus = tools.empty() ? kBatchNotStarted : kBatchDone;
    RunTools(*this, &BatchTask::execStatus, [](const BatchTask& task, BatchTool& tool) {
        tool.computeEnvelope(task.params);
        return tool.execStatus;
    });
}

void BatchTask::exportAll(const CString& strFolder) {
    exportStatus = tools.empty() ? kBatchNotStarted : kBatchDone;
    const CString folder(strFolder);
    const CExportRun exports;
    RunTools(*this, &BatchTask::exportStatus, [&folder](const BatchTask&, BatchTool& tool) {
        tool.exportSolid(folder);
        return tool.exportStatus;
    });
}

void BatchTask::highlightAllSources(bool bOn) const {
    for (const BatchTool& tool : tools) {
        tool.highlightSource(bOn);
    }
}

void BatchTask::highlightAllEnvelopes(bool bOn) const {
    for (const BatchTool& tool : tools) {
        tool.highlightEnvelope(bOn);
    }
}

void BatchTask::deleteAllEnvelopes() {
    for (BatchTool& tool : tools) {
        tool.deleteEnvelope();
    }
}
