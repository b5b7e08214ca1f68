#include "host/mfc/window.h"

namespace host {

Window::Window() = default;

// The stand-in must not destroy the window once more.
Window::~Window() {
    if (stand) stand->m_hWnd = nullptr;
}

bool Window::IsRadio() const {
    return kind == WindowKind::kButton &&
           (ButtonType() == BS_RADIOBUTTON || ButtonType() == BS_AUTORADIOBUTTON);
}

bool Window::IsCheckBox() const {
    const UINT type = ButtonType();
    return kind == WindowKind::kButton && (type == BS_CHECKBOX || type == BS_AUTOCHECKBOX ||
                                           type == BS_3STATE || type == BS_AUTO3STATE);
}

bool Window::IsPushButton() const {
    return kind == WindowKind::kButton &&
           (ButtonType() == BS_PUSHBUTTON || ButtonType() == BS_DEFPUSHBUTTON);
}

Window& Window::TopLevel() {
    Window* at = this;
    while (at->parent != nullptr) at = at->parent;
    return *at;
}

bool Window::IsShown() const {
    for (const Window* at = this; at != nullptr; at = at->parent)
        if (!at->Has(WS_VISIBLE)) return false;
    return true;
}

bool Window::IsUsable() const {
    for (const Window* at = this; at != nullptr; at = at->parent)
        if (at->Has(WS_DISABLED)) return false;
    return true;
}

}  // namespace host
