// The batch dialog: tasks of the current drawing, their tools, and what can be done with them.
#pragma once

#include <vector>

#include "BatchTaskList.h"
#include "GridCtrl/GridCtrl.h"
#include "res/resource.h"

// Modeless; one at a time, held by the module. Works on the task list of the working database and
// stores it in the drawing when its window is destroyed.
//
// A run delivers clicks while it goes on, so the handlers keep row numbers, never pointers to tasks
// or tools, across anything that pumps messages, and look at the dialog again afterwards.
class CBulkGenEncircleLineDlg : public CDialogEx {
    DECLARE_DYNAMIC(CBulkGenEncircleLineDlg)

public:
    explicit CBulkGenEncircleLineDlg(CWnd* pParent = nullptr);
    enum { IDD = IDD_BULK };

    // Shows the list of the now current drawing.
    void Refresh();

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    void PostNcDestroy() override;

    afx_msg LRESULT OnAcadKeepFocus(WPARAM, LPARAM);
    afx_msg void OnDestroy();
    afx_msg void OnTaskSelectionChanged(NMHDR* pNotify, LRESULT* pResult);

    // Tasks (BulkTaskHandlers.cpp)
    afx_msg void OnNewTask();
    afx_msg void OnDeleteTasks();
    afx_msg void OnRunTasks();
    afx_msg void OnExportTasks();
    afx_msg void OnParams();
    afx_msg void OnDeleteTaskEnvelopes();

    // Tools (BulkToolHandlers.cpp)
    afx_msg void OnAddTools();
    afx_msg void OnDeleteTools();
    afx_msg void OnCompute();
    afx_msg void OnExportTools();
    afx_msg void OnHighlightTools();
    afx_msg void OnHighlightEnvelopes();
    afx_msg void OnClearHighlight();
    afx_msg void OnDeleteToolEnvelopes();
    DECLARE_MESSAGE_MAP()

private:
    void fillTaskGrid();
    void fillToolGrid(const BatchTask& task);
    std::vector<int> selectedRows(const CGridCtrl& grid) const;
    void selectRows(CGridCtrl& grid, const std::vector<int>& rows);

    // Refills the task grid, selects the rows again, and refills the tool grid with the first
    // selected task, its own selection kept when the task is the same.
    void RefillGrids(const std::vector<int>& taskRows);
    void ShowTaskOfSelection();

    // The selected task rows; empty after the message when there are none.
    std::vector<int> AskTaskRows();
    // The row of the one selected task, or -1 after the message.
    int AskOneTaskRow();
    // The selected tool rows; empty after the message when there are none.
    std::vector<int> AskToolRows();
    // What the tool buttons need: one task and some tools; false after the message.
    bool AskTaskAndTools(int& nTask, std::vector<int>& tools);
    // Highlights of each selected tool what the operation names.
    void HighlightSelected(void (BatchTool::*pHighlight)(bool) const);
    // Null when the row is no task's (any more).
    BatchTask* FindTask(int nRow) const;

    CGridCtrl m_taskGrid;
    CGridCtrl m_toolGrid;
    bool m_bFilling = false;  // rows are being replaced: selection changes mean nothing
};
