#include "StdAfx.h"
#include "BulkGenEncircleLineDlg.h"

#include "KnifeDiagramFactory.h"
#include "ModuleDialogs.h"

IMPLEMENT_DYNAMIC(CBulkGenEncircleLineDlg, CDialogEx)

BEGIN_MESSAGE_MAP(CBulkGenEncircleLineDlg, CDialogEx)
ON_MESSAGE(WM_ACAD_KEEPFOCUS, &CBulkGenEncircleLineDlg::OnAcadKeepFocus)
ON_WM_DESTROY()
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

BatchTaskList& GetList() { return CKnifeDiagramFactory::GetInstance().GetTaskList(); }

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
    Refresh();
    return TRUE;
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
    ForgetBulkDialog(this);
    delete this;
}

void CBulkGenEncircleLineDlg::Refresh() { RefillGrids({}); }

void CBulkGenEncircleLineDlg::fillTaskGrid() {
    m_bFilling = true;
    m_taskGrid.SetRows(MakeRows<BatchTask>(GetList()));
    m_bFilling = false;
}

void CBulkGenEncircleLineDlg::fillToolGrid(const BatchTask& task) {
    m_toolGrid.SetRows(MakeRows(task.tools));
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
    const std::vector<int> toolRows = selectedRows(m_toolGrid);
    fillTaskGrid();
    selectRows(m_taskGrid, taskRows);
    m_toolGrid.SetRows({});
    ShowTaskOfSelection();
    selectRows(m_toolGrid, toolRows);
}

void CBulkGenEncircleLineDlg::ShowTaskOfSelection() {
    std::vector<int> rows = selectedRows(m_taskGrid);
    const BatchTask* const pTask = rows.empty() ? nullptr : FindTask(rows.front());
    if (pTask != nullptr) {
        fillToolGrid(*pTask);
    }
}

void CBulkGenEncircleLineDlg::OnTaskSelectionChanged(NMHDR*, LRESULT* pResult) {
    *pResult = 0;
    if (!m_bFilling) {
        ShowTaskOfSelection();
    }
}

BatchTask* CBulkGenEncircleLineDlg::FindTask(int nRow) const {
    BatchTaskList& list = GetList();
    return nRow >= 0 && static_cast<size_t>(nRow) < list.size() ? &list[static_cast<size_t>(nRow)]
                                                                : nullptr;
}

std::vector<int> CBulkGenEncircleLineDlg::AskTaskRows() {
    std::vector<int> rows = selectedRows(m_taskGrid);
    if (rows.empty()) {
        AfxMessageBox(_T("请选择任务数据"));
    }
    return rows;
}

int CBulkGenEncircleLineDlg::AskOneTaskRow() {
    std::vector<int> rows = selectedRows(m_taskGrid);
    if (rows.size() != 1 || FindTask(rows.front()) == nullptr) {
        AfxMessageBox(_T("请选择一条任务数据"));
        return -1;
    }
    return rows.front();
}

std::vector<int> CBulkGenEncircleLineDlg::AskToolRows() {
    std::vector<int> rows = selectedRows(m_toolGrid);
    if (rows.empty()) {
        AfxMessageBox(_T("请选择刀具数据"));
    }
    return rows;
}

bool CBulkGenEncircleLineDlg::AskTaskAndTools(int& nTask, std::vector<int>& tools) {
    nTask = AskOneTaskRow();
    if (nTask < 0) {
        return false;
    }
    tools = AskToolRows();
    return !tools.empty();
}
