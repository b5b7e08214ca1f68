// CListCtrl: the report view of the list control.
#include <algorithm>

#include "afxcmn.h"
#include "host/mfc/window_system.h"

IMPLEMENT_DYNAMIC(CListCtrl, CWnd)

using host::ListColumn;
using host::ListRow;
using host::ListState;
using host::Window;
using host::WindowChange;
using host::WindowSystem;

namespace {

constexpr int kDefaultColumnWidth = 50;  // pixels
// A row, and the headings above, where no display says otherwise; pixels.
constexpr int kRowHeight = 18;
constexpr int kHeaderHeight = 22;

const wchar_t* TextOf(LPCTSTR text) { return text == nullptr ? L"" : text; }

Window* FindList(HWND handle) {
    Window* const window = WindowSystem::Get().Find(handle);
    return window != nullptr && window->list ? window : nullptr;
}

ListRow* FindRow(HWND handle, int row) {
    Window* const window = FindList(handle);
    if (window == nullptr || row < 0 || static_cast<std::size_t>(row) >= window->list->rows.size())
        return nullptr;
    return &window->list->rows[static_cast<std::size_t>(row)];
}

ListColumn* FindColumn(HWND handle, int column) {
    Window* const window = FindList(handle);
    if (window == nullptr || column < 0 ||
        static_cast<std::size_t>(column) >= window->list->columns.size())
        return nullptr;
    return &window->list->columns[static_cast<std::size_t>(column)];
}

int RowCount(HWND handle) {
    const Window* const window = FindList(handle);
    return window == nullptr ? 0 : static_cast<int>(window->list->rows.size());
}

// The list may be gone afterwards.
void ChangeState(HWND handle, int row, UINT state, UINT mask) {
    ListRow* const at = FindRow(handle, row);
    if (at == nullptr) return;
    const UINT before = at->state;
    const UINT after = (before & ~mask) | (state & mask);
    if (after == before) return;
    at->state = after;
    const Window& window = *FindList(handle);
    WindowSystem::Get().Changed(window, WindowChange::kSelection);
    NMLISTVIEW notice = {};
    notice.hdr = {handle, static_cast<UINT_PTR>(window.id), LVN_ITEMCHANGED};
    notice.iItem = row;
    notice.uNewState = after;
    notice.uOldState = before;
    notice.uChanged = LVIF_STATE;
    notice.lParam = static_cast<LPARAM>(at->data);
    if (window.parent != nullptr)
        WindowSystem::Get().Send(window.parent->handle, WM_NOTIFY, notice.hdr.idFrom,
                                 reinterpret_cast<LPARAM>(&notice));
}

// Takes bits from every row but one; handlers may change the rows meanwhile.
void ClearOthers(HWND handle, int kept, UINT bits) {
    for (int i = 0; i < RowCount(handle); ++i)
        if (i != kept) ChangeState(handle, i, 0, bits);
}

void SetState(HWND handle, int row, UINT state, UINT mask) {
    const UINT on = state & mask;
    const Window* const window = FindList(handle);
    if (window == nullptr) return;
    const bool isSingle = window->Has(LVS_SINGLESEL);
    const UINT exclusive = (on & LVIS_FOCUSED) | (isSingle ? on & LVIS_SELECTED : 0);
    if (exclusive != 0) ClearOthers(handle, row, exclusive);
    ChangeState(handle, row, state, mask);
}

int RowsOfPage(HWND handle) {
    RECT client = {};
    ::GetClientRect(handle, &client);
    return (std::max)(1, static_cast<int>(client.bottom - kHeaderHeight) / kRowHeight);
}

// What the rows that are left allow.
void LimitTop(HWND handle) {
    ListState& list = *FindList(handle)->list;
    list.top = (std::max)(0, (std::min)(list.top, RowCount(handle) - RowsOfPage(handle)));
}

void Changed(HWND handle, WindowChange change) {
    WindowSystem::Get().Changed(*FindList(handle), change);
}

}  // namespace

void host::SelectListRows(HWND list, const std::vector<int>& rows) {
    for (int i = 0; i < RowCount(list); ++i)
        if (std::find(rows.begin(), rows.end(), i) == rows.end())
            ChangeState(list, i, 0, LVIS_SELECTED);
    for (const int row : rows) SetState(list, row, LVIS_SELECTED, LVIS_SELECTED);
    if (!rows.empty()) SetState(list, rows.back(), LVIS_FOCUSED, LVIS_FOCUSED);
}

void host::DoubleClickListRow(HWND list, int row) {
    const Window* const window = FindList(list);
    if (window == nullptr || window->parent == nullptr) return;
    NMITEMACTIVATE notice = {};
    notice.hdr = {list, static_cast<UINT_PTR>(window->id), NM_DBLCLK};
    notice.iItem = row;
    WindowSystem::Get().Send(window->parent->handle, WM_NOTIFY, notice.hdr.idFrom,
                             reinterpret_cast<LPARAM>(&notice));
}

int CListCtrl::InsertColumn(int nCol, LPCTSTR lpszColumnHeading, int nFormat, int nWidth, int) {
    Window* const window = FindList(m_hWnd);
    if (window == nullptr || nCol < 0) return -1;
    auto& columns = window->list->columns;
    const int at = (std::min)(nCol, static_cast<int>(columns.size()));
    const int width = nWidth < 0 ? kDefaultColumnWidth : nWidth;
    columns.insert(columns.begin() + at, {TextOf(lpszColumnHeading), nFormat, width});
    for (ListRow& row : window->list->rows)
        if (static_cast<std::size_t>(at) < row.texts.size())
            row.texts.insert(row.texts.begin() + at, std::wstring());
    Changed(m_hWnd, WindowChange::kColumns);
    return at;
}

BOOL CListCtrl::DeleteColumn(int nCol) {
    if (FindColumn(m_hWnd, nCol) == nullptr) return FALSE;
    ListState& list = *FindList(m_hWnd)->list;
    list.columns.erase(list.columns.begin() + nCol);
    for (ListRow& row : list.rows)
        if (static_cast<std::size_t>(nCol) < row.texts.size())
            row.texts.erase(row.texts.begin() + nCol);
    Changed(m_hWnd, WindowChange::kColumns);
    return TRUE;
}

int CListCtrl::GetColumnWidth(int nCol) const {
    const ListColumn* const column = FindColumn(m_hWnd, nCol);
    return column == nullptr ? 0 : column->width;
}

BOOL CListCtrl::SetColumnWidth(int nCol, int cx) {
    ListColumn* const column = FindColumn(m_hWnd, nCol);
    if (column == nullptr || cx < 0) return FALSE;
    column->width = cx;
    Changed(m_hWnd, WindowChange::kColumns);
    return TRUE;
}

DWORD CListCtrl::SetExtendedStyle(DWORD dwNewStyle) {
    Window* const window = FindList(m_hWnd);
    if (window == nullptr) return 0;
    const DWORD before = window->list->extendedStyle;
    window->list->extendedStyle = dwNewStyle;
    Changed(m_hWnd, WindowChange::kColumns);
    return before;
}

DWORD CListCtrl::GetExtendedStyle() const {
    const Window* const window = FindList(m_hWnd);
    return window == nullptr ? 0 : window->list->extendedStyle;
}

int CListCtrl::InsertItem(int nItem, LPCTSTR lpszItem) {
    Window* const window = FindList(m_hWnd);
    if (window == nullptr || nItem < 0) return -1;
    const int at = (std::min)(nItem, RowCount(m_hWnd));
    ListRow row;
    row.texts.push_back(TextOf(lpszItem));
    window->list->rows.insert(window->list->rows.begin() + at, std::move(row));
    Changed(m_hWnd, WindowChange::kRows);
    return at;
}

BOOL CListCtrl::DeleteItem(int nItem) {
    // A row gives up its states first, so that the parent hears of it.
    ChangeState(m_hWnd, nItem, 0, LVIS_SELECTED | LVIS_FOCUSED);
    if (FindRow(m_hWnd, nItem) == nullptr) return FALSE;
    ListState& list = *FindList(m_hWnd)->list;
    list.rows.erase(list.rows.begin() + nItem);
    LimitTop(m_hWnd);
    Changed(m_hWnd, WindowChange::kRows);
    return TRUE;
}

BOOL CListCtrl::DeleteAllItems() {
    Window* const window = FindList(m_hWnd);
    if (window == nullptr) return FALSE;
    window->list->rows.clear();
    window->list->top = 0;
    Changed(m_hWnd, WindowChange::kRows);
    return TRUE;
}

int CListCtrl::GetItemCount() const { return RowCount(m_hWnd); }

BOOL CListCtrl::SetItemText(int nItem, int nSubItem, LPCTSTR lpszText) {
    ListRow* const row = FindRow(m_hWnd, nItem);
    if (row == nullptr || FindColumn(m_hWnd, nSubItem) == nullptr) return FALSE;
    const std::size_t column = static_cast<std::size_t>(nSubItem);
    if (row->texts.size() <= column) row->texts.resize(column + 1);
    row->texts[column] = TextOf(lpszText);
    Changed(m_hWnd, WindowChange::kRows);
    return TRUE;
}

CString CListCtrl::GetItemText(int nItem, int nSubItem) const {
    const ListRow* const row = FindRow(m_hWnd, nItem);
    if (row == nullptr || nSubItem < 0 || static_cast<std::size_t>(nSubItem) >= row->texts.size())
        return CString();
    return row->texts[static_cast<std::size_t>(nSubItem)].c_str();
}

int CListCtrl::GetTopIndex() const {
    const Window* const window = FindList(m_hWnd);
    return window == nullptr ? 0 : window->list->top;
}

int CListCtrl::GetCountPerPage() const { return FindList(m_hWnd) ? RowsOfPage(m_hWnd) : 0; }

BOOL CListCtrl::EnsureVisible(int nItem, BOOL) {
    if (FindRow(m_hWnd, nItem) == nullptr) return FALSE;
    int& top = FindList(m_hWnd)->list->top;
    top = (std::max)(nItem - RowsOfPage(m_hWnd) + 1, (std::min)(top, nItem));
    Changed(m_hWnd, WindowChange::kRows);
    return TRUE;
}

BOOL CListCtrl::SetItemData(int nItem, DWORD_PTR dwData) {
    ListRow* const row = FindRow(m_hWnd, nItem);
    if (row == nullptr) return FALSE;
    row->data = dwData;
    return TRUE;
}

DWORD_PTR CListCtrl::GetItemData(int nItem) const {
    const ListRow* const row = FindRow(m_hWnd, nItem);
    return row == nullptr ? 0 : row->data;
}

BOOL CListCtrl::SetItemState(int nItem, UINT nState, UINT nMask) {
    if (nItem == -1) {
        for (int i = 0; i < GetItemCount(); ++i) SetState(m_hWnd, i, nState, nMask);
        return TRUE;
    }
    if (FindRow(m_hWnd, nItem) == nullptr) return FALSE;
    SetState(m_hWnd, nItem, nState, nMask);
    return TRUE;
}

UINT CListCtrl::GetItemState(int nItem, UINT nMask) const {
    const ListRow* const row = FindRow(m_hWnd, nItem);
    return row == nullptr ? 0 : row->state & nMask;
}

UINT CListCtrl::GetSelectedCount() const {
    UINT count = 0;
    for (int i = 0; i < GetItemCount(); ++i) count += GetItemState(i, LVIS_SELECTED) != 0;
    return count;
}

int CListCtrl::GetNextItem(int nItem, int nFlags) const {
    const UINT wanted = ((nFlags & LVNI_SELECTED) ? LVIS_SELECTED : 0u) |
                        ((nFlags & LVNI_FOCUSED) ? LVIS_FOCUSED : 0u);
    for (int i = nItem + 1; i < GetItemCount(); ++i)
        if (GetItemState(i, wanted) == wanted) return i;
    return -1;
}

// A position is the number of a row, counted from 1.
POSITION CListCtrl::GetFirstSelectedItemPosition() const {
    return reinterpret_cast<POSITION>(static_cast<std::intptr_t>(GetNextItem(-1, LVNI_SELECTED)) +
                                      1);
}

int CListCtrl::GetNextSelectedItem(POSITION& pos) const {
    const int row = static_cast<int>(reinterpret_cast<std::intptr_t>(pos)) - 1;
    pos =
        reinterpret_cast<POSITION>(static_cast<std::intptr_t>(GetNextItem(row, LVNI_SELECTED)) + 1);
    return row;
}
