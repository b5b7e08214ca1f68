// The batch dialog: tasks of the current drawing, their tools, and what can be done with them.
#pragma once

#include <vector>

#include "BatchTaskList.h"
#include "DialogLayout.h"
#include "TaskKey.h"
#include "GridCtrl/GridCtrl.h"
#include "res/resource.h"

// Modeless; one at a time, held by the module. Works on the task list of the working database and
// stores it in the drawing when its window is destroyed.
//
// A run, a prompt or a modal dialog delivers clicks while it goes on: the dialog may be closed, its
// list changed, another drawing made the current one. So the handlers keep keys of tasks and
// numbers of tools across it, never rows or pointers, and look whether the window is still there.
class CBulkGenEncircleLineDlg : public CDialogEx {
    DECLARE_DYNAMIC(CBulkGenEncircleLineDlg)

public:
    explicit CBulkGenEncircleLineDlg(CWnd* pParent = nullptr);
    enum { IDD = IDD_BULK };

    // Shows the list of a drawing; null: none.
    void Refresh(AcDbDatabase* pDatabase);

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    void PostNcDestroy() override;

    afx_msg LRESULT OnAcadKeepFocus(WPARAM, LPARAM);
    afx_msg void OnDestroy();
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnGetMinMaxInfo(MINMAXINFO* pInfo);
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

    // Rows of tools by mouse (BulkToolMenu.cpp): a double click shows the tool on the whole screen;
    // the menu does so, too, renames the tool, or moves it up or down among the others.
    afx_msg void OnToolDoubleClicked(NMHDR* pNotify, LRESULT* pResult);
    afx_msg void OnContextMenu(CWnd* pWnd, CPoint point);
    DECLARE_MESSAGE_MAP()

private:
    void fillTaskGrid();
    void fillToolGrid(const BatchTask& task);
    std::vector<int> selectedRows(const CGridCtrl& grid) const;
    void selectRows(CGridCtrl& grid, const std::vector<int>& rows);

    // Refills the task grid, selects the rows again, and refills the tool grid with the first
    // selected task. When that is the one shown before, the tools that were selected stay selected,
    // wherever they are now, and the grid stays scrolled as it is.
    void RefillGrids(const std::vector<int>& taskRows);
    // The same, the rows being those that the tasks have now.
    void RefillGrids(const std::vector<STaskKey>& tasks);
    // False when no task is selected.
    bool ShowTaskOfSelection();

    // The selected tasks, from the first row to the last; empty after the message when there are
    // none.
    std::vector<STaskKey> AskTasks();
    // The one selected task; null after the message.
    BatchTask* AskOneTask();
    // The numbers of the task's tools that are selected; empty after the message when none are.
    std::vector<Adesk::UInt64> AskTools(const BatchTask& task);
    // What the tool buttons need: one task and some tools; false after the message.
    bool AskTaskAndTools(STaskKey& task, std::vector<Adesk::UInt64>& tools);
    // Of the selected rows of tools.
    std::vector<Adesk::UInt64> GetSelectedTools() const;
    void ZoomToTool(Adesk::UInt64 nSerial) const;
    void RenameTool(const STaskKey& key, Adesk::UInt64 nSerial);
    // Highlights of each selected tool what the operation names.
    void HighlightSelected(void (BatchTool::*pHighlight)(bool) const);
    // The list that is shown; null without a drawing.
    BatchTaskList* GetShownList() const;
    // Null when the row is no task's (any more).
    BatchTask* FindShownTask(int nRow) const;

    // Takes tasks from the last to the first through a run, and tools in order through an
    // operation, as one step of undo; stores the list, and tells the outcome in a message box that
    // begins with the text.
    template <class Run>
    void RunTasks(const std::vector<STaskKey>& tasks, const ACHAR* pUndoName, const ACHAR* pText,
                  Run run);
    template <class Operation>
    void RunTools(const STaskKey& task, const std::vector<Adesk::UInt64>& tools,
                  const ACHAR* pUndoName, const ACHAR* pDone, const ACHAR* pFailed,
                  Operation operation);

    AcDbDatabase* m_pShown = nullptr;         // whose list the grids show; looked up, never opened
    Adesk::UInt64 m_nShownTask = 0;           // whose tools are shown; 0: none's
    std::vector<Adesk::UInt64> m_shownTools;  // row by row
    CGridCtrl m_taskGrid;
    CGridCtrl m_toolGrid;
    CDialogLayout m_layout;
    bool m_bFilling = false;  // rows are being replaced: selection changes mean nothing
};
