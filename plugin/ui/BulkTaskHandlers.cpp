// The batch dialog's buttons for tasks.
#include "StdAfx.h"
#include "BulkGenEncircleLineDlg.h"

#include "DocumentLock.h"
#include "EncircleParaSetDlg.h"
#include "ExportFolder.h"
#include "InputNameDlg.h"
#include "KnifeDiagramFactory.h"
#include "ModuleDialogs.h"
#include "AcExtensionModule.h"

void CBulkGenEncircleLineDlg::OnNewTask() {
    AcDbDatabase* const pDatabase = acdbHostApplicationServices()->workingDatabase();
    if (pDatabase == nullptr) {
        AfxMessageBox(_T("请先打开图形"));
        return;
    }
    const HWND hWnd = GetSafeHwnd();
    BatchTask task;
    {
        const CAcModuleResourceOverride resources;
        CInputNameDlg dialog(this);
        if (dialog.DoModal() != IDOK) {
            return;
        }
        task.name = dialog.m_strName;
    }
    BatchTaskList* const pList = CKnifeDiagramFactory::GetInstance().FindTaskList(pDatabase);
    if (pList == nullptr) {
        return;
    }
    const STaskKey key = {pDatabase, task.serial};
    pList->push_back(std::move(task));
    StoreTaskList(pDatabase);
    if (::IsWindow(hWnd)) {
        RefillGrids(std::vector<STaskKey>{key});
    }
}

void CBulkGenEncircleLineDlg::OnDeleteTasks() {
    const std::vector<int> rows = selectedRows(m_taskGrid);
    const std::vector<STaskKey> tasks = AskTasks();
    if (tasks.empty()) {
        return;
    }
    for (size_t i = tasks.size(); i-- > 0;) {
        if (BatchTask* const pTask = FindTask(tasks[i])) {
            pTask->highlightAllSources(false);
            pTask->highlightAllEnvelopes(false);
            BatchTaskList& list = *GetShownList();
            list.erase(list.begin() + (pTask - list.data()));
        }
    }
    StoreTaskList(m_pShown);
    RefillGrids(rows);
}

template <class Run>
void CBulkGenEncircleLineDlg::RunTasks(const std::vector<STaskKey>& tasks, const ACHAR* pUndoName,
                                       const ACHAR* pText, Run run) {
    const HWND hWnd = GetSafeHwnd();
    SRunReport report;
    {
        const CDocumentLock lock(tasks.front().m_pDatabase, pUndoName);
        for (size_t i = tasks.size(); i-- > 0;) {
            if (BatchTask* const pTask = FindTask(tasks[i])) {
                report.Add(run(*pTask));
            }
        }
        StoreTaskList(tasks.front().m_pDatabase);
    }
    if (::IsWindow(hWnd)) {  // else closed, and deleted, by a click during the run
        RefillGrids(tasks);
        AfxMessageBox(report.GetMessage(pText));
    }
}

void CBulkGenEncircleLineDlg::OnRunTasks() {
    const std::vector<STaskKey> tasks = AskTasks();
    if (!tasks.empty()) {
        RunTasks(tasks, _T("QZRUNTASKS"), _T("执行任务结束"),
                 [](BatchTask& task) { return task.run(); });
    }
}

void CBulkGenEncircleLineDlg::OnExportTasks() {
    const std::vector<STaskKey> tasks = AskTasks();
    if (tasks.empty()) {
        return;
    }
    const HWND hWnd = GetSafeHwnd();
    const CString strFolder = AskExportFolder(this);
    if (strFolder.IsEmpty() || !::IsWindow(hWnd)) {
        return;
    }
    CExportNames names;
    for (const STaskKey& key : tasks) {
        const BatchTask* const pTask = FindTask(key);
        for (size_t i = 0; pTask != nullptr && i < pTask->tools.size(); ++i) {
            names.Expect(pTask->tools[i].name);
        }
    }
    RunTasks(tasks, _T("QZEXPORTTASKS"), _T("导出结束"),
             [&strFolder, &names](BatchTask& task) { return task.exportAll(strFolder, &names); });
}

void CBulkGenEncircleLineDlg::OnParams() {
    const std::vector<STaskKey> tasks = AskTasks();
    const BatchTask* const pFirst = tasks.empty() ? nullptr : FindTask(tasks.front());
    if (pFirst == nullptr) {
        return;
    }
    const CAcModuleResourceOverride resources;
    CEncircleParaSetDlg dialog(this);
    dialog.params = pFirst->params;
    if (dialog.DoModal() != IDOK) {
        return;
    }
    for (const STaskKey& key : tasks) {
        if (BatchTask* const pTask = FindTask(key)) {
            pTask->params = dialog.params;
        }
    }
    StoreTaskList(tasks.front().m_pDatabase);
}

void CBulkGenEncircleLineDlg::OnDeleteTaskEnvelopes() {
    const std::vector<STaskKey> tasks = AskTasks();
    if (tasks.empty()) {
        return;
    }
    {
        const CDocumentLock lock(m_pShown, _T("QZDELETEENVELOPES"));
        for (const STaskKey& key : tasks) {
            if (BatchTask* const pTask = FindTask(key)) {
                pTask->deleteAllEnvelopes();
                pTask->rollUpStatus();
            }
        }
        StoreTaskList(m_pShown);
    }
    RefillGrids(tasks);
}
