// The batch dialog's buttons for tasks.
#include "StdAfx.h"
#include "BulkGenEncircleLineDlg.h"

#include "DocumentLock.h"
#include "EncircleParaSetDlg.h"
#include "ExportFolder.h"
#include "InputNameDlg.h"
#include "KnifeDiagramFactory.h"
#include "AcExtensionModule.h"

namespace {

BatchTaskList& GetList() { return CKnifeDiagramFactory::GetInstance().GetTaskList(); }

}  // namespace

void CBulkGenEncircleLineDlg::OnNewTask() {
    const CAcModuleResourceOverride resources;
    CInputNameDlg dialog(this);
    if (dialog.DoModal() != IDOK) {
        return;
    }
    BatchTask task;
    task.name = dialog.m_strName;
    GetList().push_back(std::move(task));
    RefillGrids({static_cast<int>(GetList().size()) - 1});
}

void CBulkGenEncircleLineDlg::OnDeleteTasks() {
    const std::vector<int> rows = AskTaskRows();
    BatchTaskList& list = GetList();
    for (size_t i = rows.size(); i-- > 0;) {
        if (FindTask(rows[i]) != nullptr) {
            list.erase(list.begin() + rows[i]);
        }
    }
    if (!rows.empty()) {
        RefillGrids({});
    }
}

void CBulkGenEncircleLineDlg::OnRunTasks() {
    const std::vector<int> rows = AskTaskRows();
    if (rows.empty()) {
        return;
    }
    const HWND hWnd = GetSafeHwnd();
    for (size_t i = rows.size(); i-- > 0;) {
        if (BatchTask* const pTask = FindTask(rows[i])) {
            pTask->run();
        }
        if (!::IsWindow(hWnd)) {
            return;  // closed, and deleted, by a click during the run
        }
    }
    RefillGrids(rows);
    AfxMessageBox(_T("执行任务结束"));
}

void CBulkGenEncircleLineDlg::OnExportTasks() {
    const std::vector<int> rows = AskTaskRows();
    if (rows.empty()) {
        return;
    }
    const CString strFolder = AskExportFolder(this);
    if (strFolder.IsEmpty()) {
        return;
    }
    const HWND hWnd = GetSafeHwnd();
    for (size_t i = rows.size(); i-- > 0;) {
        if (BatchTask* const pTask = FindTask(rows[i])) {
            pTask->exportAll(strFolder);
        }
        if (!::IsWindow(hWnd)) {
            return;
        }
    }
    RefillGrids(rows);
    AfxMessageBox(_T("导出结束"));
}

void CBulkGenEncircleLineDlg::OnParams() {
    const std::vector<int> rows = AskTaskRows();
    const BatchTask* const pFirst = rows.empty() ? nullptr : FindTask(rows.front());
    if (pFirst == nullptr) {
        return;
    }
    const CAcModuleResourceOverride resources;
    CEncircleParaSetDlg dialog(this);
    dialog.params = pFirst->params;
    if (dialog.DoModal() != IDOK) {
        return;
    }
    for (const int nRow : rows) {
        if (BatchTask* const pTask = FindTask(nRow)) {
            pTask->params = dialog.params;
        }
    }
}

void CBulkGenEncircleLineDlg::OnDeleteTaskEnvelopes() {
    const std::vector<int> rows = AskTaskRows();
    if (rows.empty()) {
        return;
    }
    {
        const CDocumentLock lock;
        for (const int nRow : rows) {
            if (BatchTask* const pTask = FindTask(nRow)) {
                pTask->deleteAllEnvelopes();
                pTask->rollUpStatus();
            }
        }
    }
    RefillGrids(rows);
}
