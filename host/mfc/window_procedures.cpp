// What the kinds of windows do with messages by themselves.
#include <algorithm>
#include <cwchar>
#include <utility>

#include "host/mfc/window_system.h"

namespace host {
namespace {

WindowSystem& System() { return WindowSystem::Get(); }

// Tells the parent what happened to a control. The control may be gone afterwards.
void SendCommand(const Window& control, UINT code) {
    if (control.parent == nullptr) return;
    System().Send(control.parent->handle, WM_COMMAND, MAKEWPARAM(control.id, code),
                  reinterpret_cast<LPARAM>(control.handle));
}

LRESULT SetText(Window& window, const wchar_t* text) {
    window.text = text == nullptr ? L"" : text;
    System().Changed(window, WindowChange::kText);
    if (window.kind == WindowKind::kEdit) {
        window.selectionStart = window.selectionEnd = 0;
        const HWND handle = window.handle;
        SendCommand(window, EN_UPDATE);
        if (const Window* const edit = System().Find(handle)) SendCommand(*edit, EN_CHANGE);
    }
    return TRUE;
}

LRESULT CopyText(const Window& window, std::size_t room, wchar_t* out) {
    if (room == 0 || out == nullptr) return 0;
    const std::size_t count = (std::min)(room - 1, window.text.size());
    std::wmemcpy(out, window.text.c_str(), count);
    out[count] = 0;
    return static_cast<LRESULT>(count);
}

LRESULT AnyProcedure(Window& window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SETTEXT:
            return SetText(window, reinterpret_cast<const wchar_t*>(lParam));
        case WM_GETTEXT:
            return CopyText(window, wParam, reinterpret_cast<wchar_t*>(lParam));
        case WM_GETTEXTLENGTH:
            return static_cast<LRESULT>(window.text.size());
        case WM_SETFONT:
            window.font = reinterpret_cast<HFONT>(wParam);
            System().Changed(window, WindowChange::kFont);
            return 0;
        case WM_GETFONT:
            return reinterpret_cast<LRESULT>(window.font);
        case WM_CLOSE:
            System().Destroy(window.handle);
            return 0;
        case WM_CONTEXTMENU:
            // Asked of the one that it lies in.
            return window.parent == nullptr
                       ? 0
                       : System().Send(window.parent->handle, message, wParam, lParam);
        default:
            return 0;
    }
}

LRESULT DialogProcedure(Window& window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CLOSE: {
            // Posted, so that the close box acts like the Cancel button; a disabled one blocks it.
            const HWND cancel = ::GetDlgItem(window.handle, IDCANCEL);
            if (cancel == nullptr || ::IsWindowEnabled(cancel))
                System().Post(window.handle, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED),
                              reinterpret_cast<LPARAM>(cancel));
            return 0;
        }
        case DM_GETDEFID:
            return window.defaultId == 0 ? 0 : MAKELPARAM(window.defaultId, DC_HASDEFID);
        case DM_SETDEFID:
            window.defaultId = static_cast<UINT>(wParam);
            return TRUE;
        case WM_INITDIALOG:
            return TRUE;
        default:
            return AnyProcedure(window, message, wParam, lParam);
    }
}

void SetCheck(Window& button, int check) {
    if (button.check == check) return;
    button.check = check;
    System().Changed(button, WindowChange::kCheck);
}

// Checks a radio button and clears the others of its group.
void CheckInGroup(Window& button) {
    const auto& siblings = button.parent->children;
    const auto begin = siblings.begin();
    auto first = std::find(begin, siblings.end(), &button);
    while (first != begin && !(*first)->Has(WS_GROUP)) --first;
    auto last = first + 1;
    while (last != siblings.end() && !(*last)->Has(WS_GROUP)) ++last;
    for (auto it = first; it != last; ++it)
        if ((*it)->IsRadio()) SetCheck(**it, *it == &button ? BST_CHECKED : BST_UNCHECKED);
}

LRESULT Click(Window& button) {
    if (!button.IsUsable()) return 0;
    switch (button.ButtonType()) {
        case BS_AUTOCHECKBOX:
            SetCheck(button, button.check == BST_UNCHECKED ? BST_CHECKED : BST_UNCHECKED);
            break;
        case BS_AUTO3STATE:
            SetCheck(button, (button.check + 1) % 3);
            break;
        case BS_AUTORADIOBUTTON:
            CheckInGroup(button);
            break;
        default:
            break;
    }
    SendCommand(button, BN_CLICKED);
    return 0;
}

LRESULT DialogCodeOf(const Window& button) {
    if (button.IsRadio()) return DLGC_BUTTON | DLGC_RADIOBUTTON;
    if (button.ButtonType() == BS_DEFPUSHBUTTON) return DLGC_BUTTON | DLGC_DEFPUSHBUTTON;
    if (button.ButtonType() == BS_PUSHBUTTON) return DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON;
    return button.ButtonType() == BS_GROUPBOX ? DLGC_STATIC : DLGC_BUTTON;
}

LRESULT ButtonProcedure(Window& window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case BM_GETCHECK:
            return window.check;
        case BM_SETCHECK:
            if (window.IsRadio() || window.IsCheckBox()) SetCheck(window, static_cast<int>(wParam));
            return 0;
        case BM_CLICK:
            return Click(window);
        case WM_GETDLGCODE:
            return DialogCodeOf(window);
        case WM_KEYDOWN:
            return wParam == VK_SPACE ? Click(window) : 0;
        default:
            return AnyProcedure(window, message, wParam, lParam);
    }
}

LRESULT SelectText(Window& edit, int start, int end) {
    const int length = static_cast<int>(edit.text.size());
    const bool all = start == 0 && end < 0;
    edit.selectionEnd = all ? length : (std::min)((std::max)(end, 0), length);
    edit.selectionStart = start < 0 ? edit.selectionEnd : (std::min)(start, length);
    System().Changed(edit, WindowChange::kSelection);
    return 0;
}

LRESULT EditProcedure(Window& window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case EM_SETSEL:
            return SelectText(window, static_cast<int>(wParam), static_cast<int>(lParam));
        case EM_GETSEL:
            if (wParam != 0)
                *reinterpret_cast<DWORD*>(wParam) = static_cast<DWORD>(window.selectionStart);
            if (lParam != 0)
                *reinterpret_cast<DWORD*>(lParam) = static_cast<DWORD>(window.selectionEnd);
            return MAKELONG(window.selectionStart, window.selectionEnd);
        case EM_SETREADONLY:
            window.style = wParam != 0 ? window.style | ES_READONLY : window.style & ~ES_READONLY;
            System().Changed(window, WindowChange::kEnabled);
            return TRUE;
        case WM_GETDLGCODE:
            return DLGC_HASSETSEL | (window.Has(ES_WANTRETURN) ? DLGC_WANTALLKEYS : 0);
        case WM_SETFOCUS:
            SendCommand(window, EN_SETFOCUS);
            return 0;
        case WM_KILLFOCUS:
            SendCommand(window, EN_KILLFOCUS);
            return 0;
        default:
            return AnyProcedure(window, message, wParam, lParam);
    }
}

LRESULT StaticProcedure(Window& window, UINT message, WPARAM wParam, LPARAM lParam) {
    return message == WM_GETDLGCODE ? DLGC_STATIC : AnyProcedure(window, message, wParam, lParam);
}

LRESULT SetRange(Window& bar, int low, int high) {
    ProgressState& progress = bar.progress;
    const LRESULT before = MAKELONG(progress.low, progress.high);
    progress.low = low;
    progress.high = high;
    progress.position = (std::max)(low, (std::min)(progress.position, high));
    System().Changed(bar, WindowChange::kProgress);
    return before;
}

LRESULT SetPosition(Window& bar, std::int64_t position) {
    ProgressState& progress = bar.progress;
    const int before = progress.position;
    const std::int64_t high = progress.high;
    progress.position = static_cast<int>(
        (std::max)(static_cast<std::int64_t>(progress.low), (std::min)(position, high)));
    System().Changed(bar, WindowChange::kProgress);
    return before;
}

LRESULT ProgressProcedure(Window& window, UINT message, WPARAM wParam, LPARAM lParam) {
    ProgressState& progress = window.progress;
    const std::int64_t position = progress.position;
    switch (message) {
        case PBM_SETRANGE:
            return SetRange(window, LOWORD(lParam), HIWORD(lParam));
        case PBM_SETRANGE32:
            return SetRange(window, static_cast<int>(wParam), static_cast<int>(lParam));
        case PBM_GETRANGE:
            return wParam != 0 ? progress.low : progress.high;
        case PBM_SETPOS:
            return SetPosition(window, static_cast<int>(wParam));
        case PBM_DELTAPOS:
            return SetPosition(window, position + static_cast<int>(wParam));
        case PBM_STEPIT:
            // Past the end the bar begins again.
            return SetPosition(window, position + progress.step > progress.high
                                           ? progress.low
                                           : position + progress.step);
        case PBM_GETPOS:
            return progress.position;
        case PBM_SETSTEP:
            return std::exchange(progress.step, static_cast<int>(wParam));
        case WM_GETDLGCODE:
            return DLGC_STATIC;
        default:
            return AnyProcedure(window, message, wParam, lParam);
    }
}

typedef LRESULT (*Procedure)(Window&, UINT, WPARAM, LPARAM);

// By WindowKind.
const Procedure kProcedures[] = {DialogProcedure,   ButtonProcedure, EditProcedure, StaticProcedure,
                                 ProgressProcedure, AnyProcedure,    AnyProcedure,  AnyProcedure};

}  // namespace

// The display has the text already when it comes from there; being told again does no harm.
void TypeText(HWND edit, const std::wstring& text) {
    Window* const window = System().Find(edit);
    if (window == nullptr || window->kind != WindowKind::kEdit || window->text == text) return;
    SetText(*window, text.c_str());
    if (Window* const now = System().Find(edit))
        now->selectionStart = now->selectionEnd = static_cast<int>(now->text.size());
}

LRESULT DefaultProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    Window* const window = System().Find(handle);
    if (window == nullptr) return 0;
    return kProcedures[static_cast<int>(window->kind)](*window, message, wParam, lParam);
}

}  // namespace host
