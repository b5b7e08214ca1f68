// The batch dialog's tools by mouse: a double click and a menu on their rows.
#include "StdAfx.h"
#include "BulkGenEncircleLineDlg.h"

#include <algorithm>

#include "EntityBox.h"
#include "InputNameDlg.h"
#include "ModuleDialogs.h"
#include "ShowBox.h"
#include "AcExtensionModule.h"

namespace {

enum E_ToolCommand { E_Tool_Zoom = 1, E_Tool_Rename, E_Tool_Up, E_Tool_Down };

// Moves the tools one place towards the front or the back; those at the end stay, and what stands
// behind them does not pass them.
void MoveTools(std::vector<BatchTool>& tools, const std::vector<Adesk::UInt64>& serials, bool bUp) {
    const auto isMoved = [&](const BatchTool& tool) {
        return std::find(serials.begin(), serials.end(), tool.serial) != serials.end();
    };
    for (size_t i = 1; i < tools.size(); ++i) {
        const size_t at = bUp ? i : tools.size() - i;
        BatchTool& moved = bUp ? tools[at] : tools[at - 1];
        BatchTool& passed = bUp ? tools[at - 1] : tools[at];
        if (isMoved(moved) && !isMoved(passed)) {
            std::swap(moved, passed);
        }
    }
}

}  // namespace

std::vector<Adesk::UInt64> CBulkGenEncircleLineDlg::GetSelectedTools() const {
    std::vector<Adesk::UInt64> tools;
    for (const int nRow : selectedRows(m_toolGrid)) {
        if (nRow >= 0 && static_cast<size_t>(nRow) < m_shownTools.size()) {
            tools.push_back(m_shownTools[static_cast<size_t>(nRow)]);
        }
    }
    return tools;
}

void CBulkGenEncircleLineDlg::OnToolDoubleClicked(NMHDR* pNotify, LRESULT* pResult) {
    *pResult = 0;
    const int nRow = reinterpret_cast<const NMITEMACTIVATE*>(pNotify)->iItem;
    if (nRow >= 0 && static_cast<size_t>(nRow) < m_shownTools.size()) {
        ZoomToTool(m_shownTools[static_cast<size_t>(nRow)]);
    }
}

void CBulkGenEncircleLineDlg::ZoomToTool(Adesk::UInt64 nSerial) const {
    const STaskKey key = {m_pShown, m_nShownTask};
    BatchTask* const pTask = FindTask(key);
    const BatchTool* const pTool = pTask == nullptr ? nullptr : FindTool(*pTask, nSerial);
    if (pTool == nullptr) {
        return;
    }
    CQZRect box = GetEntitiesBox(pTool->sourceIds);
    if (!pTool->envelopeId.isNull()) {
        const CQZRect envelope = GetEntityBox(pTool->envelopeId);
        if (envelope.IsValid()) {
            box.Extend(envelope);
        }
    }
    if (!box.IsValid()) {
        acutPrintf(_T("\n%s：图中已没有该刀具的图元\n"), pTool->name.GetString());
    } else if (!ShowBox(box)) {
        acutPrintf(_T("\n%s：无法显示该刀具\n"), pTool->name.GetString());
    }
}

// By the right button, or by the keyboard's menu key, whose place is -1,-1.
void CBulkGenEncircleLineDlg::OnContextMenu(CWnd* pWnd, CPoint point) {
    const std::vector<Adesk::UInt64> tools = GetSelectedTools();
    if (pWnd == nullptr || pWnd->GetSafeHwnd() != m_toolGrid.GetSafeHwnd() || tools.empty()) {
        CDialogEx::OnContextMenu(pWnd, point);
        return;
    }
    if (point.x == -1 && point.y == -1) {
        CRect rect;
        m_toolGrid.GetWindowRect(&rect);
        point = rect.CenterPoint();
    }
    const UINT nOne = MF_STRING | (tools.size() == 1 ? 0u : MF_GRAYED);
    CMenu menu;
    if (!menu.CreatePopupMenu() || !menu.AppendMenu(nOne, E_Tool_Zoom, _T("缩放到刀具")) ||
        !menu.AppendMenu(nOne, E_Tool_Rename, _T("重命名")) || !menu.AppendMenu(MF_SEPARATOR) ||
        !menu.AppendMenu(MF_STRING, E_Tool_Up, _T("上移")) ||
        !menu.AppendMenu(MF_STRING, E_Tool_Down, _T("下移"))) {
        return;
    }
    const HWND hWnd = GetSafeHwnd();
    const STaskKey key = {m_pShown, m_nShownTask};
    const int nCommand = menu.TrackPopupMenu(
        TPM_LEFTALIGN | TPM_RIGHTBUTTON | TPM_RETURNCMD | TPM_NONOTIFY, point.x, point.y, this);
    // The menu lets other windows act.
    if (!::IsWindow(hWnd) || FindTask(key) == nullptr) {
        return;
    }
    if (nCommand == E_Tool_Zoom) {
        ZoomToTool(tools.front());
    } else if (nCommand == E_Tool_Rename) {
        RenameTool(key, tools.front());
    } else if (nCommand == E_Tool_Up || nCommand == E_Tool_Down) {
        MoveTools(FindTask(key)->tools, tools, nCommand == E_Tool_Up);
        StoreTaskList(key.m_pDatabase);
        RefillGrids(std::vector<STaskKey>{key});
    }
}

void CBulkGenEncircleLineDlg::RenameTool(const STaskKey& key, Adesk::UInt64 nSerial) {
    const BatchTool* const pNamed = FindTool(*FindTask(key), nSerial);
    if (pNamed == nullptr) {
        return;
    }
    const HWND hWnd = GetSafeHwnd();
    CString strName = pNamed->name;
    {
        const CAcModuleResourceOverride resources;
        CInputNameDlg dialog(this);
        dialog.m_strName = strName;
        if (dialog.DoModal() != IDOK) {
            return;
        }
        strName = dialog.m_strName;
    }
    BatchTask* const pTask = FindTask(key);
    BatchTool* const pTool = pTask == nullptr ? nullptr : FindTool(*pTask, nSerial);
    if (pTool != nullptr) {
        pTool->name = strName;
        StoreTaskList(key.m_pDatabase);
    }
    if (::IsWindow(hWnd)) {
        RefillGrids(std::vector<STaskKey>{key});
    }
}
