#include "StdAfx.h"
#include "BatchTask.h"

#include "BatchSerial.h"
#include "DocumentLock.h"
#include "Progress.h"
#include "TaskKey.h"

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
    explicit CRunningTask(const BatchTask& task) : m_key(GetTaskKey(task)) {
        for (const BatchTool& tool : task.tools) {
            m_toolSerials.push_back(tool.serial);
        }
    }

    AcDbDatabase* GetDatabase() const { return m_key.m_pDatabase; }
    int GetToolCount() const { return static_cast<int>(m_toolSerials.size()); }

    // Null when the task is gone.
    BatchTask* FindTask() const { return ::FindTask(m_key); }
    // The engine works on the current drawing, which must be the task's.
    bool MayGoOn() const {
        return FindTask() != nullptr &&
               acdbHostApplicationServices()->workingDatabase() == m_key.m_pDatabase;
    }
    // Null when the tool is gone.
    BatchTool* FindTool(int nIndex) const {
        BatchTask* const pTask = FindTask();
        return pTask == nullptr ? nullptr
                                : ::FindTool(*pTask, m_toolSerials[static_cast<size_t>(nIndex)]);
    }

private:
    STaskKey m_key;
    std::vector<Adesk::UInt64> m_toolSerials;
};

// Takes each tool of a task in order through one operation, which says whether it was done.
//
// pProgressText  formed with the tool's index and their number; null for none
template <class Operation>
SRunReport RunTools(const CRunningTask& running, const ACHAR* pUndoName, const ACHAR* pProgressText,
                    Operation operation) {
    SRunReport report;
    const CDocumentLock lock(running.GetDatabase(), pUndoName);
    const CProgressScope progress;
    int nIndex = 0;
    for (; nIndex < running.GetToolCount(); ++nIndex) {
        if (pProgressText != nullptr) {
            // For a display that can show it; the window of today has its own text.
            CString strText;
            strText.Format(pProgressText, nIndex, running.GetToolCount());
        }
        progressStep(running.GetToolCount(), nIndex, 1.0);
        if (!running.MayGoOn()) {
            break;
        }
        BatchTool* const pTool = running.FindTool(nIndex);
        if (pTool == nullptr) {
            ++report.m_nNotRun;
        } else if (operation(*running.FindTask(), *pTool)) {
            ++report.m_nDone;
        } else {
            report.AddFailure(pTool->name, pTool->reason);
        }
    }
    report.m_nNotRun += running.GetToolCount() - nIndex;
    return report;
}

// Sets the task's status, if it still is there, and tells what was done.
void Finish(const CRunningTask& running, const SRunReport& report,
            BatchStatus BatchTask::*taskStatus, BatchStatus BatchTool::*toolStatus) {
    BatchTask* const pTask = running.FindTask();
    if (pTask == nullptr) {
        acutPrintf(_T("\n%s\n"), report.GetCounts().GetString());
        return;
    }
    CStatusRollUp rollUp;
    for (const BatchTool& tool : pTask->tools) {
        rollUp.Add(tool.*toolStatus);
    }
    pTask->*taskStatus = report.m_nFailed > 0 ? kBatchFailed : rollUp.GetStatus();
    acutPrintf(_T("\n%s：%s\n"), pTask->name.GetString(), report.GetCounts().GetString());
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

// This object may be gone, or elsewhere in memory, as soon as a tool was run.
SRunReport BatchTask::run() {
    const CRunningTask running(*this);
    SRunReport report =
        RunTools(running, _T("QZRUNTASK"), nullptr, [](const BatchTask& task, BatchTool& tool) {
            tool.computeEnvelope(task.params, GetPipeline(GetEnvelopeMethod()));
            return tool.execStatus == kBatchDone;
        });
    Finish(running, report, &BatchTask::execStatus, &BatchTool::execStatus);
    return report;
}

SRunReport BatchTask::exportAll(const CString& strFolder, CExportNames* pNames) {
    const CRunningTask running(*this);
    const CString folder(strFolder);
    CExportNames ownNames;
    CExportNames& names = pNames == nullptr ? ownNames : *pNames;
    for (const BatchTool& tool : tools) {
        names.Expect(tool.name);
    }
    const CExportRun exports;
    SRunReport report = RunTools(running, _T("QZEXPORTTASK"), _T("正在导出3D（%d/%d）"),
                                 [&folder, &names](const BatchTask&, BatchTool& tool) {
                                     return tool.exportSolid(folder, &names) == E_Export_Done;
                                 });
    Finish(running, report, &BatchTask::exportStatus, &BatchTool::exportStatus);
    return report;
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
