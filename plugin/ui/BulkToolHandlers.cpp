// The batch dialog's buttons for tools.
#include "StdAfx.h"
#include "BulkGenEncircleLineDlg.h"

#include "DocumentLock.h"
#include "EnvelopeExport.h"
#include "EnvelopeMethod.h"
#include "ExportFolder.h"
#include "HideScope.h"
#include "KnifeDiagramFactory.h"
#include "ModuleDialogs.h"
#include "PickedTool.h"

void CBulkGenEncircleLineDlg::OnAddTools() {
    const BatchTask* const pFirst = AskOneTask();
    if (pFirst == nullptr) {
        return;
    }
    const STaskKey key = {m_pShown, pFirst->serial};
    const HWND hWnd = GetSafeHwnd();
    CString strPrevious;
    bool bPicked = true;
    while (bPicked) {
        SPickedTool picked;
        {
            const CHideScope hidden(*this);
            bPicked = PickTool(strPrevious, picked);
        }
        // The prompts let other windows act: the dialog or the task may be gone, and what was
        // picked may be another drawing's.
        BatchTask* const pTask =
            ::IsWindow(hWnd) && acdbHostApplicationServices()->workingDatabase() == key.m_pDatabase
                ? FindTask(key)
                : nullptr;
        if (pTask == nullptr) {
            break;
        }
        if (bPicked) {
            BatchTool tool;
            tool.name = picked.m_strNumber;
            tool.centre = picked.m_centre;
            tool.sourceIds = picked.m_ids;
            pTask->tools.push_back(std::move(tool));
            strPrevious = picked.m_strNumber;
            fillToolGrid(*pTask);
        }
    }
    if (BatchTask* const pTask = FindTask(key)) {
        pTask->rollUpStatus();
        StoreTaskList(key.m_pDatabase);
    }
    if (::IsWindow(hWnd)) {
        RefillGrids(std::vector<STaskKey>{key});
    }
}

void CBulkGenEncircleLineDlg::OnDeleteTools() {
    STaskKey key;
    std::vector<Adesk::UInt64> tools;
    if (!AskTaskAndTools(key, tools)) {
        return;
    }
    BatchTask& task = *FindTask(key);
    for (size_t i = tools.size(); i-- > 0;) {
        if (BatchTool* const pTool = FindTool(task, tools[i])) {
            pTool->highlightSource(false);
            pTool->highlightEnvelope(false);
            task.tools.erase(task.tools.begin() + (pTool - task.tools.data()));
        }
    }
    StoreTaskList(m_pShown);
    RefillGrids(std::vector<STaskKey>{key});
}

template <class Operation>
void CBulkGenEncircleLineDlg::RunTools(const STaskKey& key, const std::vector<Adesk::UInt64>& tools,
                                       const ACHAR* pUndoName, const ACHAR* pDone,
                                       const ACHAR* pFailed, Operation operation) {
    const HWND hWnd = GetSafeHwnd();
    SRunReport report;
    {
        const CDocumentLock lock(key.m_pDatabase, pUndoName);
        for (const Adesk::UInt64 nSerial : tools) {
            BatchTask* const pTask = FindTask(key);
            BatchTool* const pTool = pTask == nullptr ? nullptr : FindTool(*pTask, nSerial);
            if (pTool == nullptr ||
                acdbHostApplicationServices()->workingDatabase() != key.m_pDatabase) {
                ++report.m_nNotRun;
            } else if (operation(*pTask, *pTool)) {
                ++report.m_nDone;
            } else {
                report.AddFailure(pTool->name, pTool->reason);
            }
        }
        if (BatchTask* const pTask = FindTask(key)) {
            pTask->rollUpStatus();
            StoreTaskList(key.m_pDatabase);
        }
    }
    if (::IsWindow(hWnd)) {
        RefillGrids(std::vector<STaskKey>{key});
        AfxMessageBox(report.GetMessage(report.m_nFailed > 0 ? pFailed : pDone));
    }
}

void CBulkGenEncircleLineDlg::OnCompute() {
    STaskKey key;
    std::vector<Adesk::UInt64> tools;
    if (AskTaskAndTools(key, tools)) {
        RunTools(key, tools, _T("QZCOMPUTE"), _T("计算包络线成功"), _T("计算包络线失败"),
                 [](const BatchTask& task, BatchTool& tool) {
                     tool.computeEnvelope(task.params, GetPipeline(GetEnvelopeMethod()));
                     return tool.execStatus == kBatchDone;
                 });
    }
}

void CBulkGenEncircleLineDlg::OnExportTools() {
    STaskKey key;
    std::vector<Adesk::UInt64> tools;
    if (!AskTaskAndTools(key, tools)) {
        return;
    }
    CExportNames names;
    for (const Adesk::UInt64 nSerial : tools) {
        const BatchTool* const pTool = FindTool(*FindTask(key), nSerial);
        if (pTool == nullptr || !pTool->hasEnvelope()) {
            AfxMessageBox(_T("请先计算包络线"));
            return;
        }
        names.Expect(pTool->name);
    }
    const HWND hWnd = GetSafeHwnd();
    const CString strFolder = AskExportFolder(this);
    if (strFolder.IsEmpty() || !::IsWindow(hWnd)) {
        return;
    }
    const CExportRun exports;
    RunTools(key, tools, _T("QZEXPORTTOOLS"), _T("导出三维文件成功"), _T("导出三维文件失败"),
             [&strFolder, &names](const BatchTask&, BatchTool& tool) {
                 return tool.exportSolid(strFolder, &names) == E_Export_Done;
             });
}

void CBulkGenEncircleLineDlg::HighlightSelected(void (BatchTool::*pHighlight)(bool) const) {
    STaskKey key;
    std::vector<Adesk::UInt64> tools;
    if (!AskTaskAndTools(key, tools)) {
        return;
    }
    for (const Adesk::UInt64 nSerial : tools) {
        if (const BatchTool* const pTool = FindTool(*FindTask(key), nSerial)) {
            (pTool->*pHighlight)(true);
        }
    }
}

void CBulkGenEncircleLineDlg::OnHighlightTools() { HighlightSelected(&BatchTool::highlightSource); }

void CBulkGenEncircleLineDlg::OnHighlightEnvelopes() {
    HighlightSelected(&BatchTool::highlightEnvelope);
}

void CBulkGenEncircleLineDlg::OnClearHighlight() {
    for (const BatchTask& task : CKnifeDiagramFactory::GetInstance().GetTaskList()) {
        task.highlightAllSources(false);
        task.highlightAllEnvelopes(false);
    }
}

void CBulkGenEncircleLineDlg::OnDeleteToolEnvelopes() {
    const std::vector<STaskKey> tasks = AskTasks();
    BatchTask* const pTask = tasks.empty() ? nullptr : FindTask(tasks.front());
    if (pTask == nullptr) {
        return;
    }
    const std::vector<Adesk::UInt64> tools = AskTools(*pTask);
    if (tools.empty()) {
        return;
    }
    {
        const CDocumentLock lock(m_pShown, _T("QZDELETEENVELOPES"));
        for (const Adesk::UInt64 nSerial : tools) {
            if (BatchTool* const pTool = FindTool(*pTask, nSerial)) {
                pTool->deleteEnvelope();
            }
        }
        pTask->rollUpStatus();
        StoreTaskList(m_pShown);
    }
    RefillGrids(tasks);
}
