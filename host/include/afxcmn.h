// Common controls: progress bar and list.
#pragma once

#include "afxwin.h"

class CProgressCtrl : public CWnd {
    DECLARE_DYNAMIC(CProgressCtrl)
public:
    // Both limits travel as 16-bit words, as PBM_SETRANGE has them.
    void SetRange(short nLower, short nUpper);
    void SetRange32(int nLower, int nUpper);
    void GetRange(int& nLower, int& nUpper) const;
    // The position is cut to the range; the one before is returned.
    int SetPos(int nPos);
    int OffsetPos(int nPos);
    int GetPos() const;
    int SetStep(int nStep);
    int StepIt();
};

// Report view. Rows and columns count from 0; operations on ones that do not exist return FALSE or
// -1 (texts: empty) and change nothing. A change of a row's state sends LVN_ITEMCHANGED to the
// parent, which may destroy the list.
class CListCtrl : public CWnd {
    DECLARE_DYNAMIC(CListCtrl)
public:
    // nWidth in pixels. The index the column got: at most the number of columns before.
    int InsertColumn(int nCol, LPCTSTR lpszColumnHeading, int nFormat = LVCFMT_LEFT,
                     int nWidth = -1, int nSubItem = -1);
    BOOL DeleteColumn(int nCol);
    int GetColumnWidth(int nCol) const;
    BOOL SetColumnWidth(int nCol, int cx);
    // Styles of the extended kind; the former ones.
    DWORD SetExtendedStyle(DWORD dwNewStyle);
    DWORD GetExtendedStyle() const;

    int InsertItem(int nItem, LPCTSTR lpszItem);
    BOOL DeleteItem(int nItem);
    BOOL DeleteAllItems();
    int GetItemCount() const;
    BOOL SetItemText(int nItem, int nSubItem, LPCTSTR lpszText);
    CString GetItemText(int nItem, int nSubItem) const;
    // The row shown topmost, and how many rows are shown whole.
    int GetTopIndex() const;
    int GetCountPerPage() const;
    // Scrolls as little as needed.
    BOOL EnsureVisible(int nItem, BOOL bPartialOK);
    BOOL SetItemData(int nItem, DWORD_PTR dwData);
    DWORD_PTR GetItemData(int nItem) const;

    // LVIS_SELECTED and LVIS_FOCUSED. Row -1: all rows.
    BOOL SetItemState(int nItem, UINT nState, UINT nMask);
    UINT GetItemState(int nItem, UINT nMask) const;
    UINT GetSelectedCount() const;
    POSITION GetFirstSelectedItemPosition() const;
    int GetNextSelectedItem(POSITION& pos) const;
    // The next row after nItem (-1: the first) with all of the flags LVNI_SELECTED, LVNI_FOCUSED.
    int GetNextItem(int nItem, int nFlags) const;
};
