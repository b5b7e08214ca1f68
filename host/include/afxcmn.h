// Common controls: progress bar and list.
#pragma once

#include "afxwin.h"

// A bar that fills. Shows its position as a share of the range; no marquee, no colours.
class CProgressCtrl : public CWnd {
    DECLARE_DYNAMIC(CProgressCtrl)
public:
    // Both limits travel as 16-bit words, as PBM_SETRANGE has them.
    void SetRange(short nLower, short nUpper);
    void SetRange32(int nLower, int nUpper);        // limits of 32 bits
    void GetRange(int& nLower, int& nUpper) const;  // as set; 0 and 100 at first
    // The position is cut to the range; the one before is returned.
    int SetPos(int nPos);
    int OffsetPos(int nPos);  // moves by so much; the position before
    int GetPos() const;       // within the range
    int SetStep(int nStep);   // of StepIt; 10 at first
    int StepIt();             // one step on; past the end it begins anew
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
    BOOL DeleteColumn(int nCol);            // its texts go too
    int GetColumnWidth(int nCol) const;     // pixels
    BOOL SetColumnWidth(int nCol, int cx);  // pixels; LVSCW_AUTOSIZE is not carried out
    // Styles of the extended kind; the former ones.
    DWORD SetExtendedStyle(DWORD dwNewStyle);
    DWORD GetExtendedStyle() const;

    int InsertItem(int nItem, LPCTSTR lpszItem);  // the row it got, -1 when that fails
    BOOL DeleteItem(int nItem);                   // rows below move up
    BOOL DeleteAllItems();                        // columns stay
    int GetItemCount() const;                     // rows
    BOOL SetItemText(int nItem, int nSubItem, LPCTSTR lpszText);
    CString GetItemText(int nItem, int nSubItem) const;  // of any length
    // The row shown topmost, and how many rows are shown whole.
    int GetTopIndex() const;
    int GetCountPerPage() const;
    // Scrolls as little as needed.
    BOOL EnsureVisible(int nItem, BOOL bPartialOK);
    BOOL SetItemData(int nItem, DWORD_PTR dwData);  // a number of the caller's, 0 at first
    DWORD_PTR GetItemData(int nItem) const;

    // LVIS_SELECTED and LVIS_FOCUSED. Row -1: all rows.
    BOOL SetItemState(int nItem, UINT nState, UINT nMask);
    UINT GetItemState(int nItem, UINT nMask) const;
    UINT GetSelectedCount() const;  // selected rows
    // Null when no row is selected; valid until the selection changes.
    POSITION GetFirstSelectedItemPosition() const;
    int GetNextSelectedItem(POSITION& pos) const;  // the row, and pos on to the next
    // The next row after nItem (-1: the first) with all of the flags LVNI_SELECTED, LVNI_FOCUSED.
    int GetNextItem(int nItem, int nFlags) const;
};
