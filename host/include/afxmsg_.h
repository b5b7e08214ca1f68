// Message maps: which member function takes which message. Included by afxwin.h.
#pragma once

#include <type_traits>

#include "atltypes.h"
#include "host_winuser.h"

class CCmdTarget;  // of afxwin.h
class CWnd;
struct AFX_MSGMAP_ENTRY;  // see below

// What a command handler is called with; pNotify is null but for notifications.
struct AFX_NOTIFY {
    LRESULT* pResult;  // what the sender gets
    NMHDR* pNMHDR;     // who sent it, and why
};

// Calls one handler of one class. The message's words as they came; for WM_NOTIFY lParam points to
// an AFX_NOTIFY.
typedef LRESULT (*AFX_PMSG)(CCmdTarget* target, WPARAM wParam, LPARAM lParam);

// One line of a map. Messages but commands and notifications have 0 in code and numbers.
struct AFX_MSGMAP_ENTRY {
    UINT nMessage;  // WM_...
    UINT nCode;     // control code; of a WM_NOTIFY the lower 16 bits of its code
    UINT nID;       // of the control or command
    UINT nLastID;   // of a range, else the same
    AFX_PMSG pfn;   // null ends the table
};

// The lines of one class, and the way to its base's.
struct AFX_MSGMAP {
    const AFX_MSGMAP* (*pfnGetBaseMap)();  // null at the root
    const AFX_MSGMAP_ENTRY* lpEntries;     // searched from the first on
};

// The callers behind the macros. A handler of another signature does not compile.
namespace host {  // not for plug-ins

// void f()
template <class Class, auto handler>
LRESULT CallPlain(CCmdTarget* target, WPARAM, LPARAM) {  // void f()
    static_assert(std::is_void_v<decltype((static_cast<Class*>(target)->*handler)())>,
                  "afx_msg void f()");
    (static_cast<Class*>(target)->*handler)();
    return 0;
}

// LRESULT f(WPARAM, LPARAM): registered and user's messages.
template <class Class, auto handler>
LRESULT CallMessage(CCmdTarget* target, WPARAM wParam, LPARAM lParam) {
    static_assert(
        std::is_same_v<LRESULT, decltype((static_cast<Class*>(target)->*handler)(wParam, lParam))>,
        "afx_msg LRESULT f(WPARAM, LPARAM)");
    return (static_cast<Class*>(target)->*handler)(wParam, lParam);
}

// void f(NMHDR*, LRESULT*): WM_NOTIFY.
template <class Class, auto handler>
LRESULT CallNotify(CCmdTarget* target, WPARAM, LPARAM lParam) {
    const AFX_NOTIFY* const notify = reinterpret_cast<const AFX_NOTIFY*>(lParam);
    (static_cast<Class*>(target)->*handler)(notify->pNMHDR, notify->pResult);
    return 0;
}

// void f(UINT id): one handler for many buttons.
template <class Class, auto handler>
LRESULT CallRange(CCmdTarget* target, WPARAM wParam, LPARAM) {
    (static_cast<Class*>(target)->*handler)(static_cast<UINT>(LOWORD(wParam)));
    return 0;
}

// void f(UINT type, int width, int height).
template <class Class, auto handler>
LRESULT CallSize(CCmdTarget* target, WPARAM wParam, LPARAM lParam) {
    (static_cast<Class*>(target)->*handler)(static_cast<UINT>(wParam), LOWORD(lParam),
                                            HIWORD(lParam));
    return 0;
}

// void f(BOOL shown, UINT status).
template <class Class, auto handler>
LRESULT CallShow(CCmdTarget* target, WPARAM wParam, LPARAM lParam) {
    (static_cast<Class*>(target)->*handler)(static_cast<BOOL>(wParam), static_cast<UINT>(lParam));
    return 0;
}

// void f(BOOL).
template <class Class, auto handler>
LRESULT CallFlag(CCmdTarget* target, WPARAM wParam, LPARAM) {  // void f(BOOL)
    (static_cast<Class*>(target)->*handler)(static_cast<BOOL>(wParam));
    return 0;
}

// void f(UINT key, UINT repeats, UINT flags); repeats are always 1 here.
template <class Class, auto handler>
LRESULT CallKey(CCmdTarget* target, WPARAM wParam, LPARAM lParam) {
    (static_cast<Class*>(target)->*handler)(static_cast<UINT>(wParam), LOWORD(lParam),
                                            HIWORD(lParam));
    return 0;
}

// The object of a handle; null for none.
CWnd* WindowOfHandle(HWND hWnd);

// void f(CWnd* other): the window that loses or gets the focus.
template <class Class, auto handler>
LRESULT CallFocus(CCmdTarget* target, WPARAM wParam, LPARAM) {
    (static_cast<Class*>(target)->*handler)(WindowOfHandle(reinterpret_cast<HWND>(wParam)));
    return 0;
}

// UINT f(): the answer is the message's result.
template <class Class, auto handler>
LRESULT CallMenu(CCmdTarget* target, WPARAM wParam, LPARAM lParam) {
    // Signed: a screen may lie to the left of the main one, and -1,-1 means the keyboard.
    (static_cast<Class*>(target)->*handler)(
        WindowOfHandle(reinterpret_cast<HWND>(wParam)),
        CPoint(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))));
    return 0;
}

template <class Class, auto handler>
LRESULT CallSizes(CCmdTarget* target, WPARAM, LPARAM lParam) {
    (static_cast<Class*>(target)->*handler)(reinterpret_cast<MINMAXINFO*>(lParam));
    return 0;
}

template <class Class, auto handler>
LRESULT CallAnswer(CCmdTarget* target, WPARAM, LPARAM) {
    return static_cast<LRESULT>((static_cast<Class*>(target)->*handler)());
}

}  // namespace host

// In the class: it has a map.
#define DECLARE_MESSAGE_MAP()                     \
protected:                                        \
    static const AFX_MSGMAP* GetThisMessageMap(); \
    const AFX_MSGMAP* GetMessageMap() const override;

// In the source: the map, line by line, up to END_MESSAGE_MAP. The base's lines are searched when
// none of these fits.
#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                  \
    const AFX_MSGMAP* theClass::GetMessageMap() const { return theClass::GetThisMessageMap(); } \
    const AFX_MSGMAP* theClass::GetThisMessageMap() {                                           \
        typedef theClass ThisClass;                                                             \
        typedef baseClass TheBaseClass;                                                         \
        static const AFX_MSGMAP_ENTRY entries[] = {
#define END_MESSAGE_MAP()                                                             \
    host::EndOfMap<ThisClass>()                                                       \
    }                                                                                 \
    ;                                                                                 \
    static const AFX_MSGMAP messageMap = {&TheBaseClass::GetThisMessageMap, entries}; \
    return &messageMap;                                                               \
    }

namespace host {
// The entry that ends a table; knows the class so that an empty map uses its name too.
template <class Class>
constexpr AFX_MSGMAP_ENTRY EndOfMap() {
    return {0, 0, 0, 0, nullptr};
}
}  // namespace host

// One line; the caller is chosen by the macro, and checks the handler's signature.
#define HOST_MAP_ENTRY(message, code, first, last, caller, handler)                       \
    {message, static_cast<UINT>(code), static_cast<UINT>(first), static_cast<UINT>(last), \
     &host::caller<ThisClass, handler>},

// A command or button by its number.
#define ON_COMMAND(id, memberFxn) HOST_MAP_ENTRY(WM_COMMAND, 0, id, id, CallPlain, memberFxn)
// All numbers from the first to the last.
#define ON_COMMAND_RANGE(id, idLast, memberFxn) \
    HOST_MAP_ENTRY(WM_COMMAND, 0, id, idLast, CallRange, memberFxn)
// A control's own notification.
#define ON_CONTROL(code, id, memberFxn) \
    HOST_MAP_ENTRY(WM_COMMAND, code, id, id, CallPlain, memberFxn)
#define ON_BN_CLICKED(id, memberFxn) ON_CONTROL(BN_CLICKED, id, memberFxn)
#define ON_EN_CHANGE(id, memberFxn) ON_CONTROL(EN_CHANGE, id, memberFxn)
#define ON_EN_KILLFOCUS(id, memberFxn) ON_CONTROL(EN_KILLFOCUS, id, memberFxn)
#define ON_EN_SETFOCUS(id, memberFxn) ON_CONTROL(EN_SETFOCUS, id, memberFxn)
// A common control's notification.
#define ON_NOTIFY(code, id, memberFxn) \
    HOST_MAP_ENTRY(WM_NOTIFY, static_cast<WORD>(code), id, id, CallNotify, memberFxn)
// Any other message.
#define ON_MESSAGE(message, memberFxn) HOST_MAP_ENTRY(message, 0, 0, 0, CallMessage, memberFxn)

// Own-drawn windows are not offered by this host, so there are no macros for painting, scrolling
// and the mouse.
// The messages of a window's life, by handlers of fixed names.
#define ON_WM_DESTROY() HOST_MAP_ENTRY(WM_DESTROY, 0, 0, 0, CallPlain, &ThisClass::OnDestroy)
#define ON_WM_NCDESTROY() HOST_MAP_ENTRY(WM_NCDESTROY, 0, 0, 0, CallPlain, &ThisClass::OnNcDestroy)
#define ON_WM_CLOSE() HOST_MAP_ENTRY(WM_CLOSE, 0, 0, 0, CallPlain, &ThisClass::OnClose)
#define ON_WM_SIZE() HOST_MAP_ENTRY(WM_SIZE, 0, 0, 0, CallSize, &ThisClass::OnSize)
#define ON_WM_CONTEXTMENU() \
    HOST_MAP_ENTRY(WM_CONTEXTMENU, 0, 0, 0, CallMenu, &ThisClass::OnContextMenu)
#define ON_WM_GETMINMAXINFO() \
    HOST_MAP_ENTRY(WM_GETMINMAXINFO, 0, 0, 0, CallSizes, &ThisClass::OnGetMinMaxInfo)
#define ON_WM_SHOWWINDOW() \
    HOST_MAP_ENTRY(WM_SHOWWINDOW, 0, 0, 0, CallShow, &ThisClass::OnShowWindow)
#define ON_WM_ENABLE() HOST_MAP_ENTRY(WM_ENABLE, 0, 0, 0, CallFlag, &ThisClass::OnEnable)
#define ON_WM_KEYDOWN() HOST_MAP_ENTRY(WM_KEYDOWN, 0, 0, 0, CallKey, &ThisClass::OnKeyDown)
#define ON_WM_SETFOCUS() HOST_MAP_ENTRY(WM_SETFOCUS, 0, 0, 0, CallFocus, &ThisClass::OnSetFocus)
#define ON_WM_KILLFOCUS() HOST_MAP_ENTRY(WM_KILLFOCUS, 0, 0, 0, CallFocus, &ThisClass::OnKillFocus)
#define ON_WM_GETDLGCODE() \
    HOST_MAP_ENTRY(WM_GETDLGCODE, 0, 0, 0, CallAnswer, &ThisClass::OnGetDlgCode)
