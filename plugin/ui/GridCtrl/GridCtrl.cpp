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
    const std::vector<CString> headers = SplitText(pHeaders);
    for (size_t i = 0; i < headers.size(); ++i) {
        InsertColumn(static_cast<int>(i), headers[i], LVCFMT_LEFT, 0);
    }
    m_strWidths = pWidths;
    m_nColumns = static_cast<int>(headers.size());
    FitColumns();
}

void CGridCtrl::FitColumns() {
    if (GetSafeHwnd() == nullptr || m_nColumns == 0) {
        return;
    }
    CRect client;
    GetClientRect(&client);
    const std::vector<int> widths = GetColumnWidths(m_strWidths, client.Width());
    for (int i = 0; i < m_nColumns && i < static_cast<int>(widths.size()); ++i) {
        SetColumnWidth(i, widths[static_cast<size_t>(i)]);
    }
}

void CGridCtrl::SetRows(const std::vector<std::vector<CString>>& rows) {
    if (rows.empty()) {
        DeleteAllItems();
    }
    const int nRows = static_cast<int>(rows.size());
    while (GetItemCount() > nRows) {
        DeleteItem(GetItemCount() - 1);
    }
    while (GetItemCount() < nRows) {
        InsertItem(GetItemCount(), _T(""));
    }
    for (int nRow = 0; nRow < nRows; ++nRow) {
        const std::vector<CString>& texts = rows[static_cast<size_t>(nRow)];
        for (int i = 0; i < static_cast<int>(texts.size()); ++i) {
            const CString& strText = texts[static_cast<size_t>(i)];
            // A text that is the same is not painted again.
            if (GetItemText(nRow, i) != strText) {
                SetItemText(nRow, i, strText);
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
