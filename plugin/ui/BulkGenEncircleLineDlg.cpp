#include "StdAfx.h"
#include "BulkGenEncircleLineDlg.h"

#include <algorithm>

#include "KnifeDiagramFactory.h"
#include "ModuleDialogs.h"

IMPLEMENT_DYNAMIC(CBulkGenEncircleLineDlg, CDialogEx)

BEGIN_MESSAGE_MAP(CBulkGenEncircleLineDlg, CDialogEx)
ON_MESSAGE(WM_ACAD_KEEPFOCUS, &CBulkGenEncircleLineDlg::OnAcadKeepFocus)
ON_WM_DESTROY()
ON_WM_SIZE()
ON_WM_GETMINMAXINFO()
ON_WM_CONTEXTMENU()
ON_NOTIFY(NM_DBLCLK, IDC_BULK_TOOLS, &CBulkGenEncircleLineDlg::OnToolDoubleClicked)
ON_NOTIFY(LVN_ITEMCHANGED, IDC_BULK_TASKS, &CBulkGenEncircleLineDlg::OnTaskSelectionChanged)
ON_BN_CLICKED(IDC_BULK_NEW_TASK, &CBulkGenEncircleLineDlg::OnNewTask)
ON_BN_CLICKED(IDC_BULK_RUN_TASKS, &CBulkGenEncircleLineDlg::OnRunTasks)
ON_BN_CLICKED(IDC_BULK_DELETE_TASKS, &CBulkGenEncircleLineDlg::OnDeleteTasks)
ON_BN_CLICKED(IDC_BULK_EXPORT_TASKS, &CBulkGenEncircleLineDlg::OnExportTasks)
ON_BN_CLICKED(IDC_BULK_PARAMS, &CBulkGenEncircleLineDlg::OnParams)
ON_BN_CLICKED(IDC_BULK_DELETE_TASK_ENVELOPES, &CBulkGenEncircleLineDlg::OnDeleteTaskEnvelopes)
ON_BN_CLICKED(IDC_BULK_ADD_TOOLS, &CBulkGenEncircleLineDlg::OnAddTools)
ON_BN_CLICKED(IDC_BULK_DELETE_TOOLS, &CBulkGenEncircleLineDlg::OnDeleteTools)
ON_BN_CLICKED(IDC_BULK_COMPUTE, &CBulkGenEncircleLineDlg::OnCompute)
ON_BN_CLICKED(IDC_BULK_EXPORT_TOOLS, &CBulkGenEncircleLineDlg::OnExportTools)
ON_BN_CLICKED(IDC_BULK_HIGHLIGHT_TOOLS, &CBulkGenEncircleLineDlg::OnHighlightTools)
ON_BN_CLICKED(IDC_BULK_HIGHLIGHT_ENVELOPES, &CBulkGenEncircleLineDlg::OnHighlightEnvelopes)
ON_BN_CLICKED(IDC_BULK_CLEAR_HIGHLIGHT, &CBulkGenEncircleLineDlg::OnClearHighlight)
ON_BN_CLICKED(IDC_BULK_DELETE_TOOL_ENVELOPES, &CBulkGenEncircleLineDlg::OnDeleteToolEnvelopes)
END_MESSAGE_MAP()

namespace {

// The tool grid takes the height, both grids the width, and the buttons stay beside them.
std::vector<SAnchor> GetAnchors() {
    std::vector<SAnchor> anchors = {{IDC_BULK_TASK_GROUP, false, true, false},
                                    {IDC_BULK_TASKS, false, true, false},
                                    {IDC_BULK_TOOL_GROUP, false, true, true},
                                    {IDC_BULK_TOOLS, false, true, true}};
    for (const int nButton :
         {IDC_BULK_NEW_TASK, IDC_BULK_RUN_TASKS, IDC_BULK_DELETE_TASKS, IDC_BULK_EXPORT_TASKS,
          IDC_BULK_PARAMS, IDC_BULK_DELETE_TASK_ENVELOPES, IDC_BULK_ADD_TOOLS,
          IDC_BULK_DELETE_TOOLS, IDC_BULK_COMPUTE, IDC_BULK_EXPORT_TOOLS, IDC_BULK_HIGHLIGHT_TOOLS,
          IDC_BULK_HIGHLIGHT_ENVELOPES, IDC_BULK_CLEAR_HIGHLIGHT, IDC_BULK_DELETE_TOOL_ENVELOPES}) {
        anchors.push_back({nButton, true, false, false});
    }
    return anchors;
}

template <class T>
std::vector<CString> MakeRow(size_t nIndex, const T& item) {
    CString strNumber;
    strNumber.Format(_T("%d"), static_cast<int>(nIndex) + 1);
    return {strNumber, item.name, GetExecStatusText(item.execStatus),
            GetExportStatusText(item.exportStatus)};
}

template <class T>
std::vector<std::vector<CString>> MakeRows(const std::vector<T>& items) {
    std::vector<std::vector<CString>> rows;
    for (size_t i = 0; i < items.size(); ++i) {
        rows.push_back(MakeRow(i, items[i]));
    }
    return rows;
}

}  // namespace

CBulkGenEncircleLineDlg::CBulkGenEncircleLineDlg(CWnd* pParent) : CDialogEx(IDD, pParent) {}

void CBulkGenEncircleLineDlg::DoDataExchange(CDataExchange* pDX) {
    CDialogEx::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_BULK_TASKS, m_taskGrid);
    DDX_Control(pDX, IDC_BULK_TOOLS, m_toolGrid);
}

BOOL CBulkGenEncircleLineDlg::OnInitDialog() {
    CDialogEx::OnInitDialog();
    m_taskGrid.SetColumns(_T("序号;任务名称;执行状态;导出状态"), _T("12;37;25;25"));
    m_toolGrid.SetColumns(_T("序号;刀具名称;执行状态;导出状态"), _T("10;49;20;20"));
    m_layout.Start(*this, GetAnchors());
    Refresh(acdbHostApplicationServices()->workingDatabase());
    return TRUE;
}

void CBulkGenEncircleLineDlg::OnSize(UINT nType, int cx, int cy) {
    CDialogEx::OnSize(nType, cx, cy);
    m_layout.Resize(*this, cx, cy);
    m_taskGrid.FitColumns();
    m_toolGrid.FitColumns();
}

void CBulkGenEncircleLineDlg::OnGetMinMaxInfo(MINMAXINFO* pInfo) {
    CDialogEx::OnGetMinMaxInfo(pInfo);
    m_layout.Limit(*pInfo);
}

LRESULT CBulkGenEncircleLineDlg::OnAcadKeepFocus(WPARAM, LPARAM) { return TRUE; }

// Enter must neither close nor hide a modeless window.
void CBulkGenEncircleLineDlg::OnOK() {}
void CBulkGenEncircleLineDlg::OnCancel() { DestroyWindow(); }

void CBulkGenEncircleLineDlg::OnDestroy() {
    AcDbDatabase* const pDatabase = acdbHostApplicationServices()->workingDatabase();
    // At the host's end there may be no drawing any more.
    if (pDatabase != nullptr) {
        StoreTaskList(pDatabase);
    }
    CDialogEx::OnDestroy();
}

void CBulkGenEncircleLineDlg::PostNcDestroy() {
    CDialogEx::PostNcDestroy();
    if (ForgetBulkDialog(this)) {
        delete this;
    }
}

void CBulkGenEncircleLineDlg::Refresh(AcDbDatabase* pDatabase) {
    m_pShown = pDatabase;
    if (pDatabase != nullptr) {
        // Its list comes into being when it is first looked at.
        CKnifeDiagramFactory::GetInstance().GetTaskList(pDatabase);
    }
    RefillGrids(std::vector<int>());
}

BatchTaskList* CBulkGenEncircleLineDlg::GetShownList() const {
    return CKnifeDiagramFactory::GetInstance().FindTaskList(m_pShown);
}

void CBulkGenEncircleLineDlg::fillTaskGrid() {
    m_bFilling = true;
    const BatchTaskList* const pList = GetShownList();
    m_taskGrid.SetRows(pList == nullptr ? std::vector<std::vector<CString>>()
                                        : MakeRows<BatchTask>(*pList));
    m_bFilling = false;
}

void CBulkGenEncircleLineDlg::fillToolGrid(const BatchTask& task) {
    std::vector<Adesk::UInt64> selected;
    if (task.serial == m_nShownTask) {
        selected = GetSelectedTools();
    } else {
        // Another task's rows: neither selection nor scrolling means anything there.
        m_toolGrid.SetRows({});
    }
    m_toolGrid.SetRows(MakeRows(task.tools));
    m_nShownTask = task.serial;
    m_shownTools.clear();
    std::vector<int> rows;
    for (const BatchTool& tool : task.tools) {
        if (std::find(selected.begin(), selected.end(), tool.serial) != selected.end()) {
            rows.push_back(static_cast<int>(m_shownTools.size()));
        }
        m_shownTools.push_back(tool.serial);
    }
    selectRows(m_toolGrid, rows);
}

std::vector<int> CBulkGenEncircleLineDlg::selectedRows(const CGridCtrl& grid) const {
    return grid.GetSelectedRows();
}

void CBulkGenEncircleLineDlg::selectRows(CGridCtrl& grid, const std::vector<int>& rows) {
    m_bFilling = true;
    grid.SelectRows(rows);
    m_bFilling = false;
}

void CBulkGenEncircleLineDlg::RefillGrids(const std::vector<int>& taskRows) {
    fillTaskGrid();
    selectRows(m_taskGrid, taskRows);
    if (!ShowTaskOfSelection()) {
        m_toolGrid.SetRows({});
        m_shownTools.clear();
        m_nShownTask = 0;
    }
}

void CBulkGenEncircleLineDlg::RefillGrids(const std::vector<STaskKey>& tasks) {
    std::vector<int> rows;
    const BatchTaskList* const pList = GetShownList();
    for (size_t i = 0; pList != nullptr && i < pList->size(); ++i) {
        for (const STaskKey& key : tasks) {
            if (key.m_pDatabase == m_pShown && key.m_nSerial == (*pList)[i].serial) {
                rows.push_back(static_cast<int>(i));
            }
        }
    }
    RefillGrids(rows);
}

bool CBulkGenEncircleLineDlg::ShowTaskOfSelection() {
    std::vector<int> rows = selectedRows(m_taskGrid);
    const BatchTask* const pTask = rows.empty() ? nullptr : FindShownTask(rows.front());
    if (pTask != nullptr) {
        fillToolGrid(*pTask);
    }
    return pTask != nullptr;
}

void CBulkGenEncircleLineDlg::OnTaskSelectionChanged(NMHDR*, LRESULT* pResult) {
    *pResult = 0;
    if (!m_bFilling) {
        ShowTaskOfSelection();
    }
}

BatchTask* CBulkGenEncircleLineDlg::FindShownTask(int nRow) const {
    BatchTaskList* const pList = GetShownList();
    return pList != nullptr && nRow >= 0 && static_cast<size_t>(nRow) < pList->size()
               ? &(*pList)[static_cast<size_t>(nRow)]
               : nullptr;
}

std::vector<STaskKey> CBulkGenEncircleLineDlg::AskTasks() {
    std::vector<STaskKey> tasks;
    for (const int nRow : selectedRows(m_taskGrid)) {
        if (const BatchTask* const pTask = FindShownTask(nRow)) {
            tasks.push_back({m_pShown, pTask->serial});
        }
    }
    if (tasks.empty()) {
        AfxMessageBox(_T("请选择任务数据"));
    }
    return tasks;
}

BatchTask* CBulkGenEncircleLineDlg::AskOneTask() {
    const std::vector<int> rows = selectedRows(m_taskGrid);
    BatchTask* const pTask = rows.size() == 1 ? FindShownTask(rows.front()) : nullptr;
    if (pTask == nullptr) {
        AfxMessageBox(_T("请选择一条任务数据"));
    }
    return pTask;
}

std::vector<Adesk::UInt64> CBulkGenEncircleLineDlg::AskTools(const BatchTask& task) {
    // What the grid shows may be another task's: nothing of that is meant.
    std::vector<Adesk::UInt64> tools;
    if (task.serial == m_nShownTask) {
        tools = GetSelectedTools();
    }
    if (tools.empty()) {
        AfxMessageBox(_T("请选择刀具数据"));
    }
    return tools;
}

bool CBulkGenEncircleLineDlg::AskTaskAndTools(STaskKey& task, std::vector<Adesk::UInt64>& tools) {
    const BatchTask* const pTask = AskOneTask();
    if (pTask == nullptr) {
        return false;
    }
    task = {m_pShown, pTask->serial};
    tools = AskTools(*pTask);
    return !tools.empty();
}
