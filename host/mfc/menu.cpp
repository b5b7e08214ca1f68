// CMenu: menus that pop up.
#include <cstdint>
#include <map>

#include "afxwin.h"
#include "host/mfc/window_system.h"

IMPLEMENT_DYNAMIC(CMenu, CObject)

using host::MenuRequest;
using host::WindowSystem;

namespace {

// By handle; a handle is never used again.
std::map<HMENU, MenuRequest>& Menus() {
    static std::map<HMENU, MenuRequest> menus;
    return menus;
}

MenuRequest* Find(HMENU menu) {
    const auto found = Menus().find(menu);
    return found == Menus().end() ? nullptr : &found->second;
}

}  // namespace

CMenu::~CMenu() { DestroyMenu(); }

BOOL CMenu::CreatePopupMenu() {
    static std::uintptr_t last = 0;
    if (m_hMenu != nullptr) return FALSE;
    m_hMenu = reinterpret_cast<HMENU>(++last);
    Menus()[m_hMenu] = {};
    return TRUE;
}

BOOL CMenu::DestroyMenu() {
    const bool isThere = Menus().erase(m_hMenu) != 0;
    m_hMenu = nullptr;
    return isThere;
}

BOOL CMenu::AppendMenu(UINT nFlags, UINT_PTR nIDNewItem, LPCTSTR lpszNewItem) {
    MenuRequest* const menu = Find(m_hMenu);
    if (menu == nullptr) return FALSE;
    const bool isSeparator = (nFlags & MF_SEPARATOR) != 0;
    menu->items.push_back({isSeparator ? 0 : static_cast<int>(nIDNewItem),
                           lpszNewItem == nullptr || isSeparator ? L"" : lpszNewItem,
                           !isSeparator && (nFlags & MF_GRAYED) == 0});
    return TRUE;
}

BOOL CMenu::TrackPopupMenu(UINT nFlags, int x, int y, CWnd* pWnd, LPCRECT) {
    const MenuRequest* const menu = Find(m_hMenu);
    if (menu == nullptr || pWnd == nullptr) return FALSE;
    const HWND window = pWnd->GetSafeHwnd();
    MenuRequest request = *menu;
    request.place = {x, y};
    WindowSystem& system = WindowSystem::Get();
    const int chosen = system.Answers() != nullptr ? system.Answers()->menu(request)
                                                   : system.Driver().ShowMenu(request);
    if ((nFlags & TPM_RETURNCMD) != 0) return chosen;
    if (chosen != 0) system.Post(window, WM_COMMAND, MAKEWPARAM(chosen, 0), 0);
    return TRUE;
}
