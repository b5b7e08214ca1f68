#include "host/mfc/dialog_builder.h"

#include "host/mfc/fonts.h"
#include "host/mfc/window_system.h"

namespace host {
namespace {

struct ClassName {
    const wchar_t* name;
    WindowKind kind;
};
const ClassName kClasses[] = {{L"button", WindowKind::kButton},
                              {L"edit", WindowKind::kEdit},
                              {L"static", WindowKind::kStatic},
                              {L"msctls_progress32", WindowKind::kProgress},
                              {L"syslistview32", WindowKind::kList}};

std::optional<WindowKind> FindClass(const std::wstring& name) {
    for (const ClassName& known : kClasses)
        if (name == known.name) return known.kind;
    return {};
}

int Scale(LONG units, int base, int parts) {
    const LONG doubled = 2 * units * base + (units < 0 ? -parts : parts);
    return static_cast<int>(doubled / (2 * parts));
}

// The windows of a dialog share the font that the dialog was made with; it is never dropped, since
// there are as many as there are different fonts in the templates.
HFONT FontOf(const DialogTemplate& dialog) {
    static std::map<std::wstring, HFONT> fonts;
    const std::wstring key = dialog.fontFace + L'/' + std::to_wstring(dialog.fontPoints) + L'/' +
                             std::to_wstring(dialog.fontWeight) + (dialog.isItalic ? L"i" : L"");
    HFONT& font = fonts[key];
    if (font == nullptr)
        font = MakeFont(
            DescribeFont(dialog.fontPoints, dialog.fontFace, dialog.fontWeight, dialog.isItalic));
    return font;
}

void MakeControl(const ControlTemplate& control, Window& dialog, BaseUnits base) {
    Window& window = WindowSystem::Get().Make(*FindClass(control.windowClass), &dialog);
    window.id = control.id;
    window.style = control.style;
    window.exStyle = control.exStyle;
    window.text = control.text;
    window.font = dialog.font;
    window.bounds = ToPixels(control.place, base);
    if (window.IsPushButton() && window.ButtonType() == BS_DEFPUSHBUTTON && dialog.defaultId == 0)
        dialog.defaultId = static_cast<UINT>(window.id);
}

// Lays a new dialog where its template wants it in its owner; 0,0 means in the middle.
void Place(const DialogTemplate& dialog, CWnd& object) {
    const bool isFree = dialog.place.left == 0 && dialog.place.top == 0;
    if (isFree || (dialog.style & DS_CENTER)) object.CenterWindow();
}

void FocusFirst(HWND handle) {
    const HWND first = ::GetNextDlgTabItem(handle, nullptr, FALSE);
    Window* const dialog = WindowSystem::Get().Find(handle);
    dialog->savedFocus = first;
}

}  // namespace

BaseUnits BaseUnitsOf(const LOGFONT& font) {
    const int pixels = font.lfHeight < 0 ? -font.lfHeight : font.lfHeight;
    return {pixels * 7 / 12, pixels * 15 / 12};
}

RECT ToPixels(const RECT& units, BaseUnits base) {
    return {Scale(units.left, base.x, 4), Scale(units.top, base.y, 8),
            Scale(units.right, base.x, 4), Scale(units.bottom, base.y, 8)};
}

HWND BuildDialog(const DialogTemplate& dialog, CWnd& object, HWND owner, bool isModal,
                 std::wstring& reason) {
    for (const ControlTemplate& control : dialog.controls) {
        if (FindClass(control.windowClass)) continue;
        reason = L"line " + std::to_wstring(control.line) + L": there is no window class " +
                 control.windowClass;
        return nullptr;
    }
    WindowSystem& system = WindowSystem::Get();
    Window& window = system.Make(WindowKind::kDialog, nullptr);
    const HWND handle = window.handle;
    window.id = dialog.id;
    window.style = dialog.style & ~WS_VISIBLE;
    window.exStyle = dialog.exStyle;
    window.text = dialog.caption;
    window.owner = owner;
    window.isModal = isModal;
    window.font = FontOf(dialog);
    const BaseUnits base = BaseUnitsOf(*FindFont(window.font));
    window.bounds = ToPixels(dialog.place, base);
    if (const Window* const below = system.Find(owner)) {
        CRect place(window.bounds);
        place.OffsetRect(below->bounds.left, below->bounds.top);
        window.bounds = place;
    }
    for (const ControlTemplate& control : dialog.controls) MakeControl(control, window, base);
    object.Attach(handle);
    system.Announce(window);
    FocusFirst(handle);
    Place(dialog, object);
    const HWND first = window.savedFocus;
    const LRESULT wantsDefault =
        system.Send(handle, WM_INITDIALOG, reinterpret_cast<WPARAM>(first), 0);
    Window* const made = system.Find(handle);
    if (made == nullptr) return nullptr;
    // FALSE says that the handler has set the focus itself.
    if (wantsDefault == 0 && ::IsChild(handle, system.Focus())) made->savedFocus = system.Focus();
    const HWND focus = made->savedFocus;
    if (Window* const control = system.Find(focus);
        wantsDefault != 0 && control != nullptr && control->kind == WindowKind::kEdit)
        system.Send(focus, EM_SETSEL, 0, -1);
    if (dialog.style & WS_VISIBLE) system.Show(handle, true);
    return handle;
}

}  // namespace host
