// The keyboard of dialogs: Tab, Enter, Escape and the arrows.
#include <algorithm>

#include "host/mfc/window_system.h"

using host::Window;
using host::WindowKind;
using host::WindowSystem;

namespace {

Window* Find(HWND handle) { return WindowSystem::Get().Find(handle); }

bool TakesFocus(const Window& control) {
    return control.Has(WS_VISIBLE) && !control.Has(WS_DISABLED);
}

// The control behind (or before) one in a ring of controls, of those that the test takes; the one
// itself when no other does. Without a start the first (or last).
template <class Test>
HWND NextInRing(const std::vector<Window*>& ring, const Window* from, bool backwards, Test test) {
    const std::size_t count = ring.size();
    const auto found = std::find(ring.begin(), ring.end(), from);
    std::size_t at = found != ring.end() ? static_cast<std::size_t>(found - ring.begin())
                     : backwards         ? 0
                                         : count - 1;
    for (std::size_t step = 0; step < count; ++step) {
        at = (at + (backwards ? count - 1 : 1)) % count;
        if (test(*ring[at])) return ring[at]->handle;
    }
    return nullptr;
}

void SendCommandOf(HWND dialog, UINT id) {
    const HWND button = GetDlgItem(dialog, static_cast<int>(id));
    if (button != nullptr && !IsWindowEnabled(button)) return;
    SendMessage(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(button));
}

// The button with the focus, else the default one, else OK even where the dialog has none.
void PressReturn(HWND dialog) {
    const Window* const focus = Find(GetFocus());
    if (focus != nullptr && focus->parent == Find(dialog) && focus->IsPushButton()) {
        SendCommandOf(dialog, static_cast<UINT>(focus->id));
        return;
    }
    const LRESULT answer = SendMessage(dialog, DM_GETDEFID, 0, 0);
    SendCommandOf(dialog, HIWORD(answer) == DC_HASDEFID ? LOWORD(answer) : IDOK);
}

// Within a group; a radio button that is reached is pressed.
bool MoveInGroup(HWND dialog, bool backwards) {
    const Window* const focus = Find(GetFocus());
    if (focus == nullptr || focus->kind != WindowKind::kButton) return false;
    const HWND next = GetNextDlgGroupItem(dialog, focus->handle, backwards);
    if (next == nullptr) return true;
    SetFocus(next);
    const Window* const now = Find(next);
    if (now != nullptr && now->IsRadio() && GetFocus() == next) SendMessage(next, BM_CLICK, 0, 0);
    return true;
}

}  // namespace

HWND GetNextDlgTabItem(HWND hDlg, HWND hCtl, BOOL bPrevious) {
    const Window* const dialog = Find(hDlg);
    if (dialog == nullptr || dialog->children.empty()) return nullptr;
    return NextInRing(dialog->children, Find(hCtl), bPrevious != FALSE, [](const Window& control) {
        // Of a group of radio buttons only the checked one is a stop, if there is one.
        if (!TakesFocus(control)) return false;
        return control.IsRadio() ? control.check == BST_CHECKED || control.Has(WS_TABSTOP)
                                 : control.Has(WS_TABSTOP);
    });
}

HWND GetNextDlgGroupItem(HWND hDlg, HWND hCtl, BOOL bPrevious) {
    const Window* const dialog = Find(hDlg);
    Window* const control = Find(hCtl);
    if (dialog == nullptr || control == nullptr || control->parent != dialog) return nullptr;
    const auto& all = dialog->children;
    const auto at = std::find(all.begin(), all.end(), control);
    auto first = at;
    while (first != all.begin() && !(*first)->Has(WS_GROUP)) --first;
    auto last = at + 1;
    while (last != all.end() && !(*last)->Has(WS_GROUP)) ++last;
    return NextInRing(
        std::vector<Window*>(first, last), control, bPrevious != FALSE,
        [&](const Window& other) { return TakesFocus(other) && other.kind == control->kind; });
}

void host::MoveDialogFocus(HWND dialog, bool backwards) {
    const HWND next = GetNextDlgTabItem(dialog, GetFocus(), backwards);
    if (next == nullptr) return;
    SetFocus(next);
    const Window* const control = Find(next);
    if (control != nullptr && control->kind == WindowKind::kEdit)
        SendMessage(next, EM_SETSEL, 0, -1);
}

BOOL IsDialogMessage(HWND hDlg, LPMSG lpMsg) {
    const bool isMine = lpMsg->hwnd == hDlg || IsChild(hDlg, lpMsg->hwnd);
    if (lpMsg->message != WM_KEYDOWN || !isMine) return FALSE;
    const WPARAM key = lpMsg->wParam;
    const bool wantsAll =
        lpMsg->hwnd != hDlg && (SendMessage(lpMsg->hwnd, WM_GETDLGCODE, 0, 0) & DLGC_WANTALLKEYS);
    switch (key) {
        case VK_TAB:
            host::MoveDialogFocus(hDlg, GetKeyState(VK_SHIFT) < 0);
            return TRUE;
        case VK_RETURN:
            if (wantsAll) return FALSE;
            PressReturn(hDlg);
            return TRUE;
        case VK_ESCAPE:
            SendCommandOf(hDlg, IDCANCEL);
            return TRUE;
        case VK_LEFT:
        case VK_UP:
            return MoveInGroup(hDlg, true);
        case VK_RIGHT:
        case VK_DOWN:
            return MoveInGroup(hDlg, false);
        default:
            return FALSE;
    }
}
