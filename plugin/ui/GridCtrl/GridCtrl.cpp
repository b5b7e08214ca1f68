#include "StdAfx.h"
#include "GridCtrl.h"

#include <algorithm>

IMPLEMENT_DYNAMIC(CGridCtrl, CListCtrl)

BEGIN_MESSAGE_MAP(CGridCtrl, CListCtrl)
END_MESSAGE_MAP()

namespace {

std::vector<CString> SplitText(const ACHAR* pText) {
    std::vector<CString> parts;
    const CString strText(pText);
    int nStart = 0;
    while (true) {
        const int nEnd = strText.Find(_T(';'), nStart);
        if (nEnd < 0) {
            parts.push_back(strText.Mid(nStart));
            return parts;
        }
        parts.push_back(strText.Mid(nStart, nEnd - nStart));
        nStart = nEnd + 1;
    }
}

}  // namespace

std::vector<int> GetColumnWidths(const ACHAR* pWidths, int nClientWidth) {
    constexpr int kRest = -1;
    std::vector<int> widths;
    int nUsed = 0;
    for (const CString& part : SplitText(pWidths)) {
        if (part == _T("+")) {
            widths.push_back(kRest);
            continue;
        }
        widths.push_back(_ttoi(part) * nClientWidth / 100);
        nUsed += widths.back();
    }
    std::replace(widths.begin(), widths.end(), kRest, (std::max)(0, nClientWidth - nUsed));
    return widths;
}

void CGridCtrl::SetColumns(const ACHAR* pHeaders, const ACHAR* pWidths) {
    DeleteAllItems();
    while (DeleteColumn(0)) {
    }
    SetExtendedStyle(LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
    CRect client;
    GetClientRect(&client);
    const std::vector<CString> headers = SplitText(pHeaders);
    const std::vector<int> widths = GetColumnWidths(pWidths, client.Width());
    for (size_t i = 0; i < headers.size(); ++i) {
        InsertColumn(static_cast<int>(i), headers[i], LVCFMT_LEFT,
                     i < widths.size() ? widths[i] : 0);
    }
}

void CGridCtrl::SetRows(const std::vector<std::vector<CString>>& rows) {
    DeleteAllItems();
    for (size_t i = 0; i < rows.size(); ++i) {
        const int nRow = static_cast<int>(i);
        for (size_t j = 0; j < rows[i].size(); ++j) {
            if (j == 0) {
                InsertItem(nRow, rows[i][j]);
            } else {
                SetItemText(nRow, static_cast<int>(j), rows[i][j]);
            }
        }
    }
}

std::vector<int> CGridCtrl::GetSelectedRows() const {
    std::vector<int> rows;
    POSITION position = GetFirstSelectedItemPosition();
    while (position != nullptr) {
        rows.push_back(GetNextSelectedItem(position));
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

void CGridCtrl::SelectRows(const std::vector<int>& rows) {
    for (int i = 0; i < GetItemCount(); ++i) {
        const bool bSelected = std::find(rows.begin(), rows.end(), i) != rows.end();
        SetItemState(i, bSelected ? LVIS_SELECTED : 0, LVIS_SELECTED);
    }
}
