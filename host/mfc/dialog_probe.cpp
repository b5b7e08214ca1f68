#include "host/mfc/dialog_probe.h"

#include <algorithm>

#include "afxcmn.h"

namespace host {
namespace {

WindowSystem& System() { return WindowSystem::Get(); }

ProbeResult Refuse(const std::wstring& reason) { return {false, reason}; }

std::wstring Name(int dialog) { return L"dialog " + std::to_wstring(dialog); }
std::wstring Name(int dialog, int control) {
    return L"control " + std::to_wstring(control) + L" of " + Name(dialog);
}

// The youngest dialog of the number that a person can use; null and the reason without one.
Window* FindUsable(int dialog, std::wstring& reason) {
    const std::vector<LiveDialog> all = LiveDialogs();
    const auto found = std::find_if(all.rbegin(), all.rend(),
                                    [&](const LiveDialog& live) { return live.id == dialog; });
    if (found == all.rend()) {
        reason = L"there is no " + Name(dialog);
    } else if (!found->isShown) {
        reason = Name(dialog) + L" is hidden";
    } else if (!found->isEnabled) {
        reason = Name(dialog) + L" waits for a dialog in front of it";
    } else {
        return System().Find(found->handle);
    }
    return nullptr;
}

// A control of a kind of a usable dialog.
Window* FindControl(int dialog, int control, std::wstring& reason) {
    Window* const window = FindUsable(dialog, reason);
    if (window == nullptr) return nullptr;
    Window* const found = System().Find(::GetDlgItem(window->handle, control));
    if (found == nullptr) reason = L"there is no " + Name(dialog, control);
    return found;
}

Window* FindList(int dialog, int list, std::wstring& reason) {
    Window* const window = FindControl(dialog, list, reason);
    if (window == nullptr || window->kind == WindowKind::kList) return window;
    reason = Name(dialog, list) + L" is no list";
    return nullptr;
}

ProbeResult Click(Window& button) {
    const HWND handle = button.handle;
    System().SetFocus(handle);
    System().Send(handle, BM_CLICK, 0, 0);
    System().DispatchPending();
    return {};
}

ProbeResult SetCheck(Window& button, const std::wstring& value, const std::wstring& name) {
    const HWND handle = button.handle;
    if (button.IsRadio() && value != L"1")
        return Refuse(name + L" is a radio button: press another one instead");
    const int wanted = value == L"0" ? 0 : value == L"1" ? 1 : value == L"2" ? 2 : -1;
    // Clicking goes through the states that the button has.
    for (int click = 0; click < 3; ++click) {
        const Window* const now = System().Find(handle);
        if (now == nullptr || now->check == wanted) return {};
        Click(*System().Find(handle));
    }
    return Refuse(name + L" has no state " + value);
}

}  // namespace

std::vector<LiveDialog> LiveDialogs() {
    std::vector<LiveDialog> dialogs;
    for (const HWND handle : System().TopLevelWindows()) {
        const Window& window = *System().Find(handle);
        if (window.kind != WindowKind::kDialog) continue;
        dialogs.push_back(
            {handle, window.id, window.text, window.IsShown(), window.IsUsable(), window.isModal});
    }
    return dialogs;
}

ProbeResult PressControl(int dialog, int control) {
    std::wstring reason;
    Window* const button = FindControl(dialog, control, reason);
    if (button == nullptr) return Refuse(reason);
    const bool isButton = button->IsPushButton() || button->IsCheckBox() || button->IsRadio();
    if (!isButton) return Refuse(Name(dialog, control) + L" is no button");
    if (!button->IsUsable()) return Refuse(Name(dialog, control) + L" is disabled");
    return Click(*button);
}

ProbeResult SetControl(int dialog, int control, const std::wstring& value) {
    std::wstring reason;
    Window* const window = FindControl(dialog, control, reason);
    if (window == nullptr) return Refuse(reason);
    const std::wstring name = Name(dialog, control);
    if (!window->IsUsable()) return Refuse(name + L" is disabled");
    if (window->IsCheckBox() || window->IsRadio()) return SetCheck(*window, value, name);
    if (window->kind != WindowKind::kEdit) return Refuse(name + L" cannot be set");
    if (window->Has(ES_READONLY)) return Refuse(name + L" is for reading only");
    const HWND handle = window->handle;
    System().SetFocus(handle);
    TypeText(handle, value);
    System().DispatchPending();
    return {};
}

ProbeResult GetControl(int dialog, int control, std::wstring& value) {
    std::wstring reason;
    const Window* const window = FindControl(dialog, control, reason);
    if (window == nullptr) return Refuse(reason);
    if (window->kind == WindowKind::kList)
        return Refuse(Name(dialog, control) + L" is a list: ask for its rows");
    if (window->IsCheckBox() || window->IsRadio()) {
        value = std::to_wstring(window->check);
    } else if (window->kind == WindowKind::kProgress) {
        value = std::to_wstring(window->progress.position);
    } else {
        value = window->text;
    }
    return {};
}

ProbeResult ListHeaders(int dialog, int list, std::vector<std::wstring>& texts) {
    std::wstring reason;
    const Window* const window = FindList(dialog, list, reason);
    if (window == nullptr) return Refuse(reason);
    texts.clear();
    for (const ListColumn& column : window->list->columns) texts.push_back(column.text);
    return {};
}

ProbeResult ListRows(int dialog, int list, std::vector<std::vector<std::wstring>>& rows) {
    std::wstring reason;
    const Window* const window = FindList(dialog, list, reason);
    if (window == nullptr) return Refuse(reason);
    rows.clear();
    for (const ListRow& row : window->list->rows) {
        rows.push_back(row.texts);
        rows.back().resize((std::max)(row.texts.size(), window->list->columns.size()));
    }
    return {};
}

ProbeResult SelectRows(int dialog, int list, const std::vector<int>& rows) {
    std::wstring reason;
    const Window* const window = FindList(dialog, list, reason);
    if (window == nullptr) return Refuse(reason);
    if (!window->IsUsable()) return Refuse(Name(dialog, list) + L" is disabled");
    const int count = static_cast<int>(window->list->rows.size());
    std::vector<int> indexes;
    for (const int row : rows) {
        if (row < 1 || row > count)
            return Refuse(Name(dialog, list) + L" has " + std::to_wstring(count) + L" rows, no " +
                          std::to_wstring(row));
        indexes.push_back(row - 1);
    }
    if (window->Has(LVS_SINGLESEL) && rows.size() > 1)
        return Refuse(Name(dialog, list) + L" takes one row at a time");
    const HWND handle = window->handle;
    System().SetFocus(handle);
    SelectListRows(handle, indexes);
    System().DispatchPending();
    return {};
}

ProbeResult SelectedRows(int dialog, int list, std::vector<int>& rows) {
    std::wstring reason;
    const Window* const window = FindList(dialog, list, reason);
    if (window == nullptr) return Refuse(reason);
    rows.clear();
    for (std::size_t i = 0; i < window->list->rows.size(); ++i)
        if (window->list->rows[i].state & LVIS_SELECTED) rows.push_back(static_cast<int>(i) + 1);
    return {};
}

namespace {

// A row of a usable list that is there; null and the reason without it.
Window* FindRow(int dialog, int list, int row, std::wstring& reason) {
    Window* const window = FindList(dialog, list, reason);
    if (window == nullptr) return nullptr;
    const int count = static_cast<int>(window->list->rows.size());
    if (!window->IsUsable()) {
        reason = Name(dialog, list) + L" is disabled";
    } else if (row < 1 || row > count) {
        reason = Name(dialog, list) + L" has " + std::to_wstring(count) + L" rows, no " +
                 std::to_wstring(row);
    } else {
        return window;
    }
    return nullptr;
}

}  // namespace

ProbeResult DoubleClickRow(int dialog, int list, int row) {
    std::wstring reason;
    const Window* const window = FindRow(dialog, list, row, reason);
    if (window == nullptr) return Refuse(reason);
    const HWND handle = window->handle;
    System().SetFocus(handle);
    SelectListRows(handle, {row - 1});
    DoubleClickListRow(handle, row - 1);
    System().DispatchPending();
    return {};
}

ProbeResult RightClickRow(int dialog, int list, int row) {
    std::wstring reason;
    const Window* const window = FindRow(dialog, list, row, reason);
    if (window == nullptr) return Refuse(reason);
    const HWND handle = window->handle;
    System().SetFocus(handle);
    if (!(window->list->rows[static_cast<std::size_t>(row - 1)].state & LVIS_SELECTED))
        SelectListRows(handle, {row - 1});
    System().Send(handle, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(handle), MAKELPARAM(0, 0));
    System().DispatchPending();
    return {};
}

ProbeResult ScrollToRow(int dialog, int list, int row) {
    std::wstring reason;
    const Window* const window = FindRow(dialog, list, row, reason);
    if (window == nullptr) return Refuse(reason);
    CListCtrl control;
    control.m_hWnd = window->handle;
    control.EnsureVisible(row - 1, FALSE);
    control.m_hWnd = nullptr;
    return {};
}

ProbeResult TopRow(int dialog, int list, int& row) {
    std::wstring reason;
    const Window* const window = FindList(dialog, list, reason);
    if (window == nullptr) return Refuse(reason);
    row = window->list->top + 1;
    return {};
}

ProbeResult ResizeDialog(int dialog, int width, int height) {
    std::wstring reason;
    const Window* const window = FindUsable(dialog, reason);
    if (window == nullptr) return Refuse(reason);
    if (!window->Has(WS_THICKFRAME)) return Refuse(Name(dialog) + L" has a fixed size");
    PullToSize(window->handle, width, height);
    System().DispatchPending();
    return {};
}

ProbeResult PlaceOf(int dialog, int control, RECT& place) {
    std::wstring reason;
    const Window* const window = FindControl(dialog, control, reason);
    if (window == nullptr) return Refuse(reason);
    place = window->bounds;
    return {};
}

ProbeResult CloseDialog(int dialog) {
    std::wstring reason;
    const Window* const window = FindUsable(dialog, reason);
    if (window == nullptr) return Refuse(reason);
    if (!window->Has(WS_SYSMENU)) return Refuse(Name(dialog) + L" has no close box");
    System().Send(window->handle, WM_CLOSE, 0, 0);
    System().DispatchPending();
    return {};
}

ProbeResult CancelDialog(int dialog) { return TypeKey(dialog, VK_ESCAPE); }

ProbeResult TypeKey(int dialog, UINT key) {
    std::wstring reason;
    const Window* const window = FindUsable(dialog, reason);
    if (window == nullptr) return Refuse(reason);
    const HWND handle = window->handle;
    if (!::IsChild(handle, System().Focus())) System().Activate(handle);
    const HWND target = ::IsChild(handle, System().Focus()) ? System().Focus() : handle;
    System().Post(target, WM_KEYDOWN, key, 0);
    System().DispatchPending();
    return {};
}

ProbeResult SaveScreenshot(const std::wstring& path) {
    std::wstring reason;
    System().Driver().Poll();
    if (!System().Driver().Capture(path, reason)) return Refuse(reason);
    return {};
}

}  // namespace host
