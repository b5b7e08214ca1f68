// The plain types and macros of the Windows headers that SDK and MFC declarations are written in.
// A private header: plug-in sources get these names through afxwin.h, tchar.h or adesk.h.
// Widths are those of Windows (a LONG has 32 bits) whatever the machine's own long is.
#pragma once

#include <cstddef>
#include <cstdint>

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

// Classes and functions marked for export become visible outside the module; a module is built with
// hidden visibility, as a Windows library is.
#if !defined(_WIN32)
#define HOST_DECLSPEC_dllexport __attribute__((visibility("default")))
#define HOST_DECLSPEC_dllimport __attribute__((visibility("default")))
#define HOST_DECLSPEC_noreturn __attribute__((noreturn))
#define HOST_DECLSPEC_noinline __attribute__((noinline))
#define HOST_DECLSPEC_novtable
#define HOST_DECLSPEC_selectany __attribute__((weak))
#define HOST_DECLSPEC_align(n) __attribute__((aligned(n)))
#define __declspec(x) HOST_DECLSPEC_##x
#define __stdcall
#define __cdecl
#define HOST_MODULE_LOCAL __attribute__((visibility("hidden")))  // each module has its own
#else
#define HOST_MODULE_LOCAL
#endif

#define CALLBACK __stdcall
#define WINAPI __stdcall
#define APIENTRY __stdcall
#define PASCAL __stdcall

typedef int BOOL;
typedef int INT;
typedef unsigned int UINT;
typedef char CHAR;
typedef wchar_t WCHAR;
typedef wchar_t TCHAR;
typedef short SHORT;
typedef unsigned short USHORT;
typedef float FLOAT;
typedef unsigned char BYTE;
typedef std::uint16_t WORD;
typedef std::uint32_t DWORD;
typedef std::int32_t LONG;
typedef std::uint32_t ULONG;
typedef std::int64_t LONGLONG;
typedef std::uint64_t ULONGLONG;
typedef std::intptr_t INT_PTR;
typedef std::uintptr_t UINT_PTR;
typedef std::intptr_t LONG_PTR;
typedef std::uintptr_t ULONG_PTR;
typedef std::uintptr_t DWORD_PTR;
typedef UINT_PTR WPARAM;
typedef LONG_PTR LPARAM;
typedef LONG_PTR LRESULT;
typedef LONG HRESULT;
typedef DWORD COLORREF;
typedef WORD ATOM;

typedef void* LPVOID;
typedef const void* LPCVOID;
typedef DWORD* LPDWORD;
typedef char* LPSTR;
typedef const char* LPCSTR;
typedef wchar_t* LPWSTR;
typedef const wchar_t* LPCWSTR;
typedef TCHAR* LPTSTR;
typedef const TCHAR* LPCTSTR;

#define DECLARE_HANDLE(name) \
    struct name##__;         \
    typedef struct name##__* name
typedef void* HANDLE;
typedef void* HGDIOBJ;
DECLARE_HANDLE(HWND);
DECLARE_HANDLE(HINSTANCE);
typedef HINSTANCE HMODULE;
DECLARE_HANDLE(HDC);
DECLARE_HANDLE(HFONT);
DECLARE_HANDLE(HPEN);
DECLARE_HANDLE(HBRUSH);
DECLARE_HANDLE(HBITMAP);
DECLARE_HANDLE(HRGN);
DECLARE_HANDLE(HICON);
typedef HICON HCURSOR;
DECLARE_HANDLE(HMENU);
DECLARE_HANDLE(HRSRC);

#define LOWORD(l) (static_cast<WORD>(static_cast<DWORD_PTR>(l) & 0xffffu))
#define HIWORD(l) (static_cast<WORD>((static_cast<DWORD_PTR>(l) >> 16) & 0xffffu))
#define LOBYTE(w) (static_cast<BYTE>(static_cast<DWORD_PTR>(w) & 0xffu))
#define HIBYTE(w) (static_cast<BYTE>((static_cast<DWORD_PTR>(w) >> 8) & 0xffu))
#define MAKELONG(low, high) \
    (static_cast<LONG>(static_cast<DWORD>(LOWORD(low)) | (static_cast<DWORD>(LOWORD(high)) << 16)))
#define MAKEWPARAM(low, high) (static_cast<WPARAM>(static_cast<DWORD>(MAKELONG(low, high))))
#define MAKELPARAM(low, high) (static_cast<LPARAM>(static_cast<DWORD>(MAKELONG(low, high))))
#define RGB(r, g, b)                                                         \
    (static_cast<COLORREF>(static_cast<BYTE>(r) |                            \
                           (static_cast<DWORD>(static_cast<BYTE>(g)) << 8) | \
                           (static_cast<DWORD>(static_cast<BYTE>(b)) << 16)))

#define DLL_PROCESS_DETACH 0
#define DLL_PROCESS_ATTACH 1
#define DLL_THREAD_ATTACH 2
#define DLL_THREAD_DETACH 3
#define MAX_PATH 260
#define UNREFERENCED_PARAMETER(p) (void)(p)

#define afx_msg
#define AFX_EXT_CLASS __declspec(dllexport)
#define AFX_EXT_API __declspec(dllexport)
#define AFX_EXT_DATA __declspec(dllexport)
