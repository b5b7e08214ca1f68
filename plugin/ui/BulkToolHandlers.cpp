// The batch dialog's buttons for tools.
#include "StdAfx.h"
#include "BulkGenEncircleLineDlg.h"

#include "DocumentLock.h"
#include "EnvelopeExport.h"
#include "ExportFolder.h"
#include "KnifeDiagramFactory.h"
#include "PickedTool.h"

namespace {

BatchTool* FindTool(BatchTask& task, int nRow) {
    return nRow >= 0 && static_cast<size_t>(nRow) < task.tools.size()
               ? &task.tools[static_cast<size_t>(nRow)]
               : nullptr;
}

}  // namespace

void CBulkGenEncircleLineDlg::OnAddTools() {
    const int nTask = AskOneTaskRow();
    if (nTask < 0) {
        return;
    }
    const HWND hWnd = GetSafeHwnd();
    const Adesk::UInt64 serial = FindTask(nTask)->serial;
    CString strPrevious;
    SPickedTool picked;
    while (PickTool(strPrevious, picked)) {
        // The prompts let other windows act: the dialog or the task may be gone.
        BatchTask* const pTask = ::IsWindow(hWnd) ? FindTask(nTask) : nullptr;
        if (pTask == nullptr || pTask->serial != serial) {
            return;
        }
        BatchTool tool;
        tool.name = picked.m_strNumber;
        tool.centre = picked.m_centre;
        tool.sourceIds = picked.m_ids;
        pTask->tools.push_back(std::move(tool));
        strPrevious = picked.m_strNumber;
        fillToolGrid(*pTask);
    }
    if (!::IsWindow(hWnd)) {
        return;
    }
    if (BatchTask* const pTask = FindTask(nTask)) {
        pTask->rollUpStatus();
    }
    RefillGrids({nTask});
}

void CBulkGenEncircleLineDlg::OnDeleteTools() {
    int nTask = -1;
    std::vector<int> rows;
    if (!AskTaskAndTools(nTask, rows)) {
        return;
    }
    BatchTask& task = *FindTask(nTask);
    for (size_t i = rows.size(); i-- > 0;) {
        if (FindTool(task, rows[i]) != nullptr) {
            task.tools.erase(task.tools.begin() + rows[i]);
        }
    }
    task.rollUpStatus();
    // The rows selected are gone; others that took their places are not meant.
    m_toolGrid.SelectRows({});
    RefillGrids({nTask});
}

void CBulkGenEncircleLineDlg::OnCompute() {
    int nTask = -1;
    std::vector<int> rows;
    if (!AskTaskAndTools(nTask, rows)) {
        return;
    }
    BatchTask& task = *FindTask(nTask);
    bool bFailed = false;
    for (const int nRow : rows) {
        if (BatchTool* const pTool = FindTool(task, nRow)) {
            pTool->computeEnvelope(task.params);
            bFailed = bFailed || pTool->execStatus == kBatchFailed;
        }
    }
    task.rollUpStatus();
    RefillGrids({nTask});
    AfxMessageBox(bFailed ? _T("计算包络线失败") : _T("计算包络线成功"));
}

void CBulkGenEncircleLineDlg::OnExportTools() {
    int nTask = -1;
    std::vector<int> rows;
    if (!AskTaskAndTools(nTask, rows)) {
        return;
    }
    for (const int nRow : rows) {
        const BatchTool* const pTool = FindTool(*FindTask(nTask), nRow);
        if (pTool == nullptr || pTool->envelopeId.isNull()) {
            AfxMessageBox(_T("请先计算包络线"));
            return;
        }
    }
    const HWND hWnd = GetSafeHwnd();
    const CString strFolder = AskExportFolder(this);
    BatchTask* const pTask = ::IsWindow(hWnd) ? FindTask(nTask) : nullptr;
    if (strFolder.IsEmpty() || pTask == nullptr) {
        return;
    }
    bool bFailed = false;
    const CExportRun exports;
    for (const int nRow : rows) {
        if (BatchTool* const pTool = FindTool(*pTask, nRow)) {
            pTool->exportSolid(strFolder);
            bFailed = bFailed || pTool->exportStatus == kBatchFailed;
        }
    }
    pTask->rollUpStatus();
    RefillGrids({nTask});
    AfxMessageBox(bFailed ? _T("导出三维文件失败") : _T("导出三维文件成功"));
}

void CBulkGenEncircleLineDlg::HighlightSelected(void (BatchTool::*pHighlight)(bool) const) {
    int nTask = -1;
    std::vector<int> rows;
    if (!AskTaskAndTools(nTask, rows)) {
        return;
    }
    for (const int nRow : rows) {
        if (const BatchTool* const pTool = FindTool(*FindTask(nTask), nRow)) {
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
    const std::vector<int> taskRows = AskTaskRows();
    BatchTask* const pTask = taskRows.empty() ? nullptr : FindTask(taskRows.front());
    if (pTask == nullptr) {
        return;
    }
    const std::vector<int> rows = AskToolRows();
    if (rows.empty()) {
        return;
    }
    {
        const CDocumentLock lock;
        for (const int nRow : rows) {
            if (BatchTool* const pTool = FindTool(*pTask, nRow)) {
                pTool->deleteEnvelope();
            }
        }
    }
    pTask->rollUpStatus();
    RefillGrids(taskRows);
}
